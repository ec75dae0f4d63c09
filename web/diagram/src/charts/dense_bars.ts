// Bars in bands of hardly a pixel or two, drawn all at once: what is seen of one depends on those of all series.
import type { Api, Shape } from "./custom.ts";
import { baseBelow, type Context, type Drawn } from "./drawn.ts";
import { type EvenPlane, evenPlane } from "./even_plane.ts";
import { type Hair, type HairBar, hairGroup, type HairSeries, hairShapes, hairsOf, seenOf } from "./hairs.ts";
import { markText } from "./marks.ts";

/** All bars of a chart that are on show, in bands of so many pixels. */
export interface Bars {
  readonly visible: readonly Drawn[];
  readonly band: number;
}

/** The hairs of a series' bars in some rows: they have the whole band. */
export function barHairs(
  { visible, band }: Bars,
  one: Drawn,
  plane: EvenPlane,
  rows: Iterable<number> = one.values.keys(),
): HairSeries {
  return {
    color: one.series.color,
    isStacked: one.isStacked,
    hairs: hairsOf(barsOf(visible, band, one, plane, rows)),
  };
}

function* barsOf(
  visible: readonly Drawn[],
  band: number,
  one: Drawn,
  plane: EvenPlane,
  rows: Iterable<number>,
): Generator<HairBar> {
  for (const row of rows) {
    const value = one.values[row] ?? null;
    if (value === null) continue;
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    yield {
      along: plane.along(row) - band / 2,
      width: band,
      base: plane.up(base),
      end: plane.up(base + value),
      isNegative: value < 0,
    };
  }
}

/** The rows in which a series' bars are selected. */
export function chosenRows({ scene, mark }: Context, { series: { points } }: Drawn): number[] {
  if (scene.selection.length === 0) return [];
  return points.flatMap(({ cell }, row) => (mark(...cell) === "none" ? [] : [row]));
}

// As many selected bars stand whole in front of all others. Of more, what is seen of them is marked.
const mostInFront = 60;

/** What stands in front of all that is seen: the hairs of selected bars, `count` in the whole chart. */
export function inFront(
  seen: readonly HairSeries[],
  chosen: readonly HairSeries[],
  count: number,
): readonly HairSeries[] {
  return count > mostInFront ? amongSeen(seen, chosen) : seenOf(chosen);
}

/** What is seen where some of a series' bars are chosen, or these where others hide them. */
function amongSeen(seen: readonly HairSeries[], chosen: readonly HairSeries[]): readonly HairSeries[] {
  return chosen.map((one, index) => {
    const others = new Map<number, Hair[]>();
    for (const hair of seen[index]?.hairs ?? []) {
      const place = placeOf(hair);
      others.set(place, [...others.get(place) ?? [], hair]);
    }
    return { ...one, hairs: one.hairs.flatMap((hair) => others.get(placeOf(hair)) ?? [hair]) };
  });
}

/** A number for each pixel and sign. */
function placeOf({ pixel, isNegative }: Hair): number {
  return 2 * pixel + (isNegative ? 1 : 0);
}

/** Draws the bars of a series, with what the library tells about its axes. */
export type DrawHairs = (bars: Bars, one: Drawn, api: Api) => readonly Shape[];

interface Laid {
  readonly all: HairSeries;
  readonly chosen: HairSeries;
  readonly chosenCount: number;
  readonly texts: readonly Shape[];
}

/** Each series lays its own bars out, for the library tells it of its own axes alone; the last one draws them all. */
export function hairDrawing(context: Context): DrawHairs {
  const { look, style: { IsRotated } } = context.scene;
  const known = new Map<Drawn, Laid>();
  return (bars, one, api) => {
    const { visible } = bars;
    known.set(one, laidOut(context, bars, one, api));
    if (one !== visible[visible.length - 1]) return [];
    const laid = visible.flatMap((each) => known.get(each) ?? []);
    const seen = seenOf(laid.map(({ all }) => all));
    const count = laid.reduce((sum, { chosenCount }) => sum + chosenCount, 0);
    const marked = inFront(seen, laid.map(({ chosen }) => chosen), count);
    return hairGroup([
      ...hairShapes(seen, IsRotated),
      ...hairShapes(marked, IsRotated, look.selectionGround),
      ...laid.flatMap(({ texts }) => texts),
    ]);
  };
}

function laidOut(context: Context, bars: Bars, one: Drawn, api: Api): Laid {
  const { scene, mark } = context;
  const plane = evenPlane(scene, api, [0, one.values.length - 1], one.values);
  const rows = chosenRows(context, one);
  const texts = rows.flatMap((row) => {
    const [point, { hairs }] = [one.series.points[row], barHairs(bars, one, plane, [row])];
    const [first, last] = [hairs[0], hairs[hairs.length - 1]];
    if (!point || !first || !last) return [];
    const [along, up] = [last.pixel + 1 - first.pixel, first.high - first.low];
    return markText(scene, mark(...point.cell), point, scene.style.IsRotated
      ? { left: first.low, top: first.pixel, width: up, height: along }
      : { left: first.pixel, top: first.low, width: along, height: up });
  });
  const chosen = barHairs(bars, one, plane, rows);
  return { all: barHairs(bars, one, plane), chosen, chosenCount: rows.length, texts };
}
