// Reads the style document (docs/style-document.md).
import { parsedNumber } from "./numbers.ts";
import type { Piece } from "./compact_xml.ts";
import { CompactXmlReader, isLineBreaks, unescapeText } from "./compact_xml.ts";
import { quoted } from "./setting_error.ts";
import type { Style, StyleName } from "./style.ts";
import { styleProperties } from "./style.ts";

type Kind = (typeof styleProperties)[StyleName][0];

/** Reads a text as a value of a kind; throws the description of what is wrong. */
const conversions: Record<Kind, (text: string) => number | boolean | string> = {
  Integer: (text) => wholeNumber(text, 2 ** 15),
  Long: (text) => wholeNumber(text, 2 ** 31),
  Double: (text) => numberIn(text),
  Boolean: (text) => booleanIn(text),
  String: (text) => text,
};

/** The style of a chart that says nothing of it. */
export function defaultStyle(): Style {
  const values = Object.entries(styleProperties).map(([name, [, value]]) => [name, value]);
  return Object.fromEntries(values) as Style;
}

/**
 * `style` with those properties replaced that the document names. Elements of other names are passed over; of two
 * elements of one name the later counts. A `SettingError` with line and column where the document is not well formed,
 * or a text is no value of its property's type.
 */
export function readStyle(document: string, style: Style = defaultStyle()): Style {
  const values: Record<string, number | boolean | string> = {};
  const xml = new CompactXmlReader(document);
  let inRoot = false;
  for (let piece = xml.next(); piece.kind !== "finish"; piece = xml.next()) {
    if (piece.kind === "end") continue;
    if (piece.kind === "text") {
      if (!isLineBreaks(piece.raw)) {
        throw xml.error(piece.offset, `text ${quoted(piece.raw)} stands between elements`);
      }
      continue;
    }
    if (!inRoot) {
      if (piece.name !== "xml") throw xml.error(piece.offset, `${quoted(piece.name)} stands where <xml> is expected`);
      inRoot = true;
    } else if (isStyleName(piece.name)) {
      values[piece.name] = readValue(xml, piece, piece.name);
    } else if (piece.kind === "start") {
      skipElement(xml);
    }
  }
  return { ...style, ...values };
}

/** The value of a property from its text, as in a style document; throws the description of what is wrong. */
export function valueOfText(name: StyleName, text: string): number | boolean | string {
  return conversions[styleProperties[name][0]](text);
}

/** Whether a text, as of a Boolean property, says true; what is none says false. */
export function isTrue(text: string): boolean {
  try {
    return booleanIn(text);
  } catch {
    return false;
  }
}

function isStyleName(name: string): name is StyleName {
  return Object.prototype.hasOwnProperty.call(styleProperties, name);
}

function readValue(xml: CompactXmlReader, start: Piece, name: StyleName): number | boolean | string {
  const text = start.kind === "empty" ? { raw: "", offset: start.offset } : readText(xml, start);
  try {
    return valueOfText(name, unescapeText(text.raw));
  } catch (problem) {
    const reason = problem instanceof Error ? problem.message : String(problem);
    throw xml.error(text.offset, `${name} (${styleProperties[name][0]}): ${reason}`);
  }
}

// The text of the element that `start` has opened; where it has none, an empty one at the end tag, which is read too.
function readText(xml: CompactXmlReader, start: Piece): { readonly raw: string; readonly offset: number } {
  const first = xml.next();
  const end = first.kind === "text" ? xml.next() : first;
  if (end.kind !== "end") throw xml.error(end.offset, `${quoted(start.name)} holds a text and no elements`);
  return first.kind === "text" ? first : { raw: "", offset: end.offset };
}

// Passes over the element that is open, with everything in it.
function skipElement(xml: CompactXmlReader): void {
  for (let depth = 1; depth > 0;) {
    const { kind } = xml.next();
    if (kind === "start") depth += 1;
    if (kind === "end") depth -= 1;
  }
}

function booleanIn(text: string): boolean {
  const word = text.replace(/^[ \t]+|[ \t]+$/g, "").toLowerCase();
  if (word === "true" || word === "false") return word === "true";
  return numberIn(text, "Boolean") !== 0;
}

function numberIn(text: string, wanted = "number"): number {
  const number = parsedNumber(text);
  if (number === null) {
    const longest = 60;
    const shown = text.length > longest ? `${text.slice(0, longest)}...` : text;
    throw new TypeError(`Type mismatch: "${shown}" is not a ${wanted}`);
  }
  if (!Number.isFinite(number)) throw new RangeError("Overflow");
  return number;
}

// The nearest whole number, halves to even, from -limit up to but without limit.
function wholeNumber(text: string, limit: number): number {
  const number = numberIn(text);
  const below = Math.floor(number);
  const isHalf = number - below === 0.5;
  const whole = isHalf ? below + Math.abs(below % 2) : Math.round(number);
  if (whole < -limit || whole >= limit) throw new RangeError("Overflow");
  return whole + 0;  // without the sign of a zero
}
