// Bars, lines, areas, and bars with a line: a category for each row, a series for each column.
import type { EChartsCoreOption } from "echarts/core";

import { extent } from "../data/extent.ts";
import { readableOn } from "../look/colours.ts";
import { type Axis, categoryAxis, madeOnce, valueAxis, type ValueRange } from "./axes.ts";
import type { AxisPlace } from "./axis_place.ts";
import { barSeriesOf } from "./bars.ts";
import { onUpAxis, plotOption } from "./cartesian.ts";
import { cellAt } from "./cell_at.ts";
import type { CloseUp, Scene } from "./chart.ts";
import { stretchOf, viewOfStretch } from "./close_up.ts";
import type { Context, Drawn, Kind } from "./drawn.ts";
import { lineSeries } from "./lines.ts";
import { meanRulers, zeroRuler } from "./marks.ts";
import { marksOf, rowSums, valuesOf, type View, viewOf } from "./view.ts";

export function barChart(scene: Scene): EChartsCoreOption {
  return chartOf(scene, () => "bar");
}

export function lineChart(scene: Scene): EChartsCoreOption {
  const isFilled = scene.style.CurveStyle === 2;
  return chartOf(scene, () => (isFilled ? "area" : "line"));
}

export function areaChart(scene: Scene): EChartsCoreOption {
  return chartOf(scene, () => "area");
}

/** The table's last column is the line; a lone column stays bars. */
export function barAndLineChart(scene: Scene): EChartsCoreOption {
  const columns = scene.table.columnLabels.length;
  const lineKind = scene.style.CurveStyle === 2 ? "area" : "line";
  return chartOf(scene, (index) => (columns > 1 && index === columns - 1 ? lineKind : "bar"));
}

function chartOf(scene: Scene, kindOf: (column: number) => Kind): EChartsCoreOption {
  const view = viewOf(scene);
  // Axes and figures are those of all categories, also where only some are drawn.
  const context = contextOf(scene, view, kindOf);
  const { drawn, isShare } = context;
  const second = drawn.filter(({ hasSecondAxis }) => hasSecondAxis);
  const first = drawn.filter(({ hasSecondAxis }) => !hasSecondAxis);
  const [lone] = second;
  const hasBars = drawn.some(({ kind }) => kind === "bar");
  const hasBase = hasZeroLine(scene, first);
  const rulers = [
    ...(isShare ? [] : meanRulers(scene, drawn.map(({ series }) => series), (series) =>
      first.length > 0 && second.some((one) => one.series === series) ? onUpAxis(scene, 1) : undefined)),
    ...(hasBase ? [zeroRuler(scene)] : []),
  ];
  const plot = {
    view,
    up: upAxis(context, first.length > 0 ? first : second),
    ...(lone && first.length > 0
      ? { second: upAxis(context, second, readableOn(scene.look.plotGround, lone.series.color)) } : {}),
    titles: [view.categoryTitle, view.valueTitle],
    entries: drawn.map(({ series, kind }) =>
      ({ name: series.name, label: series.label, ...(kind === "line" ? {} : { icon: "roundRect" as const }) })),
    trigger: "axis",
    hasCategories: true,
  } as const;
  const draw = (closeUp: CloseUp | null): EChartsCoreOption => {
    const stretch = stretchOf(closeUp, view.categories.length);
    const shown = viewOfStretch(view, stretch);
    const inside = shown === view ? context : contextOf(scene, shown, kindOf, closeUp?.isMoving);
    const barSeries = barSeriesOf(inside);
    return plotOption(scene, {
      ...plot,
      along: (place) => categoryAxis(scene, place, {
        texts: shown.categories,
        first: stretch.first,
        show: view.showCategories,
        hasLine: !hasBase,
        hasRoom: hasBars || view.categories.length < 2,
      }),
      series: [
        ...inside.drawn.map((one) => (one.kind === "bar" ? barSeries(one) : lineSeries(inside, one))),
        ...rulers,
      ],
      places: {
        count: view.categories.length,
        range: [-0.5, view.categories.length - 0.5],
        cellAt: (spot, plane) => cellAt(inside, spot, plane),
        alongOf: ({ row }) => row,
        closer: draw,
      },
    }, closeUp);
  };
  return draw(null);
}

/** A y axis for some of the series. */
function upAxis(context: Context, of: readonly Drawn[], color?: string): (place: AxisPlace) => Axis {
  const { scene, isShare } = context;
  const text = isShare ? scene.format.share : scene.format.number;
  const range = rangeOf(context, of);
  const labels = {
    show: true,
    text: (value: number) => text(value),
    samples: samplesOf(of, isShare),
    hasDates: scene.format.hasDates && !isShare,
    ...(color === undefined ? {} : { color }),
    ...(isWhole(context, of) ? { interval: scene.height < 180 ? 0.5 : 0.25 } : {}),
  };
  return madeOnce((place) => valueAxis(scene, place, range, labels));
}

function contextOf(scene: Scene, view: View, kindOf: (column: number) => Kind, isMoving = false): Context {
  const { style, table } = scene;
  const isShare = style.BarStyle === 2 || style.BarStyle === 3;
  const stacks = style.BarStyle === 1 || style.BarStyle === 3;
  const sums = isShare ? rowSums(table) : [];
  const last = table.columnLabels.length - 1;
  const drawn = view.series.map((series): Drawn => {
    const kind = kindOf(series.index);
    const hasSecondAxis = style.HasSecondYAxis && !isShare && last > 0 && series.index === last;
    // Beside bars a line is a measure of its own, and is not laid upon them.
    const isLineOnBars = kind !== "bar" && last > 0 && kindOf(0) === "bar";
    const values = series.points.map(({ value, cell: [row] }) =>
      (value === null || !isShare ? value : value / (sums[row] || 1)));
    return { series, kind, hasSecondAxis, isStacked: stacks && !hasSecondAxis && !isLineOnBars, values };
  });
  return { scene, drawn, mark: marksOf(scene), isShare, isMoving };
}

/** The values are parts that make up a whole. */
function isWhole({ scene, isShare }: Context, of: readonly Drawn[]): boolean {
  return isShare && !scene.style.IsAbsolute && of.some(({ isStacked }) => isStacked);
}

/** Values begin at a line at zero: surfaces do, and so do values of both signs. */
function hasZeroLine({ style }: Scene, of: readonly Drawn[]): boolean {
  const [from, to] = [Math.min(style.yScaleMin, style.yScaleMax), Math.max(style.yScaleMin, style.yScaleMax)];
  if (style.IsAbsolute && from !== to && (from > 0 || to < 0)) return false;
  return of.some(({ kind, isStacked, values }) =>
    kind !== "line" || isStacked || values.some((value) => value !== null && value < 0));
}

function rangeOf(context: Context, of: readonly Drawn[]): ValueRange {
  const { style } = context.scene;
  const hasSurface = of.some(({ kind, isStacked }) => kind !== "line" || isStacked);
  if (style.IsAbsolute) return { from: style.yScaleMin, to: style.yScaleMax, hasZero: true };
  if (!isWhole(context, of)) return { from: 0, to: 0, hasZero: hasSurface };
  // Shares of a whole are at most 100 %; ticks beyond that would say otherwise.
  const isNegative = of.some(({ values }) => values.some((value) => value !== null && value < 0));
  const isPositive = of.some(({ values }) => values.some((value) => value !== null && value > 0));
  return { from: isNegative ? -1 : 0, to: isPositive || !isNegative ? 1 : 0, hasZero: true };
}

function samplesOf(of: readonly Drawn[], isShare: boolean): number[] {
  if (isShare) return [1];
  return of.flatMap(({ series }) => {
    const { least, greatest } = extent(valuesOf(series));
    return least > greatest ? [] : [greatest, least];
  });
}
