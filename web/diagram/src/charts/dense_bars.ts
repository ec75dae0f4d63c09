// Bars that are narrower than a pixel, drawn all at once: what is seen of one depends on those of all series.
import { hairSlotsOf, type Slot } from "./bar_slots.ts";
import type { Api, Shape } from "./custom.ts";
import { baseBelow, type Context, type Drawn } from "./drawn.ts";
import { type EvenPlane, evenPlane } from "./even_plane.ts";
import { areHairs, type HairBar, type HairSeries, hairShapes, hairsOf, seenOf } from "./hairs.ts";
import { markText } from "./marks.ts";

/** The bars of a chart have less than a pixel each. */
export function isDense({ scene, drawn }: Context): boolean {
  return areHairs(scene, drawn.length * (drawn[0]?.values.length ?? 0));
}

/** The hairs of a series' bars in some rows. `visible` are all bars on show. */
export function barHairs(
  visible: readonly Drawn[],
  one: Drawn,
  slot: Slot | undefined,
  plane: EvenPlane,
  rows: Iterable<number> = one.values.keys(),
): HairSeries {
  const hairs = slot ? hairsOf(barsOf(visible, one, slot, plane, rows)) : [];
  return { color: one.series.color, isStacked: one.isStacked, hairs };
}

function* barsOf(
  visible: readonly Drawn[],
  one: Drawn,
  slot: Slot,
  plane: EvenPlane,
  rows: Iterable<number>,
): Generator<HairBar> {
  for (const row of rows) {
    const value = one.values[row] ?? null;
    if (value === null) continue;
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    yield {
      along: plane.along(row) + slot.offset,
      width: slot.width,
      base: plane.up(base),
      end: plane.up(base + value),
      isNegative: value < 0,
    };
  }
}

/** Draws the bars of a series, with what the library tells about its axes. */
export type DrawHairs = (one: Drawn, api: Api) => readonly Shape[];

// As many selected bars stand whole in front of all others. Of more, what is seen of them is marked.
const mostInFront = 60;

interface Laid {
  readonly all: HairSeries;
  readonly chosen: HairSeries;
  readonly chosenCount: number;
  readonly texts: readonly Shape[];
}

/** Each series lays its own bars out, for the library tells it of its own axes alone; the last one draws them all. */
export function hairDrawing(context: Context): DrawHairs {
  const { scene, drawn } = context;
  const { look, style: { IsRotated } } = scene;
  const known = new Map<Drawn, Laid>();
  return (one, api) => {
    const onShow = new Set(api.currentSeriesIndices());
    const visible = drawn.filter(({ kind }, index) => kind === "bar" && onShow.has(index));
    known.set(one, laidOut(context, visible, one, api));
    if (one !== visible[visible.length - 1]) return [];
    const laid = visible.flatMap((each) => known.get(each) ?? []);
    const seen = seenOf(laid.map(({ all }) => all));
    const chosen = laid.map((its) => its.chosen);
    const count = laid.reduce((sum, { chosenCount }) => sum + chosenCount, 0);
    const marked = count > mostInFront ? amongSeen(seen, chosen) : seenOf(chosen);
    return [
      ...hairShapes(seen, IsRotated),
      ...hairShapes(marked, IsRotated, 10, look.selectionGround),
      ...hairShapes(marked, IsRotated, 11),
      ...laid.flatMap(({ texts }) => texts),
    ];
  };
}

function laidOut({ scene, mark }: Context, visible: readonly Drawn[], one: Drawn, api: Api): Laid {
  const { IsRotated } = scene.style;
  const [across = 0, upright = 0] = api.size?.([1, 1]) as number[];
  const slot = hairSlotsOf(visible, IsRotated ? upright : across, scene.look).get(one);
  const plane = evenPlane(scene, api, [0, one.values.length - 1], one.values);
  const { points } = one.series;
  const marks = scene.selection.length === 0 ? [] : points.map(({ cell }) => mark(...cell));
  const rows = [...marks.keys()].filter((row) => marks[row] !== "none");
  const texts = rows.flatMap((row) => {
    const [point, [hair]] = [points[row], barHairs(visible, one, slot, plane, [row]).hairs];
    if (!point || !hair) return [];
    const { pixel, low, high } = hair;
    return markText(scene, marks[row] ?? "none", point, IsRotated
      ? { left: low, top: pixel, width: high - low, height: 1 }
      : { left: pixel, top: low, width: 1, height: high - low });
  });
  const chosen = barHairs(visible, one, slot, plane, rows);
  return { all: barHairs(visible, one, slot, plane), chosen, chosenCount: rows.length, texts };
}

/** The hairs in whose pixels some of the series' bars are chosen. */
function amongSeen(seen: readonly HairSeries[], chosen: readonly HairSeries[]): readonly HairSeries[] {
  return seen.map((one, index) => {
    const pixels = new Set(chosen[index]?.hairs.map(({ pixel }) => pixel));
    return { ...one, hairs: one.hairs.filter(({ pixel }) => pixels.has(pixel)) };
  });
}
