import assert from "node:assert/strict";
import { test } from "node:test";

import { contrast, type Rgb, rgbOf, rgbToLab } from "../src/look/colours.ts";
import type { Look } from "../src/look/look.ts";
import { dark, light } from "../src/look/palette.ts";
import { seriesColor } from "../src/look/shades.ts";
import { plainReading, type Reading, settleLook } from "../src/look/theme.ts";
import { defaultStyle } from "../src/settings/read_style.ts";
import type { Style } from "../src/settings/style.ts";

const rgb = (css: string): Rgb => rgbOf(css) ?? [0, 0, 0];

// How readers see colours who lack one kind of cone (Machado, Oliveira and Fernandes, 2009; on linear light).
const sights = {
  usual: [[1, 0, 0], [0, 1, 0], [0, 0, 1]],
  protan: [[0.152286, 1.052583, -0.204868], [0.114503, 0.786281, 0.099216], [-0.003882, -0.048116, 1.051998]],
  deutan: [[0.367322, 0.860646, -0.227968], [0.280085, 0.672501, 0.047413], [-0.01182, 0.04294, 0.968881]],
  tritan: [[1.255528, -0.076749, -0.178779], [-0.078411, 0.930809, 0.147602], [0.004733, 0.691367, 0.3039]],
} as const;

function seen(colour: Rgb, sight: readonly (readonly number[])[]): readonly number[] {
  const linear = colour.map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
  const mixed = sight.map((row) => row.reduce((sum, share, index) => sum + share * (linear[index] ?? 0), 0));
  const [r = 0, g = 0, b = 0] = mixed.map((part) => {
    const value = Math.min(Math.max(part, 0), 1);
    return value <= 0.0031308 ? value * 12.92 : 1.055 * value ** (1 / 2.4) - 0.055;
  });
  return rgbToLab([r, g, b]);
}

test("colours can be told from the ground, and from each other by every reader", () => {
  for (const [name, { palette, ground, text, plotText }] of Object.entries({ light, dark })) {
    for (const colour of palette) assert(contrast(rgb(colour), rgb(ground)) >= 3, `${name} ${colour} on the ground`);
    for (const colour of [text, plotText]) assert(contrast(rgb(colour), rgb(ground)) >= 4.5, `${name} texts`);
    for (const [sight, matrix] of Object.entries(sights)) {
      const places = palette.map((colour) => seen(rgb(colour), matrix));
      places.forEach((one, index) => places.slice(0, index).forEach((other, before) => {
        const away = Math.hypot(...one.map((part, axis) => part - (other[axis] ?? 0)));
        assert(away >= 0.065, `${name}, ${sight}: ${palette[index]} and ${palette[before]} (${away.toFixed(3)})`);
      }));
    }
  }
});

test("series beyond the palette have colours of their own", () => {
  for (const [isDark, scheme] of [[false, light], [true, dark]] as const) {
    const look = settleLook(defaultStyle(), { ...plainReading, dark: isDark });
    const colours = Array.from({ length: 16 }, (_, index) => seriesColor(look, index));
    assert.equal(new Set(colours).size, 16);
    for (const colour of colours) assert(contrast(rgb(colour), rgb(scheme.ground)) >= 3, `${colour} on the ground`);
  }
});

test("a look follows the style, the page and the reader", () => {
  const cases: [string, Partial<Style>, Partial<Reading>, Partial<Look>][] = [
    ["the scheme", {}, { dark: true }, { ground: dark.ground, text: dark.text, grid: dark.grid, dark: true }],
    ["own colours do not follow it", { BackgroundColor: "ivory" }, { dark: true },
      { ground: "ivory", text: "black", plotGround: "white", dark: false, palette: light.palette }],
    ["a dark plot has the bright palette", { BackColor: "#102030" }, {}, { dark: true, palette: dark.palette }],
    ["the page's colours", {}, { custom: { "--plexoras-text": " #123456 ", "--plexoras-grid": "oklch(0.9 0 0)" } },
      { text: "#123456", grid: "oklch(0.9 0 0)" }],
    ["no address is a colour", { GridColor: "url(https://a.example/)", ForegroundColor: "constructor" },
      { custom: { "--plexoras-ground": "url(x)" } }, { grid: light.grid, text: "black" }],
    ["the curve", { CurveColor: "tomato" }, {}, { curve: "tomato", drawnCurve: "tomato" }],
    ["the usual curve", {}, {}, { curve: light.palette[0] ?? "", drawnCurve: null }],
    ["negative values", { negativeForeColor: "#b3261e" }, {}, { negative: "#b3261e" }],
    ["on their own ground as well", { negativeForeColor: "#b3261e", BackColor: "#111" }, { dark: true },
      { negative: "#b3261e" }],
    ["none of their own", {}, {}, { negative: null }],
    ["the page's font", {}, { font: "Georgia" }, { fontFamily: "Georgia" }],
    ["the page's word for it", {}, { font: "Georgia", custom: { "--plexoras-font": "Inter" } },
      { fontFamily: "Inter" }],
    ["a font by name", { FontName: "Comic'; x:y" }, { font: "serif" }, { fontFamily: "'Comic x:y', serif" }],
    ["the system's colours", { ForegroundColor: "red" }, { forced: true }, { text: "CanvasText", patterns: true }],
  ];
  for (const [name, style, reading, expected] of cases) {
    const look = settleLook({ ...defaultStyle(), ...style }, { ...plainReading, ...reading });
    for (const [key, value] of Object.entries(expected)) {
      assert.deepEqual(look[key as keyof Look], value, `${name}: ${key}`);
    }
  }
  const { negative } = settleLook({ ...defaultStyle(), negativeForeColor: "#b3261e" }, { ...plainReading, dark: true });
  assert(contrast(rgb(negative ?? ""), rgb(dark.ground)) >= 4.5, "readable where the ground follows the reader");
});
