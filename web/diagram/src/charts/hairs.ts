// Bars in bands of hardly a pixel or two: those of a series that share a pixel are one hair.
import { manyBars } from "./bar_shapes.ts";
import type { Pen, Shape } from "./custom.ts";

/** A bar in pixels: where it begins along the axis, how wide it is, and up the plot what it stands on and its end. */
export interface HairBar {
  readonly along: number;
  readonly width: number;
  readonly base: number;
  readonly end: number;
  readonly isNegative: boolean;
}

/** The bars of a series and of one sign in one pixel along the axis, or what is seen of them. */
export interface Hair {
  readonly pixel: number;
  readonly isNegative: boolean;
  /** Pixels up the plot, the smaller number first, whichever way the axis runs. */
  readonly low: number;
  readonly high: number;
}

/** The hairs of a series. */
export interface HairSeries {
  readonly color: string;
  readonly isStacked: boolean;
  readonly hairs: readonly Hair[];
}

/** The hairs of a series' bars: a bar has those of the pixels that it covers, or one. */
export function hairsOf(bars: Iterable<HairBar>): Hair[] {
  const [up, down] = [new Map<number, Growing>(), new Map<number, Growing>()];
  for (const { along, width, base, end, isNegative } of bars) {
    const foot = Math.round(base);
    // A value that is almost nothing is seen, too, on its own side of what it stands on.
    const top = Math.round(end) === foot ? foot + Math.sign(end - base) : Math.round(end);
    const [low, high] = [Math.min(foot, top), Math.max(foot, top)];
    const side = isNegative ? down : up;
    const first = Math.round(along);
    for (let pixel = first; pixel === first || pixel < Math.round(along + width); pixel += 1) {
      const hair = side.get(pixel);
      if (!hair) {
        side.set(pixel, { pixel, isNegative, low, high });
        continue;
      }
      hair.low = Math.min(hair.low, low);
      hair.high = Math.max(hair.high, high);
    }
  }
  return [...up.values(), ...down.values()];
}

type Growing = { -readonly [property in keyof Hair]: Hair[property] };

/**
 * What is seen of the hairs of series behind each other: in each pixel a shorter one stands in front of a longer one,
 * so that the ends of both are seen; of two that are equally long the later one hides the other. A stack counts as one.
 */
export function seenOf(all: readonly HairSeries[]): readonly HairSeries[] {
  if (all.length < 2 || all.every(({ isStacked }) => isStacked)) return all;
  const seen = all.map((): Hair[] => []);
  for (const column of columnsOf(all).values()) {
    let covered: readonly Span[] = [];
    for (const body of column.sort((a, b) => lengthOf(a) - lengthOf(b) || b.index - a.index)) {
      for (const { low, high } of uncovered(body, covered)) {
        for (const { index, hair } of body.parts) {
          const piece = { ...hair, low: Math.max(hair.low, low), high: Math.min(hair.high, high) };
          if (piece.low < piece.high) seen[index]?.push(piece);
        }
      }
      covered = joined(covered, body);
    }
  }
  return all.map((one, index) => ({ ...one, hairs: seen[index] ?? [] }));
}

interface Span {
  readonly low: number;
  readonly high: number;
}

/** A hair or, of a stack, all of one sign in a pixel. */
interface Body {
  readonly index: number;
  readonly isNegative: boolean;
  readonly isStacked: boolean;
  low: number;
  high: number;
  readonly parts: { readonly index: number; readonly hair: Hair }[];
}

function columnsOf(all: readonly HairSeries[]): ReadonlyMap<number, Body[]> {
  const columns = new Map<number, Body[]>();
  for (const [index, { isStacked, hairs }] of all.entries()) {
    for (const hair of hairs) {
      const { pixel, isNegative, low, high } = hair;
      const column = columns.get(pixel) ?? [];
      if (column.length === 0) columns.set(pixel, column);
      const stack = isStacked ? column.find((body) => body.isStacked && body.isNegative === isNegative) : undefined;
      if (stack) {
        [stack.low, stack.high] = [Math.min(stack.low, low), Math.max(stack.high, high)];
        stack.parts.push({ index, hair });
      } else {
        column.push({ index, isNegative, isStacked, low, high, parts: [{ index, hair }] });
      }
    }
  }
  return columns;
}

function lengthOf({ low, high }: Span): number {
  return high - low;
}

function uncovered(span: Span, covered: readonly Span[]): readonly Span[] {
  let left: Span[] = [span];
  for (const { low, high } of covered) {
    left = left.flatMap((part) => (part.high <= low || part.low >= high ? [part] : [
      ...(part.low < low ? [{ low: part.low, high: low }] : []),
      ...(part.high > high ? [{ low: high, high: part.high }] : []),
    ]));
  }
  return left;
}

/** With one more. Bars of one axis touch where it has its zero, and so all are one most of the time. */
function joined(spans: readonly Span[], { low, high }: Span): Span[] {
  const apart = spans.filter((span) => span.high < low || span.low > high);
  const touching = spans.filter((span) => span.high >= low && span.low <= high);
  return [...apart, {
    low: Math.min(low, ...touching.map((span) => span.low)),
    high: Math.max(high, ...touching.map((span) => span.high)),
  }];
}

/** Hairs as shapes, one for each series that has any; with the colour of an outline as they are marked. */
export function hairShapes(all: readonly HairSeries[], isLying: boolean, outline?: string): Shape[] {
  return all.filter(({ hairs }) => hairs.length > 0).flatMap(({ color, hairs }) =>
    manyBars((pen) => traceHairs(pen, hairs, isLying), { fill: color }, outline));
}

/** The hairs of all series, which one item draws: whoever points at it means none of them in particular. */
export function hairGroup(children: readonly Shape[]): Shape[] {
  return [{ type: "group", children, $mergeChildren: false, emphasisDisabled: true }];
}

/** One outline for all that stand side by side. */
function traceHairs(pen: Pen, hairs: readonly Hair[], isLying: boolean): void {
  for (const isNegative of [false, true]) {
    const side = hairs.filter((hair) => hair.isNegative === isNegative).sort((a, b) => a.pixel - b.pixel);
    let run: Hair[] = [];
    for (const hair of side) {
      const last = run[run.length - 1];
      if (last && hair.pixel !== last.pixel + 1) {
        traceRun(pen, run, isLying);
        run = [];
      }
      run.push(hair);
    }
    traceRun(pen, run, isLying);
  }
}

function traceRun(pen: Pen, run: readonly Hair[], isLying: boolean): void {
  const [first, last] = [run[0], run[run.length - 1]];
  if (!first || !last) return;
  let isDown = false;
  const to = (along: number, up: number): void => {
    const [x, y] = isLying ? [up, along] : [along, up];
    if (isDown) pen.lineTo(x, y);
    else pen.moveTo(x, y);
    isDown = true;
  };
  to(first.pixel, first.high);
  let up = first.high;
  for (const { pixel, high } of run) {
    if (high === up) continue;
    to(pixel, up);
    to(pixel, high);
    up = high;
  }
  to(last.pixel + 1, up);
  up = last.low;
  to(last.pixel + 1, up);
  for (let index = run.length - 1; index >= 0; index -= 1) {
    const { pixel, low } = run[index] ?? last;
    if (low === up) continue;
    to(pixel + 1, up);
    to(pixel + 1, low);
    up = low;
  }
  to(first.pixel, up);
  pen.closePath();
}
