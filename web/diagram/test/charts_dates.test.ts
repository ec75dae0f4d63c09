import assert from "node:assert/strict";
import { test } from "node:test";

import { ticksAround, ticksWithin } from "../src/charts/calendar.ts";
import type { Places, Range, Scene } from "../src/charts/chart.ts";
import { buildOption } from "../src/charts/index.ts";
import { init } from "../src/charts/library.ts";
import type { Style } from "../src/settings/style.ts";
import { type Cells, sceneOf } from "./charts_scene.ts";

const date = (day: string): number => Date.parse(day);
const isoOf = (value: number): string => new Date(value).toISOString().replace(/T00:00:00.000Z$/, "");

test("ticks stand at steps of the calendar", () => {
  const cases: [string, string, string, number, string][] = [
    ["days", "2024-02-27", "2024-03-02", 5, "2024-02-27 2024-02-28 2024-02-29 2024-03-01 2024-03-02"],
    ["Mondays", "2024-05-07", "2024-05-26", 3, "2024-05-06 2024-05-13 2024-05-20 2024-05-27"],
    ["months", "2023-11-20", "2024-03-01", 4, "2023-11-01 2023-12-01 2024-01-01 2024-02-01 2024-03-01"],
    ["quarters", "2023-11-20", "2024-08-09", 4, "2023-10-01 2024-01-01 2024-04-01 2024-07-01 2024-10-01"],
    ["years", "1968-06-01", "1971-06-01", 4, "1968-01-01 1969-01-01 1970-01-01 1971-01-01 1972-01-01"],
    ["decades", "1955-06-01", "1991-01-02", 4, "1950-01-01 1960-01-01 1970-01-01 1980-01-01 1990-01-01 2000-01-01"],
    ["a lone tick", "2024-05-06", "2024-05-06", 4, "2024-05-05 2024-05-06 2024-05-07"],
    ["nothing is shorter than a day", "2024-05-06T01:00Z", "2024-05-06T02:00Z", 4, "2024-05-06 2024-05-07"],
  ];
  for (const [name, from, to, count, expected] of cases) {
    assert.equal(ticksAround([date(from), date(to)], count).map(isoOf).join(" "), expected, name);
  }
  for (const ends of [[0, 1e18], [-8.64e15, 8.64e15]] as const) assert.deepEqual(ticksAround(ends, 4), [], `${ends}`);
  const inside = (from: string, to: string, count: number): string =>
    ticksWithin([date(from), date(to)], count).map(isoOf).join(" ");
  assert.equal(inside("2023-11-20", "2024-08-09", 4), "2024-01-01 2024-04-01 2024-07-01", "ends are no ticks");
  assert.equal(inside("2024-01-10", "2024-01-25", 1), "2024-01-15 2024-01-22", "weeks, as months have no two ticks");
  assert.equal(inside("2024-05-06T01:00Z", "2024-05-06T02:00Z", 4), "2024-05-06T01:00:00.000Z", "but a label at least");
});

const days: Cells = [["Start", "Due"], ["a", "2024-01-20", "2024-03-09"], ["b", "2024-02-11", "2024-04-11"],
  ["c", "2024-03-25", "2024-07-02"]];

interface AxisSeen {
  readonly min?: unknown;
  readonly max?: unknown;
  readonly axisLabel: { readonly customValues?: readonly number[]; formatter(value: number): string };
  readonly axisTick: { readonly customValues?: readonly number[] };
}
const axisOf = (option: unknown, name: string): AxisSeen =>
  (option as Record<string, AxisSeen[]>)[name]?.[0] as AxisSeen;

/** The ends of an axis whose data on show reach so far, and its ticks between them. */
function seen({ min, max, axisLabel, axisTick }: AxisSeen, from: string, to: string): string {
  const data = { min: date(from), max: date(to) };
  const [low = NaN, high = NaN] = [min, max].map((end) => (typeof end === "function" ? end(data) : end) as number);
  assert.deepEqual(axisLabel.customValues, axisTick.customValues, "grid lines stand at labels");
  const ticks = axisLabel.customValues?.filter((tick) => tick >= low && tick <= high).map(isoOf) ?? [];
  return `${isoOf(low).slice(0, 10)} | ${ticks.join(" ")} | ${isoOf(high).slice(0, 10)}`;
}

test("axes of dates have such ticks", () => {
  const line: Partial<Style> = { DiagramType: 1, FormatType: 5 };
  const dots: Partial<Style> = { DiagramType: 3, FormatType: 5 };
  const own = { xScaleMin: date("2024-02-10"), xScaleMax: date("2024-01-05") };
  const ownUp = { yScaleMin: date("2024-03-02"), yScaleMax: date("2024-03-05") };
  const [all, first] = [["2024-01-20", "2024-07-02"], ["2024-01-20", "2024-03-25"]] as const;
  const cases: [string, Partial<Style>, string, readonly [string, string], string][] = [
    ["a line's ends are ticks", line, "yAxis", all,
      "2024-01-01 | 2024-01-01 2024-03-01 2024-05-01 2024-07-01 2024-09-01 | 2024-09-01"],
    ["it follows what is on show", line, "yAxis", first,
      "2024-01-08 | 2024-01-08 2024-01-22 2024-02-05 2024-02-19 2024-03-04 2024-03-18 2024-04-01 | 2024-04-01"],
    ["and what reaches farther", line, "yAxis", ["2023-01-20", "2024-10-02"],
      "2023-01-01 | 2023-01-01 2023-07-01 2024-01-01 2024-07-01 2025-01-01 | 2025-01-01"],
    ["a lone day", line, "yAxis", ["2024-02-01", "2024-02-01"],
      "2024-01-31 | 2024-01-31 2024-02-01 2024-02-02 | 2024-02-02"],
    ["rotated, with room for fewer", { ...line, FormatDateStyle: 0, IsRotated: true }, "xAxis", all,
      "2024-01-01 | 2024-01-01 2024-07-01 2025-01-01 | 2025-01-01"],
    ["absolute, it begins at zero", { ...line, IsAbsolute: true }, "yAxis", all,
      "1970-01-01 | 1980-01-01 2000-01-01 2020-01-01 2040-01-01 | 2040-01-01"],
    ["or as the author has it", { ...line, IsAbsolute: true, ...ownUp }, "yAxis", all,
      "2024-03-02 | 2024-03-02 2024-03-03 2024-03-04 2024-03-05 | 2024-03-05"],
    ["points along x", dots, "xAxis", first, "2024-01-18 | 2024-02-01 2024-03-01 | 2024-03-26"],
    ["and up", dots, "yAxis", ["2024-03-09", "2024-07-02"],
      "2024-03-05 | 2024-04-01 2024-05-01 2024-06-01 2024-07-01 | 2024-07-05"],
    ["the author's ends of x", { ...dots, ...own }, "xAxis", first,
      "2024-01-05 | 2024-01-08 2024-01-22 2024-02-05 | 2024-02-10"],
    ["bubbles", { ...dots, DiagramType: 8 }, "xAxis", first, "2024-01-14 | 2024-02-01 2024-03-01 | 2024-03-30"],
  ];
  for (const [name, style, axis, [from, to], expected] of cases) {
    assert.equal(seen(axisOf(buildOption(sceneOf(days, style)), axis), from, to), expected, name);
  }
  // What is no date has no calendar: shares, and the numbers of rows.
  assert.equal(axisOf(buildOption(sceneOf(days, { ...line, BarStyle: 2 })), "yAxis").axisLabel.customValues, undefined);
  const rows = axisOf(buildOption(sceneOf([["Start"], ["a", "2024-01-20"], ["b", "2024-02-11"]], dots)), "xAxis");
  assert.equal(rows.axisLabel.customValues, undefined);
  assert.equal(rows.axisLabel.formatter(2), "2");
});

test("a closer look at dates has its own ticks", () => {
  const { places } = buildOption(sceneOf(days, { DiagramType: 3, FormatType: 5 })) as unknown as { places: Places };
  const along: Range = [date("2024-01-01"), date("2024-03-31")];
  const closer = places.closer({ part: [0.5, 0.6], isMoving: false, along, ups: [] });
  assert.equal(seen(axisOf(closer, "xAxis"), "2024-01-01", "2024-01-01"),
    "2024-02-15 | 2024-02-15 2024-02-17 2024-02-19 2024-02-21 2024-02-23 | 2024-02-24");
  // Up, it has those of the whole, from which readers may have hidden a series.
  for (const DiagramType of [1, 3]) {
    const option = buildOption(sceneOf(days, { DiagramType, FormatType: 5 })) as unknown as { places: Places };
    const whole = seen(axisOf(option, "yAxis"), "2024-03-09", "2024-03-12");
    const ups: Range[] = [[date("2024-03-08"), date("2024-03-13")]];
    const part = axisOf(option.places.closer({ part: [0.4, 0.6], isMoving: false, along, ups }), "yAxis");
    assert.match(whole, /2024-03-10 2024-03-11/);
    assert.match(seen(part, "2024-01-01", "2024-01-01"), /2024-03-10 2024-03-11/);
  }
});

/** What is read at an axis when readers have hidden a series. */
function labelsSeen(scene: Scene, isLabel: RegExp, hidden: string): string {
  const chart = init(null, null, { renderer: "svg", ssr: true, width: scene.width, height: scene.height });
  chart.setOption(buildOption(scene));
  chart.dispatchAction({ type: "legendUnSelect", name: hidden });
  const texts = Array.from(chart.renderToSVGString().matchAll(/<text[^>]*>([^<]*)<\/text>/g), ([, text]) => text ?? "");
  chart.dispose();
  return texts.filter((text) => isLabel.test(text)).join(" | ");
}

test("axes are labelled for what is on show", () => {
  const far: Cells = [["Start", "Due"], ["a", "2000-01-20", "2024-05-09"], ["b", "2024-02-11", "2024-05-22"]];
  const late: Cells = [["Start", "Due"], ["a", "9999-01-20", "9999-05-09"]];
  const pairs: Cells = [["x", "y"], ["a", 1000, -5], ["b", 1010, 7]];
  const line: Partial<Style> = { DiagramType: 1, FormatType: 5 };
  const stack: Partial<Style> = { ...line, DiagramType: 5, BarStyle: 1 };
  const dots: Partial<Style> = { DiagramType: 3, xGridVisible: true };
  const [isYear, isX] = [/\d{4}$/, /^\d{3,4}$/];
  const long: Partial<Style> = { ...line, IsRotated: true, FormatDateStyle: 0, Reverse: 2 };
  const cases: [string, Cells, Partial<Style>, RegExp, string, string][] = [
    ["a far series is hidden", far, line, isYear, "Start", "May 6, 2024 | May 13, 2024 | May 20, 2024 | May 27, 2024"],
    ["sums", far, stack, isYear, "", "Jan 1, 2000 | Jan 1, 2050 | Jan 1, 2100"],
    ["sums of areas", far, { ...stack, DiagramType: 2 }, isYear, "", "Jan 1, 2000 | Jan 1, 2050 | Jan 1, 2100"],
    ["means and zero take no room along x", pairs, { ...dots, HasStatistics: true }, isX, "",
      "999 | 1002 | 1005 | 1008 | 1011"],
    ["nor up a rotated one", pairs, { ...dots, IsRotated: true }, isX, "",
      "998 | 1000 | 1002 | 1004 | 1006 | 1008 | 1010 | 1012"],
    ["both ends have their long names", days, long, /20|day|January/, "",
      "Monday, | January 1, | 2024 | Monday, July | 1, 2024 | Wednesday, | January 1, | 2025"],
  ];
  for (const [name, cells, style, isLabel, hidden, expected] of cases) {
    const scene = sceneOf(cells, { HasLegend: false, ...style }, { width: 300 });
    assert.equal(labelsSeen(scene, isLabel, hidden), expected, name);
  }
  const behind = labelsSeen(sceneOf(late, stack), isYear, "");
  assert(behind.split(" | ").length > 2, `sums behind the years have labels: ${behind}`);
});
