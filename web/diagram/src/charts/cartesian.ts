// A plot with an x axis and a y axis, whatever stands in it. "Along" is the x axis of the settings, "up" the y axis:
// with `IsRotated` the first stands and the second lies.
import type { SeriesOption } from "echarts";
import type { EChartsCoreOption } from "echarts/core";

import type { Axis } from "./axes.ts";
import { type AxisPlace, isLying, type Side } from "./axis_place.ts";
import type { CloseUp, Places, Scene } from "./chart.ts";
import { emptyFrame, type Frame } from "./frame.ts";
import { isNamed, legendAbove, type LegendEntry } from "./legend.ts";
import { withStatistics } from "./statistics_table.ts";
import { crossTooltip } from "./tooltip.ts";
import type { View } from "./view.ts";

/** What a chart with axes is made of. */
export interface Plot {
  readonly view: View;
  readonly along: (place: AxisPlace) => Axis;
  readonly up: (place: AxisPlace) => Axis;
  /** A second y axis at the other side. */
  readonly second?: (place: AxisPlace) => Axis;
  /** The titles of the axes. */
  readonly titles: readonly [along: string, up: string];
  readonly entries: readonly LegendEntry[];
  readonly series: readonly SeriesOption[];
  readonly trigger: "item" | "axis";
  /** The x axis has a category for each row; they read downward when it stands. */
  readonly hasCategories: boolean;
  /** Where its cells stand; histograms have none. */
  readonly places?: Places;
}

export function plotOption(scene: Scene, plot: Plot, closeUp: CloseUp | null = null): EChartsCoreOption {
  const { look } = scene;
  const hasLegend = plot.view.showSeries && isNamed(plot.entries.map(({ label }) => label));
  const frame = withStatistics(
    legendAbove(emptyFrame(scene.width, scene.height, look), scene, plot.view.seriesTitle,
      hasLegend ? plot.entries : []),
    scene, plot.view.series);
  const axes = axesOf(scene, plot, frame, closeUp);
  const outerBounds = bounds(frame, scene);
  const isFilled = look.plotGround !== look.ground;
  return {
    ...common(scene, frame),
    grid: {
      ...inside(outerBounds, axes),
      outerBounds,
      outerBoundsContain: "all",
      show: isFilled,
      backgroundColor: isFilled ? look.plotGround : "transparent",
      borderWidth: 0,
    },
    ...axes,
    tooltip: crossTooltip(scene, plot.trigger, { view: plot.view.series, series: plot.series }),
    series: plot.series,
    ...(plot.places ? { places: plot.places } : {}),
  };
}

/** What the options of all charts have alike. */
export function common(scene: Scene, frame: Frame): EChartsCoreOption {
  const { look } = scene;
  return {
    backgroundColor: look.ground,
    darkMode: look.dark,
    color: [...look.palette],
    animation: !look.still,
    animationDuration: 350,
    animationDurationUpdate: 250,
    animationThreshold: 1000,
    textStyle: { fontFamily: look.fontFamily },
    aria: { enabled: false },
    legend: frame.legends.length > 0 ? [...frame.legends] : { show: false },
    title: [...frame.titles],
  };
}

interface Bounds {
  readonly left: number;
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
}

// The library makes room for labels from here on.
function inside({ left, top, right, bottom }: Bounds, { xAxis: [x], yAxis: [y] }: Axes): Bounds {
  const [[atRight, atLeft], [atTop, atBottom]] = [x?.overhang ?? [0, 0], y?.overhang ?? [0, 0]];
  return { left: left + atLeft, top: top + atTop, right: right + atRight, bottom: bottom + atBottom };
}

function bounds({ room }: Frame, scene: Scene): Bounds {
  return {
    left: room.left,
    top: room.top + Math.round(scene.look.fontSize * 0.3),
    right: Math.max(scene.width - room.left - room.width, 0),
    bottom: Math.max(scene.height - room.top - room.height, 0),
  };
}

interface Axes {
  readonly xAxis: readonly Axis[];
  readonly yAxis: readonly Axis[];
}

function axesOf(scene: Scene, plot: Plot, { room }: Frame, closeUp: CloseUp | null): Axes {
  const { style } = scene;
  const isRotated = style.IsRotated;
  const standingSide: Side = (style.LabelStyle & 1) === 1 ? "right" : "left";
  const lyingSide: Side = style.LabelStyle === 2 || style.LabelStyle === 3 ? "top" : "bottom";
  const place = (side: Side, inverse: boolean, hasGrid: boolean, title: string): AxisPlace => ({
    side,
    inverse,
    hasGrid,
    title,
    length: isLying(side) ? Math.max(room.width - 5 * scene.look.fontSize, 1) : room.height * 0.85,
    across: isLying(side) ? room.height : room.width,
  });

  const [alongSide, upSide] = isRotated ? [standingSide, lyingSide] : [lyingSide, standingSide];
  const isReversed = (style.Reverse & 1) === 1;
  const along = place(alongSide, isReversed !== (isRotated && plot.hasCategories), style.xGridVisible, plot.titles[0]);
  const up = place(upSide, (style.Reverse & 2) === 2, style.yGridVisible, plot.titles[1]);
  const ups = [plot.up(up)];
  if (plot.second) ups.push(plot.second({ ...up, side: opposite[upSide], hasGrid: false, title: "" }));
  const kept = ups.map((axis, index) => {
    const [min, max] = closeUp?.ups[index] ?? [];
    return min === undefined || max === undefined ? axis : { ...axis, min, max } as Axis;
  });
  const alongs = [plot.along(along)];
  return isRotated ? { xAxis: kept, yAxis: alongs } : { xAxis: alongs, yAxis: kept };
}

const opposite: Record<Side, Side> = { left: "right", right: "left", top: "bottom", bottom: "top" };

/** A point's two places in the order of the library's axes: x first, whichever of ours it is. */
export function placed<T>(scene: Scene, along: T, up: T): [T, T] {
  return scene.style.IsRotated ? [up, along] : [along, up];
}

/** The index of the y axis that a series belongs to, under the library's name for it. */
export function onUpAxis(scene: Scene, index: number): { xAxisIndex: number } | { yAxisIndex: number } {
  return scene.style.IsRotated ? { xAxisIndex: index } : { yAxisIndex: index };
}

/** A chart without a table: its ground alone. */
export function blankOption(scene: Scene): EChartsCoreOption {
  return { ...common(scene, emptyFrame(scene.width, scene.height, scene.look)), series: [] };
}

export function isBlank({ table }: Scene): boolean {
  return table.rowLabels.length === 0 || table.columnLabels.length === 0;
}
