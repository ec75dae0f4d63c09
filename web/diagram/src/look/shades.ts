// Lighter and darker kinds of a colour, for the faces of bodies.
import { mixed, hexOf, rgbOf, rgbToLab } from "../grid/colours.ts";

/** The colour, `share` of the way to white (above 0) or to black (below 0). A colour of the system stays as it is. */
export function shade(css: string, share: number): string {
  const rgb = rgbOf(css);
  if (!rgb) return css;
  return hexOf(mixed(rgbToLab(rgb), share > 0 ? white : black, Math.abs(share)));
}

/** The colour, nearly transparent. A colour of the system stays as it is. */
export function fading(css: string): string {
  const rgb = rgbOf(css);
  return rgb ? `rgba(${rgb.map((part) => Math.round(part * 255)).join(",")},0.25)` : css;
}

const white = rgbToLab([1, 1, 1]);
const black = rgbToLab([0, 0, 0]);
