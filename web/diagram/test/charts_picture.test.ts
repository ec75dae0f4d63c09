import assert from "node:assert/strict";
import { test } from "node:test";

import { settled } from "../src/charts/svg_text.ts";
import { drawPicture, type PictureRequest } from "../src/picture.ts";
import type { Style } from "../src/settings/style.ts";
import { type Cells, quarters } from "./charts_scene.ts";

const colours = ["#1e73b6", "#c3882f", "#40a486"] as const;
const entities: Record<string, string> = { "&": "&amp;", "<": "&lt;", ">": "&gt;", "\"": "&quot;", "'": "&apos;" };
const escaped = (text: unknown): string => String(text).replace(/[&<>"']/g, (sign) => entities[sign] ?? sign);

function draw(cells: Cells, style: Partial<Style> = {}, others: Partial<PictureRequest> = {}): string {
  const [columns = [], ...rows] = cells;
  const list = (name: string, element: string, texts: readonly unknown[]): string =>
    `<${name}>${texts.map((text) => `<${element}>${escaped(text)}</>`).join("")}</>`;
  const { settings = {}, ...rest } = others;
  return drawPicture({
    settings: {
      XmlStyle: `<xml>${Object.entries(style).map(([name, value]) => `<${name}>${escaped(value)}</>`).join("")}</>`,
      XmlContents: `<xml>${list("rows", "row", rows.map(([label]) => label))}${list("cols", "col", columns)}` +
        `${list("data", "value", rows.flatMap((row) => row.slice(1)))}</>`,
      ...settings,
    },
    width: 480,
    height: 320,
    isDark: false,
    hasPatterns: false,
    prefix: "p-",
    languages: ["en-US"],
    ...rest,
  });
}

const count = (svg: string, pattern: RegExp): number => (svg.match(pattern) ?? []).length;
const filled = (svg: string, colour: string): number => count(svg, new RegExp(`fill="${colour}"`, "g"));
/** What is read in a picture, in order. */
const texts = (svg: string): string[] =>
  Array.from(svg.matchAll(/<text[^>]*>([^<]*)<\/text>/g), ([, text]) => text ?? "");

test("as many shapes as there are values", () => {
  const bare: Partial<Style> = { HasLegend: false };
  const lone: Cells = [["n"], ["a", 1], ["b", 2], ["c", 2], ["d", 9]];
  const cases: [string, Cells, Partial<Style>, [number, number]][] = [
    ["bars", quarters, {}, [3, 3]],
    ["a gap is no bar", [["A", "B"], ["x", "", 1], ["y", "n/a", 2]], {}, [0, 2]],
    ["boxes have a front each", quarters, { RectStyle: 1 }, [3, 3]],
    ["bars, and a line's points", quarters, { DiagramType: 6 }, [3, 3]],
    ["buckets with values", lone, { DiagramType: 0, BucketCount: 4 }, [2, 0]],
    ["all buckets from the first on", lone, { DiagramType: 10, BucketCount: 4 }, [4, 0]],
    ["a slice for each row of each column", quarters, { DiagramType: 4 }, [2, 2]],
    ["points", quarters, { DiagramType: 3 }, [3, 0]],
    ["bubbles", quarters, { DiagramType: 8 }, [3, 0]],
  ];
  for (const [name, cells, style, expected] of cases) {
    const svg = draw(cells, { ...bare, ...style });
    assert.deepEqual([filled(svg, colours[0]), filled(svg, colours[1])], expected, name);
  }
  assert.equal(count(draw(quarters, { ...bare, RectStyle: 2 }), /<linearGradient/g), 2, "a cylinder's body is shaded");
  const hidden = draw(quarters, {}, { settings: { Visible: "False" } });
  assert.equal(filled(hidden, colours[0]), 0, "nothing of a chart that is not to be seen");
});

test("what is written can be read", () => {
  const has = (svg: string, ...wanted: string[]): boolean => wanted.every((text) => texts(svg).includes(text));
  assert(has(draw(quarters), "Q1", "Q2", "Q3", "North", "South", "40"));
  assert(has(draw(quarters, { BarStyle: 3 }), "0%", "100%"));
  assert(has(draw(quarters, { FormatType: 0, FormatPattern: "0.0 'km'" }), "40.0 km"));
  assert(has(draw(quarters, { ShowSelectedRow: true, RowSelection: 2 }), "40", "10"), "the selected row's values");
  assert(has(draw(quarters, { HasStatistics: true }), "n", "max", "Ø 23.3"));
  assert(has(draw(quarters, { DiagramType: 9 }), "North", "Q3", "30"), "a table");
  assert(has(draw(quarters, { DiagramType: 11 }), "South", "20"), "a heat table");
  assert(has(draw(quarters, {}, { settings: { Caption: "A <caption>" } }), "A &#60;caption&#62;"));
  assert(!has(draw(quarters, { showRowLabels: "False" as unknown as boolean }), "Q1"));
  const negative = draw([["A"], ["x", -5], ["y", 5]], { negativeForeColor: "#b3261e" });
  assert.match(negative, /fill="#b3261e"[^>]*>-/, "negative values have their colour");
});

test("dates have no sum, and no number is too large for an axis of them", () => {
  const days: Cells = [["Due"], ["a", "2024-01-01"], ["b", "2024-03-01"], ["c", "8640000000000000"]];
  const style = { DiagramType: 1, FormatType: 5, HasStatistics: true };
  const read = texts(draw(days.slice(0, 3), style));
  const signs = ["n", "Ø", "min", "max", "Σ", "σ"].filter((sign) => read.includes(sign));
  assert.deepEqual(signs, ["n", "Ø", "min", "max"]);
  assert(read.includes("Jan 31, 2024"), "the mean of two days");
  for (const DiagramType of [0, 1, 3, 5, 7, 10]) {
    for (const wide of [{}, { IsAbsolute: true, yScaleMax: 1e18, xScaleMax: 1e18 }]) {
      assert.match(draw(days, { ...style, ...wide, DiagramType }), /<text/, `type ${DiagramType}`);
    }
  }
});

test("patterns and gradients of two pictures on a page stay apart", () => {
  const ids = (svg: string): string[] => Array.from(svg.matchAll(/ id="([^"]+)"/g), ([, id]) => id ?? "");
  const style = { DiagramType: 5, RectStyle: 3 };
  const drawn = (prefix: string): string => draw(quarters, style, { prefix, hasPatterns: true });
  const [one, other] = [drawn("one-"), drawn("two-")];
  assert(ids(one).length > 0 && ids(one).every((id) => id.startsWith("one-")));
  assert(ids(one).every((id) => !ids(other).includes(id)));
  const used = Array.from(one.matchAll(/url\(#([^)]+)\)/g), ([, id]) => id ?? "");
  assert(used.length > 0 && used.every((id) => ids(one).includes(id)), "what refers to them has followed");
});

test("a picture needs no style attributes", () => {
  const svg = settled(
    `<style>.a{}</style><g id="c0"/><text style="font-size:12px;font-family:&quot;A B&quot;, serif;cursor:pointer"` +
    ` clip-path="url(#c0)" class="a">url(#c0) style="x"</text>`, "p-");
  assert.equal(svg, `<g id="p-c0"/><text font-size="12px" font-family="'A B', serif" clip-path="url(#p-c0)">` +
    `url(#c0) style="x"</text>`, "texts stay as they are");
});

/** Throws unless all elements are closed in their order. */
function checkNesting(svg: string, name: string): void {
  const open: string[] = [];
  for (const [, end, tag, single] of svg.matchAll(/<(\/?)([a-zA-Z]+)(?:\s+[\w:-]+="[^"<]*")*\s*(\/?)>/g)) {
    if (end) assert.equal(open.pop(), tag, name);
    else if (!single) open.push(tag ?? "");
  }
  assert.deepEqual(open, [], name);
  assert.equal(count(svg, /</g), count(svg, /<\/?[a-zA-Z]+(?:\s+[\w:-]+="[^"<]*")*\s*\/?>/g), `${name}: a stray sign`);
}

test("no data make a drawing fail, or leave its form", () => {
  const many = Array.from({ length: 1000 }, (_, row) => [`row ${row}`, Math.sin(row) * 50, row]);
  const few = many.slice(0, 40);
  const tables: [string, Cells][] = [
    ["nothing", [[]]],
    ["labels alone", [["A", "B"]]],
    ["one cell", [["A"], ["x", 42]]],
    ["gaps alone", [["A", "B"], ["x", "", "-"], ["y", "n/a", ""]]],
    ["zeros", [["A", "B"], ["x", 0, 0], ["y", 0, 0]]],
    ["negative values", [["A", "B", "C"], ["x", -1, -2, -3], ["y", -4, 0, 6]]],
    ["huge and tiny", [["A", "B", "C"], ["x", "1e308", "-1e308", "1e-320"], ["y", "1e-320", "1e308", 0]]],
    ["markup", [["{a|x}", "</text><script>", "&amp;"], ["\"'><img onerror=x>", 1, 2, 3], ["a\u0007\nb\ud800", 4, 5, 6],
      ["W".repeat(3000), 7, 8, 9], ["", 1, 1, 1]]],
    ["many rows", [["A", "B"], ...many]],
    ["many columns", [few.map(([label]) => label ?? ""), ["x", ...few.map(([, value]) => value ?? 0)]]],
  ];
  const styles: Partial<Style>[] = [
    { ShowRowTitle: true, ShowColTitle: true, HasStatistics: true, CurveStyle: 2, RowSelection: 1,
      ShowSelectedRow: true },
    { IsRotated: true, Reverse: 3, LabelStyle: 3, RectStyle: 1, PieStyle: 1, BarStyle: 3, HasSecondYAxis: true,
      Thickness: 32000 },
    { IsAbsolute: true, yScaleMin: -1e308, yScaleMax: 1e308, xScaleMin: 1e308, xScaleMax: -1e308, BucketCount: 32000,
      PieAngle: 1e300, PieType: 2, PieStyle: 2, CurveStyle: 1, FontSize: 400 },
  ];
  for (const [table, cells] of tables) {
    for (const [index, style] of styles.entries()) {
      for (let DiagramType = 0; DiagramType <= 12; DiagramType += 1) {
        const name = `${table}, style ${index}, type ${DiagramType}`;
        const words: Partial<Style> = Object.fromEntries(Object.entries({ ...style, DiagramType }).map(([key, value]) =>
          [key, typeof value === "boolean" ? (value ? "True" : "False") : value]));
        const svg = draw(cells, words, index === 0 ? { width: 60, height: 40 } : {});
        checkNesting(svg, name);
        assert.equal(count(svg, /NaN|Infinity|undefined|<script|<img| style=| on\w+=(?=[^<]*>)/g), 0, name);
      }
    }
  }
});
