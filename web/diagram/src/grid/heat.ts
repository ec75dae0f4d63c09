// The colours of a heat table: from the ground to the palette's first colour, or, with values of both signs, from its
// opposite over the ground at zero to it.
import { extent } from "../data/extent.ts";
import type { Table } from "../data/table.ts";
import type { Look } from "../look/look.ts";
import { contrast, hexOf, type Lab, mixed, readableOn, rgbOf, rgbToLab } from "../look/colours.ts";

export interface HeatColours {
  readonly ground: string;
  /** For the text on it. */
  readonly text: string;
}

export interface HeatScale {
  readonly least: number;
  readonly greatest: number;
  /** Values have both signs: zero is in the middle, and both sides have the same measure. */
  readonly diverging: boolean;
  coloursOf(value: number): HeatColours;
}

// The palest cell is a little darker than the ground, so that it is told from a gap.
const palest = 0.06;
// Few enough to be worked out once, more than the eye tells apart.
const steps = 64;
// A contrast; 4.5 is the least at which small texts can be read.
const easilyRead = 5.5;
const darkText = "#0b0d10";
const lightText = "#ffffff";

/** The scale of a table's numbers; null where it has none. */
export function heatScale(table: Table, look: Look): HeatScale | null {
  const values = table.cells.flatMap((row) => row.map((cell) => cell.number).filter(isFiniteNumber));
  const { least, greatest } = extent(values);
  if (least > greatest) return null;
  const diverging = least < 0 && greatest > 0;
  const sizes = [Math.abs(least), Math.abs(greatest)].sort((a, b) => a - b);
  const [from = 0, to = 0] = diverging ? [0, sizes[1]] : sizes;
  const share = (value: number): number =>
    to === from ? 0.5 : Math.min((Math.abs(value) - from) / (to - from), 1);
  const { palette, plotText, negative } = look;
  const first = palette[0] ?? look.curve;
  const usual: Ink = (paper) => textOn(paper, plotText);
  const up = ramp(look, first, diverging, usual);
  // The colour that the author wants for negative values holds here, too, as far as it can be read.
  const below: Ink = negative === null ? usual : (paper) => readableOn(paper, negative);
  const down = ramp(look, diverging ? opposite(palette) : first, diverging, below);
  return { least, greatest, diverging, coloursOf: (value) => (value < 0 ? down : up)(share(value)) };
}

/** The colour of a text on a ground. */
type Ink = (paper: string) => string;

/** Whether two scales of one look give equal values equal colours. */
export function sameScale(one: HeatScale | null, other: HeatScale | null): boolean {
  return one?.least === other?.least && one?.greatest === other?.greatest;
}

/** From the share of the way to its colours. */
function ramp(look: Look, end: string, fromZero: boolean, ink: Ink): (share: number) => HeatColours {
  const ground = rgbToLab(rgbOf(look.plotGround) ?? (look.dark ? [0, 0, 0] : [1, 1, 1]));
  const full = deepened(rgbToLab(rgbOf(end) ?? [0, 0.4, 0.7]), look.dark);
  const first = fromZero ? 0 : palest;
  const known = new Map<number, HeatColours>();
  return (share) => {
    const step = Math.round(share * steps);
    let colours = known.get(step);
    if (!colours) {
      const paper = hexOf(mixed(ground, full, first + (1 - first) * (step / steps)));
      colours = { ground: paper, text: ink(paper) };
      known.set(step, colours);
    }
    return colours;
  };
}

/** The usual colour of texts while it can be read with ease; else the darker or lighter one that can. */
function textOn(ground: string, usual: string): string {
  const paper = rgbOf(ground) ?? [1, 1, 1];
  const stands = (css: string): number => contrast(paper, rgbOf(css) ?? paper);
  if (stands(usual) >= easilyRead) return usual;
  return readableOn(ground, stands(darkText) > stands(lightText) ? darkText : lightText);
}

/** The end of a ramp is a strong colour: it must stand apart from the ground more than a series' colour does. */
function deepened([lightness, a, b]: Lab, dark: boolean): Lab {
  return [dark ? Math.max(lightness, 0.72) : Math.min(lightness, 0.48), a, b];
}

/** The palette's colour whose hue is farthest from the first one's. */
function opposite(palette: readonly string[]): string {
  const hues = palette.map((css) => rgbToLab(rgbOf(css) ?? [0.5, 0.5, 0.5]));
  const first = hues[0] ?? [0, 0, 0];
  const likeness = hues.map((hue) => hue[1] * first[1] + hue[2] * first[2]);
  return palette[likeness.indexOf(extent(likeness).least)] ?? "#c2500a";
}

function isFiniteNumber(value: number | null): value is number {
  return value !== null && Number.isFinite(value);
}
