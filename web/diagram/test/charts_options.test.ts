import assert from "node:assert/strict";
import { test } from "node:test";

import { util } from "echarts/core";

import type { Scene } from "../src/charts/chart.ts";
import { type Api, uncopied } from "../src/charts/custom.ts";
import { evenPlane } from "../src/charts/even_plane.ts";
import { buildOption } from "../src/charts/index.ts";
import { uniqueNames } from "../src/charts/text.ts";
import { shade } from "../src/look/shades.ts";
import type { Style } from "../src/settings/style.ts";
import { type Cells, quarters, sceneOf } from "./charts_scene.ts";

/** What stands in an option at a path: `xAxis.0.type`. */
function at(option: unknown, path: string): unknown {
  return path.split(".").reduce<unknown>((value, key) => (value as Record<string, unknown> | undefined)?.[key], option);
}

interface Series {
  readonly type: string;
  readonly name: string;
  readonly data: readonly { readonly value: unknown; readonly cell?: readonly [number, number] }[];
}

const seriesOf = (scene: Scene): readonly Series[] => at(buildOption(scene), "series") as Series[];

test("a style has its place in the option", () => {
  const line: Partial<Style> = { DiagramType: 1 };
  const cases: [string, Partial<Style>, string, unknown][] = [
    ["categories lie", {}, "xAxis.0.type", "category"],
    ["rotated, they stand", { IsRotated: true }, "yAxis.0.type", "category"],
    ["and read downward", { IsRotated: true }, "yAxis.0.inverse", true],
    ["or upward", { IsRotated: true, Reverse: 1 }, "yAxis.0.inverse", false],
    ["x reversed", { Reverse: 1 }, "xAxis.0.inverse", true],
    ["y reversed", { Reverse: 2 }, "yAxis.0.inverse", true],
    ["y as it is", { Reverse: 1 }, "yAxis.0.inverse", false],
    ["labels below", {}, "xAxis.0.position", "bottom"],
    ["labels at the right", { LabelStyle: 1 }, "yAxis.0.position", "right"],
    ["labels above", { LabelStyle: 2 }, "xAxis.0.position", "top"],
    ["labels above, left", { LabelStyle: 2 }, "yAxis.0.position", "left"],
    ["no labels", { showRowLabels: false }, "xAxis.0.axisLabel.show", false],
    ["grid of y", {}, "yAxis.0.splitLine.show", true],
    ["no grid of x", {}, "xAxis.0.splitLine.show", false],
    ["rotated, the grid of y goes with it", { IsRotated: true }, "xAxis.0.splitLine.show", true],
    ["row title", { ShowRowTitle: true }, "xAxis.0.name", "Quarter"],
    ["no row title", {}, "xAxis.0.name", ""],
    ["bars begin at zero", {}, "yAxis.0.scale", false],
    ["lines fit the data", line, "yAxis.0.scale", true],
    ["areas begin at zero", { DiagramType: 2 }, "yAxis.0.scale", false],
    ["absolute lines begin at zero", { ...line, IsAbsolute: true }, "yAxis.0.scale", false],
    ["absolute with a range", { IsAbsolute: true, yScaleMin: 5, yScaleMax: 50 }, "yAxis.0.min", 5],
    ["its ends the wrong way round", { IsAbsolute: true, yScaleMin: 50, yScaleMax: 5 }, "yAxis.0.max", 50],
    ["a range without absolute", { yScaleMin: 5, yScaleMax: 50 }, "yAxis.0.max", undefined],
    ["a whole ends at 100 %", { BarStyle: 3 }, "yAxis.0.max", 1],
    ["shares need no whole", { BarStyle: 2 }, "yAxis.0.max", undefined],
    ["a second y axis", { ...line, HasSecondYAxis: true }, "yAxis.1.position", "right"],
    ["opposite to the first", { ...line, HasSecondYAxis: true, LabelStyle: 1 }, "yAxis.1.position", "left"],
    ["none with shares", { ...line, HasSecondYAxis: true, BarStyle: 2 }, "yAxis.1", undefined],
    ["the last column is on it", { ...line, HasSecondYAxis: true }, "series.1.yAxisIndex", 1],
    ["rotated as well", { ...line, HasSecondYAxis: true, IsRotated: true }, "series.1.xAxisIndex", 1],
    ["stacked", { ...line, BarStyle: 1 }, "series.0.stack", "lines"],
    ["not stacked", line, "series.0.stack", undefined],
    ["thick lines", { ...line, Thickness: 5 }, "series.0.lineStyle.width", 5],
    ["straight", line, "series.0.smooth", false],
    ["filled", { ...line, CurveStyle: 2 }, "series.0.areaStyle.opacity", 0.34],
    ["cross lines", { CrossColor: "red" }, "tooltip.axisPointer.lineStyle.color", "red"],
    ["texts only", {}, "tooltip.renderMode", "richText"],
    ["legend", {}, "legend.0.data.1.name", "South"],
    ["no legend", { HasLegend: false }, "legend.show", false],
    ["no names, no legend", { showColLabels: false }, "legend.show", false],
    ["title of the columns", { ShowColTitle: true }, "title.0.text", "Region"],
    ["x range of points", { DiagramType: 3, xScaleMin: 1, xScaleMax: 2 }, "xAxis.0.max", 2],
    ["a plot of its own colour", { BackColor: "ivory" }, "grid.backgroundColor", "ivory"],
    ["an unknown type is bars", { DiagramType: 77 }, "series.0.type", "custom"],
    ["nothing moves", {}, "animation", false],
  ];
  for (const [name, style, path, expected] of cases) {
    assert.deepEqual(at(buildOption(sceneOf(quarters, style)), path), expected, `${name}: ${path}`);
  }
});

test("values are drawn as they are, or as shares", () => {
  const cases: [string, Partial<Style>, (number | null)[]][] = [
    ["as they are", {}, [10, 20, 40]],
    ["shares of the row", { BarStyle: 2 }, [0.25, 0.5, 0.8]],
    ["stacked shares", { BarStyle: 3 }, [0.25, 0.5, 0.8]],
    ["transposed", { IsTransposed: true, BarStyle: 2 }, [10 / 70, 30 / 60]],
  ];
  for (const [name, style, expected] of cases) {
    for (const DiagramType of [1, 2]) {
      const [first] = seriesOf(sceneOf(quarters, { ...style, DiagramType }));
      assert.deepEqual(first?.data.map(({ value }) => value), expected, `${name}, type ${DiagramType}`);
    }
  }
  const negative: Cells = [["A", "B"], ["x", -30, 10], ["y", "", "n/a"]];
  const shares = seriesOf(sceneOf(negative, { DiagramType: 1, BarStyle: 2 }));
  assert.deepEqual(shares[0]?.data.map(({ value }) => value), [-0.75, null], "of the sum of sizes; a gap stays one");
});

test("each type draws its series", () => {
  const wide: Cells = [["x", "y", "size", "x2", "y2"], ["a", 1, 2, 3, 4, 5], ["b", 6, 7, 8, 9, 10]];
  const lone: Cells = [["only"], ["a", 5], ["b", 7]];
  const cases: [string, Cells, Partial<Style>, string[]][] = [
    ["lines", quarters, { DiagramType: 1 }, ["line North", "line South"]],
    ["the last column is the line", quarters, { DiagramType: 6 }, ["custom North", "line South"]],
    ["a lone column stays bars", lone, { DiagramType: 6 }, ["custom only"]],
    ["the first column is x", quarters, { DiagramType: 3 }, ["custom South"]],
    ["a lone column is y", lone, { DiagramType: 3 }, ["custom only"]],
    ["two places have no trend", wide, { DiagramType: 3, CurveStyle: 1 },
      ["custom y", "custom size", "custom x2", "custom y2"]],
    ["three have one", quarters, { DiagramType: 3, CurveStyle: 1 }, ["custom South", "line South"]],
    ["bubbles in threes", wide, { DiagramType: 8 }, ["custom y", "custom y2"]],
    ["a series for each slice", quarters, { DiagramType: 4 }, ["custom Q1", "custom Q2", "custom Q3"]],
    ["a normal distribution", lone, { DiagramType: 0, CurveStyle: 1 }, ["custom only", "line only"]],
    ["means", quarters, { DiagramType: 1, HasStatistics: true },
      ["line North", "line South", "custom North", "custom South"]],
  ];
  for (const [name, cells, style, expected] of cases) {
    const drawn = seriesOf(sceneOf(cells, style)).filter((one) => !one.name.startsWith("\u200b"));
    assert.deepEqual(drawn.map((one) => `${one.type} ${one.name}`), expected, name);
  }
});

test("CurveColor is that of drawn curves, or else of the only series", () => {
  const lone: Cells = [["only"], ["a", 5], ["b", 7], ["c", 9]];
  const [first = ""] = sceneOf(lone).look.palette;
  const cases: [string, Cells, Partial<Style>, [string, string | undefined][]][] = [
    ["bars alone", lone, { DiagramType: 5 }, [["only", "tomato"]]],
    ["buckets under a curve", lone, { DiagramType: 0, CurveStyle: 1 }, [["only", first], ["only", "tomato"]]],
    ["points and their trend", quarters, { DiagramType: 3, CurveStyle: 2 }, [["South", first], ["South", "tomato"]]],
    ["a trend that takes its series' shade", quarters, { DiagramType: 3, CurveStyle: 1, CurveColor: "navy" },
      [["South", first], ["South", shade(first, -0.4)]]],
    ["a curve each", quarters, { DiagramType: 0, CurveStyle: 1 },
      [["North", first], ["South", undefined], ["North", "tomato"], ["South", "tomato"]]],
  ];
  for (const [name, cells, style, expected] of cases) {
    const series = seriesOf(sceneOf(cells, { CurveColor: "tomato", ...style }))
      .filter((one) => !one.name.startsWith("\u200b"));
    const found = series.map((one) => [one.name, at(one, one.type === "line" ? "color" : "itemStyle.color")]);
    assert.deepEqual(found.map(([label, color], index) => [label, expected[index]?.[1] && color]), expected, name);
  }
});

test("names are all unlike, whatever labels are", () => {
  const labels = ["a", "a\u200b2", "a", "", "4", "a", "", ...Array<string>(20_000).fill("b")];
  const names = uniqueNames(labels);
  assert.equal(new Set(names).size, labels.length);
  assert.deepEqual(names.slice(0, 2), ["a", "a\u200b2"], "the first of a kind keeps its own");
});

test("a tab brings one series to the front, in its own colour", () => {
  const scene = sceneOf(quarters, { DiagramType: 1 }, { series: 1 });
  const [only, ...others] = seriesOf(scene).filter(({ type }) => type === "line");
  assert.equal(others.length, 0);
  assert.equal(at(only, "color"), scene.look.palette[1]);
});

test("every cell that is drawn can be found", () => {
  for (const DiagramType of [1, 2, 4, 5, 6, 7]) {
    const cells = seriesOf(sceneOf(quarters, { DiagramType }))
      .flatMap(({ data }) => data).flatMap(({ cell }) => (cell ? [cell.join()] : [])).sort();
    assert.deepEqual(cells, ["0,0", "0,1", "1,0", "1,1", "2,0", "2,1"], `type ${DiagramType}`);
  }
  const alone = { DiagramType: 4, ShowSelectedRow: true, RowSelection: 1 };
  const cells = seriesOf(sceneOf(quarters, alone)).flatMap(({ data }) => data).map(({ cell }) => cell?.join());
  assert.deepEqual(cells, ["1,0", "1,1"], "of a row alone");
});

test("places are exact however small, great or near each other values are", () => {
  const cases: [string, number[]][] = [
    ["small", [1e-300, 3e-300]], ["great", [-1e300, 1e300]], ["far from zero", [1e15, 1e15 + 2, 1e15 + 9]],
    ["one", [-7]], ["zero", [0]], ["none", []],
  ];
  for (const [name, values] of cases) {
    const [least, greatest] = [values[0] ?? 0, values[values.length - 1] ?? 0];
    const place = (value: number): number => ((value - least) / (greatest - least || 1)) * 100;
    const api = { coord: ([x = 0, y = 0]: number[]) => [place(x), 50 - place(y)] } as unknown as Api;
    const plane = evenPlane(sceneOf(quarters), api, values, [null, ...values]);
    for (const value of values) {
      const places = [plane.along(value), plane.up(value)].map(Math.round);
      assert.deepEqual(places, [place(value), 50 - place(value)].map(Math.round), `${name}: ${value}`);
    }
  }
});

test("long lists are drawn without a copy, and pages see nothing but what they hold", () => {
  const list = uncopied([{ value: 1 }]);
  assert.equal(util.clone({ list }).list, list);
  assert.deepEqual(Object.keys(list), ["0"]);
});
