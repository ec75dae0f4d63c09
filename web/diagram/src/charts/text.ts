// Texts in a drawing: their fonts, their widths, and how they are cut to fit.
import { format } from "echarts/core";

import type { Look } from "../look/look.ts";

/** A text's style as the drawing library takes it. */
export interface TextStyle {
  readonly fontFamily: string;
  readonly fontSize: number;
  readonly fontWeight: "normal" | "bold";
  readonly fontStyle: "normal" | "italic";
  readonly color: string;
}

/** The chart's font in a colour; `color` is the outer texts' if none is given. */
export function textStyle(look: Look, color: string = look.text, bold = false): TextStyle {
  const { fontFamily, fontSize, fontStyle } = look;
  return { fontFamily, fontSize, fontWeight: bold ? "bold" : look.fontWeight, fontStyle, color };
}

/** A text on the plot's own ground: what lies under it does not disturb. */
export function plotText(look: Look, color: string = look.plotText, halo = 3): object {
  return { ...textStyle(look), fill: color, stroke: look.plotGround, lineWidth: halo };
}

/** The chip on which the text of something selected stands. */
export function chipOf(look: Look): object {
  return { backgroundColor: look.selectionGround, padding: [3, 6], borderRadius: 3 };
}

/** The height of a line of texts, in pixels. */
export function lineHeight(look: Look): number {
  return Math.round(look.fontSize * 1.4);
}

/** The text in one line, without what no drawing can hold. */
export function oneLine(text: string): string {
  return text.replace(unprintable, " ").replace(/\p{Cs}/gu, "\ufffd").trim();
}

const unprintable = /[\u0000-\u001f\u007f-\u009f\u2028\u2029\ufffe\uffff]+/g;

/** In pixels. */
export function textWidth(text: string, look: Look, bold = false): number {
  const weight = bold ? "bold" : look.fontWeight;
  return format.getTextRect(text, `${look.fontStyle} ${weight} ${look.fontSize}px ${look.fontFamily}`).width;
}

/** The width of the widest text. Of many only the longest are measured. */
export function widest(texts: readonly string[], look: Look, bold = false): number {
  const most = 24;
  const longest = texts.length <= most ? texts : [...texts].sort((a, b) => b.length - a.length).slice(0, most);
  return longest.reduce((width, text) => Math.max(width, textWidth(text, look, bold)), 0);
}

/** The text, cut to a width with an ellipsis at its end. */
export function cutTo(text: string, width: number, look: Look, bold = false): string {
  if (textWidth(text, look, bold) <= width) return text;
  const signs = Array.from(text.slice(0, 400));
  let [fits, tooLong] = [0, signs.length];
  while (tooLong - fits > 1) {
    const middle = (fits + tooLong) >> 1;
    if (textWidth(signs.slice(0, middle).join("") + "…", look, bold) <= width) fits = middle;
    else tooLong = middle;
  }
  return signs.slice(0, fits).join("").trimEnd() + "…";
}

/**
 * The text in at most so many lines of `width` pixels, broken at blanks; what does not fit is cut. `isTorn`: it has a
 * word that is wider.
 */
export function brokenTo(
  text: string,
  width: number,
  most: number,
  look: Look,
): { readonly lines: readonly string[]; readonly isWhole: boolean; readonly isTorn: boolean } {
  const lines: string[] = [];
  const words = text.split(" ");
  for (const word of words) {
    const last = lines[lines.length - 1];
    const longer = last === undefined ? word : `${last} ${word}`;
    if (last !== undefined && (lines.length === most || textWidth(longer, look) <= width)) {
      lines[lines.length - 1] = longer;
      if (lines.length === most && textWidth(longer, look) > width) break;
    } else {
      lines.push(word);
    }
  }
  const cut = lines.map((line) => cutTo(line, width, look));
  const isTorn = words.some((word) => textWidth(word, look) > width);
  return { lines: cut, isWhole: cut.join(" ") === text, isTorn };
}

/** A long text in lines of some `columns` signs, for tooltips, which have the room but know no width. */
export function wrapped(text: string, columns = 44): string {
  const lines = [""];
  for (const word of text.slice(0, 1000).split(" ").flatMap((part) => pieces(part, columns))) {
    const last = lines[lines.length - 1] ?? "";
    if (last === "") lines[lines.length - 1] = word;
    else if (last.length + 1 + word.length <= columns) lines[lines.length - 1] = `${last} ${word}`;
    else lines.push(word);
  }
  return lines.join("\n");
}

function pieces(word: string, length: number): string[] {
  if (word.length <= length) return [word];
  const signs = Array.from(word);
  return Array.from({ length: Math.ceil(signs.length / length) }, (_, index) =>
    signs.slice(index * length, (index + 1) * length).join(""));
}

/**
 * The text so that the drawing library takes none of it for markup, where it reads markup: `{name|` would open a style,
 * and an empty piece of no style behind the brace keeps both apart.
 */
export function literal(text: string): string {
  return text.replace(/\{(?=\w+\|)/g, "{{_|}");
}

/** The names of our own for texts that may be empty or alike: the library tells series and slices apart by name. */
export function uniqueNames(texts: readonly string[]): string[] {
  const seen = new Set<string>();
  const counts = new Map<string, number>();
  return texts.map((text, index) => {
    const base = text || String(index + 1);
    let name = base;
    for (let count = counts.get(base) ?? 1; seen.has(name); count += 1) {
      name = `${base}\u200b${count + 1}`;
      counts.set(base, count + 1);
    }
    seen.add(name);
    return name;
  });
}
