// A series of bars, each standing in its row's group.
import type { CustomSeriesOption } from "echarts/charts";

import { type Body, bodyOf, depthOf, seriesBody } from "./bar_shapes.ts";
import { slotsOf } from "./bar_slots.ts";
import { placed } from "./cartesian.ts";
import { type Api, handDrawn, pointable, type Shape } from "./custom.ts";
import { type DrawHairs, hairDrawing, isDense } from "./dense_bars.ts";
import { baseBelow, commonOf, type Context, type Drawn } from "./drawn.ts";
import type { Box } from "./frame.ts";
import { markText } from "./marks.ts";

/** Tells what a series of bars among those of a chart is to the library. */
export function barSeriesOf(context: Context): (one: Drawn) => CustomSeriesOption {
  const drawHairs = isDense(context) ? hairDrawing(context) : null;
  return (one) => barSeries(context, one, drawHairs);
}

function barSeries(context: Context, one: Drawn, drawHairs: DrawHairs | null): CustomSeriesOption {
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
    data: pointable(values, context.isMoving && drawHairs !== null).map((value, row) =>
      ({ value: placed(scene, row, value), cell: series.points[row]?.cell })),
    draw: ({ dataIndex: row }, api) => {
      if (!drawHairs) return barAt(context, one, row, boxesOf(context, one, api)(row), own);
      return row > 0 ? [] : drawHairs(one, api);
    },
  });
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

/** Tells where a row's bar stands among those on show; nowhere for a gap. */
function boxesOf({ scene, drawn }: Context, one: Drawn, api: Api): (row: number) => Box | null {
  const { IsRotated } = scene.style;
  const onShow = new Set(api.currentSeriesIndices());
  const visible = drawn.filter(({ kind }, index) => kind === "bar" && onShow.has(index));
  const [across = 0, upright = 0] = api.size?.([1, 1]) as number[];
  const slot = slotsOf(visible, IsRotated ? upright : across, scene.look).get(one);
  return (row) => {
    const value = one.values[row] ?? null;
    if (!slot || value === null) return null;
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    const [x0 = 0, y0 = 0] = api.coord(placed(scene, row, base));
    const [x1 = 0, y1 = 0] = api.coord(placed(scene, row, base + value));
    return IsRotated
      ? { left: Math.min(x0, x1), top: y0 + slot.offset, width: Math.abs(x1 - x0), height: slot.width }
      : { left: x0 + slot.offset, top: Math.min(y0, y1), width: slot.width, height: Math.abs(y1 - y0) };
  };
}
