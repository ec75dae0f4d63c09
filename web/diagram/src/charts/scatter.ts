// Scatter and bubble charts: points between two axes of values.
import type { LineSeriesOption } from "echarts/charts";
import type { EChartsCoreOption } from "echarts/core";

import { extent } from "../data/extent.ts";
import { seriesColor } from "../look/shades.ts";
import { madeOnce, valueAxis } from "./axes.ts";
import { type Plot, plotOption } from "./cartesian.ts";
import type { CloseUp, Scene } from "./chart.ts";
import { rangeOf, ticksIn } from "./close_up.ts";
import { type Cloud, type Columns, dotsOf, rowNumberText } from "./clouds.ts";
import { curveOf, curveSeries, onlyColor } from "./curve.ts";
import { dotAt } from "./dot_at.ts";
import { dotColumnsOf } from "./dot_columns.ts";
import { cloudSeries } from "./dots.ts";
import { meanRulers, zeroRuler } from "./marks.ts";
import { trendOf } from "./trend.ts";
import { type Series, type View, viewOf } from "./view.ts";

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
  const only = onlyColor(scene.look, hasTrend(scene));
  const colored = shown.map((one): Series => {
    const index = Math.max(one.index - 1, 0);
    return { ...one, index, color: all.series.length <= 2 ? only : seriesColor(scene.look, index) };
  });
  const clouds = colored.map((series): Cloud => ({
    series,
    dots: dotsOf(scene, { x: xs, y: series, size: null, xName: xs?.label ?? "" }, () => diameter),
  }));
  return cloudsOption(scene, view, clouds, { title: xs?.label ?? view.categoryTitle, isRow: xs === null, gap: 0.03 });
}

/** Columns in threes: x, y, and the area of the circle. Without a third column all circles are equal. */
export function bubbleChart(scene: Scene): EChartsCoreOption {
  const view = viewOf({ ...scene, series: null });
  const triples = triplesOf(view.series);
  const ofTab = triples.filter(({ x, y, size }) => [x, y, size].some((one) => one?.index === scene.series));
  const shown = ofTab.length > 0 ? ofTab : triples;
  const greatest = Math.max(0, ...shown.map(({ size }) =>
    size ? size.points.reduce((most, { value }) => Math.max(most, Math.abs(value ?? 0)), 0) : 0));
  const largest = Math.min(Math.max(Math.min(scene.width, scene.height) * 0.18, 12), 72);
  const clouds = shown.map((triple, index): Cloud => {
    const color = shown.length === 1 ? scene.look.curve : seriesColor(scene.look, index);
    const diameterOf = (size: number | null): number =>
      triple.size === null || greatest === 0 ? 14 : Math.max(Math.sqrt(Math.abs(size ?? 0) / greatest) * largest, 3);
    return {
      series: { ...triple.y, index, color },
      dots: dotsOf(scene, { ...triple, xName: triple.x?.label ?? "" }, diameterOf),
    };
  });
  const x = shown[0]?.x;
  return cloudsOption(scene, view, clouds, { title: x?.label ?? view.categoryTitle, isRow: !x, gap: 0.08 });
}

function triplesOf(series: readonly Series[]): Columns[] {
  const at = (column: number | null): Series | null => (column === null ? null : series[column] ?? null);
  return dotColumnsOf(8, series.length)?.flatMap(({ x, y, size }) => {
    const ys = at(y);
    return ys ? [{ x: at(x), y: ys, size: at(size) }] : [];
  }) ?? [];
}

interface XAxis {
  readonly title: string;
  /** It counts rows. */
  readonly isRow: boolean;
  /** More room at the ends of both axes, as a share of each. */
  readonly gap: number;
}

function cloudsOption(
  scene: Scene,
  view: View,
  clouds: readonly Cloud[],
  { title: xTitle, isRow, gap }: XAxis,
): EChartsCoreOption {
  const { style, format } = scene;
  const dots = clouds.flatMap((cloud) => cloud.dots);
  const series = clouds.map((cloud) => cloud.series);
  const [xRange, yRange] = [samplesOf(dots.map(({ x }) => x)), samplesOf(dots.map(({ y }) => y))];
  const yTitle = series.length === 1 ? series[0]?.label ?? "" : "";
  const hasTitles = style.showColLabels;
  const { hasDates } = format;
  const labels = { show: true, text: (value: number) => format.number(value), gap };
  const xLabels = isRow ? { ...labels, text: rowNumberText(scene) } : { ...labels, hasDates };
  const overDots = [
    ...clouds.flatMap((cloud) => trendSeries(scene, cloud)),
    ...meanRulers(scene, series),
    ...(dots.some(({ y }) => y < 0) ? [zeroRuler(scene)] : []),
  ];
  const plot: Omit<Plot, "along" | "series"> = {
    view: { ...view, series },
    up: madeOnce((place) => valueAxis(scene, place, style.IsAbsolute
      ? { from: style.yScaleMin, to: style.yScaleMax, hasZero: true } : { from: 0, to: 0, hasZero: false },
    { ...labels, hasDates, samples: yRange })),
    titles: hasTitles ? [xTitle, view.valueTitle || yTitle] : ["", view.valueTitle],
    // What the axis already says needs no legend.
    entries: series.length === 1 && hasTitles ? []
      : series.map(({ name, label }) => ({ name, label, icon: "circle" })),
    trigger: "item",
    hasCategories: false,
  };
  const draw = (closeUp: CloseUp | null): EChartsCoreOption => {
    const [from, to] = closeUp ? rangeOf(closeUp) : [style.xScaleMin, style.xScaleMax];
    const inside = closeUp ? clouds.map((cloud) => cloudIn(cloud, from, to)) : clouds;
    const total = inside.reduce((sum, cloud) => sum + cloud.dots.length, 0);
    const state = { total, isMoving: closeUp?.isMoving ?? false };
    return plotOption(scene, {
      ...plot,
      along: (place) => valueAxis(scene, place, { from, to, hasZero: false },
        { ...xLabels, samples: xRange, ...(closeUp ? { ticks: ticksIn([from, to], 5) } : {}) }),
      series: [...inside.map((cloud) => cloudSeries(scene, view, cloud, state)), ...overDots],
      places: {
        count: clouds.reduce((most, cloud) => Math.max(most, cloud.dots.length), 0),
        range: null,
        cellAt: (spot, plane) => dotAt(inside, spot, plane),
        // A cell that holds an x or a size stands where a dot of its row does.
        alongOf: ({ row, column }) => {
          const ofRow = dots.filter(({ point }) => point.cell[0] === row);
          return (ofRow.find(({ point }) => point.cell[1] === column) ?? ofRow[0])?.x ?? null;
        },
        closer: draw,
      },
    }, closeUp);
  };
  return draw(null);
}

/** The dots of a cloud in a part of the x axis, and those beside it, which may be circles that reach into it. */
function cloudIn({ series, dots }: Cloud, from: number, to: number): Cloud {
  const room = (to - from) / 10;
  return { series, dots: dots.filter(({ x }) => x >= from - room && x <= to + room) };
}

function samplesOf(values: readonly number[]): number[] {
  const { least, greatest } = extent(values);
  return least > greatest ? [] : [least, greatest];
}

function trendSeries(scene: Scene, { series, dots }: Cloud): LineSeriesOption[] {
  if (!hasTrend(scene)) return [];
  const points = trendOf(dots.map(({ x, y }) => [x, y]));
  return points.length === 0 ? [] : [curveSeries(scene, series, points)];
}

function hasTrend({ style }: Scene): boolean {
  return style.DiagramType === 3 && curveOf(style) !== "none";
}
