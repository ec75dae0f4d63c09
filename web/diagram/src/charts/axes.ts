// The two axes of a plot, as the style has them: labels, grids, ranges, directions.
import type { XAXisComponentOption, YAXisComponentOption } from "echarts";

import type { Scene } from "./chart.ts";
import { uncopied } from "./custom.ts";
import { type DateTicks, dateTicks } from "./date_axis.ts";
import { brokenTo, cutTo, lineHeight, textStyle, textWidth, widest } from "./text.ts";
import { bounded, marksOf } from "./view.ts";

/** An axis, whether it comes to lie or to stand. */
export type Axis = XAXisComponentOption & YAXisComponentOption;

export type Side = "left" | "right" | "top" | "bottom";

/** Where an axis is, and what it shows. */
export interface AxisPlace {
  readonly side: Side;
  /** Runs to the left, or down. */
  readonly inverse: boolean;
  readonly hasGrid: boolean;
  readonly title: string;
  /** How long the axis is, and how much room its labels may take across it; both in pixels, about. */
  readonly length: number;
  readonly across: number;
}

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
  return {
    ...frameOf(scene, place),
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
      ...(isLying(place.side) ? lyingLabels(scene, place, labels.texts) : standingLabels(scene, place, labels.texts)),
    },
    axisPointer: {
      // The tooltip's heading.
      label: { show: false, formatter: ({ value }: { value: unknown }) => String(value) },
    },
  } as Axis;
}

/** Labels beside their bars, in as many lines as there is room for. */
function standingLabels(scene: Scene, place: AxisPlace, texts: readonly string[]): object {
  const { look } = scene;
  const width = Math.max(place.across * 0.36, 24);
  const line = lineHeight(look);
  const most = Math.min(Math.floor(place.length / Math.max(texts.length, 1) / line), 3);
  if (most < 2 || texts.length > 60) {
    // The library's own choice among thousands takes most of the plot for labels that it then leaves out.
    const each = Math.max(Math.ceil((texts.length * line * 1.4) / place.length), 1);
    return { interval: each - 1, formatter: (text: string) => cutTo(text, width, look) };
  }
  const broken = (text: string): string => brokenTo(text, width, most, look).lines.join("\n");
  return { interval: 0, lineHeight: line, formatter: broken };
}

const labelGap = 8;

/** Labels side by side: in one line, broken into some, turned, or only as many as there is room for. */
function lyingLabels(scene: Scene, place: AxisPlace, texts: readonly string[]): object {
  const { look } = scene;
  const step = place.length / Math.max(texts.length, 1);
  if (widest(texts, look) + labelGap <= step) return { interval: 0 };

  const line = lineHeight(look);
  const isFew = texts.length <= 60;
  const most = place.across > 200 ? 3 : 2;
  const broken = isFew && step > 36 ? texts.map((text) => brokenTo(text, step - labelGap, most, look)) : [];
  // A label that has lost its end is still read with more ease than one that is turned.
  if (broken.length > 0 && broken.every(({ isWhole, isTorn }) => isWhole || (step > 64 && !isTorn))) {
    return {
      interval: 0, lineHeight: line, formatter: (_: string, index: number) => broken[index]?.lines.join("\n") ?? "",
    };
  }

  // Years and other numbers in order say enough when some are left out; names do not.
  const isSequence = texts.every((text) => /^\D{0,2}\d/.test(text));
  if (isFew && !isSequence && step >= line * 0.95) {
    const height = Math.max(place.across * 0.34, 30);
    const rotate = step >= line * 1.9 ? 40 : 60;
    const width = height / Math.sin((rotate / 180) * Math.PI);
    return { interval: 0, rotate, formatter: (text: string) => cutTo(text, width, look) };
  }
  const width = Math.min(Math.max(place.length / 4, 96), 160);
  return { interval: "auto", formatter: (text: string) => cutTo(text, width, look) };
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

/** No more than there is room for with their own labels: names of days and months are long and short. */
function dateTicksIn(scene: Scene, place: AxisPlace, range: ValueRange, labels: ValueLabels): DateTicks | null {
  // Lines above one another stand closer if they must.
  const more = isLying(place.side) ? 1 : 2;
  for (let count = tickCount(scene, place, labels, labels.samples); ; count -= 1) {
    const found = dateTicks(range, labels, count);
    if (!found || count === 1 || found.shown <= tickCount(scene, place, labels, found.ticks) + more) return found;
  }
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

export function isLying(side: Side): boolean {
  return side === "top" || side === "bottom";
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
