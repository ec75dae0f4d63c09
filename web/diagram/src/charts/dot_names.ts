// The names of circles, beside them or in them.
import type { Scene } from "./chart.ts";
import type { Drawing, Shape } from "./custom.ts";
import type { Box } from "./frame.ts";
import { plotText, textWidth } from "./text.ts";

/** In pixels. */
export interface Circle {
  readonly x: number;
  readonly y: number;
  readonly radius: number;
}

/** A circle's name, in it or at a side of it where nothing is hidden; none where there is no room. */
export function nameOf(
  scene: Scene,
  name: string,
  index: number,
  circles: readonly Circle[],
  params: Drawing,
): Shape[] {
  const circle = circles[index];
  if (!circle || name === "") return [];
  const { look } = scene;
  // The names that have found their places in this drawing.
  const taken = ((params.context as { taken?: Box[] }).taken ??= []);
  const { x, y, radius } = circle;
  const [width, height] = [textWidth(name, look), look.fontSize * 1.1];
  const gap = radius + 4;
  const places: readonly (readonly [number, number])[] = width < radius * 1.7 ? [[-width / 2, 0]]
    : [[gap, 0], [-gap - width, 0], [-width / 2, -gap - height / 2], [-width / 2, gap + height / 2]];
  for (const [dx, dy] of places) {
    const box = { left: x + dx, top: y + dy - height / 2, width, height };
    const isFree = contains(params.coordSys as unknown as Plot, box)
      && !taken.some((other) => overlap(box, other))
      && !circles.some((other, place) => place !== index && touches(box, other));
    if (!isFree) continue;
    taken.push(box);
    return [{
      type: "text",
      silent: true,
      z2: 10,
      style: {
        ...plotText(look, look.plotText, 2), text: name,
        x: box.left, y: y + dy, verticalAlign: "middle",
      },
    }];
  }
  return [];
}

/** What the library tells of the plot. */
interface Plot {
  readonly x: number;
  readonly y: number;
  readonly width: number;
  readonly height: number;
}

function contains({ x, y, width, height }: Plot, box: Box): boolean {
  return box.left >= x && box.left + box.width <= x + width && box.top >= y && box.top + box.height <= y + height;
}

function overlap(one: Box, other: Box): boolean {
  return one.left < other.left + other.width && other.left < one.left + one.width
    && one.top < other.top + other.height && other.top < one.top + one.height;
}

function touches(box: Box, { x, y, radius }: Circle): boolean {
  const dx = Math.max(box.left - x, 0, x - box.left - box.width);
  const dy = Math.max(box.top - y, 0, y - box.top - box.height);
  return dx * dx + dy * dy < radius * radius;
}
