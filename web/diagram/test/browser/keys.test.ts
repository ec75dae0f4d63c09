// Charts by the keyboard: walking from value to value, selecting, tabs.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import { launch, openCharts } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const said = (page: Page): Promise<string> =>
  page.locator("[aria-live]").evaluate((region) => (region.textContent ?? "").replace("\u00a0", ""));

const walks: { name: string; style: object; keys: [string, string][] }[] = [
  {
    name: "bars", style: { DiagramType: 5, FormatType: 1 },
    keys: [
      ["ArrowRight", "North, Q1: $30.00"], ["ArrowRight", "South, Q1: $10.00"], ["ArrowDown", "South, Q2: $25.00"],
      ["ArrowDown", "South, Q3: n/a"], ["ArrowDown", "South, Q3: n/a"], ["End", "East, Q3: $1,200.00"],
      ["ArrowRight", "East, Q3: $1,200.00"], ["PageUp", "East, Q1: $20.00"], ["Home", "North, Q1: $30.00"],
      ["PageDown", "North, Q3: $7.00"], ["ArrowUp", "North, Q2: -$4.50"], ["ArrowLeft", "North, Q2: -$4.50"],
    ],
  },
  {
    name: "rotated bars", style: { DiagramType: 5, IsRotated: true },
    keys: [
      ["ArrowDown", "North, Q1: 30"], ["ArrowDown", "South, Q1: 10"], ["ArrowRight", "South, Q2: 25"],
      ["Home", "South, Q1: 10"],
    ],
  },
  {
    name: "a reversed line", style: { DiagramType: 1, Reverse: 1 },
    keys: [["ArrowLeft", "North, Q1: 30"], ["ArrowLeft", "South, Q1: 10"], ["ArrowRight", "North, Q1: 30"]],
  },
  {
    name: "points", style: { DiagramType: 3 },
    keys: [
      ["ArrowRight", "North, Q1: 30, Q2: -4.5"], ["ArrowUp", "North, Q1: 30, Q2: -4.5"],
      ["ArrowDown", "North, Q1: 30, Q3: 7"], ["ArrowRight", "South, Q1: 10, Q3: n/a"],
      ["PageUp", "South, Q1: 10, Q2: 25"],
    ],
  },
  {
    name: "circles", style: { DiagramType: 8 },
    keys: [["ArrowRight", "North, Q1: 30, Q2: -4.5, Q3: 7"], ["ArrowDown", "North, Q1: 30, Q2: -4.5, Q3: 7"]],
  },
];
const buckets = { values: ["1", "2", "2", "2.9", "9", "n/a", "5", "6", "6.5"] };
const histograms: typeof walks = [
  {
    name: "a histogram", style: { DiagramType: 0, BucketCount: 4, FormatType: 1 },
    keys: [
      ["ArrowRight", "$1.00 to $3.00: 2 values, Q1"], ["ArrowDown", "$1.00 to $3.00: 1 value, Q2"],
      ["End", "$7.00 to $9.00: 1 value, Q2"], ["ArrowDown", "$7.00 to $9.00: no value, Q3"],
      ["Enter", "$7.00 to $9.00: no value, Q3"], ["ArrowLeft", "$5.00 to $7.00: 1 value, Q3"],
    ],
  },
  {
    name: "a rotated cumulative histogram", style: { DiagramType: 10, BucketCount: 2, IsRotated: true },
    keys: [
      ["ArrowUp", "up to 5: 2 values (66.7%), Q1"], ["ArrowUp", "up to 9: 3 values (100%), Q1"],
      ["ArrowRight", "up to 9: 3 values (100%), Q2"], ["ArrowDown", "up to 5: 1 value (33.3%), Q2"],
    ],
  },
];
for (const { name, style, keys } of [...walks, ...histograms]) {
  test(`arrows walk ${name} and say row, column and value`, async () => {
    const isHistogram = histograms.some((one) => one.name === name);
    const data = isHistogram ? buckets : {};
    const page = await openCharts(browser, [{ style: { SelectionMode: 3, ...style }, ...data }]);
    await page.keyboard.press("Tab");
    for (const [key, words] of keys) {
      await page.keyboard.press(key);
      assert.equal(await said(page), words, key);
    }
    await page.keyboard.press("Escape");
    assert.equal(await page.evaluate(() => document.activeElement === document.body), true, "Escape leaves");
  });
}

test("tooltips say every text as it is", async () => {
  const labels = ["{a|b}", "}{a|", "<b>{name|", "%s {value} {a}{b|c}}"];
  const values = ["1", "2", "{v|}", "4", "5", "6", "7", "n}{a|a", "9", "10", "11", "12"];
  const last = labels[3] ?? "";
  // From the second column on; a gap has no place for a tooltip, but the values beside it tell of it.
  const byType: Record<number, readonly [string, readonly string[]][]> = {
    0: [["End", ["}{a|", "7 – 12", "1"]]],
    10: [["End", ["}{a|", "≤ 12", "3"]]],
    1: [["End", [last, ...labels.slice(0, 3), "11"]], ["ArrowLeft", []], ["ArrowUp", ["<b>{name|", "}{a|", "n}{a|a"]]],
    3: [["End", [last, "{a|b}: 10", "<b>{name|: 12"]]],
    4: [["End", [last, "}{a|", "11"]]],
    7: [["End", [last, "}{a|", "11"]]],
    8: [["End", [last, "{a|b}: 10", "}{a|: 11", "<b>{name|: 12"]]],
  };
  for (const alike of [2, 5, 6]) byType[alike] = byType[1] ?? [];
  for (const [type, steps] of Object.entries(byType)) {
    const style = { DiagramType: Number(type), HasLegend: false, BucketCount: 2 };
    const page = await openCharts(browser, [{ style, rows: labels, columns: labels.slice(0, 3), values }]);
    const read = (): Promise<string[]> => page.locator("plexoras-diagram").evaluate((chart) =>
      [...chart.shadowRoot?.querySelectorAll("svg text") ?? []].map((text) => text.textContent ?? ""));
    const drawn = await read();
    await page.keyboard.press("Tab");
    for (const key of ["ArrowRight", "ArrowDown"]) await page.keyboard.press(key);
    for (const [key, expected] of steps) {
      await page.keyboard.press(key);
      const shown = await read();
      for (const text of drawn) shown.splice(shown.indexOf(text), shown.includes(text) ? 1 : 0);
      const tooltip = shown.join("");
      for (const text of expected) assert(tooltip.includes(text), `type ${type}, ${key}: ${text} in ${tooltip}`);
    }
    await page.context().close();
  }
});

test("tabs and drawing have the focus in the order in which they stand", async () => {
  for (const [TabStyle, roles] of [[1, ["tab", "application"]], [2, ["application", "tab"]]] as const) {
    const page = await openCharts(browser, [{ style: { DiagramType: 1, TabStyle } }]);
    for (const role of roles) {
      await page.keyboard.press("Tab");
      const has = await page.locator("plexoras-diagram").evaluate((chart) =>
        chart.shadowRoot?.activeElement?.getAttribute("role"));
      assert.equal(has, role, `TabStyle ${TabStyle}`);
    }
    await page.context().close();
  }
});

test("each chart is one stop of the Tab key", async () => {
  const page = await openCharts(browser, [
    { style: { DiagramType: 4, HasPopupMenu: true } },
    { style: { DiagramType: 9, HasPopupMenu: true, SelectionMode: 3, OnColLabelClick: 2 } },
    { style: { DiagramType: 1 } },
  ]);
  const stops: (string | undefined)[] = [];
  for (let press = 0; press < 3; ++press) {
    await page.keyboard.press("Tab");
    stops.push(await page.evaluate(() => document.activeElement?.id));
  }
  assert.deepEqual(stops, ["chart0", "chart1", "chart2"]);
});

test("Enter selects what SelectionMode says", async () => {
  const page = await openCharts(browser, [{ style: { DiagramType: 5, SelectionMode: 2, MultipleSelection: true } }]);
  await page.evaluate(() => document.addEventListener("plexoras-select", (event) => {
    document.title = JSON.stringify((event as CustomEvent).detail);
  }));
  await page.keyboard.press("Tab");
  for (const key of ["ArrowRight", "ArrowRight", "Enter"]) await page.keyboard.press(key);
  assert.deepEqual(JSON.parse(await page.title()),
    { row: 1, column: -1, rowLabel: "South", columnLabel: "", value: null, text: "", cells: [{ row: 1, column: -1 }] });
  assert.equal(await said(page), "South, Q1: 10, selected");
  await page.evaluate(() => new Promise((drawn) => requestAnimationFrame(drawn)));
  await page.keyboard.press("Control+Enter");
  assert.deepEqual(JSON.parse(await page.title()).cells, []);
  assert.equal(await said(page), "South, Q1: 10, not selected");
});

test("tabs bring one series to the front, by clicks and by arrows", async () => {
  for (const [style, isAbove] of [[1, true], [2, false]] as const) {
    const page = await openCharts(browser, [{ style: { DiagramType: 1, TabStyle: style } }]);
    const tabs = page.getByRole("tab");
    assert.deepEqual(await tabs.allTextContents(), ["All", "Q1", "Q2", "Q3"]);
    const drawing = await page.locator(".drawing").boundingBox();
    const list = await page.getByRole("tablist").boundingBox();
    assert(drawing && list);
    assert.equal(list.y < drawing.y, isAbove);
    await tabs.nth(2).click();
    await page.keyboard.press("ArrowRight");
    await page.locator('[role=tab][aria-selected=true]:text("Q3")').waitFor();
    await page.keyboard.press("Home");
    await page.locator('[role=tab][aria-selected=true]:text("All")').waitFor();
  }
});
