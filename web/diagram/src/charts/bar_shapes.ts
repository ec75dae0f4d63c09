// Bars as bodies: boxes with depth, and cylinders. The library has flat bars alone.
import type { Look } from "../look/look.ts";
import { type Pattern, patternOf } from "../look/patterns.ts";
import { shade } from "../look/shades.ts";
import { type Pen, type Shape, tenth, tracedShape } from "./custom.ts";
import type { Box } from "./frame.ts";

export interface Body {
  readonly box: Box;
  /** Values grow to the left or down. */
  readonly isDown: boolean;
  /** Of the corners at the bar's end, if it has any. */
  readonly round: number;
  /** The bar lies: it grows to the right. */
  readonly isLying: boolean;
  readonly color: string;
  readonly pattern: Pattern | undefined;
  /** The colour of its edges, and how thick they are. */
  readonly edge: string;
  readonly edgeWidth: number;
  readonly depth: number;
}

/** Draws a bar as a body: its faces from back to front. */
export type DrawBody = (body: Body) => Shape[];

/** By `RectStyle`. */
const bodies: Readonly<Record<number, DrawBody>> = {
  0: flat,
  1: box,
  2: (body) => cylinder(body, darkCylinder),
  3: (body) => cylinder(body, lightCylinder),
};

/** How bars of a `RectStyle` are drawn. */
export function bodyOf(rectStyle: number): DrawBody {
  return bodies[rectStyle] ?? flat;
}

/** How deep bodies are that `Thickness` gives this many pixels. */
export function depthOf(thickness: number): number {
  return thickness < 4 ? 12 : Math.min(thickness, 200);
}

/** A bar's body for a look: its pattern is that of its series. */
export function seriesBody(look: Look, index: number, color: string): Pick<Body, "color" | "pattern"> {
  return { color, pattern: look.patterns ? patternOf(index, look.dark) : undefined };
}

/** A face in a colour, with the body's edges; `pattern` for those that show it. */
function face(type: string, shape: object, fill: unknown, body: Body, hasPattern = false): Shape {
  const { edge: stroke, edgeWidth: lineWidth, pattern } = body;
  const decal = hasPattern && pattern ? { decal: { ...pattern } } : {};
  const style = { fill, stroke, lineWidth, lineJoin: "round", ...decal };
  return { type, shape, style, emphasis: { style: { opacity: 0.85 } } };
}

function flat(body: Body): Shape[] {
  const { box: place, isLying, isDown, color } = body;
  const { left: x, top: y, width, height } = place;
  const round = Math.min(body.round, width / 2, height / 2);
  // From the upper left corner on, clockwise.
  const end = isLying ? [0, 1, 1, 0] : [1, 1, 0, 0];
  const r = (isDown ? end.map((has) => 1 - has) : end).map((has) => has * round);
  return [face("rect", { x, y, width, height, r }, color, body, true)];
}

/** The front stands in the lower left of the bar's place; top and right side run back from it. */
function box(body: Body): Shape[] {
  const { box: place, isLying, color } = body;
  const thickness = isLying ? place.height : place.width;
  const dx = Math.min(body.depth, thickness * (isLying ? 0.5 : 0.36));
  const dy = dx * 0.6;
  const [left, bottom] = [place.left, place.top + place.height];
  const [width, height] = isLying ? [place.width, place.height - dy] : [place.width - dx, place.height];
  const [right, top] = [left + width, bottom - height];
  const lid = [[left, top], [left + dx, top - dy], [right + dx, top - dy], [right, top]];
  const side = [[right, top], [right + dx, top - dy], [right + dx, bottom - dy], [right, bottom]];
  return [
    face("polygon", { points: lid }, shade(color, 0.28), body),
    face("polygon", { points: side }, shade(color, -0.26), body),
    face("rect", { x: left, y: top, width, height }, color, body, true),
  ];
}

interface CylinderShades {
  /** From one edge to the other: place, and lighter or darker than the colour. */
  readonly body: readonly (readonly [number, number])[];
  readonly lid: number;
}

const darkCylinder: CylinderShades = { body: [[0, -0.32], [0.3, 0.14], [0.55, 0], [1, -0.44]], lid: -0.18 };
const lightCylinder: CylinderShades = { body: [[0, 0], [0.35, 0.62], [0.6, 0.35], [1, -0.14]], lid: 0.45 };

/** Its lid is seen at the upper or, when it lies, the right end. */
function cylinder(body: Body, shades: CylinderShades): Shape[] {
  const { box: place, isLying, color } = body;
  const { left, top, width, height } = place;
  const [right, bottom] = [left + width, top + height];
  const across = (isLying ? height : width) / 2;
  const bulge = Math.min(across * 0.36, 9);
  const n = (value: number): string => value.toFixed(2);
  const wall = isLying
    ? `M${n(left)} ${n(top)}H${n(right)}A${n(bulge)} ${n(across)} 0 0 1 ${n(right)} ${n(bottom)}H${n(left)}` +
      `A${n(bulge)} ${n(across)} 0 0 1 ${n(left)} ${n(top)}Z`
    : `M${n(left)} ${n(top)}V${n(bottom)}A${n(across)} ${n(bulge)} 0 0 0 ${n(right)} ${n(bottom)}V${n(top)}` +
      `A${n(across)} ${n(bulge)} 0 0 1 ${n(left)} ${n(top)}Z`;
  const lid = isLying ? { cx: right, cy: top + across, rx: bulge, ry: across }
    : { cx: left + across, cy: top, rx: across, ry: bulge };
  const gradient = {
    type: "linear", x: 0, y: 0, x2: isLying ? 0 : 1, y2: isLying ? 1 : 0,
    colorStops: shades.body.map(([offset, share]) => ({ offset, color: shade(color, share) })),
  };
  return [face("path", { pathData: wall }, gradient, body, true), face("ellipse", lid, shade(color, shades.lid), body)];
}

/** Many bars as one shape or, with the colour of an outline, as they are marked: over all others. */
export function manyBars(trace: (pen: Pen) => void, style: object, outline?: string): Shape[] {
  if (outline === undefined) return [{ ...tracedShape(trace, style), z2: 0 }];
  const edge = { fill: "none", stroke: outline, lineWidth: 4, lineJoin: "miter" };
  return [{ ...tracedShape(trace, edge), z2: 10 }, { ...tracedShape(trace, style), z2: 11 }];
}

/** Many flat bars, with the pattern of their series. */
export function manyBoxes(
  boxes: readonly (Box | null)[],
  { color, pattern }: Pick<Body, "color" | "pattern">,
  outline?: string,
): Shape[] {
  return manyBars((pen) => {
    for (const box of boxes) {
      if (!box) continue;
      const [left, top] = [tenth(box.left), tenth(box.top)];
      const [right, bottom] = [tenth(box.left + box.width), tenth(box.top + box.height)];
      pen.moveTo(left, top);
      pen.lineTo(right, top);
      pen.lineTo(right, bottom);
      pen.lineTo(left, bottom);
      pen.closePath();
    }
  }, { fill: color, ...(pattern ? { decal: { ...pattern } } : {}) }, outline);
}
