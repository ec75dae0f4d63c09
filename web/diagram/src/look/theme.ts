// Settles the colours and fonts of a drawing: the style's own, the page's custom properties, the reader's scheme.
import { contrast, readableOn, rgbOf } from "./colours.ts";
import type { Style } from "../settings/style.ts";
import type { Look } from "./look.ts";
import { dark, light, type SchemeColours } from "./palette.ts";

/** What the reader and the page ask for. The element takes it from the document; a program without one makes it up. */
export interface Reading {
  /** The reader's scheme, or the element's `theme`. */
  readonly dark: boolean;
  /** The reader's system sets all colours (forced-colors). */
  readonly forced: boolean;
  /** Nothing may move. */
  readonly still: boolean;
  readonly patterns: boolean;
  /** The font family of the page around. */
  readonly font: string;
  /** Values of the custom properties in `customProperties`, by name; those that are not set are empty or left out. */
  readonly custom: Readonly<Record<string, string>>;
}

const paletteSize = 8;
const paletteProperties = Array.from({ length: paletteSize }, (_, index) => `--plexoras-color-${index + 1}`);

/** The custom properties that `settleLook` asks for. */
export const customProperties: readonly string[] = [
  "--plexoras-font", "--plexoras-text", "--plexoras-ground", "--plexoras-grid", ...paletteProperties,
];

/** A reading for programs without a document. */
export const plainReading: Reading = {
  dark: false,
  forced: false,
  still: true,
  patterns: false,
  font: "system-ui, -apple-system, 'Segoe UI', Roboto, 'Noto Sans', 'Liberation Sans', sans-serif",
  custom: {},
};

/** The look of a chart of this style for this reader. */
export function settleLook(style: Style, reading: Reading): Look {
  return reading.forced ? forcedLook(style, reading) : ownLook(style, reading);
}

function ownLook(style: Style, reading: Reading): Look {
  const follows = isPair(style.ForegroundColor, "black", style.BackgroundColor, "white");
  const plotFollows = follows && isPair(style.ForeColor, "black", style.BackColor, "white");
  const custom = (name: string): string | null => pageColour(reading.custom[name]);

  const scheme = reading.dark ? dark : light;
  const ground = follows ? custom("--plexoras-ground") ?? scheme.ground : colourOf(style.BackgroundColor) ?? "white";
  const text = follows ? custom("--plexoras-text") ?? scheme.text : colourOf(style.ForegroundColor) ?? "black";
  const plotGround = plotFollows ? ground : colourOf(style.BackColor) ?? "white";
  const plotText = plotFollows
    ? custom("--plexoras-text") ?? scheme.plotText
    : colourOf(style.ForeColor) ?? "black";

  // Series stand on the plot's ground, whatever the reader's scheme.
  const onDark = isDark(plotGround, reading.dark);
  const onPlot = onDark ? dark : light;
  const palette = onPlot.palette.map((own, index) => custom(paletteProperties[index] ?? "") ?? own);
  const quiet = onPlot.plotText;
  // An author who left the ground to the reader has chosen colours of texts for a white one.
  const legible = (color: string | null): string | null =>
    (color !== null && plotFollows && reading.dark ? readableOn(plotGround, color) : color);
  return {
    text,
    ground,
    plotText,
    plotGround,
    grid: isName(style.GridColor, "lightgray")
      ? custom("--plexoras-grid") ?? onPlot.grid
      : colourOf(style.GridColor) ?? onPlot.grid,
    cross: isName(style.CrossColor, "gray") ? quiet : colourOf(style.CrossColor) ?? quiet,
    tag: isName(style.TagColor, "black") ? plotText : legible(colourOf(style.TagColor)) ?? plotText,
    ...selection(style, palette, onPlot),
    negative: legible(colourOf(style.negativeForeColor)),
    palette,
    ...curves(style, palette),
    ...font(style, reading),
    dark: onDark,
    patterns: reading.patterns,
    still: reading.still,
  };
}

/** The system's colours for texts, lines and grounds. Surfaces keep theirs, and have patterns beside them. */
function forcedLook(style: Style, reading: Reading): Look {
  const palette = (reading.dark ? dark : light).palette;
  return {
    text: "CanvasText",
    ground: "Canvas",
    plotText: "CanvasText",
    plotGround: "Canvas",
    grid: "GrayText",
    cross: "CanvasText",
    tag: "CanvasText",
    selectionText: "HighlightText",
    selectionGround: "Highlight",
    negative: null,
    palette,
    curve: palette[0] ?? "CanvasText",
    drawnCurve: "CanvasText",
    ...font(style, reading),
    dark: reading.dark,
    patterns: true,
    still: reading.still,
  };
}

function curves(style: Style, palette: readonly string[]): Pick<Look, "curve" | "drawnCurve"> {
  const own = isName(style.CurveColor, "navy") ? null : colourOf(style.CurveColor);
  return { curve: own ?? palette[0] ?? "navy", drawnCurve: own };
}

function selection(
  style: Style,
  palette: readonly string[],
  scheme: SchemeColours,
): Pick<Look, "selectionText" | "selectionGround"> {
  const own = isPair(style.SelectionForeColor, "white", style.SelectionBackColor, "navy");
  // White on navy could not be seen on a dark ground, where the pair turns round.
  if (own) return scheme === dark
    ? { selectionText: dark.ground, selectionGround: dark.text }
    : { selectionText: "#ffffff", selectionGround: palette[7] ?? "navy" };
  return {
    selectionText: colourOf(style.SelectionForeColor) ?? "white",
    selectionGround: colourOf(style.SelectionBackColor) ?? "navy",
  };
}

function font(
  style: Style,
  reading: Reading,
): Pick<Look, "fontFamily" | "fontSize" | "fontWeight" | "fontStyle"> {
  const page = reading.custom["--plexoras-font"]?.trim() || reading.font || "sans-serif";
  return {
    fontFamily: fontFamily(style.FontName, page),
    fontSize: Math.min(Math.max(style.FontSize, 6), 96),
    fontWeight: style.FontBold ? "bold" : "normal",
    fontStyle: style.FontItalic ? "italic" : "normal",
  };
}

function fontFamily(name: string, page: string): string {
  const own = name.replace(/["'\\;{}<>\u0000-\u001f]/g, "").trim();
  if (own === "" || isName(own, "sans-serif")) return page;
  // A generic family loses its meaning in quotes.
  return genericFamilies.has(own.toLowerCase()) ? own : `'${own}', ${page}`;
}

const genericFamilies = new Set(["serif", "monospace", "cursive", "fantasy", "system-ui"]);

/** The text if it is a colour by itself; null for anything else, as `url(...)` or "null". */
function colourOf(text: string): string | null {
  const colour = text.trim();
  return rgbOf(colour) ? colour : null;
}

/** A custom property's colour: all that style sheets take. */
function pageColour(text: string | undefined): string | null {
  const colour = text?.trim() ?? "";
  return rgbOf(colour) || colourFunction.test(colour) || /^(transparent|currentcolor|canvas(text)?)$/i.test(colour)
    ? colour
    : null;
}

const colourFunction = /^(rgba?|hsla?|hwb|lab|lch|oklab|oklch|color|color-mix|light-dark)\([^;{}<>"'\\]*\)$/i;

function isDark(ground: string, otherwise: boolean): boolean {
  const rgb = rgbOf(ground);
  return rgb ? contrast(rgb, [1, 1, 1]) > contrast(rgb, [0, 0, 0]) : otherwise;
}

function isPair(text: string, usualText: string, ground: string, usualGround: string): boolean {
  return isName(text, usualText) && isName(ground, usualGround);
}

function isName(colour: string, name: string): boolean {
  return colour.trim().toLowerCase() === name;
}
