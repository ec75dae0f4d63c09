// A pie that lies tilted and has a height: its slices' faces, as they are seen from above.
import { extent } from "../data/extent.ts";

/** A lying pie. Places are in pixels, from the drawing's left upper corner. */
export interface Solid {
  readonly x: number;
  readonly y: number;
  /** Along the eye's line across; the other is shortened by `tilt`. */
  readonly radius: number;
  /** The share of the radius that is left in height: 1 seen from above. */
  readonly flatness: number;
  /** Of the sides, as they are seen. */
  readonly height: number;
  /** The radius of the hole; 0: none. */
  readonly hole: number;
  /** How far slices are pulled out. */
  readonly pulled: number;
}

/** Angles are radians, clockwise from the right; `radius` is the slice's own, in a rose. */
export interface Wedge {
  readonly from: number;
  readonly to: number;
  readonly radius: number;
}

export type Outline = number[][];

export interface WedgeFaces {
  /** From back to front. */
  readonly sides: readonly { readonly outline: Outline; readonly kind: "outer" | "inner" | "cut" }[];
  readonly top: Outline;
}

const turn = Math.PI * 2;
// Fine enough for a circle of a thousand pixels to look round.
const step = Math.PI / 60;

function pointAt(solid: Solid, angle: number, radius: number, drop = 0): number[] {
  return [solid.x + Math.cos(angle) * radius, solid.y + Math.sin(angle) * radius * solid.flatness + drop];
}

function arc(solid: Solid, from: number, to: number, radius: number, drop = 0): Outline {
  const count = Math.max(Math.ceil(Math.abs(to - from) / step), 1);
  return Array.from({ length: count + 1 }, (_, index) =>
    pointAt(solid, from + ((to - from) * index) / count, radius, drop));
}

/** The parts of a stretch of angles that lie within others, each of half a turn. */
function within(from: number, to: number, begin: number): [number, number][] {
  const found: [number, number][] = [];
  const first = Math.floor((from - begin) / turn);
  for (let round = first; begin + round * turn < to; round += 1) {
    const [low, high] = [Math.max(from, begin + round * turn), Math.min(to, begin + round * turn + Math.PI)];
    if (high - low > 1e-6) found.push([low, high]);
  }
  return found;
}

/** The faces of a slice that can be seen. `hasCuts`: slices differ in radius, and their cut sides may show. */
export function facesOf(solid: Solid, wedge: Wedge, hasCuts: boolean): WedgeFaces {
  const { from, to, radius } = wedge;
  const { height, hole } = solid;
  const sides: { outline: Outline; kind: "outer" | "inner" | "cut" }[] = [];

  // The hole's far wall, as far down as its near rim lets it be seen.
  if (hole > 0) {
    for (const [low, high] of within(from, to, Math.PI)) {
      const upper = arc(solid, low, high, hole);
      const lower = upper.map(([x = 0, y = 0]) => [x, Math.min(y + height, 2 * solid.y - y)]);
      sides.push({ outline: [...upper, ...lower.reverse()], kind: "inner" });
    }
  }
  // Cut sides: the one at the slice's end is seen where it turns to the left of the eye, and the other way round.
  if (hasCuts && to - from < turn - 1e-6) {
    for (const [angle, isSeen] of [[from, Math.cos(from) < 0], [to, Math.cos(to) > 0]] as const) {
      if (!isSeen) continue;
      const outline = [
        pointAt(solid, angle, hole), pointAt(solid, angle, radius),
        pointAt(solid, angle, radius, height), pointAt(solid, angle, hole, height),
      ];
      sides.push({ outline, kind: "cut" });
    }
  }
  for (const [low, high] of within(from, to, 0)) {
    const outline = [...arc(solid, low, high, radius), ...arc(solid, high, low, radius, height)];
    sides.push({ outline, kind: "outer" });
  }
  const inner = hole > 0 ? arc(solid, to, from, hole) : to - from < turn - 1e-6 ? [[solid.x, solid.y]] : [];
  return { sides, top: [...arc(solid, from, to, radius), ...inner] };
}

/** Slices for sizes, clockwise from an angle; those of size 0 are empty. In a rose all angles are equal. */
export function wedgesOf(
  sizes: readonly number[],
  start: number,
  radius: number,
  isRose: boolean,
  hole = 0,
): Wedge[] {
  const sum = sizes.reduce((total, size) => total + size, 0);
  const { greatest } = extent(sizes);
  const present = sizes.filter((size) => size > 0).length;
  let angle = start;
  return sizes.map((size) => {
    const from = angle;
    if (size > 0) angle += isRose ? turn / present : (size / sum) * turn;
    return { from, to: angle, radius: isRose && greatest > 0 ? hole + (radius - hole) * (size / greatest) : radius };
  });
}
