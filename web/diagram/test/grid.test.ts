// What of tables needs no browser: selection, order, sizes, heat colours, walking, and texts for other programs.
import assert from "node:assert/strict";
import { test } from "node:test";

import type { CellPlace, Scene } from "../src/charts/chart.ts";
import { extent } from "../src/data/extent.ts";
import type { Table } from "../src/data/table.ts";
import { tableOf } from "../src/data/table.ts";
import { numberOfText } from "../src/settings/numbers.ts";
import { freshArrangement, moved, sorted } from "../src/grid/arrangement.ts";
import { contrast, rgbOf } from "../src/look/colours.ts";
import { heatScale } from "../src/grid/heat.ts";
import { bandsFor } from "../src/grid/paper_bands.ts";
import { neededWidth, shared, sizesOf } from "../src/grid/sizes.ts";
import { plainReading, settleLook } from "../src/look/theme.ts";
import { placeOf } from "../src/parts/placement.ts";
import { placeOfClick, selectionAfter } from "../src/host/selection.ts";
import { csvOf, tabTextOf } from "../src/data/table_text.ts";
import { textsOf } from "../src/host/texts.ts";
import { stepInChart } from "../src/parts/walk.ts";
import { defaultStyle } from "../src/settings/read_style.ts";

function tableWith(columns: string[], rows: string[], values: string[]): Table {
  return tableOf({ rowTitle: "Region", columnTitle: "", valueTitle: "", rows, columns, values },
    { transposed: false, numberOf: numberOfText });
}

test("what a click selects", () => {
  const order = { rows: [2, 0, 1], columns: [0, 1] };
  const cell = (text: string): CellPlace => {
    const [row = 0, column = 0] = text.split(" ").map(Number);
    return { row, column };
  };
  const extended = { multiple: true, extended: true };
  // Clicks as "row column" with + for Ctrl and / for Shift in front; -1 for whole rows and columns.
  const cases: { name: string; multiple?: boolean; extended?: boolean; clicks: string[]; selects: string[] }[] = [
    { name: "the last one alone", clicks: ["0 0", "1 1"], selects: ["1 1"] },
    { name: "Ctrl without more than one", clicks: ["0 0", "+1 1"], selects: ["1 1"] },
    { name: "Ctrl takes the only one away", clicks: ["0 0", "+0 0"], selects: [] },
    { name: "Shift without more than one", clicks: ["0 0", "/1 1"], selects: ["1 1"] },
    { name: "plain clicks begin anew", multiple: true, clicks: ["0 0", "+1 1", "2 0"], selects: ["2 0"] },
    { name: "Ctrl adds and takes away", multiple: true, clicks: ["0 0", "+1 1", "+0 0"], selects: ["1 1"] },
    { name: "a range as shown", multiple: true, clicks: ["2 0", "/0 1"], selects: ["2 0", "2 1", "0 0", "0 1"] },
    { name: "backwards, then shorter", multiple: true, clicks: ["1 0", "/2 0", "/0 0"], selects: ["0 0", "1 0"] },
    { name: "a range that adds", multiple: true, clicks: ["1 1", "+2 0", "+/0 0"], selects: ["1 1", "2 0", "0 0"] },
    { name: "whole rows", multiple: true, clicks: ["2 -1", "/1 -1"], selects: ["2 -1", "0 -1", "1 -1"] },
    { name: "no range from a row to a column", multiple: true, clicks: ["2 -1", "/-1 1"], selects: ["-1 1"] },
    { name: "extended: on and off", ...extended, clicks: ["0 0", "1 1", "0 0"], selects: ["1 1"] },
    { name: "extended: ranges add", ...extended, clicks: ["1 1", "2 0", "/0 0"], selects: ["1 1", "2 0", "0 0"] },
    { name: "extended without more than one", ...extended, multiple: false, clicks: ["0 0", "1 1"], selects: ["1 1"] },
  ];
  for (const { name, clicks, selects, ...rule } of cases) {
    const rules = {
      SelectionMode: 3, MultipleSelection: rule.multiple ?? false, ExtendedSelection: rule.extended ?? false,
    };
    const start: ReturnType<typeof selectionAfter> = { cells: [], anchor: null };
    const after = clicks.reduce((before, click) => selectionAfter(before, {
      place: cell(click.replace(/[+/]/g, "")), toggle: click.includes("+"), range: click.includes("/"),
    }, rules, order), start);
    assert.deepEqual(after.cells.map(({ row, column }) => `${row} ${column}`), selects, name);
  }
  const at = { row: 4, column: 5 };
  assert.deepEqual([0, 1, 2, 3, 9].map((mode) => placeOfClick(mode, at)),
    [null, { row: -1, column: 5 }, { row: 4, column: -1 }, at, null]);
});

test("sorting: numbers, then texts, then gaps; equal ones keep their order, fixed ones their place", () => {
  const texts = ["10", "9", "b", "", "-1", "a10", "a9", "9"];
  const order = texts.map((_, index) => index);
  const by = (fixed: number, descending: boolean): string => sorted(order, fixed, descending, (index) =>
    ({ text: texts[index] ?? "", number: numberOfText(texts[index] ?? "") })).join(" ");
  assert.equal(by(0, false), "4 1 7 0 6 5 2 3");
  assert.equal(by(0, true), "0 1 7 4 2 5 6 3");
  assert.equal(by(2, false), "0 1 4 7 6 5 2 3");
  assert.deepEqual([moved([5, 6, 7], 0, 2), moved([5, 6, 7], 2, 1)], [[6, 7, 5], [5, 7, 6]]);
});

test("a range of more numbers than a call takes arguments", () => {
  assert.deepEqual(extent(Array.from({ length: 500_000 }, (_, index) => index - 3)), { least: -3, greatest: 499_996 });
});

test("columns share the width", () => {
  const cases: [string, number[], (number | undefined)[], number, number[]][] = [
    ["equally", [10, 20, 30], [], 300, [100, 100, 100]],
    ["to the last pixel", [10, 10, 10], [], 101, [34, 34, 33]],
    ["but for one that needs more", [150, 20, 30], [], 250, [150, 50, 50]],
    ["as far as it goes", [150, 120, 30], [], 200, [150, 120, 30]],
    ["beside what the reader has set", [50, 20, 30], [undefined, 200, undefined], 400, [100, 200, 100]],
    ["of no columns", [], [], 100, []],
  ];
  for (const [name, needs, set, room, widths] of cases) assert.deepEqual(shared(needs, set, room), widths, name);
});

test("sizes of cells and labels", () => {
  const table = tableWith(["a", "wide one"], ["first", "a label of two words"], ["1", "2", "two\nlines", "4"]);
  const look = settleLook(defaultStyle(), plainReading);
  const format = { text: (text: string) => text, number: String, share: String };
  const measure = (text: string): number => text.length * 10;
  const padding = 17;
  const cases: { name: string; style: object; label: number; columns: number[]; rows: number[] }[] = [
    { name: "sharing", style: {}, label: 223, columns: [289, 288], rows: [20, 34] },
    { name: "sharing too little", style: { RowLabelWidth: 30 }, label: 223, columns: [289, 288], rows: [20, 34] },
    { name: "own", style: { AutoResize: false }, label: 223, columns: [80, 80 + padding], rows: [20, 34] },
    { name: "wider", style: { AutoResize: false, DefaultColWidth: 120, RowLabelWidth: 250, DefaultRowHeight: 40 },
      label: 250, columns: [120, 120], rows: [40, 40] },
    { name: "equal", style: { AutoResize: false, EqualCols: true, EqualRows: true }, label: 223, columns: [97, 97],
      rows: [34, 34] },
    { name: "without labels", style: { showRowLabels: false }, label: 0, columns: [400, 400], rows: [20, 34] },
  ];
  for (const { name, style, label, columns, rows } of cases) {
    const scene = { style: { ...defaultStyle(), ...style }, table, look, format } as unknown as Scene;
    const arrangement = freshArrangement(table);
    const needOf = (column: number): number => neededWidth(scene, column, measure);
    const sizes = sizesOf({ scene, arrangement, measure, needOf, available: 800 });
    assert.deepEqual([sizes.labelWidth, sizes.columnWidths, [0, 1].map(sizes.rowHeight)], [label, columns, rows], name);
  }
  const needOf = (text: string): number => {
    const scene = { style: defaultStyle(), table: tableWith(["a"], ["r"], [text]), look, format };
    return neededWidth(scene as unknown as Scene, 0, measure);
  };
  assert.deepEqual(["1", "x"].map((sign) => needOf(sign.repeat(40))), [400 + padding, 320], "numbers are not cut off");
});

test("bands of columns for paper", () => {
  const cases: [string, number[], number, number[], number][] = [
    ["all have room", [10, 10], 30, [2], 25],
    ["as wide as each other", [10, 10, 10, 10, 10, 10], 50, [3, 3], 35],
    ["a wide column by itself", [10, 60, 10], 50, [1, 1, 1], 65],
    ["fewest bands", [20, 5, 5, 20, 5, 5, 20], 36, [3, 3, 1], 35],
  ];
  for (const [name, needs, room, counts, ems] of cases) {
    const bands = bandsFor(5, needs, room);
    assert.deepEqual(bands.counts, counts, name);
    assert(Math.abs(bands.ems - ems) < 1e-9, `${name}: ${bands.ems}`);
  }
});

test("heat colours", () => {
  for (const dark of [false, true]) {
    const look = settleLook(defaultStyle(), { ...plainReading, dark });
    const distance = (values: string[], value: number): number => {
      const scale = heatScale(tableWith(["a"], values, values), look);
      const ground = rgbOf(scale?.coloursOf(value).ground ?? "");
      return ground ? contrast(ground, rgbOf(look.plotGround) ?? ground) : NaN;
    };
    const rises = (values: string[], steps: number[]): boolean =>
      steps.every((step, index) => index === 0 || distance(values, step) > distance(values, steps[index - 1] ?? 0));
    assert(rises(["0", "10"], [0, 3, 6, 10]), "more is stronger");
    assert(rises(["-2", "-10"], [-2, -6, -10]), "so is less, of negative values");
    assert(rises(["-5", "10"], [0, 5, 10]) && rises(["-5", "10"], [0, -2, -5]), "from zero to both sides");
    assert.equal(distance(["-5", "10"], 0), 1, "zero is the ground");
    const alone = heatScale(tableWith(["a"], ["r"], ["7"]), look);
    assert.match(alone?.coloursOf(7).ground ?? "", /^#[0-9a-f]{6}$/);
  }
  const red = settleLook({ ...defaultStyle(), negativeForeColor: "red" }, plainReading);
  for (const values of [["-9", "9"], ["-9", "-1"]]) {
    const scale = heatScale(tableWith(["a"], values, values), red);
    for (const value of [-1, -4, -9]) {
      const { ground, text } = scale?.coloursOf(value) ?? { ground: "", text: "" };
      const paper = rgbOf(ground) ?? [0, 0, 0];
      const [r, g, b] = rgbOf(text) ?? [0, 0, 0];
      assert(r > g && r > b && contrast([r, g, b], paper) >= 4.5, `red, and readable: ${text} on ${ground}`);
    }
    assert.notEqual(scale?.coloursOf(9).text, scale?.coloursOf(-9).text);
  }
  assert.equal(heatScale(tableWith(["a"], ["r"], ["n/a"]), settleLook(defaultStyle(), plainReading)), null);
});

test("walking starts at the first value and stays with the series that a tab shows", () => {
  const table = tableWith(["a", "b"], ["r", "s"], ["1", "2", "3", "4"]);
  const scene = { style: defaultStyle(), table, series: 1 } as Scene;
  assert.deepEqual(stepInChart(scene, null, "ArrowRight"), { row: 0, column: 1 });
  assert.deepEqual(stepInChart(scene, { row: 0, column: 1 }, "ArrowUp"), { row: 0, column: 1 });
  assert.deepEqual(stepInChart(scene, { row: 0, column: 0 }, "ArrowRight"), { row: 1, column: 1 });
  assert.equal(stepInChart(scene, null, "x"), null);
  assert.equal(stepInChart({ ...scene, table: tableWith([], [], []), series: null }, null, "ArrowRight"), null);
});

test("panels open inside the window", () => {
  const window = { width: 400, height: 300 };
  const size = { width: 100, height: 80 };
  const point = (x: number, y: number) => ({ left: x, right: x, top: y, bottom: y });
  const item = { left: 250, right: 350, top: 260, bottom: 280 };
  const cases: [string, ReturnType<typeof placeOf>, number, number][] = [
    ["below the pointer", placeOf(size, point(50, 60), false, window, false), 50, 60],
    ["before it at the right, over it at the end", placeOf(size, point(390, 290), false, window, false), 290, 210],
    ["pushed inside", placeOf({ width: 390, height: 290 }, point(200, 150), false, window, false), 6, 6],
    ["a submenu at the other side", placeOf(size, item, true, window, false), 150, 200],
    ["from right to left", placeOf(size, point(150, 60), false, window, true), 50, 60],
  ];
  for (const [name, place, left, top] of cases) assert.deepEqual(place, { left, top }, name);
});

test("the table for other programs", () => {
  const table = tableWith(['Q"1', "Q2"], ["No,rth", "South"], ["1", "2\n3", "", "x\ty"]);
  assert.equal(csvOf(table), 'Region,"Q""1",Q2\r\n"No,rth",1,"2\n3"\r\nSouth,,x\ty\r\n');
  assert.equal(tabTextOf(table), 'Region\tQ"1\tQ2\nNo,rth\t1\t2 3\nSouth\t\tx y');
  assert.equal(csvOf({ ...tableWith([], [], []), rowTitle: "" }), '""\r\n');
  const shown: Record<string, string> = {
    "=A1": "'=A1", "@SUM": "'@SUM", "-A1": "'-A1", "+1-A1": "'+1-A1", "\t=1": "' =1", "＝1": "'＝1",
    "-5": "-5", "-1e3": "-1e3", "-5.5 €": "-5.5 €", "+49 30 5": "+49 30 5", "a=b": "a=b",
  };
  for (const [text, wanted] of Object.entries(shown)) {
    assert.equal(tabTextOf(tableWith([], [text], [text])), `Region\t\n${wanted}\t${wanted}`, "formulas are texts");
  }
});

test("our own words follow the language", () => {
  assert.deepEqual(["de-AT", "EN", "ja", ""].map((tag) => textsOf(tag)("moved", "A", 1, 2)),
    ["A: Platz 1 von 2", "A: place 1 of 2", "A: place 1 of 2", "A: place 1 of 2"]);
});
