// The two axes of a plot, as the style has them: labels, grids, ranges, directions.
import type { XAXisComponentOption, YAXisComponentOption } from "echarts";

import { type AxisPlace, isLying } from "./axis_place.ts";
import { categoryLabels } from "./category_labels.ts";
import type { Scene } from "./chart.ts";
import { uncopied } from "./custom.ts";
import { type DateTicks, dateTicks } from "./date_axis.ts";
import { brokenTo, cutTo, lineHeight, textStyle, textWidth, widest } from "./text.ts";
import { bounded, marksOf } from "./view.ts";

/** An axis, whether it comes to lie or to stand. */
export type Axis = XAXisComponentOption & YAXisComponentOption & {
  /** How far labels reach over the axis where the library cannot know it; at the first row and at the last, in pixels. */
  readonly overhang?: readonly [first: number, last: number];
};

export interface CategoryLabels {
  readonly texts: readonly string[];
  /** The row that the first one belongs to. */
  readonly first: number;
  readonly show: boolean;
  /** The axis has a line; without one another marks where values begin. */
  readonly hasLine: boolean;
  /** Categories have room at both sides of their middle, as bars need it. */
  readonly hasRoom: boolean;
}

export function categoryAxis(scene: Scene, place: AxisPlace, labels: CategoryLabels): Axis {
  const { look } = scene;
  const mark = marksOf(scene);
  const { selectionText: color, selectionGround: backgroundColor } = look;
  const chip = { color, backgroundColor, padding: [4, 5, 3], borderRadius: 3 };
  const { option, overhang } = categoryLabels(scene, place, labels);
  return {
    ...frameOf(scene, place),
    // The library takes an axis that runs backward for one that runs forward when it makes room for the labels.
    ...(place.inverse && labels.show ? { overhang } : {}),
    type: "category",
    // Texts that begin with a brace or hold markup are no templates here: the library takes them as they are.
    data: uncopied(labels.texts.map((value, index) =>
      (mark(labels.first + index, -1) === "none" ? value : { value, textStyle: chip }))),
    boundaryGap: labels.hasRoom,
    axisLine: { show: labels.hasLine, onZero: false, lineStyle: { color: look.plotText, opacity: 0.6, width: 1 } },
    axisLabel: {
      ...textStyle(look, look.plotText),
      show: labels.show,
      margin: Math.round(look.fontSize * 0.7),
      ...option,
    },
    axisPointer: {
      // The tooltip's heading.
      label: { show: false, formatter: ({ value }: { value: unknown }) => String(value) },
    },
  } as Axis;
}

export interface ValueRange {
  /** The ends of the axis; equal ones are found from the data. */
  readonly from: number;
  readonly to: number;
  /** Zero belongs to the axis. */
  readonly hasZero: boolean;
}

export interface ValueLabels {
  readonly show: boolean;
  readonly text: (value: number) => string;
  /** Values such as there will be at the axis, for the room that they need. */
  readonly samples: readonly number[];
  /** The places of ticks; found from the range if there are none. */
  readonly ticks?: readonly number[];
  /** More room at the ends than ticks need: circles have a size. As shares of the range. */
  readonly gap?: number;
  readonly color?: string;
  /** The distance of ticks, where the range has one of its own. */
  readonly interval?: number;
  /** Ticks stand at whole numbers alone. */
  readonly isWhole?: boolean;
  /** The values are dates: ticks stand at steps of the calendar. */
  readonly hasDates?: boolean;
}

export function valueAxis(scene: Scene, place: AxisPlace, range: ValueRange, labels: ValueLabels): Axis {
  const { look } = scene;
  const hasEnds = range.from !== range.to;
  const [min, max] = [range.from, range.to].map(bounded).sort((a, b) => a - b);
  const color = labels.color ?? look.plotText;
  const dated = labels.hasDates ? dateTicksIn(scene, place, range, labels) : null;
  const ticks = dated?.ticks ?? labels.ticks;
  return {
    ...frameOf(scene, place),
    type: "value",
    scale: !range.hasZero,
    ...(hasEnds ? { min, max } : dated?.ends),
    ...(labels.interval === undefined ? {} : { interval: labels.interval }),
    ...(labels.isWhole ? { minInterval: 1 } : {}),
    ...(labels.gap && !hasEnds && !dated ? { boundaryGap: [labels.gap, labels.gap] } : {}),
    splitNumber: tickCount(scene, place, labels, labels.samples),
    axisLine: { show: false, onZero: false },
    axisLabel: {
      ...textStyle(look, color),
      show: labels.show,
      margin: Math.round(look.fontSize * 0.6),
      hideOverlap: true,
      formatter: labels.text,
      ...(dated && isLying(place.side) ? brokenLabels(scene, place, labels, dated) : {}),
      ...(look.negative === null
        ? {} : { color: (value?: string | number) => (Number(value) < 0 ? look.negative ?? color : color) }),
      ...(ticks ? { customValues: ticks } : {}),
    },
    ...(ticks ? { axisTick: { show: false, customValues: ticks } } : {}),
    axisPointer: {
      label: {
        ...textStyle(look, look.plotGround),
        show: true,
        backgroundColor: look.cross,
        shadowBlur: 0,
        padding: [3, 5],
        formatter: ({ value }: { value: unknown }) => labels.text(rounded(Number(value), labels.samples)),
      },
    },
  } as unknown as Axis;
}

/** The axis for all drawings of a chart: close-ups have the ticks that were found for what is on show. */
export function madeOnce(make: (place: AxisPlace) => Axis): (place: AxisPlace) => Axis {
  let axis: Axis | null = null;
  return (place) => (axis ??= make(place));
}

/** No more than there is room for with their own labels: names of days and months are long and short. */
function dateTicksIn(scene: Scene, place: AxisPlace, range: ValueRange, labels: ValueLabels): DateTicks | null {
  const { look } = scene;
  const lies = isLying(place.side);
  // Lines above one another stand closer if they must.
  const more = lies ? 1 : 2;
  // Labels of three that lie beside each other can be broken.
  const fits = (ticks: readonly number[]): boolean => ticks.length <= tickCount(scene, place, labels, ticks) + more
    && (!lies || ticks.length <= 3 || widest(ticks.map(labels.text), look) * ticks.length <= place.length);
  return dateTicks(range, labels, { count: tickCount(scene, place, labels, labels.samples), fits });
}

/**
 * Dates in lines where they are too long to stand side by side, or those at the two ends alone: the library would leave
 * out these.
 */
function brokenLabels({ look }: Scene, place: AxisPlace, { text, samples }: ValueLabels, { ticks }: DateTicks): object {
  if (samples.every((value) => textWidth(text(value), look) <= place.length / 3)) return {};
  const broken = (value: number, count: number): string | null => {
    const { lines, isWhole } = brokenTo(text(value), place.length / count, 3, look);
    return isWhole ? lines.join("\n") : null;
  };
  const formatter = (value: number): string => {
    if (ticks.every((tick) => broken(tick, ticks.length) !== null)) return broken(value, ticks.length) ?? "";
    return value === ticks[0] || value === ticks[ticks.length - 1] ? broken(value, 2) ?? text(value) : "";
  };
  return { lineHeight: lineHeight(look), formatter };
}

/** As many ticks as there is room for, from 2 to 6. */
function tickCount(scene: Scene, place: AxisPlace, labels: ValueLabels, values: readonly number[]): number {
  const { look } = scene;
  const widths = values.slice(0, 8).map((value) => textWidth(labels.text(value), look));
  const each = isLying(place.side)
    ? Math.max(...widths, look.fontSize * 2) + look.fontSize * 2 : lineHeight(look) * 2.6;
  return Math.min(Math.max(Math.floor(place.length / each), 2), 6);
}

/** The pointer's place, with no more digits than a pixel is worth. */
function rounded(value: number, samples: readonly number[]): number {
  const range = Math.max(...samples.map(Math.abs), 0);
  const digits = range > 0 ? Math.min(Math.max(3 - Math.ceil(Math.log10(range)), 0), 20) : 0;
  return Number(value.toFixed(digits));
}

/** What all axes have alike. */
function frameOf(scene: Scene, place: AxisPlace): object {
  const { look } = scene;
  const title = cutTo(place.title, Math.max(place.length, 40), look, true);
  return {
    position: place.side,
    inverse: place.inverse,
    animation: false,
    axisTick: { show: false },
    splitArea: { show: false },
    minorTick: { show: false },
    minorSplitLine: { show: false },
    splitLine: { show: place.hasGrid, showMinLine: true, showMaxLine: true, lineStyle: { color: look.grid, width: 1 } },
    name: title,
    nameLocation: "middle",
    // Below a line of labels; the library moves it away from larger ones by itself.
    nameGap: Math.round(look.fontSize * (isLying(place.side) ? 2.5 : 0.8)),
    nameTextStyle: textStyle(look, look.plotText, true),
    tooltip: { show: false },
  };
}
