// Lighter and darker kinds of a colour, for the faces of bodies.
import { mixed, hexOf, rgbOf, rgbToLab } from "./colours.ts";
import type { Look } from "./look.ts";

/** The colour, `share` of the way to white (above 0) or to black (below 0). A colour of the system stays as it is. */
export function shade(css: string, share: number): string {
  const rgb = rgbOf(css);
  if (!rgb) return css;
  return hexOf(mixed(rgbToLab(rgb), share > 0 ? white : black, Math.abs(share)));
}

/**
 * The colour of a series or slice, counted from 0: after the palette's own comes a row of darker ones, on a dark ground
 * of lighter ones; then they begin anew.
 */
export function seriesColor({ palette, curve, dark }: Pick<Look, "palette" | "curve" | "dark">, index: number): string {
  const own = palette[index % palette.length] ?? curve;
  return Math.floor(index / palette.length) % 2 === 0 ? own : shade(own, dark ? 0.4 : -0.35);
}

/** The colour, nearly transparent. A colour of the system stays as it is. */
export function fading(css: string): string {
  const rgb = rgbOf(css);
  return rgb ? `rgba(${rgb.map((part) => Math.round(part * 255)).join(",")},0.25)` : css;
}

const white = rgbToLab([1, 1, 1]);
const black = rgbToLab([0, 0, 0]);
