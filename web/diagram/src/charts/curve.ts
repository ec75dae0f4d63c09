// Curves drawn through a series' points, or over its bars.
import type { LineSeriesOption } from "echarts/charts";

import type { Look } from "../look/look.ts";
import { shade } from "../look/shades.ts";
import { placed } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import type { Series } from "./view.ts";

/** Whether the style asks for a curve; also whether it is filled. */
export function curveOf({ CurveStyle }: Scene["style"]): "none" | "drawn" | "filled" {
  return CurveStyle === 1 ? "drawn" : CurveStyle === 2 ? "filled" : "none";
}

/** The colour of a chart's only series: the author's for curves, unless a curve over the series has it. */
export function onlyColor({ curve, drawnCurve, palette }: Look, hasCurve: boolean): string {
  return hasCurve && drawnCurve !== null ? palette[0] ?? curve : curve;
}

/** A drawn curve that belongs to a series: it goes when readers hide it. */
export function curveSeries(
  scene: Scene,
  series: Series,
  points: readonly (readonly [number, number])[],
): LineSeriesOption {
  const { look } = scene;
  // Darker than what lies under it, or lighter on a dark ground.
  const color = look.drawnCurve ?? shade(series.color, look.dark ? 0.45 : -0.4);
  return {
    type: "line",
    name: series.name,
    data: points.map(([x, y]) => ({ value: placed(scene, x, y) })),
    symbol: "none",
    silent: true,
    tooltip: { show: false },
    color,
    lineStyle: { color, width: 2 },
    ...(curveOf(scene.style) === "filled" ? { areaStyle: { color, opacity: 0.16 } } : {}),
    emphasis: { disabled: true },
    z: 3,
  } as LineSeriesOption;
}
