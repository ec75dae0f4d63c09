// Figures that describe a list of values.
import { extent } from "../data/extent.ts";

export interface Statistics {
  readonly count: number;
  readonly sum: number;
  readonly mean: number;
  /** Of a sample: 0 where there are fewer than two values. */
  readonly deviation: number;
  readonly least: number;
  readonly greatest: number;
}

/** The figures of values, or null where there are none. */
export function statisticsOf(values: readonly number[]): Statistics | null {
  if (values.length === 0) return null;
  const count = values.length;
  const sum = values.reduce((total, value) => total + value, 0);
  const { least, greatest } = extent(values);
  const mean = sum / count;
  // In two passes: the sum of squares by itself loses all digits where the mean is large.
  const squares = values.reduce((total, value) => total + (value - mean) ** 2, 0);
  return { count, sum, mean, deviation: count > 1 ? Math.sqrt(squares / (count - 1)) : 0, least, greatest };
}

/** The number, without digits that lie far below `unit`: a mean of prices needs no fifteen of them. */
export function roundedTo(value: number, unit: number): number {
  if (!(unit > 0) || !Number.isFinite(unit)) return value;
  const digits = Math.min(Math.max(2 - Math.floor(Math.log10(unit)), 0), 100);
  return digits > 15 ? value : Number(value.toFixed(digits));
}
