// What axe-core finds on pages with charts: nothing.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import type { ChartOnPage } from "./chart_page.ts";
import { launch, openCharts } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

interface Finding {
  readonly id: string;
  readonly nodes: readonly { readonly target: unknown; readonly failureSummary: string }[];
}

const axe = readFileSync(join(PLEXORAS_ROOT, "web/diagram/node_modules/axe-core/axe.min.js"), "utf8");

async function findings(page: Page): Promise<string[]> {
  await page.evaluate(axe);
  const { violations, passes } = await page.evaluate(async () => {
    const { axe } = window as unknown as { axe: { run: () => Promise<{ violations: Finding[]; passes: Finding[] }> } };
    return axe.run();
  });
  // What axe could not look at it would not complain of.
  for (const rule of ["aria-allowed-attr", "color-contrast"]) {
    assert(passes.some(({ id, nodes }) => id === rule && nodes.length > 3), `${rule} has been checked`);
  }
  return violations.flatMap(({ id, nodes }) =>
    nodes.map((node) => `${id} ${JSON.stringify(node.target)}: ${node.failureSummary}`));
}

const operated = {
  HasPopupMenu: true, SelectionMode: 3, MultipleSelection: true, OnRowLabelClick: 1, OnColLabelClick: 2,
  moveableRows: true, IsEditable: true, TabStyle: 1, HasStatistics: true, negativeForeColor: "red",
} as const;

const titles = ["Region", "Quarter", "Sales"] as const;

/** Every type, plain and with all that can be done to it, with its data beside it as a table and without. */
const charts: ChartOnPage[] = Array.from({ length: 12 }, (_, type) => type).flatMap((DiagramType) => [
  { id: `plain${DiagramType}`, style: { DiagramType }, caption: `Sales ${DiagramType}`, alt: "By region and quarter" },
  { id: `operated${DiagramType}`, style: { DiagramType, ...operated }, fallback: "", titles },
]);

for (const colorScheme of ["light", "dark"] as const) {
  test(`no findings on a page with each kind of chart, ${colorScheme}`, async () => {
    const head = colorScheme === "dark" ? '<meta name="color-scheme" content="dark">' : "";
    const page = await openCharts(browser, charts, { colorScheme, head, reducedMotion: "reduce" });
    assert.deepEqual(await findings(page), []);
  });
}

test("no findings while a menu, a cell or the window with the data is open", async () => {
  const menu = { style: { HasPopupMenu: true } };
  const page = await openCharts(browser, [{ style: { DiagramType: 9, ...operated } }, menu]);
  await page.getByRole("gridcell", { name: "30" }).dblclick();
  assert.deepEqual(await findings(page), []);
  await page.keyboard.press("Escape");
  await page.locator("#chart1").click({ button: "right" });
  assert.deepEqual(await findings(page), []);
  await page.getByRole("menuitem", { name: "Show data as a table" }).click();
  assert.deepEqual(await findings(page), []);
});

test("a chart is a figure with a name; its picture is hidden where the table can be read", async () => {
  const page = await openCharts(browser, [
    { style: { DiagramType: 5 }, caption: "Sales", alt: "By region" },
    { style: { DiagramType: 5 }, caption: "Alone", fallback: "" },
  ]);
  assert.equal(await page.getByRole("application", { name: "Sales. By region" }).count(), 1);
  assert.equal(await page.getByRole("img", { name: "Sales" }).count(), 0);
  assert.equal(await page.locator("#chart0").getByRole("table").count(), 1);
  assert.equal(await page.getByRole("img", { name: "Alone" }).count(), 1);
  const client = await page.context().newCDPSession(page);
  const { nodes } = await client.send("Accessibility.getFullAXTree") as
    { nodes: { role?: { value: string }; name?: { value: string } }[] };
  const figures = nodes.filter(({ role }) => role?.value === "figure").map(({ name }) => name?.value);
  assert.deepEqual(figures, ["Sales. By region", "Alone"]);
});

test("forced colours leave everything legible, and nothing moves for who does not want it", async () => {
  const charts = [{ style: { DiagramType: 11, ...operated } }, { style: { HasPopupMenu: true } }];
  const page = await openCharts(browser, charts,
    { forcedColors: "active", reducedMotion: "reduce" });
  assert.deepEqual(await findings(page), []);
  const moving = await page.evaluate(() => document.getAnimations().length);
  assert.equal(moving, 0);
});
