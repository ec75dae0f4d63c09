// Histograms: buckets of equal width, how many values fall into each, and the normal distribution over them.
import { statisticsOf } from "./statistics.ts";

export interface Buckets {
  /** One more than there are buckets, from the least to the greatest. */
  readonly edges: readonly number[];
}

const mostBuckets = 2000;

/** How many buckets a `BucketCount` gives. */
export function bucketCount(wanted: number): number {
  return Math.min(Math.max(Math.trunc(wanted), 1), mostBuckets);
}

/** Buckets from the least to the greatest of the values, or over the range given unless its ends are equal. */
export function bucketsOf(values: readonly number[], count: number, from: number, to: number): Buckets {
  const number = bucketCount(count);
  const figures = statisticsOf(values);
  let [low, high] = from === to ? [figures?.least ?? 0, figures?.greatest ?? 1]
    : [Math.min(from, to), Math.max(from, to)];
  // All values are equal: a bucket around them.
  if (low === high) [low, high] = [low - (Math.abs(low) || 1) / 2, high + (Math.abs(high) || 1) / 2];
  // Each edge by itself, so that the rounding of a width does not add up; 0.1 + 0.4 / 2 is 0.3.
  const inner = Array.from({ length: number - 1 }, (_, index) =>
    Number((low + (high - low) * ((index + 1) / number)).toPrecision(14)));
  return { edges: [low, ...inner, high] };
}

/** How many values each bucket holds. A value on an edge counts above it, on the last one below. */
export function countsOf(values: readonly number[], { edges }: Buckets): number[] {
  const counts = new Array<number>(edges.length - 1).fill(0);
  const [low, high] = [edges[0] ?? 0, edges[edges.length - 1] ?? 0];
  for (const value of values) {
    if (value < low || value > high) continue;
    let bucket = Math.min(Math.floor(((value - low) / (high - low)) * counts.length), counts.length - 1);
    // The division may come out beside an edge by its last digit.
    if (value >= (edges[bucket + 1] ?? Infinity) && bucket < counts.length - 1) bucket += 1;
    else if (value < (edges[bucket] ?? -Infinity)) bucket -= 1;
    counts[bucket] = (counts[bucket] ?? 0) + 1;
  }
  return counts;
}

/** Each count with all before it. */
export function cumulative(counts: readonly number[]): number[] {
  let sum = 0;
  return counts.map((count) => (sum += count));
}

/**
 * The normal distribution with the values' mean and deviation, as points over the buckets' range and in their measure;
 * empty where the values do not vary.
 */
export function normalCurve(
  values: readonly number[],
  { edges }: Buckets,
  isCumulative: boolean,
  points = 81,
): [number, number][] {
  const figures = statisticsOf(values);
  if (!figures || !(figures.deviation > 0)) return [];
  const [low, high] = [edges[0] ?? 0, edges[edges.length - 1] ?? 0];
  const width = (high - low) / (edges.length - 1);
  const { mean, deviation, count } = figures;
  // Sums of counts leave out what lies before the first edge, and so does their curve.
  const before = values.reduce((sum, value) => sum + (value < low ? 1 : 0), 0);
  return Array.from({ length: points }, (_, index) => {
    const x = low + ((high - low) * index) / (points - 1);
    const z = (x - mean) / deviation;
    return [x, isCumulative
      ? Math.max(normalShare(z) * count - before, 0)
      : (Math.exp(-(z * z) / 2) / (deviation * Math.sqrt(2 * Math.PI))) * width * count];
  });
}

/** The share of a normal distribution below z deviations; to seven digits (Abramowitz and Stegun, 26.2.17). */
export function normalShare(z: number): number {
  const t = 1 / (1 + 0.2316419 * Math.abs(z));
  const series = t * (0.31938153 + t * (-0.356563782 + t * (1.781477937 + t * (-1.821255978 + t * 1.330274429))));
  const above = (Math.exp(-(z * z) / 2) / Math.sqrt(2 * Math.PI)) * series;
  return z >= 0 ? 1 - above : above;
}
