// Colours as numbers: mixing that looks even to the eye, and contrast for readable texts.
import { color } from "echarts/core";

/** Red, green and blue, each from 0 to 1. */
export type Rgb = readonly [number, number, number];

/** Lightness, green to red, blue to yellow: the OKLab space, in which equal steps look equal. */
export type Lab = readonly [number, number, number];

/** What a colour text says; null for one that only the browser knows, as CanvasText. */
export function rgbOf(css: string): Rgb | null {
  const [red, green, blue] = color.parse(css) ?? [];
  return red === undefined || green === undefined || blue === undefined ? null : [red / 255, green / 255, blue / 255];
}

export function hexOf(rgb: Rgb): string {
  return "#" + rgb.map((part) => Math.round(clamped(part) * 255).toString(16).padStart(2, "0")).join("");
}

/** How well two colours stand apart, from 1 to 21; texts need 4.5. */
export function contrast(one: Rgb, other: Rgb): number {
  const [dark = 0, light = 0] = [luminance(one), luminance(other)].sort((a, b) => a - b);
  return (light + 0.05) / (dark + 0.05);
}

/** The colour `share` of the way from one to the other. */
export function mixed(from: Lab, to: Lab, share: number): Rgb {
  const at = (index: 0 | 1 | 2): number => from[index] + (to[index] - from[index]) * share;
  return labToRgb([at(0), at(1), at(2)]);
}

/** A colour for texts on a ground: the wanted one, or the nearest to it that can be read there. */
export function readableOn(ground: string, wanted: string): string {
  const [paper, ink] = [rgbOf(ground), rgbOf(wanted)];
  if (!paper || !ink || contrast(paper, ink) >= readable) return wanted;
  const end: Rgb = contrast(paper, black) > contrast(paper, white) ? black : white;
  for (let share = 0.05; share < 1; share += 0.05) {
    const candidate = mixed(rgbToLab(ink), rgbToLab(end), share);
    if (contrast(paper, candidate) >= readable) return hexOf(candidate);
  }
  return hexOf(end);
}

const readable = 4.55;
const black: Rgb = [0, 0, 0];
const white: Rgb = [1, 1, 1];

export function rgbToLab(rgb: Rgb): Lab {
  const [r, g, b] = [linear(rgb[0]), linear(rgb[1]), linear(rgb[2])];
  const l = Math.cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
  const m = Math.cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
  const s = Math.cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
  return [
    0.2104542553 * l + 0.793617785 * m - 0.0040720468 * s,
    1.9779984951 * l - 2.428592205 * m + 0.4505937099 * s,
    0.0259040371 * l + 0.7827717662 * m - 0.808675766 * s,
  ];
}

function labToRgb([lightness, a, b]: Lab): Rgb {
  const l = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3;
  const m = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3;
  const s = (lightness - 0.0894841775 * a - 1.291485548 * b) ** 3;
  return [
    curved(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
    curved(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
    curved(-0.0041960863 * l - 0.7034186147 * m + 1.707614701 * s),
  ];
}

function luminance([red, green, blue]: Rgb): number {
  return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

function linear(part: number): number {
  return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
}

function curved(part: number): number {
  const value = clamped(part);
  return value <= 0.0031308 ? value * 12.92 : 1.055 * value ** (1 / 2.4) - 0.055;
}

function clamped(part: number): number {
  return Math.min(Math.max(part, 0), 1);
}
