// What a close-up shows of a chart: some of its categories, or a part of its x axis.
import type { CloseUp, Range } from "./chart.ts";
import { scaleOf } from "./scale.ts";
import type { View } from "./view.ts";

/** Categories in order, from `first` on. */
export interface Stretch {
  readonly first: number;
  readonly count: number;
}

/** The categories that a close-up shows. As long as its part is as large they are as many, wherever it is. */
export function stretchOf(closeUp: CloseUp | null, count: number): Stretch {
  if (!closeUp) return { first: 0, count };
  const [start, end] = closeUp.part;
  const shown = Math.min(Math.max(Math.round((end - start) * count), 1), count);
  return { first: Math.min(Math.max(Math.round(start * count), 0), count - shown), count: shown };
}

/** The view with these of its categories alone. */
export function viewOfStretch(view: View, { first, count }: Stretch): View {
  if (count === view.categories.length) return view;
  const end = first + count;
  return {
    ...view,
    categories: view.categories.slice(first, end),
    series: view.series.map((one) => ({ ...one, points: one.points.slice(first, end) })),
  };
}

/** The numbers from which to which a close-up shows an x axis of numbers. */
export function rangeOf({ part, along: [from, to] }: CloseUp): Range {
  const [start, end] = part;
  return [from + (to - from) * start, from + (to - from) * end];
}

/** Round numbers inside a range, for its ticks: its own ends are seldom round. */
export function ticksIn([from, to]: Range, steps: number): number[] {
  return scaleOf([from, to], steps).ticks.filter((tick) => tick >= from && tick <= to);
}
