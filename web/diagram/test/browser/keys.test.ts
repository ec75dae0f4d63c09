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
];
for (const { name, style, keys } of walks) {
  test(`arrows walk ${name} and say row, column and value`, async () => {
    const page = await openCharts(browser, [{ style }]);
    await page.keyboard.press("Tab");
    for (const [key, words] of keys) {
      await page.keyboard.press(key);
      assert.equal(await said(page), words, key);
    }
    await page.keyboard.press("Escape");
    assert.equal(await page.evaluate(() => document.activeElement === document.body), true, "Escape leaves");
  });
}

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
