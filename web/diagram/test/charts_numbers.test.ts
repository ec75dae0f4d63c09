import assert from "node:assert/strict";
import { test } from "node:test";

import { bucketsOf, countsOf, cumulative, normalCurve, normalShare } from "../src/charts/buckets.ts";
import { inFront } from "../src/charts/dense_bars.ts";
import { type HairBar, type HairSeries, hairsOf, seenOf } from "../src/charts/hairs.ts";
import { facesOf, wedgesOf } from "../src/charts/pie_geometry.ts";
import { scaleOf } from "../src/charts/scale.ts";
import { roundedTo, statisticsOf } from "../src/charts/statistics.ts";
import { trendOf } from "../src/charts/trend.ts";

function close(actual: number, expected: number, name: string): void {
  assert(Math.abs(actual - expected) <= 1e-6 * Math.max(1, Math.abs(expected)), `${name}: ${actual}, not ${expected}`);
}

test("values fall into buckets", () => {
  const cases: [string, number[], number, number, number, number[]][] = [
    ["an edge counts above it", [0, 1, 2, 3, 4], 4, 0, 0, [1, 1, 1, 2]],
    ["a range leaves values out", [-1, 0, 5, 10, 11], 2, 0, 10, [1, 2]],
    ["ends the wrong way round", [1, 9], 2, 10, 0, [1, 1]],
    ["all are equal", [7, 7, 7], 3, 0, 0, [0, 3, 0]],
    ["no values", [], 2, 0, 0, [0, 0]],
    ["at least one bucket", [1, 2], 0, 0, 0, [2]],
    ["edges that no binary number is", [0.1, 0.2, 0.3, 0.4, 0.5], 4, 0.1, 0.5, [1, 1, 1, 2]],
  ];
  for (const [name, values, count, from, to, expected] of cases) {
    assert.deepEqual(countsOf(values, bucketsOf(values, count, from, to)), expected, name);
  }
  assert.deepEqual(cumulative([1, 0, 2]), [1, 1, 3]);
});

test("no value is lost between buckets", () => {
  const values = Array.from({ length: 2000 }, (_, index) => Math.sin(index) * 1e6 + index / 7);
  for (const count of [1, 3, 7, 10, 49, 1000]) {
    const counts = countsOf(values, bucketsOf(values, count, 0, 0));
    assert.equal(counts.reduce((sum, one) => sum + one, 0), values.length, `${count} buckets`);
  }
});

test("the normal distribution lies over the buckets", () => {
  for (const [z, share] of [[0, 0.5], [1, 0.8413447], [-1.96, 0.0249979]] as const) {
    close(normalShare(z), share, `${z}`);
  }
  const values = Array.from({ length: 101 }, (_, index) => index);
  const buckets = bucketsOf(values, 10, 0, 0);
  const curve = normalCurve(values, buckets, false);
  const top = curve.reduce((best, point) => (point[1] > best[1] ? point : best));
  close(top[0], 50, "its top is at the mean");
  // The exact distribution with mean 50 and deviation 29.300171, by the error function, at the buckets' edges.
  const shares = [0.04396, 0.086098, 0.152945, 0.247433, 0.366441, 0.5,
    0.633559, 0.752567, 0.847055, 0.913902, 0.95604];
  const sums = normalCurve(values, buckets, true, 11).map(([, y]) => y);
  sums.forEach((y, edge) => assert(Math.abs(y / 101 - (shares[edge] ?? 0)) < 1e-6, `edge ${edge}: ${y / 101}`));
  // 25 values lie below the first edge and are in no sum.
  const [at] = normalCurve(values, bucketsOf(values, 3, 25, 100), true, 11);
  close(at?.[1] ?? NaN, Math.max(101 * normalShare((25 - 50) / Math.sqrt(858.5)) - 25, 0), "a range of its own");
  assert.deepEqual(normalCurve([3, 3], buckets, false), [], "values that do not vary have none");
});

test("of bars in one pixel the shorter one is in front", () => {
  // Base and end of each bar of a series; what is seen of the series, from and to.
  const cases: [string, number[][][], number[][][]][] = [
    ["the outermost bar of each counts", [[[0, 4], [0, 9]], [[0, 6], [0, 2]]], [[[6, 9]], [[0, 6]]]],
    ["of equal ones the later", [[[0, 5]], [[0, 5]]], [[], [[0, 5]]]],
    ["each sign by itself", [[[0, 9], [0, -2]], [[0, 4], [0, -7]]], [[[4, 9], [-2, 0]], [[0, 4], [-7, -2]]]],
    ["axes with zeros of their own", [[[0, 4]], [[6, 9]], [[0, 12]]], [[[0, 4]], [[6, 9]], [[4, 6], [9, 12]]]],
    ["next to nothing", [[[0, 0.1]], [[0, 5]]], [[[0, 1]], [[1, 5]]]],
    ["next to nothing, the other way", [[[9, 8.9]], [[9, 5]]], [[[8, 9]], [[5, 8]]]],
    ["nothing", [[[9, 9]], [[9, 5]]], [[], [[5, 9]]]],
  ];
  for (const [name, series, expected] of cases) {
    const seen = seenOf(series.map((bars) => ({
      color: "",
      isStacked: false,
      hairs: hairsOf(bars.map(([base = 0, end = 0]): HairBar =>
        ({ along: 3, width: 1, base, end, isNegative: end < base }))),
    })));
    assert.deepEqual(seen.map(({ hairs }) => hairs.map(({ low, high }) => [low, high]).sort((a, b) =>
      (b[1] ?? 0) - (a[1] ?? 0))), expected.map((pieces) => [...pieces].sort((a, b) => (b[1] ?? 0) - (a[1] ?? 0))),
    name);
  }
});

test("few selected bars stand whole in front, of many what is seen", () => {
  const series = (...hairs: [pixel: number, low: number, high: number][]): HairSeries => ({
    color: "", isStacked: false, hairs: hairs.map(([pixel, low, high]) => ({ pixel, low, high, isNegative: false })),
  });
  const seen = [series([1, 5, 9], [2, 5, 9]), series([1, 0, 5], [2, 0, 5]), series([2, 3, 4])];
  const chosen = [series([2, 0, 9]), series(), series([2, 0, 5], [1, 0, 5])];
  assert.deepEqual(inFront(seen, chosen, 60), [series([2, 5, 9]), series(), series([2, 0, 5], [1, 0, 5])]);
  assert.deepEqual(inFront(seen, chosen, 61), [series([2, 5, 9]), series(), series([2, 3, 4], [1, 0, 5])],
    "itself where nothing of it is seen");
});

test("statistics", () => {
  const figures = statisticsOf([2, 4, 4, 4, 5, 5, 7, 9]);
  assert.deepEqual({ ...figures, deviation: 0 }, { count: 8, sum: 40, mean: 5, deviation: 0, least: 2, greatest: 9 });
  close(figures?.deviation ?? 0, Math.sqrt(32 / 7), "of a sample");
  close(statisticsOf([1e9 + 1, 1e9 + 2, 1e9 + 3])?.deviation ?? 0, 1, "a large mean");
  assert.equal(statisticsOf([5])?.deviation, 0);
  assert.equal(statisticsOf([]), null);
  assert.equal(roundedTo(14.333333333, 6.3), 14.33);
  assert.equal(roundedTo(0.123456, 0.01), 0.1235, "small ones keep their digits");
});

test("scales have round ticks", () => {
  const cases: [string, number[], number[]][] = [
    ["whole numbers", [0, 97], [0, 25, 50, 75, 100]],
    ["fractions", [0, 0.35], [0, 0.1, 0.2, 0.3, 0.4]],
    ["both signs", [-3, 4], [-4, -2, 0, 2, 4]],
    ["all alike", [0, 0], [0, 1]],
    ["none", [], [0, 1]],
  ];
  for (const [name, values, ticks] of cases) assert.deepEqual(scaleOf(values, 4).ticks, ticks, name);
});

test("a trend follows its points", () => {
  const line = Array.from({ length: 20 }, (_, index): [number, number] => [index, 3 * index + 1]);
  for (const [x, y] of trendOf(line)) close(y, 3 * x + 1, "a straight line is its own trend");
  assert.deepEqual(trendOf([[1, 1], [2, 2]]), [], "two places have none");
  assert.deepEqual(trendOf([[1, 1], [1, 2], [1, 3]]), [], "nor has one");
});

test("slices share the circle", () => {
  const turn = Math.PI * 2;
  const pie = wedgesOf([1, 0, 3], 0, 10, false);
  assert.deepEqual(pie.map(({ from, to }) => (to - from) / turn), [0.25, 0, 0.75]);
  const rose = wedgesOf([1, 0, 3], 0, 9, true);
  assert.deepEqual(rose.map(({ from, to, radius }) => [(to - from) / turn, radius]), [[0.5, 3], [0, 0], [0.5, 9]]);
});

test("only the sides before the eye are seen", () => {
  const solid = { x: 0, y: 0, radius: 10, flatness: 0.5, height: 4, hole: 0, pulled: 0 };
  const kinds = (from: number, to: number, hole: number, hasCuts: boolean): string =>
    facesOf({ ...solid, hole }, { from, to, radius: 10 }, hasCuts).sides.map(({ kind }) => kind).join(" ");
  const quarter = Math.PI / 2;
  assert.equal(kinds(0, quarter, 0, false), "outer", "the front");
  assert.equal(kinds(-quarter, 0, 0, false), "", "the back");
  assert.equal(kinds(-quarter, 0, 5, false), "inner", "the back of a ring");
  assert.equal(kinds(-quarter, 3 * quarter, 5, false), "inner inner outer", "a whole ring");
  assert.equal(kinds(0.1, quarter - 0.1, 0, true), "cut outer", "a rose's slice");
});
