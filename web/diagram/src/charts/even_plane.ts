// Where values stand in a plot, worked out from two places: to ask the library for each of ten thousand takes its time.
import { extent } from "../data/extent.ts";
import { placed } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import type { Api } from "./custom.ts";

/** Places in pixels: of a row or number along the x axis, and of a number up a series' own y axis. */
export interface EvenPlane {
  along(value: number): number;
  up(value: number): number;
}

/** The plane of a series that has these values along and up. Axes are even: two places of each tell all others. */
export function evenPlane(
  scene: Scene, api: Api, alongs: Iterable<number>, ups: Iterable<number | null>,
): EvenPlane {
  const alongAxis = scene.style.IsRotated ? 1 : 0;
  const [[near, far], [low, high]] = [endsOf(alongs), endsOf(ups)];
  const [from, to] = [api.coord(placed(scene, near, low)), api.coord(placed(scene, far, high))];
  const [start = 0, foot = 0] = [from[alongAxis], from[1 - alongAxis]];
  const [end = 0, top = 0] = [to[alongAxis], to[1 - alongAxis]];
  return {
    along: (value) => start + ((value - near) / (far - near)) * (end - start),
    up: (value) => foot + ((value - low) / (high - low)) * (top - foot),
  };
}

// Of the values themselves, so that nothing is rounded away, however small or far from zero they are.
function endsOf(values: Iterable<number | null>): readonly [number, number] {
  const { least, greatest } = extent([...values].filter((value) => value !== null));
  if (least < greatest) return [least, greatest];
  const only = Number.isFinite(least) ? least : 0;
  return [only, only + (Math.abs(only) || 1)];
}
