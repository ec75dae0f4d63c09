// A series of bars, each standing in its row's group.
import type { CustomSeriesOption } from "echarts/charts";

import type { Look } from "../look/look.ts";
import { type Body, bodyOf, depthOf, hairs, mostBars, seriesBody } from "./bar_shapes.ts";
import { placed } from "./cartesian.ts";
import { type Api, handDrawn, type Shape } from "./custom.ts";
import { baseBelow, commonOf, type Context, type Drawn } from "./drawn.ts";
import type { Box } from "./frame.ts";
import { markText } from "./marks.ts";

export function barSeries(context: Context, one: Drawn): CustomSeriesOption {
  const { scene, drawn } = context;
  const { look } = scene;
  const { series, values } = one;
  const own = seriesBody(look, series.index, series.color);
  const isMany = drawn.length * values.length > mostBars;
  return handDrawn({
    ...commonOf(context, one),
    name: series.name,
    color: series.color,
    itemStyle: { color: series.color, ...(own.pattern ? { decal: own.pattern } : {}) },
    encode: { x: 0, y: 1, tooltip: scene.style.IsRotated ? [0] : [1] },
    clip: true,
    data: values.map((value, row) => ({ value: placed(scene, row, value), cell: series.points[row]?.cell })),
    draw: (params, api) => {
      const row = params.dataIndex;
      if (isMany && row > 0) return [];
      const boxOf = boxesOf(context, one, api);
      return isMany ? [hairs(values.map((_, index) => boxOf(index)), series.color, scene.style.IsRotated)]
        : barAt(context, one, row, boxOf(row), own);
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
  const onShow = new Set(api.currentSeriesIndices());
  const visible = drawn.filter(({ kind }, index) => kind === "bar" && onShow.has(index));
  const slots = slotsOf(visible);
  const layouts = api.barLayout({ count: slots.length, ...barSpacing(scene.look) });
  const layout = layouts?.[slots.findIndex((slot) => slot.includes(one))];
  return (row) => {
    const value = one.values[row] ?? null;
    if (!layout || value === null) return null;
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    const [x0 = 0, y0 = 0] = api.coord(placed(scene, row, base));
    const [x1 = 0, y1 = 0] = api.coord(placed(scene, row, base + value));
    return scene.style.IsRotated
      ? { left: Math.min(x0, x1), top: y0 + layout.offset, width: Math.abs(x1 - x0), height: layout.width }
      : { left: x0 + layout.offset, top: Math.min(y0, y1), width: layout.width, height: Math.abs(y1 - y0) };
  };
}

/** The bars that stand in one another's place: stacks share one, all others have their own. */
function slotsOf(bars: readonly Drawn[]): Drawn[][] {
  const stack = bars.filter(({ isStacked }) => isStacked);
  const alone = bars.filter(({ isStacked }) => !isStacked).map((one) => [one]);
  return stack.length > 0 ? [stack, ...alone] : alone;
}

function barSpacing(look: Look): { barMaxWidth: number; barGap: string; barCategoryGap: string } {
  return { barMaxWidth: Math.max(56, look.fontSize * 4), barGap: "8%", barCategoryGap: "28%" };
}
