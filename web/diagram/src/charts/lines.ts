// A series as a line, filled or not.
import type { CustomSeriesOption, LineSeriesOption } from "echarts/charts";

import { dashOf, patternOf } from "../look/patterns.ts";
import { fading } from "../look/shades.ts";
import { denseLine } from "./dense_lines.ts";
import { commonOf, type Context, type Drawn } from "./drawn.ts";
import { lineItems } from "./marks.ts";
import { lineWidth } from "./stroke.ts";

// Of more points a pixel has several, and only the outermost of them can be seen.
const mostPoints = 2000;

export function lineSeries(context: Context, one: Drawn): LineSeriesOption | CustomSeriesOption {
  return one.values.length > mostPoints ? denseLine(context, one) : plainLine(context, one);
}

function plainLine(context: Context, one: Drawn): LineSeriesOption {
  const { scene, mark } = context;
  const { look, style } = scene;
  const { series } = one;
  const isFilled = one.kind === "area";
  const room = (style.IsRotated ? scene.height : scene.width) / Math.max(series.points.length, 1);
  const size = Math.max(6, style.Thickness + 3);
  const pattern = isFilled && look.patterns ? patternOf(series.index, look.dark) : undefined;
  // Upon bars a thin line needs its signs to be followed.
  const needed = context.drawn.some(({ kind }) => kind === "bar") ? 14 : 22;
  return {
    type: "line",
    ...commonOf(context, one),
    smooth: style.CurveStyle === 1 || style.CurveStyle === 2 ? 0.4 : false,
    smoothMonotone: style.IsRotated ? "y" : "x",
    symbol: "circle",
    symbolSize: size,
    showSymbol: true,
    showAllSymbol: true,
    color: series.color,
    lineStyle: {
      width: lineWidth(style),
      color: series.color,
      ...(look.patterns ? { type: dashOf(series.index) } : {}),
    },
    // The library takes an area's pattern from here.
    itemStyle: { color: series.color, ...(pattern ? { decal: pattern } : {}) },
    ...(isFilled ? { areaStyle: areaFill(series.color, one.isStacked, style.IsRotated) } : {}),
    emphasis: { lineStyle: { width: lineWidth(style) + 1 } },
    z: 3,
    data: lineItems(scene, series, one.values, room >= needed && !isFilled, mark),
  } as unknown as LineSeriesOption;
}

/** Areas over each other fade towards the axis, so that those behind can be seen. */
function areaFill(color: string, isStacked: boolean, isRotated: boolean): { color: unknown; opacity: number } {
  if (isStacked) return { color, opacity: 0.8 };
  const direction = isRotated ? { x: 1, y: 0, x2: 0, y2: 0 } : { x: 0, y: 0, x2: 0, y2: 1 };
  const colorStops = [{ offset: 0, color }, { offset: 1, color: fading(color) }];
  return { color: { type: "linear", ...direction, colorStops }, opacity: 0.34 };
}
