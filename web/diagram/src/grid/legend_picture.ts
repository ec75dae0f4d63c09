// The legend of a heat table in its picture; in a browser heat_legend.ts makes it.
import { escaped, tag } from "../charts/svg_text.ts";
import { oneLine, textWidth } from "../charts/text.ts";
import { legendColours, zeroShare } from "./heat_legend.ts";
import type { GridModel } from "./model.ts";
import { cellPadding, lineHeight } from "./sizes.ts";

const above = 8;
const below = 16;
const gap = 8;
const barHeight = 10;
const widestBar = 160;
// Without a gradient, whose id the page around would have to bear: so many pieces look as one.
const pieces = 80;

/** What the legend takes of the picture's height; 0: there is none. */
export function legendHeight({ heat, scene: { style, look } }: GridModel): number {
  return heat && style.HasLegend ? above + Math.ceil(look.fontSize * lineHeight) + below : 0;
}

/** The legend at the right, `top` pixels down; empty where there is none, or no room for it. */
export function legendMarkup(model: GridModel, top: number): string {
  const { heat, scene } = model;
  const { look, format, table, width } = scene;
  if (!heat || legendHeight(model) === 0) return "";
  const [title, least, greatest] = [oneLine(table.valueTitle), format.number(heat.least), format.number(heat.greatest)];
  const right = width - cellPadding - textWidth(greatest, look);
  const words = textWidth(least, look) + (title === "" ? 0 : textWidth(title, look) + gap);
  const piece = Math.floor(Math.min(widestBar, right - gap * 2 - words - cellPadding) / pieces);
  if (piece < 1) return "";
  const bar = piece * pieces;
  const left = Math.round(right - gap - bar);
  const middle = top + above + look.fontSize * lineHeight / 2;
  const word = (text: string, x: number, anchor: string, y = middle): string =>
    tag("text", { x, y, dy: "0.35em", fill: look.text, "text-anchor": anchor }, escaped(text));
  const zero = zeroShare(heat);
  return [
    title === "" ? "" : word(title, left - gap * 2 - textWidth(least, look), "end"),
    word(least, left - gap, "end"),
    ...legendColours(heat, pieces - 1).map((fill, index) => tag("rect", {
      x: left + index * piece, y: Math.round(middle - barHeight / 2), width: piece, height: barHeight, fill,
    })),
    word(greatest, width - cellPadding, "end"),
    zero === null ? "" : tag("g", { "font-size": `${look.fontSize * 0.85}px` },
      word(format.number(0), left + zero * bar, "middle", middle + barHeight / 2 + look.fontSize * 0.55)),
  ].join("");
}
