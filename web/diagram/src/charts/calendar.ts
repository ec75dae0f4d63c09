// Steps of the calendar for an axis of dates, in milliseconds since 1970 (UTC).
import { extent } from "../data/extent.ts";
import { isDate } from "../format/dates.ts";
import type { Range } from "./chart.ts";
import type { Scale } from "./scale.ts";

const day = 86_400_000;
const month = 30.44 * day;

/** Moments at like distances, counted by whole numbers. */
interface Step {
  /** About how long it is. */
  readonly length: number;
  /** The number of the last moment at or before a date. */
  readonly before: (date: number) => number;
  readonly at: (index: number) => number;
}

const days = (count: number, first = 0): Step => ({
  length: count * day,
  before: (date) => Math.floor((date - first) / (count * day)),
  at: (index) => first + index * count * day,
});

const months = (count: number): Step => ({
  length: count * month,
  before: (date) => {
    const moment = new Date(date);
    return Math.floor((moment.getUTCFullYear() * 12 + moment.getUTCMonth()) / count);
  },
  at: (index) => new Date(0).setUTCFullYear(0, index * count, 1),
});

// Weeks begin on Mondays; the first one of 1970 was the fifth of January. Formats tell days apart and no hours, so
// nothing shorter than a day can be read.
const monday = 4 * day;
const years = [1, 10, 100, 1e3, 1e4, 1e5].flatMap((power) => [1, 2, 5].map((factor) => months(12 * factor * power)));
const steps: readonly Step[] = [
  days(1), days(2), days(7, monday), days(14, monday), months(1), months(2), months(3), months(6), ...years,
];

/**
 * Ticks around a range, about so many steps apart: the first at or before it, the last at or behind it. None where the
 * range leaves the calendars.
 */
export function ticksAround(range: Range, count: number): number[] {
  return ticksOf(range, steps[stepFor(range, count)]);
}

/** Ticks inside a range; its ends are none of them, unless a step ends there. At least two, if days are that short. */
export function ticksWithin([from, to]: Range, count: number): number[] {
  for (let index = stepFor([from, to], count); index >= 0; index -= 1) {
    const around = ticksOf([from, to], steps[index]);
    const inside = around.filter((tick) => tick >= from && tick <= to);
    if (inside.length > 1 || around.length === 0) return inside;
    if (index === 0) return inside.length > 0 ? inside : [from];
  }
  return [];
}

/** A scale over dates, with about so many steps; null where they leave the calendars. */
export function dateScaleOf(values: readonly number[], count: number): Scale | null {
  const { least, greatest } = extent(values);
  const ticks = least > greatest ? [] : ticksAround([least, greatest], count);
  const [from, to] = [ticks[0], ticks[ticks.length - 1]];
  return from === undefined || to === undefined ? null : { from, to, ticks };
}

/** The shortest step that makes no more steps than wanted. Months are not all as long. */
function stepFor([from, to]: Range, count: number): number {
  const found = steps.findIndex(({ length }) => length >= ((to - from) / count) * 0.97);
  return found < 0 ? steps.length - 1 : found;
}

function ticksOf([from, to]: Range, step: Step | undefined): number[] {
  if (!step || !isDate(from) || !isDate(to)) return [];
  let [first, last] = [step.before(from), step.before(to)];
  if (step.at(last) < to) last += 1;
  // A lone moment that is a tick has one on either side.
  if (first === last) [first, last] = [first - 1, last + 1];
  const ticks = Array.from({ length: last - first + 1 }, (_, index) => step.at(first + index));
  return ticks.every(isDate) ? ticks : [];
}
