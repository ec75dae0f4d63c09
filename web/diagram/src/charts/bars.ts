// A series of bars, each standing in its row's group.
import type { CustomSeriesOption } from "echarts/charts";

import { type Body, bodyOf, depthOf, manyBoxes, seriesBody } from "./bar_shapes.ts";
import { areMany, type Crowd, crowdOf, type Slot, slotsOf } from "./bar_slots.ts";
import { placed } from "./cartesian.ts";
import { type Api, handDrawn, pointable, type Shape } from "./custom.ts";
import { type Bars, type DrawHairs, hairDrawing } from "./dense_bars.ts";
import { baseBelow, commonOf, type Context, type Drawn } from "./drawn.ts";
import type { Box } from "./frame.ts";
import { markText } from "./marks.ts";

/** The bars on show, and how they share their bands. */
interface Layout extends Bars {
  readonly slots: ReadonlyMap<Drawn, Slot>;
  readonly crowd: Crowd;
}

/** What all series of bars of a chart have alike. */
interface Group {
  readonly layoutOf: (api: Api) => Layout;
  readonly drawHairs: DrawHairs;
  /** The library knows no more than the first item of each. */
  readonly isCut: boolean;
}

/** Tells what a series of bars among those of a chart is to the library. */
export function barSeriesOf(context: Context): (one: Drawn) => CustomSeriesOption {
  const { drawn, isMoving } = context;
  const count = drawn.filter(({ kind }) => kind === "bar").length * (drawn[0]?.values.length ?? 0);
  const isCut = isMoving && areMany(count);
  const group = { layoutOf: layouts(context, isCut), drawHairs: hairDrawing(context), isCut };
  return (one) => barSeries(context, one, group);
}

function barSeries(context: Context, one: Drawn, { layoutOf, drawHairs, isCut }: Group): CustomSeriesOption {
  const { scene } = context;
  const { series, values } = one;
  const own = seriesBody(scene.look, series.index, series.color);
  return handDrawn({
    ...commonOf(context, one),
    name: series.name,
    color: series.color,
    itemStyle: { color: series.color, ...(own.pattern ? { decal: own.pattern } : {}) },
    encode: { x: 0, y: 1, tooltip: scene.style.IsRotated ? [0] : [1] },
    clip: true,
    data: pointable(values, isCut).map((value, row) =>
      ({ value: placed(scene, row, value), cell: series.points[row]?.cell })),
    draw: ({ dataIndex: row, context: known }, api) => {
      // Worked out once for all items.
      const layout = (known as { layout?: Layout }).layout ??= layoutOf(api);
      const { crowd } = layout;
      if (crowd === "each") return barAt(context, one, row, boxesOf(context, one, layout, api)(row), own);
      if (row > 0) return [];
      return crowd === "hairs" ? drawHairs(layout, one, api)
        : barsAtOnce(context, one, boxesOf(context, one, layout, api), own);
    },
  });
}

/** Tells a chart's layout, which stays the same until readers hide a series or the plot has another size. */
function layouts({ scene, drawn }: Context, isCut: boolean): (api: Api) => Layout {
  let last: { readonly shown: readonly number[]; readonly layout: Layout } | null = null;
  return (api) => {
    const [across = 0, upright = 0] = api.size?.([1, 1]) as number[];
    const band = scene.style.IsRotated ? upright : across;
    const shown = api.currentSeriesIndices();
    const { shown: before = [], layout: known } = last ?? {};
    if (known?.band === band && before.length === shown.length && before.every((index, at) => index === shown[at])) {
      return known;
    }
    const onShow = new Set(shown);
    const visible = drawn.filter(({ kind }, index) => kind === "bar" && onShow.has(index));
    const slots = slotsOf(visible, band, scene.look);
    const [slot] = slots.values();
    const crowd = crowdOf(band, slot?.width ?? band, visible.length * (drawn[0]?.values.length ?? 0));
    const layout = { visible, band, slots, crowd: isCut && crowd === "each" ? "all" : crowd };
    last = { shown, layout };
    return layout;
  };
}

function barAt(
  { scene, mark }: Context,
  one: Drawn,
  row: number,
  box: Box | null,
  own: Pick<Body, "color" | "pattern">,
): Shape[] {
  const { look, style } = scene;
  const point = one.series.points[row];
  if (!box || !point) return [];
  const marked = mark(...point.cell);
  const isBody = style.RectStyle >= 1 && style.RectStyle <= 3;
  const body = {
    box,
    isLying: style.IsRotated,
    isDown: (point.value ?? 0) < 0,
    round: one.isStacked ? 0 : 2,
    ...own,
    edge: marked === "none" ? look.plotGround : look.selectionGround,
    edgeWidth: marked !== "none" ? 2 : isBody ? 0.5 : 0,
    depth: depthOf(style.Thickness),
  };
  return [...bodyOf(style.RectStyle)(body), ...markText(scene, marked, point, box)];
}

/** All bars of a series; those that are selected once more on top, with an outline and their values. */
function barsAtOnce(
  { scene, mark }: Context,
  { series: { points } }: Drawn,
  boxOf: (row: number) => Box | null,
  own: Pick<Body, "color" | "pattern">,
): Shape[] {
  const boxes = points.map((_, row) => boxOf(row));
  const all = manyBoxes(boxes, own);
  if (scene.selection.length === 0) return all;
  const marks = points.map(({ cell }) => mark(...cell));
  const chosen = boxes.filter((_, row) => marks[row] !== "none");
  if (chosen.length === 0) return all;
  const texts = points.flatMap((point, row) => {
    const box = boxes[row];
    return box ? markText(scene, marks[row] ?? "none", point, box) : [];
  });
  return [...all, ...manyBoxes(chosen, own, scene.look.selectionGround), ...texts];
}

/** Tells where a row's bar stands among those on show; nowhere for a gap. */
function boxesOf(
  { scene }: Context,
  one: Drawn,
  { visible, slots }: Layout,
  api: Api,
): (row: number) => Box | null {
  const { IsRotated } = scene.style;
  const slot = slots.get(one);
  // However narrow its slot is, a bar is seen.
  const width = Math.max(slot?.width ?? 0, 1);
  return (row) => {
    const value = one.values[row] ?? null;
    if (!slot || value === null) return null;
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    const [x0 = 0, y0 = 0] = api.coord(placed(scene, row, base));
    const [x1 = 0, y1 = 0] = api.coord(placed(scene, row, base + value));
    return IsRotated
      ? { left: Math.min(x0, x1), top: y0 + slot.offset, width: Math.abs(x1 - x0), height: width }
      : { left: x0 + slot.offset, top: Math.min(y0, y1), width, height: Math.abs(y1 - y0) };
  };
}
