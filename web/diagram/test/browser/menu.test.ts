// The popup menu and the commands behind it.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import type { ChartOnPage } from "./chart_page.ts";
import { focusedText, launch, openCharts } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const own = '<xml><ITEM type="script" param="open()">Open</><MENU>Page<ITEM type="java" param="print">Print</>'
  + '<ITEM type="java" param="saveCsv">Save</></><SEPARATOR></>'
  + '<ITEM type="java" param="copyData">Pick &amp; copy</></>';

/** A chart with a menu; what its commands say is gathered in `window.commands`. */
async function openMenuChart(chart: ChartOnPage = {}): Promise<Page> {
  const style = { HasPopupMenu: true, ...chart.style };
  const page = await openCharts(browser, [{ caption: "Sales", ...chart, style }]);
  await page.evaluate(() => {
    const commands: unknown[] = [];
    Object.assign(window, { commands });
    document.addEventListener("plexoras-command", (event) => commands.push((event as CustomEvent).detail));
  });
  return page;
}

const commandsOf = (page: Page): Promise<unknown> =>
  page.evaluate(() => (window as unknown as { commands: unknown }).commands);

const byKeys = (...keys: string[]) => async (page: Page): Promise<void> => {
  for (const key of keys) await page.keyboard.press(key);
};

const ways: { name: string; open: (page: Page) => Promise<void> }[] = [
  { name: "a right click", open: (page) => page.locator("plexoras-diagram").click({ button: "right" }) },
  { name: "Shift+F10", open: byKeys("Tab", "Shift+F10") },
  { name: "the menu key", open: byKeys("Tab", "ContextMenu") },
  { name: "the button", open: async (page) => {
    await page.hover("plexoras-diagram");
    await page.getByRole("button", { name: "Menu" }).click();
  } },
  { name: "a long press", open: async (page) => {
    const touch = { pointerType: "touch", clientX: 100, clientY: 150, bubbles: true, composed: true };
    await page.locator("plexoras-diagram").dispatchEvent("pointerdown", touch);
    await page.getByRole("menu").waitFor();
  } },
];
for (const { name, open } of ways) {
  test(`${name} opens the menu, Escape and a click elsewhere close it`, async () => {
    const page = await openMenuChart();
    await open(page);
    assert.equal(await page.getByRole("menuitem").count(), 6);
    await page.keyboard.press("Escape");
    assert.equal(await page.getByRole("menu").count(), 0);
    await open(page);
    await page.mouse.click(850, 650);
    assert.equal(await page.getByRole("menu").count(), 0);
  });
}

test("without HasPopupMenu there is no menu", async () => {
  const page = await openMenuChart({ style: { HasPopupMenu: false } });
  await page.locator("plexoras-diagram").click({ button: "right" });
  assert.equal(await page.getByRole("menu").count() + await page.getByRole("button").count(), 0);
});

test("keys walk the author's menu, with its submenu and letters", async () => {
  const page = await openMenuChart({ menu: own });
  await page.keyboard.press("Tab");
  await page.keyboard.press("Shift+F10");
  const steps: [string, string][] = [
    ["", "Open"], ["ArrowUp", "Pick & copy"], ["ArrowDown", "Open"], ["End", "Pick & copy"], ["Home", "Open"],
    ["p", "Page"], ["p", "Pick & copy"], ["p", "Page"], ["ArrowRight", "Print"], ["ArrowDown", "Save"],
    ["ArrowLeft", "Page"], ["Enter", "Print"], ["Escape", "Page"],
  ];
  for (const [key, focused] of steps) {
    if (key) await page.keyboard.press(key);
    assert.equal(await focusedText(page), focused, `after ${key}`);
  }
  await page.keyboard.press("Home");
  await page.keyboard.press("Enter");
  assert.deepEqual(await commandsOf(page), [{ type: "script", param: "open()", caption: "Open" }]);
  assert.equal(await page.evaluate(() => document.activeElement?.id), "chart0", "the chart has the focus again");
});

test("the menu stays inside the window, and its submenu beside it", async () => {
  const page = await openMenuChart({ menu: own, attributes: 'width="900" height="690"' });
  await page.mouse.click(890, 690, { button: "right" });
  await page.getByRole("menuitem", { name: "Page" }).hover();
  await page.getByRole("menu", { name: "Page" }).waitFor();
  for (const menu of await page.getByRole("menu").all()) {
    const box = await menu.boundingBox();
    assert(box && box.x >= 0 && box.y >= 0, JSON.stringify(box));
    assert(box.x + box.width <= 900 && box.y + box.height <= 700, JSON.stringify(box));
  }
});

test("commands: save, copy, show; a listener can cancel them", async () => {
  const page = await openMenuChart({ values: ["1,5", 'a"b', "", "2", "3", "4", "5", "6", "7"] });
  const chart = page.locator("plexoras-diagram");
  const choose = async (name: string): Promise<void> => {
    await chart.click({ button: "right" });
    await page.getByRole("menuitem", { name }).click();
  };
  const saved = async (...names: string[]): Promise<{ name: string; text: string }> => {
    const waiting = page.waitForEvent("download");
    for (const name of names) await (names[0] === name ? choose(name) : page.getByRole("menuitem", { name }).click());
    const download = await waiting;
    return { name: download.suggestedFilename(), text: readFileSync(await download.path(), "utf8") };
  };
  assert.deepEqual(await saved("Save data as CSV"),
    { name: "Sales.csv", text: '\ufeff,Q1,Q2,Q3\r\nNorth,"1,5","a""b",\r\nSouth,2,3,4\r\nEast,5,6,7\r\n' });
  const svg = await saved("Save picture", "SVG");
  assert.equal(svg.name, "Sales.svg");
  assert.match(svg.text, /^<svg[^>]* xmlns="http:\/\/www\.w3\.org\/2000\/svg"/);
  const png = await saved("Save picture", "PNG");
  assert.equal(png.name, "Sales.png");
  assert.match(png.text, /^.PNG/);

  await choose("Show data as a table");
  const dialog = page.getByRole("dialog", { name: "Sales" });
  assert.equal(await dialog.getByRole("gridcell").count(), 9 + 1);
  await dialog.getByRole("columnheader", { name: "Q1" }).click();
  assert.equal(await dialog.getByRole("columnheader", { name: "Q1" }).getAttribute("aria-sort"), "ascending");
  await page.keyboard.press("Escape");
  assert.equal(await dialog.count(), 0);

  await page.evaluate(() => document.addEventListener("plexoras-command", (event) => event.preventDefault()));
  await choose("Show data as a table");
  assert.equal(await dialog.count(), 0);
});

test("a table's picture has its texts", async () => {
  const page = await openMenuChart({ style: { DiagramType: 11 } });
  const waiting = page.waitForEvent("download");
  await page.locator("plexoras-diagram").click({ button: "right" });
  for (const name of ["Save picture", "SVG"]) await page.getByRole("menuitem", { name }).click();
  const svg = readFileSync(await (await waiting).path(), "utf8");
  assert.deepEqual(["North", "Q3", "1200"].map((text) => svg.includes(`>${text}<`)), [true, true, true]);
});

test("printing takes the rest of the page away, and gives it back", async () => {
  const page = await openMenuChart();
  const seen = await page.evaluate(async () => {
    const heading = document.querySelector("h1");
    const chart = document.querySelector("plexoras-diagram");
    const marks = (): boolean[] => [heading, chart, document.querySelector("main")]
      .map((node) => node?.hasAttribute("data-plexoras-unprinted") ?? false);
    const seen: boolean[][] = [];
    window.print = () => seen.push(marks());
    chart?.shadowRoot?.querySelector<HTMLElement>(".menu-button")?.click();
    const items = [...chart?.shadowRoot?.querySelectorAll<HTMLElement>("[role=menuitem]") ?? []];
    items.find((item) => item.textContent === "Print…")?.click();
    window.dispatchEvent(new Event("afterprint"));
    return [...seen, marks()];
  });
  assert.deepEqual(seen, [[true, false, false], [false, false, false]]);
});
