// Which dot of a scatter or bubble chart stands at a place.
import { extent } from "../data/extent.ts";
import type { CellPlace, Plane, Spot } from "./chart.ts";
import type { Cloud } from "./clouds.ts";

// How far readers may miss a circle, in pixels.
const reach = 8;

/** The cell of the dot at a place or nearest to it. Of those that are equally near the last one lies in front. */
export function dotAt(clouds: readonly Cloud[], spot: Spot, plane: Plane): CellPlace | null {
  const visible = clouds.filter(({ series }) => plane.isShown(series.name));
  const dots = visible.flatMap((cloud) => cloud.dots);
  // Both axes are even: two places of each tell all others.
  const along = evenly((value) => plane.along(value), dots.map(({ x }) => x));
  const up = evenly((value) => plane.up(value, 0), dots.map(({ y }) => y));
  let best: CellPlace | null = null;
  let least = reach;
  for (const { x, y, diameter, point } of dots) {
    const away = Math.max(Math.hypot(along(x) - spot.along, up(y) - spot.up) - diameter / 2, 0);
    if (away > least) continue;
    least = away;
    best = { row: point.cell[0], column: point.cell[1] };
  }
  return best;
}

function evenly(placeOf: (value: number) => number, values: readonly number[]): (value: number) => number {
  const { least, greatest } = extent(values);
  const start = placeOf(least);
  if (!(greatest > least)) return () => start;
  const slope = (placeOf(greatest) - start) / (greatest - least);
  return (value) => start + (value - least) * slope;
}
