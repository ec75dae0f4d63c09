// How a drawing's area is shared: the plot gets what legend, titles and statistics leave.
import type { LegendComponentOption, TitleComponentOption } from "echarts/components";

import type { Look } from "../look/look.ts";
import { textStyle } from "./text.ts";

/** In pixels from the drawing's left upper corner. */
export interface Box {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
}

/** What has been placed so far, and the room that is left. */
export interface Frame {
  readonly room: Box;
  readonly legends: readonly LegendComponentOption[];
  readonly titles: readonly TitleComponentOption[];
  /** What stands in a corner beside the room, and the side that it is at. */
  readonly corner?: { readonly box: Box; readonly side: "left" | "right" };
}

/** A frame with nothing in it but its margin. */
export function emptyFrame(width: number, height: number, look: Look): Frame {
  const margin = Math.min(Math.round(look.fontSize), Math.floor(Math.min(width, height) * 0.06));
  return { room: inset({ left: 0, top: 0, width, height }, margin, margin), legends: [], titles: [] };
}

export function inset(box: Box, x: number, y: number): Box {
  return {
    left: box.left + x,
    top: box.top + y,
    width: Math.max(box.width - 2 * x, 1),
    height: Math.max(box.height - 2 * y, 1),
  };
}

/** The box without a strip at one of its sides. */
export function without(box: Box, side: "top" | "bottom" | "left" | "right", size: number): Box {
  const { left, top } = box;
  const [width, height] = [Math.max(box.width - size, 1), Math.max(box.height - size, 1)];
  switch (side) {
    case "top": return { ...box, top: top + size, height };
    case "bottom": return { ...box, height };
    case "left": return { ...box, left: left + size, width };
    case "right": return { ...box, width };
  }
}

/**
 * The room for one round thing: it may reach over what stands in the corner as far as it does not touch it. `margin`
 * is what its texts take at its sides and above and below it.
 */
export function roundRoom(frame: Frame, margin: { readonly width: number; readonly height: number }): Box {
  const { room, corner } = frame;
  if (!corner) return room;
  const { box, side } = corner;
  const start = side === "left" ? box.left : room.left;
  const whole: Box = { ...room, left: start, width: room.width + box.width };
  let best = { room, radius: 0 };
  const steps = 16;
  for (let step = 0; step <= steps; step += 1) {
    const tried = without(whole, side, (box.width * step) / steps);
    const [x, y] = [tried.left + tried.width / 2, tried.top + tried.height / 2];
    const away = Math.hypot(Math.max(box.left - x, 0, x - box.left - box.width),
      Math.max(box.top - y, 0, y - box.top - box.height));
    const inner = Math.min(tried.width / 2 - margin.width, tried.height / 2 - margin.height);
    const radius = Math.min(inner, away - margin.width * 0.6);
    if (radius > best.radius) best = { room: tried, radius };
  }
  return best.room;
}

/** How far a text may reach from `x`, in a line from `top` on, before it touches what is in a corner; endless: none. */
export function roomAt({ corner }: Frame, x: number, top: number, height: number): number {
  if (!corner) return Infinity;
  const { box, side } = corner;
  if (top + height <= box.top || top >= box.top + box.height) return Infinity;
  return Math.max(side === "left" ? x - box.left - box.width : box.left - x, 0);
}

/** A line of text by itself, or several; `x` is where it begins, has its middle or ends, by `align`. */
export function lineOfText(
  text: string,
  place: { x: number; top: number; align: "left" | "center" | "right" },
  look: Look,
  looks: { color?: string; bold?: boolean; lineHeight?: number } = {},
): TitleComponentOption {
  const { lineHeight } = looks;
  return {
    text,
    left: place.x,
    top: place.top,
    textAlign: place.align,
    padding: 0,
    itemGap: 0,
    textStyle: { ...textStyle(look, looks.color, looks.bold), ...(lineHeight === undefined ? {} : { lineHeight }) },
    silent: true,
  } as TitleComponentOption;
}
