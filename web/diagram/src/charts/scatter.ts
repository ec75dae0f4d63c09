// Scatter and bubble charts: points between two axes of values.
import type { CustomSeriesOption, LineSeriesOption } from "echarts/charts";
import type { EChartsCoreOption } from "echarts/core";

import { patternOf } from "../look/patterns.ts";
import { valueAxis } from "./axes.ts";
import { placed, plotOption } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import { type Api, handDrawn, type Shape } from "./custom.ts";
import type { Box } from "./frame.ts";
import { markText, meanRulers, zeroRuler } from "./marks.ts";
import { cutTo, literal, textStyle, textWidth, wrapped } from "./text.ts";
import { trendOf } from "./trend.ts";
import { marksOf, type Point, type Series, type View, viewOf } from "./view.ts";

/** Points of one colour. */
interface Cloud {
  /** Names the points; its values are those of y. */
  readonly series: Series;
  readonly dots: readonly Dot[];
}

interface Dot {
  readonly point: Point;
  readonly x: number;
  readonly y: number;
  /** Of its circle, in pixels. */
  readonly diameter: number;
  /** What the tooltip says: names and values. */
  readonly figures: () => readonly (readonly [string, string])[];
}

export function scatterChart(scene: Scene): EChartsCoreOption {
  const view = viewOf(scene);
  const all = viewOf({ ...scene, series: null });
  const isLone = all.series.length === 1;
  const xs = isLone ? null : all.series[0] ?? null;
  const ys = view.series.filter((one) => isLone || one.index > 0);
  // The tab of the x column shows all others.
  const shown = ys.length > 0 ? ys : all.series.slice(1);
  const count = shown.reduce((sum, { points }) => sum + points.length, 0);
  const diameter = count > 2000 ? 4 : count > 300 ? 6 : 9;
  // With an x column, the first colour is that of the first y.
  const { palette, curve } = scene.look;
  const colored = shown.map((one): Series => {
    const index = Math.max(one.index - 1, 0);
    return { ...one, index, color: all.series.length <= 2 ? curve : palette[index % palette.length] ?? curve };
  });
  const clouds = colored.map((series): Cloud => ({
    series,
    dots: dotsOf(scene, { x: xs, y: series, size: null, xName: xs?.label ?? "" }, () => diameter),
  }));
  return cloudsOption(scene, view, clouds, xs?.label ?? view.categoryTitle, 0.03);
}

/** Columns in threes: x, y, and the area of the circle. Without a third column all circles are equal. */
export function bubbleChart(scene: Scene): EChartsCoreOption {
  const view = viewOf({ ...scene, series: null });
  const { palette, curve } = scene.look;
  const triples = triplesOf(view.series);
  const ofTab = triples.filter(({ x, y, size }) => [x, y, size].some((one) => one?.index === scene.series));
  const shown = ofTab.length > 0 ? ofTab : triples;
  const greatest = Math.max(0, ...shown.map(({ size }) =>
    size ? size.points.reduce((most, { value }) => Math.max(most, Math.abs(value ?? 0)), 0) : 0));
  const largest = Math.min(Math.max(Math.min(scene.width, scene.height) * 0.18, 12), 72);
  const clouds = shown.map((triple, index): Cloud => {
    const color = shown.length === 1 ? curve : palette[index % palette.length] ?? curve;
    const diameterOf = (size: number | null): number =>
      triple.size === null || greatest === 0 ? 14 : Math.max(Math.sqrt(Math.abs(size ?? 0) / greatest) * largest, 3);
    return {
      series: { ...triple.y, index, color },
      dots: dotsOf(scene, { ...triple, xName: triple.x?.label ?? "" }, diameterOf),
    };
  });
  return cloudsOption(scene, view, clouds, shown[0]?.x?.label ?? view.categoryTitle, 0.08);
}

interface Columns {
  /** Null: the row's number. */
  readonly x: Series | null;
  readonly y: Series;
  readonly size: Series | null;
}

function triplesOf(series: readonly Series[]): Columns[] {
  const [lone] = series;
  if (lone && series.length === 1) return [{ x: null, y: lone, size: null }];
  const triples: Columns[] = [];
  for (let index = 0; index + 1 < series.length; index += 3) {
    const [x, y, size] = series.slice(index, index + 3);
    if (x && y) triples.push({ x, y, size: size ?? null });
  }
  return triples;
}

function dotsOf(
  scene: Scene,
  columns: Columns & { readonly xName: string },
  diameterOf: (size: number | null) => number,
): Dot[] {
  const { x: xs, y: ys, size: sizes } = columns;
  return ys.points.flatMap((point, row): Dot[] => {
    const x = xs ? xs.points[row]?.value ?? null : row + 1;
    if (x === null || point.value === null) return [];
    const figures = (): [string, string][] => [
      [columns.xName || "x", xs ? xs.points[row]?.text ?? "" : scene.format.number(row + 1)],
      [ys.label || "y", point.text],
      ...(sizes ? [[sizes.label, sizes.points[row]?.text ?? ""] as [string, string]] : []),
    ];
    return [{ point, x, y: point.value, diameter: diameterOf(sizes?.points[row]?.value ?? null), figures }];
  });
}

function cloudsOption(
  scene: Scene,
  view: View,
  clouds: readonly Cloud[],
  xTitle: string,
  gap: number,
): EChartsCoreOption {
  const { style, format } = scene;
  const dots = clouds.flatMap((cloud) => cloud.dots);
  const [xRange, yRange] = [rangeOf(dots.map(({ x }) => x)), rangeOf(dots.map(({ y }) => y))];
  const yTitle = clouds.length === 1 ? clouds[0]?.series.label ?? "" : "";
  const hasTitles = style.showColLabels;
  return plotOption(scene, {
    view: { ...view, series: clouds.map(({ series }) => series) },
    along: (place) => valueAxis(scene, place, { from: style.xScaleMin, to: style.xScaleMax, hasZero: false },
      { show: true, text: (value) => format.number(value), samples: xRange, gap }),
    up: (place) => valueAxis(scene, place, style.IsAbsolute
      ? { from: style.yScaleMin, to: style.yScaleMax, hasZero: true } : { from: 0, to: 0, hasZero: false },
    { show: true, text: (value) => format.number(value), samples: yRange, gap }),
    titles: hasTitles ? [xTitle, view.valueTitle || yTitle] : ["", view.valueTitle],
    // What the axis already says needs no legend.
    entries: clouds.length === 1 && hasTitles ? []
      : clouds.map(({ series }) => ({ name: series.name, label: series.label, icon: "circle" })),
    series: [
      ...clouds.map((cloud) => cloudSeries(scene, view, cloud)),
      ...clouds.flatMap((cloud) => trendSeries(scene, cloud)),
      ...meanRulers(scene, clouds.map(({ series }) => series)),
      ...(dots.some(({ y }) => y < 0) ? [zeroRuler(scene)] : []),
    ],
    trigger: "item",
    hasCategories: false,
  });
}

function rangeOf(values: readonly number[]): number[] {
  if (values.length === 0) return [];
  return [values.reduce((a, b) => Math.min(a, b)), values.reduce((a, b) => Math.max(a, b))];
}

function cloudSeries(scene: Scene, view: View, { series, dots }: Cloud): CustomSeriesOption {
  const { look } = scene;
  const mark = marksOf(scene);
  const isLarge = dots.some(({ diameter }) => diameter > 9);
  const pattern = look.patterns ? patternOf(series.index, look.dark) : undefined;
  const hasNames = view.showCategories && isLarge && dots.length <= 60;
  return handDrawn({
    name: series.name,
    color: series.color,
    clip: true,
    itemStyle: { color: series.color, ...(pattern ? { decal: pattern } : {}) },
    encode: { x: 0, y: 1 },
    tooltip: { formatter: (item: { dataIndex: number }) => tooltipText(view, dots[item.dataIndex]) },
    data: dots.map(({ x, y, point }) => ({ value: placed(scene, x, y), cell: point.cell })),
    draw: (params, api) => {
      const dot = dots[params.dataIndex];
      if (!dot) return [];
      if (dots.length > mostCircles) return denseDot(scene, series.color, dots, params.dataIndex, api);
      const [cx = 0, cy = 0] = api.coord(placed(scene, dot.x, dot.y));
      const marked = mark(...dot.point.cell);
      const radius = dot.diameter / 2;
      const circle: Shape = {
        type: "circle",
        shape: { cx, cy, r: radius },
        style: {
          fill: series.color,
          opacity: marked !== "none" ? 1 : isLarge ? 0.72 : 0.8,
          stroke: marked === "none" ? look.plotGround : look.selectionGround,
          lineWidth: marked !== "none" ? 2 : dots.length > 300 ? 0 : 1,
          ...(pattern ? { decal: { ...pattern } } : {}),
        },
        emphasis: { style: { opacity: 1 } },
      };
      const box = { left: cx - radius, top: cy - radius, width: dot.diameter, height: dot.diameter };
      const texts = markText(scene, marked, dot.point, box);
      if (!hasNames || texts.length > 0) return [circle, ...texts];
      const circles = dots.map((one): Circle => {
        const [x = 0, y = 0] = api.coord(placed(scene, one.x, one.y));
        return { x, y, radius: one.diameter / 2 };
      });
      const name = view.categories[dot.point.cell[0]] ?? "";
      return [circle, ...nameOf(scene, cutTo(name, 120, look), params.dataIndex, circles, params.context)];
    },
  });
}

// More dots than these are painted many at a time: a browser does that, whenever the pointer moves, far sooner.
const mostCircles = 1500;
const tileSize = 40;

/** A dot that readers can point at; the first one paints all of them. */
function denseDot(scene: Scene, color: string, dots: readonly Dot[], index: number, api: Api): Shape[] {
  const placeOf = (dot: Dot): readonly [number, number] => {
    const [x = 0, y = 0] = api.coord(placed(scene, dot.x, dot.y));
    return [x, y];
  };
  const dot = dots[index];
  if (!dot) return [];
  const [cx, cy] = placeOf(dot);
  const target: Shape = { type: "circle", invisible: true, shape: { cx, cy, r: dot.diameter } };
  if (index > 0) return [target];
  // In tiles, so that a browser has only those to paint anew that a line crosses.
  const tiles = new Map<string, string>();
  for (const one of dots) {
    const [x, y] = placeOf(one);
    const tile = `${Math.floor(x / tileSize)} ${Math.floor(y / tileSize)}`;
    tiles.set(tile, `${tiles.get(tile) ?? ""}M${x.toFixed(1)} ${y.toFixed(1)}h0.6`);
  }
  const style = { fill: "none", stroke: color, lineWidth: dot.diameter, lineCap: "round", opacity: 0.8 };
  const paint = (pathData: string): Shape => ({ type: "path", silent: true, shape: { pathData }, style });
  return [...Array.from(tiles.values(), paint), target];
}

interface Circle {
  readonly x: number;
  readonly y: number;
  readonly radius: number;
}

/** A circle's name, in it or at a side of it where nothing is hidden; none where there is no room. */
function nameOf(scene: Scene, name: string, index: number, circles: readonly Circle[], context: object): Shape[] {
  const circle = circles[index];
  if (!circle || name === "") return [];
  const { look } = scene;
  // The names that have found their places in this drawing.
  const taken = ((context as { taken?: Box[] }).taken ??= []);
  const { x, y, radius } = circle;
  const [width, height] = [textWidth(name, look), look.fontSize * 1.1];
  const gap = radius + 4;
  const places: readonly (readonly [number, number])[] = width < radius * 1.7 ? [[-width / 2, 0]]
    : [[gap, 0], [-gap - width, 0], [-width / 2, -gap - height / 2], [-width / 2, gap + height / 2]];
  for (const [dx, dy] of places) {
    const box = { left: x + dx, top: y + dy - height / 2, width, height };
    const isFree = box.left >= 0 && box.left + width <= scene.width
      && !taken.some((other) => overlap(box, other))
      && !circles.some((other, place) => place !== index && touches(box, other));
    if (!isFree) continue;
    taken.push(box);
    return [{
      type: "text",
      silent: true,
      z2: 10,
      style: {
        ...textStyle(look), text: name, fill: look.plotText, stroke: look.plotGround, lineWidth: 2,
        x: box.left, y: y + dy, verticalAlign: "middle",
      },
    }];
  }
  return [];
}

function overlap(one: Box, other: Box): boolean {
  return one.left < other.left + other.width && other.left < one.left + one.width
    && one.top < other.top + other.height && other.top < one.top + one.height;
}

function touches(box: Box, { x, y, radius }: Circle): boolean {
  const dx = Math.max(box.left - x, 0, x - box.left - box.width);
  const dy = Math.max(box.top - y, 0, y - box.top - box.height);
  return dx * dx + dy * dy < radius * radius;
}

function tooltipText(view: View, dot: Dot | undefined): string {
  if (!dot) return "";
  const name = view.categories[dot.point.cell[0]] ?? "";
  const lines = dot.figures().map(([title, text]) => `${title === "" ? "" : `${title}: `}${text}`);
  return literal((name === "" ? lines : [name, ...lines]).map((line) => wrapped(line)).join("\n"));
}

function trendSeries(scene: Scene, { series, dots }: Cloud): LineSeriesOption[] {
  const { CurveStyle, DiagramType } = scene.style;
  if (DiagramType !== 3 || (CurveStyle !== 1 && CurveStyle !== 2)) return [];
  const points = trendOf(dots.map(({ x, y }) => [x, y]));
  return points.length === 0 ? [] : [curveSeries(scene, series.name, series.color, points, CurveStyle === 2)];
}

/** A drawn curve that belongs to a series. */
export function curveSeries(
  scene: Scene,
  name: string,
  color: string,
  points: readonly (readonly [number, number])[],
  isFilled: boolean,
): LineSeriesOption {
  return {
    type: "line",
    name,
    data: points.map(([x, y]) => ({ value: placed(scene, x, y) })),
    symbol: "none",
    silent: true,
    tooltip: { show: false },
    color,
    lineStyle: { color, width: 2 },
    ...(isFilled ? { areaStyle: { color, opacity: 0.16 } } : {}),
    emphasis: { disabled: true },
    z: 3,
  } as LineSeriesOption;
}
