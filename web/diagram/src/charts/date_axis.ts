// The ends and ticks of an axis whose values are dates.
import { extent } from "../data/extent.ts";
import type { ValueLabels, ValueRange } from "./axes.ts";
import { ticksAround, ticksWithin } from "./calendar.ts";
import type { Range } from "./chart.ts";

/** What an axis takes over: its ticks and, where no ends are set, what finds them from the data on show. */
export interface DateTicks {
  readonly ticks: readonly number[];
  /** How many of them are on show as long as all data are. */
  readonly shown: number;
  readonly ends: { readonly min?: FindEnd; readonly max?: FindEnd };
}

type FindEnd = (ofData: { readonly min: number; readonly max: number }) => number;

/** Ticks at steps of the calendar, about `count` of them apart; null where there is no calendar for the values. */
export function dateTicks(range: ValueRange, labels: ValueLabels, count: number): DateTicks | null {
  if (range.from !== range.to) {
    const ticks = ticksWithin([Math.min(range.from, range.to), Math.max(range.from, range.to)], count);
    return ticks.length > 0 ? { ticks, shown: ticks.length, ends: {} } : null;
  }
  const { least, greatest } = extent(labels.samples);
  const ticks = least > greatest ? [] : ticksAround(spaced([least, greatest], range, labels), count);
  if (ticks.length === 0) return null;
  // The data on show may be fewer, as readers hide series, or reach farther: a stack, a curve.
  const endsOf = ({ min, max }: { min: number; max: number }): Range => {
    const [from, to] = spaced(min <= max ? [min, max] : [least, greatest], range, labels);
    // Steps are long beside numbers' ones. Points that have room around them need not begin and end at one.
    if (labels.gap && ticks.filter((tick) => tick >= from && tick <= to).length > 1) return [from, to];
    const low = ticks.filter((tick) => tick <= from).length - 1;
    const high = ticks.filter((tick) => tick < to).length;
    // A lone moment that is a tick stands between two others.
    const more = low === high ? 1 : 0;
    const ends: Range = [ticks[low - more] ?? from, ticks[high + more] ?? to];
    return range.hasZero && from < to ? [from === 0 ? 0 : ends[0], to === 0 ? 0 : ends[1]] : ends;
  };
  const [low, high] = endsOf({ min: least, max: greatest });
  const shown = ticks.filter((tick) => tick >= low && tick <= high).length;
  return { ticks, shown, ends: { min: (ofData) => endsOf(ofData)[0], max: (ofData) => endsOf(ofData)[1] } };
}

/** The range with its zero, and with the room that it needs at its ends. */
function spaced([least, greatest]: Range, { hasZero }: ValueRange, { gap = 0 }: ValueLabels): Range {
  const [from, to] = hasZero ? [Math.min(least, 0), Math.max(greatest, 0)] : [least, greatest];
  return [from - (to - from) * gap, to + (to - from) * gap];
}
