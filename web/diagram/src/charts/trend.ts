// A curve through the trend of scattered points: at each place a straight line fitted to the points around it.

const steps = 48;
// How far around a place points count, as a share of the whole range: that of a bell's shoulder.
const reach = 0.2;
// Of more points an even choice gives the same curve.
const mostPoints = 2000;

/** The curve's points from left to right; empty where fewer than three places along x have points. */
export function trendOf(points: readonly (readonly [number, number])[]): [number, number][] {
  const sorted = [...points].sort((a, b) => a[0] - b[0]);
  const stride = Math.ceil(sorted.length / mostPoints);
  const chosen = sorted.filter((_, index) => index % stride === 0);
  const [from, to] = [sorted[0]?.[0] ?? 0, sorted[sorted.length - 1]?.[0] ?? 0];
  if (new Set(chosen.map(([x]) => x)).size < 3 || !Number.isFinite(to - from)) return [];
  const width = (to - from) * reach;
  return Array.from({ length: steps + 1 }, (_, index): [number, number] => {
    const x = from + ((to - from) * index) / steps;
    return [x, fitAt(x, chosen, width)];
  });
}

function fitAt(x: number, points: readonly (readonly [number, number])[], width: number): number {
  let [weights, sumX, sumY, sumXX, sumXY] = [0, 0, 0, 0, 0];
  for (const [px, py] of points) {
    const distance = (px - x) / width;
    const weight = Math.exp(-(distance * distance) / 2);
    weights += weight;
    sumX += weight * distance;
    sumY += weight * py;
    sumXX += weight * distance * distance;
    sumXY += weight * distance * py;
  }
  const divisor = weights * sumXX - sumX * sumX;
  // Points above one another have no slope; their mean it is.
  return divisor < weights * weights * 1e-9 ? sumY / weights : (sumXX * sumY - sumX * sumXY) / divisor;
}
