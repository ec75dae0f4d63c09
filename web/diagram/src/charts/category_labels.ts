// How the categories of an axis are named: in one line or some, turned, or only every so many; and how far the names
// reach over the ends of the axis.
import type { Look } from "../look/look.ts";
import type { CategoryLabels } from "./axes.ts";
import { type AxisPlace, isLying } from "./axis_place.ts";
import type { Scene } from "./chart.ts";
import { brokenTo, cutTo, lineHeight, textWidth, widest } from "./text.ts";

export interface CategoryLabelLayout {
  /** The library's options of the labels. */
  readonly option: object;
  /** In pixels, at the first row and at the last. */
  readonly overhang: readonly [first: number, last: number];
}

/** Every so many categories has a label, which reaches so far from its place: to the left and right, or up and down. */
interface Labels {
  readonly option: object;
  readonly each: number;
  readonly reach: (index: number) => readonly [before: number, after: number];
}

export function categoryLabels(scene: Scene, place: AxisPlace, labels: CategoryLabels): CategoryLabelLayout {
  const { texts } = labels;
  const { option, each, reach } = isLying(place.side)
    ? lyingLabels(scene, place, texts) : standingLabels(scene, place, texts);
  const step = place.length / Math.max(labels.hasRoom ? texts.length : texts.length - 1, 1);
  const isLeftToRight = isLying(place.side) && !place.inverse || !isLying(place.side) && place.inverse;
  let [first, last] = [0, 0];
  for (let index = 0; index < texts.length; index += each) {
    const at = (index + (labels.hasRoom ? 0.5 : 0)) * step;
    const [before, after] = reach(index);
    first = Math.max(first, (isLeftToRight ? before : after) - at);
    last = Math.max(last, (isLeftToRight ? after : before) - (place.length - at));
  }
  return { option, overhang: [Math.ceil(first), Math.ceil(last)] };
}

/** Labels beside their bars, in as many lines as there is room for. */
function standingLabels({ look }: Scene, place: AxisPlace, texts: readonly string[]): Labels {
  const width = Math.max(place.across * 0.36, 24);
  const line = lineHeight(look);
  const half = [line / 2, line / 2] as const;
  const most = Math.min(Math.floor(place.length / Math.max(texts.length, 1) / line), 3);
  if (most < 2 || texts.length > 60) {
    const each = roundStep((texts.length * line * 1.4) / place.length);
    const formatter = (text: string): string => cutTo(text, width, look);
    return { option: { interval: each - 1, formatter }, each, reach: () => half };
  }
  const lines = texts.map((text) => brokenTo(text, width, most, look).lines);
  const formatter = (_: string, index: number): string => lines[index]?.join("\n") ?? "";
  return {
    option: { interval: 0, lineHeight: line, formatter },
    each: 1,
    reach: (index) => half.map((side) => side * (lines[index]?.length ?? 1)) as [number, number],
  };
}

const labelGap = 8;

/** Labels side by side: in one line, broken into some, turned, or only as many as there is room for. */
function lyingLabels({ look }: Scene, place: AxisPlace, texts: readonly string[]): Labels {
  const step = place.length / Math.max(texts.length, 1);
  const middle = (width: number): [number, number] => [width / 2, width / 2];
  const most = widest(texts, look);
  if (most + labelGap <= step) {
    return { option: { interval: 0 }, each: 1, reach: (index) => middle(textWidth(texts[index] ?? "", look)) };
  }

  const isFew = texts.length <= 60;
  const lines = place.across > 200 ? 3 : 2;
  const broken = isFew && step > 36 ? texts.map((text) => brokenTo(text, step - labelGap, lines, look)) : [];
  // A label that has lost its end is still read with more ease than one that is turned.
  if (broken.length > 0 && broken.every(({ isWhole, isTorn }) => isWhole || (step > 64 && !isTorn))) {
    const formatter = (_: string, index: number): string => broken[index]?.lines.join("\n") ?? "";
    return { option: { interval: 0, lineHeight: lineHeight(look), formatter }, each: 1, reach: () => middle(step) };
  }
  return turnedLabels(look, place, texts) ?? someLabels(look, place, texts, most);
}

// Years and other numbers in order say enough when some are left out; names do not.
function turnedLabels(look: Look, place: AxisPlace, texts: readonly string[]): Labels | null {
  const line = lineHeight(look);
  const step = place.length / Math.max(texts.length, 1);
  if (texts.length > 60 || step < line * 0.95 || texts.every((text) => /^\D{0,2}\d/.test(text))) return null;
  const rotate = step >= line * 1.9 ? 40 : 60;
  const angle = (rotate / 180) * Math.PI;
  const width = Math.max(place.across * 0.34, 30) / Math.sin(angle);
  const formatter = (text: string): string => cutTo(text, width, look);
  // They end at their places, below the plot and above it.
  const tip = (line / 2) * Math.sin(angle);
  return {
    option: { interval: 0, rotate, formatter },
    each: 1,
    reach: (index) => [textWidth(formatter(texts[index] ?? ""), look) * Math.cos(angle) + tip, tip],
  };
}

function someLabels(look: Look, place: AxisPlace, texts: readonly string[], most: number): Labels {
  const width = Math.min(Math.max(place.length / 4, 96), 160);
  const formatter = (text: string): string => cutTo(text, width, look);
  // The library counts again when it has made room for labels, and forgets the room that the new ones take.
  const each = roundStep((texts.length * (Math.min(most, width) + look.fontSize * 1.5)) / place.length);
  return {
    option: { interval: each - 1, formatter },
    each,
    reach: (index) => {
      const half = textWidth(formatter(texts[index] ?? ""), look) / 2;
      return [half, half];
    },
  };
}

/** At least so many, as readers count: 1, 2, 3, 4, 5, 10, 20, 25, 30, 40, 50, 100, ... */
function roundStep(least: number): number {
  if (least <= 5) return Math.max(Math.ceil(least), 1);
  const power = 10 ** Math.floor(Math.log10(least));
  return power * ([1, 2, 2.5, 3, 4, 5].find((factor) => factor * power >= least) ?? 10);
}
