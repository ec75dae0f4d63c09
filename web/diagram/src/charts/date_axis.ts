// The ends and ticks of an axis whose values are dates.
import { extent } from "../data/extent.ts";
import type { ValueLabels, ValueRange } from "./axes.ts";
import { ticksAround, ticksWithin } from "./calendar.ts";
import type { Range } from "./chart.ts";
import { uncopied } from "./custom.ts";
import { type Scale, scaleOf } from "./scale.ts";

/** What an axis takes over: its ticks and, where no ends are set, what finds both from the data on show. */
export interface DateTicks {
  /** One list, filled anew when the ends are found: readers hide and show series. */
  readonly ticks: readonly number[];
  readonly ends: { readonly min?: FindEnd; readonly max?: FindEnd };
}

/** How many ticks to begin with, and whether these have room with their labels. */
export interface TickRoom {
  readonly count: number;
  readonly fits: (ticks: readonly number[]) => boolean;
}

type FindEnd = (ofData: { readonly min: number; readonly max: number }) => number;

/** Ticks at steps of the calendar; null where there is no calendar for the values. */
export function dateTicks(range: ValueRange, labels: ValueLabels, room: TickRoom): DateTicks | null {
  if (range.from !== range.to) {
    const ends: Range = [Math.min(range.from, range.to), Math.max(range.from, range.to)];
    const ticks = fitting(room, (count) => ticksWithin(ends, count), (found) => found);
    return ticks.length > 0 ? { ticks, ends: {} } : null;
  }
  const { least, greatest } = extent(labels.samples);
  if (least > greatest || ticksAround(spaced([least, greatest], range, labels), room.count).length === 0) return null;
  const ticks = uncopied<number>([]);
  // The data on show may be fewer than the samples or reach farther: readers hide series, and stacks have sums. The
  // library asks for the ends before it takes the ticks.
  const settle = ({ min, max }: { min: number; max: number }): Scale => {
    // The line at zero stays when all series are hidden.
    const hasData = min <= max && !(range.hasZero && min === 0 && max === 0);
    const ends = spaced(hasData ? [min, max] : [least, greatest], range, labels);
    const scale = fitting(room, (count) => dateScale(ends, count, range, labels), (found) => found.ticks);
    ticks.splice(0, ticks.length, ...scale.ticks);
    return scale;
  };
  settle({ min: least, max: greatest });
  return { ticks, ends: { min: (ofData) => settle(ofData).from, max: (ofData) => settle(ofData).to } };
}

/** What has as many ticks as there is room for. */
function fitting<T>({ count, fits }: TickRoom, make: (count: number) => T, ticksOf: (made: T) => readonly number[]): T {
  const made = make(count);
  return count <= 1 || fits(ticksOf(made)) ? made : fitting({ count: count - 1, fits }, make, ticksOf);
}

function dateScale([from, to]: Range, count: number, range: ValueRange, { gap }: ValueLabels): Scale {
  const found = ticksAround([from, to], count);
  // Sums of dates may lie behind the calendars.
  const around = found.length > 0 ? found : scaleOf([from, to], count).ticks;
  const between = (low: number, high: number): Scale =>
    ({ from: low, to: high, ticks: around.filter((tick) => tick >= low && tick <= high) });
  // Steps are long beside numbers' ones. Points that have room around them need not begin and end at one.
  const inside = between(from, to);
  if (gap && inside.ticks.length > 1) return inside;
  const [first = from, last = to] = [around[0], around[around.length - 1]];
  const endsAtZero = range.hasZero && from < to;
  return between(endsAtZero && from === 0 ? 0 : first, endsAtZero && to === 0 ? 0 : last);
}

/** The range with its zero, and with the room that it needs at its ends. */
function spaced([least, greatest]: Range, { hasZero }: ValueRange, { gap = 0 }: ValueLabels): Range {
  const [from, to] = hasZero ? [Math.min(least, 0), Math.max(greatest, 0)] : [least, greatest];
  return [from - (to - from) * gap, to + (to - from) * gap];
}
