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

/** The names of all that screen readers find of a role. */
async function namesOf(page: Page, wanted: string): Promise<(string | undefined)[]> {
  const client = await page.context().newCDPSession(page);
  const { nodes } = await client.send("Accessibility.getFullAXTree") as
    { nodes: { ignored: boolean; role?: { value: string }; name?: { value: string } }[] };
  return nodes.filter(({ ignored, role }) => !ignored && role?.value === wanted).map(({ name }) => name?.value);
}

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
  assert.deepEqual(await namesOf(page, "figure"), ["Sales. By region", "Alone"]);
});

test("a published picture is not announced beside the drawing, and tables may come and go", async () => {
  const picture = '<div data-stamp="0"><svg role="img" aria-label="Published" width="9" height="9"></svg></div>';
  const table = "<table><caption>Data</caption><tr><th>Q1<td>5</table>";
  const page = await openCharts(browser, [
    { caption: "Both", fallback: picture + table }, { caption: "Picture", fallback: picture },
  ]);
  const heard = (): Promise<(string | undefined)[][]> =>
    Promise.all(["image", "table"].map((role) => namesOf(page, role)));
  assert.deepEqual(await heard(), [["Picture"], ["Data"]]);
  await page.evaluate(() => document.querySelector("#chart1")?.append(document.querySelector("table") ?? ""));
  await page.waitForTimeout(50);
  assert.deepEqual(await heard(), [["Both"], ["Data"]]);
});

test("a link beside the drawing is seen while it has the focus", async () => {
  const fallback = '<p>Sources: <a href="#one">one</a></p><table><tr><td>5</table>';
  const page = await openCharts(browser, [{ fallback }], { colorScheme: "dark" });
  const seen = (): Promise<boolean> => page.locator("plexoras-diagram a").evaluate((link) => {
    const { x, y, width, height } = link.getBoundingClientRect();
    return width > 10 && document.elementFromPoint(x + width / 2, y + height / 2) === link;
  });
  assert.equal(await seen(), false);
  await page.keyboard.press("Tab");
  await page.keyboard.press("Tab");
  assert.equal(await page.evaluate(() => document.activeElement?.textContent), "one");
  assert.equal(await seen(), true);
  await page.keyboard.press("Tab");
  assert.equal(await seen(), false);
});

test("what the reader selects at once is selected together", async () => {
  const style = { SelectionMode: 3, MultipleSelection: true, ExtendedSelection: true };
  const page = await openCharts(browser, [{ style }, { style: { ...style, DiagramType: 9 } }]);
  assert.deepEqual(await page.evaluate(() => {
    const selected: Record<string, unknown> = {};
    addEventListener("plexoras-select", (event) => {
      selected[(event.target as Element).id] = (event as CustomEvent<{ cells: unknown[] }>).detail.cells.length;
    });
    const [walker, cells] = [...document.querySelectorAll("plexoras-diagram")].map((chart) =>
      [...chart.shadowRoot?.querySelectorAll<HTMLElement>(".walker, tbody td") ?? []]);
    for (const key of ["ArrowRight", "Enter", "ArrowRight", "Enter", "ArrowDown", "Enter"]) {
      walker?.[0]?.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true, composed: true }));
    }
    for (const cell of cells?.slice(0, 3) ?? []) cell.click();
    return selected;
  }), { chart0: 3, chart1: 3 });
});

test("forced colours leave everything legible", async () => {
  const charts = [{ style: { DiagramType: 11, ...operated } }, { style: { HasPopupMenu: true } }];
  const page = await openCharts(browser, charts, { forcedColors: "active", reducedMotion: "reduce" });
  assert.deepEqual(await findings(page), []);
});

test("lines grow when they come into view; nothing moves for who does not want it", async () => {
  // A chart that is drawn before anybody sees it does not move either.
  const head = `<script>
    window.requestIdleCallback = () => 0;
    addEventListener("plexoras-ready", ({ target }) => {
      target.atFirst = target.shadowRoot.querySelector(".drawing").innerHTML;
    });</script>`;
  const types = [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11];
  const charts = types.map((DiagramType) => ({ id: `t${DiagramType}`, style: { DiagramType, TabStyle: 1 } }));
  for (const reducedMotion of ["reduce", "no-preference"] as const) {
    const page = await openCharts(browser, charts,
      { head, reducedMotion, viewport: { width: 900, height: 320 * types.length + 400 } });
    await page.waitForTimeout(1500);
    const moved = await page.evaluate(() => [...document.querySelectorAll("plexoras-diagram")]
      .filter((chart) => (chart as unknown as { atFirst: string }).atFirst
        !== chart.shadowRoot?.querySelector(".drawing")?.innerHTML).map(({ id }) => id));
    if (reducedMotion === "reduce") assert.deepEqual(moved, []);
    else assert(moved.includes("t1"), `moved: ${moved}`);
    assert.equal(await page.evaluate(() => document.getAnimations().length), 0);
    await page.close();
  }
});
