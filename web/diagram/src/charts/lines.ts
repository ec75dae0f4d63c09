// A series as a line, filled or not.
import type { CustomSeriesOption, LineSeriesOption } from "echarts/charts";

import { dashOf, patternOf } from "../look/patterns.ts";
import { fading } from "../look/shades.ts";
import { placed } from "./cartesian.ts";
import { type Api, handDrawn, type Shape } from "./custom.ts";
import { baseBelow, commonOf, type Context, type Drawn } from "./drawn.ts";
import { lineItems } from "./marks.ts";

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
      width: Math.min(Math.max(style.Thickness, 1), 60),
      color: series.color,
      ...(look.patterns ? { type: dashOf(series.index) } : {}),
    },
    // The library takes an area's pattern from here.
    itemStyle: { color: series.color, ...(pattern ? { decal: pattern } : {}) },
    ...(isFilled ? { areaStyle: areaFill(series.color, one.isStacked, style.IsRotated) } : {}),
    emphasis: { lineStyle: { width: Math.max(style.Thickness, 1) + 1 } },
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

type Place = readonly [number, number];

/** A line whose points are more than there are pixels: one shape, with as many points as the eye can tell. */
function denseLine(context: Context, one: Drawn): CustomSeriesOption {
  const { scene, drawn } = context;
  const { style, look } = scene;
  const { series, values } = one;
  const stroke = {
    fill: "none",
    stroke: series.color,
    lineWidth: Math.min(Math.max(style.Thickness, 1), 60),
    lineDash: look.patterns ? dashOf(series.index) : "solid",
    lineJoin: "round",
  };
  return handDrawn({
    ...commonOf(context, one),
    name: series.name,
    color: series.color,
    clip: true,
    z: 3,
    encode: { x: 0, y: 1, tooltip: style.IsRotated ? [0] : [1] },
    data: values.map((value, row) => ({ value: placed(scene, row, value), cell: series.points[row]?.cell })),
    draw: (params, api) => {
      if (params.dataIndex > 0) return [];
      const onShow = new Set(api.currentSeriesIndices());
      const visible = drawn.filter(({ kind }, index) => kind !== "bar" && onShow.has(index));
      const { upper, lower } = outlines(context, one, visible, api);
      const pathData = upper.map(pathOf).join("");
      const line: Shape = { type: "path", silent: true, shape: { pathData }, style: stroke };
      if (one.kind !== "area") return [line];
      const surfaces = upper.map((stretch, index) => `${pathOf([...stretch, ...[...lower[index] ?? []].reverse()])}Z`);
      // One plain colour: a browser paints it several times as fast as one that fades.
      const fill = { fill: series.color, opacity: one.isStacked ? 0.8 : 0.22 };
      const area: Shape = { type: "path", silent: true, shape: { pathData: surfaces.join("") }, style: fill };
      return [area, line];
    },
  });
}

/** The stretches between gaps: where the line runs, and what it stands on. */
function outlines(
  { scene }: Context,
  one: Drawn,
  visible: readonly Drawn[],
  api: Api,
): { readonly upper: Place[][]; readonly lower: Place[][] } {
  const [upper, lower]: [Place[][], Place[][]] = [[[]], [[]]];
  const at = (row: number, value: number): Place => {
    const [x = 0, y = 0] = api.coord(placed(scene, row, value));
    return [x, y];
  };
  for (const [row, value] of one.values.entries()) {
    if (value === null) {
      if (upper[upper.length - 1]?.length !== 0) for (const side of [upper, lower]) side.push([]);
      continue;
    }
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    upper[upper.length - 1]?.push(at(row, base + value));
    lower[lower.length - 1]?.push(at(row, base));
  }
  const axis = scene.style.IsRotated ? 1 : 0;
  const thin = (stretches: readonly Place[][]): Place[][] => stretches.map((stretch) => thinned(stretch, axis));
  return { upper: thin(upper), lower: thin(lower) };
}

/** Of the points in each pixel along an axis the first, the last and those farthest out. */
function thinned(points: readonly Place[], axis: 0 | 1): Place[] {
  const kept: Place[] = [];
  const across = axis === 0 ? 1 : 0;
  for (let start = 0, end = 0; start < points.length; start = end) {
    const pixel = Math.round(points[start]?.[axis] ?? 0);
    let [least, greatest] = [start, start];
    for (end = start; end < points.length && Math.round(points[end]?.[axis] ?? 0) === pixel; end += 1) {
      const value = points[end]?.[across] ?? 0;
      if (value < (points[least]?.[across] ?? 0)) least = end;
      if (value > (points[greatest]?.[across] ?? 0)) greatest = end;
    }
    for (const index of new Set([start, ...[least, greatest].sort((a, b) => a - b), end - 1])) {
      const point = points[index];
      if (point) kept.push(point);
    }
  }
  return kept;
}

function pathOf(points: readonly Place[]): string {
  return points.map(([x, y], index) => `${index === 0 ? "M" : "L"}${x.toFixed(1)} ${y.toFixed(1)}`).join("");
}
