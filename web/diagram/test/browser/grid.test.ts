// Tables and heat tables in a browser.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import type { Style } from "../../src/settings/style.ts";
import type { ChartOnPage } from "./chart_page.ts";
import { focusedText, launch, launchWithBars, openCharts } from "./chart_page.ts";

let browser: Browser;
let withBars: Browser;
before(async () => {
  browser = await launch();
  withBars = await launchWithBars();
});
after(() => Promise.all([browser.close(), withBars.close()]).then(() => {}));

async function openTable(chart: ChartOnPage): Promise<Page> {
  return openCharts(browser, [{ ...chart, style: { DiagramType: 9, ...chart.style } }]);
}

/** The texts on show, row by row, with labels. */
function texts(page: Page): Promise<string[]> {
  return page.locator("table[part=grid] tr").evaluateAll((rows) =>
    rows.map((row) => [...(row as HTMLTableRowElement).cells].map((cell) => cell.textContent).join("|")));
}

const unsorted = ["|Q1|Q2|Q3", "North|30|-4.5|7", "South|10|25|n/a", "East|20|5|1200"];

const cases: { name: string; chart: ChartOnPage; shows: string[] }[] = [
  { name: "labels and cells", chart: {}, shows: unsorted },
  { name: "no labels", chart: { style: { showRowLabels: false, showColLabels: false } },
    shows: ["30|-4.5|7", "10|25|n/a", "20|5|1200"] },
  { name: "titles",
    chart: { titles: ["Region", "Quarter", "Sales"], style: { ShowRowTitle: true, ShowColTitle: true } },
    shows: ["|Quarter", "Region|Q1|Q2|Q3", ...unsorted.slice(1)] },
  { name: "transposed", chart: { style: { IsTransposed: true } },
    shows: ["|North|South|East", "Q1|30|10|20", "Q2|-4.5|25|5", "Q3|7|n/a|1200"] },
  { name: "formatted", chart: { style: { FormatType: 0, FormatPattern: "#,##0.00" } },
    shows: ["|Q1|Q2|Q3", "North|30.00|-4.50|7.00", "South|10.00|25.00|n/a", "East|20.00|5.00|1,200.00"] },
  { name: "markup as text",
    chart: { rows: ["<b>x</b>"], columns: ["<img src=x>"], values: ["<script>alert(1)</script>"] },
    shows: ["|<img src=x>", "<b>x</b>|<script>alert(1)</script>"] },
  { name: "no rows", chart: { rows: [], columns: ["A"], values: [] }, shows: ["|A"] },
];
for (const { name, chart, shows } of cases) {
  test(`a table shows ${name}`, async () => assert.deepEqual(await texts(await openTable(chart)), shows));
}

test("a click on a column's label sorts the rows, and once more the other way; texts and gaps stay last", async () => {
  const page = await openTable({ style: { OnColLabelClick: 2, OnRowLabelClick: 2 } });
  const label = page.getByRole("columnheader", { name: "Q3" });
  await label.click();
  assert.equal(await label.getAttribute("aria-sort"), "ascending");
  assert.deepEqual((await texts(page)).slice(1), ["North|30|-4.5|7", "East|20|5|1200", "South|10|25|n/a"]);
  await label.press("Enter");
  assert.equal(await label.getAttribute("aria-sort"), "descending");
  assert.deepEqual((await texts(page)).slice(1), ["East|20|5|1200", "North|30|-4.5|7", "South|10|25|n/a"]);
  await page.getByRole("rowheader", { name: "South" }).click();
  assert.deepEqual((await texts(page))[0], "|Q1|Q2|Q3");
  await page.getByRole("rowheader", { name: "South" }).click();
  assert.deepEqual((await texts(page))[0], "|Q2|Q1|Q3");
});

test("title, labels and rows stand below each other", async () => {
  const page = await openTable({
    titles: ["Region", "Quarter", "Sales"], style: { ShowColTitle: true, ColLabelHeight: 40, DefaultRowHeight: 30 },
  });
  const table = page.locator("table[part=grid]");
  const last = await table.locator("tr").last().getAttribute("aria-rowindex");
  assert.deepEqual([last, await table.getAttribute("aria-rowcount")], ["5", "5"]);
  const tops = await page.locator("table[part=grid] tr > :last-child").evaluateAll((cells) =>
    cells.map((cell) => cell.getBoundingClientRect().top));
  assert.deepEqual(tops.map((top) => top - (tops[0] ?? 0)), [0, 40, 80, 110, 140]);
});

test("selection by clicks and keys follows the order on show", async () => {
  const page = await openTable({
    style: { SelectionMode: 3, MultipleSelection: true, OnColLabelClick: 1, OnRowLabelClick: 2 },
  });
  await page.evaluate(() => {
    document.addEventListener("plexoras-select", (event) => {
      document.title = JSON.stringify((event as CustomEvent).detail.cells.map(Object.values));
    });
  });
  const cell = (text: string) => page.getByRole("gridcell", { name: text, exact: true });
  const steps: [string, () => Promise<void>, string][] = [
    ["Tab, Shift and an arrow", async () => {
      await page.keyboard.press("Tab");
      await page.keyboard.press("Shift+ArrowRight");
    }, "[[0,0],[0,1]]"],
    ["click", () => cell("30").click(), "[[0,0]]"],
    ["Ctrl adds", () => cell("25").click({ modifiers: ["Control"] }), "[[0,0],[1,1]]"],
    ["Ctrl takes away", () => cell("30").click({ modifiers: ["Control"] }), "[[1,1]]"],
    ["a range from there", () => cell("5").click({ modifiers: ["Shift"] }), "[[0,0],[0,1],[1,0],[1,1],[2,0],[2,1]]"],
    ["a label selects its column", () => page.getByRole("columnheader", { name: "Q2" }).click(), "[[-1,1]]"],
    ["Space selects", () => cell("10").press("Space"), "[[1,0]]"],
    ["Shift and arrow widen it", () => cell("10").press("Shift+ArrowDown"), "[[1,0],[2,0]]"],
    ["after a plain arrow they begin anew", async () => {
      await page.keyboard.press("ArrowRight");
      await page.keyboard.press("Shift+ArrowUp");
    }, "[[1,1],[2,1]]"],
  ];
  for (const [name, act, cells] of steps) {
    await act();
    await page.waitForFunction((wanted) => document.title === wanted, cells, { timeout: 2000 })
      .catch(async () => assert.equal(await page.title(), cells, name));
    await page.evaluate(() => new Promise((drawn) => requestAnimationFrame(drawn)));
  }
  assert.equal(await page.locator("[aria-selected=true]").count(), 2);
});

test("rows and columns move and change their size, by pointer and by keys", async () => {
  const page = await openTable({ style: { moveableRows: true, moveableCols: true } });
  const column = (name: string) => page.getByRole("columnheader", { name });
  await column("Q3").dragTo(column("Q1"));
  assert.equal((await texts(page))[0], "|Q3|Q1|Q2");
  await page.getByRole("gridcell", { name: "1200" }).press("Alt+ArrowUp");
  assert.deepEqual((await texts(page)).slice(1), ["North|7|30|-4.5", "East|1200|20|5", "South|n/a|10|25"]);
  assert.equal(await page.locator("[aria-live]").textContent(), "East: place 2 of 3");

  const before = await column("Q1").boundingBox();
  assert(before);
  await page.mouse.move(before.x + before.width - 2, before.y + 5);
  await page.mouse.down();
  await page.mouse.move(before.x + before.width + 28, before.y + 5);
  await page.mouse.up();
  assert.equal((await column("Q1").boundingBox())?.width, before.width + 30);
  await column("Q1").press("Shift+Alt+ArrowRight");
  assert.equal((await column("Q1").boundingBox())?.width, before.width + 38);
  const row = page.getByRole("rowheader", { name: "East" });
  const height = (await row.boundingBox())?.height ?? 0;
  await row.press("Shift+Alt+ArrowDown");
  assert.equal((await row.boundingBox())?.height, height + 8);
});

test("typing into cells: keys, giving up, and an input method's own Enter", async () => {
  const page = await openTable({ style: { IsEditable: true, FormatType: 0, FormatPattern: "0.0" } });
  const first = page.getByRole("gridcell", { name: "30.0" });
  await first.focus();
  await page.keyboard.type("41");
  await page.keyboard.press("Enter");
  assert.match((await texts(page))[1] ?? "", /^North\|41\.0\|/);
  assert.equal(await focusedText(page), "10.0", "Enter goes on to the cell below");
  await page.keyboard.press("F2");
  assert.equal(await page.locator("input").inputValue(), "10", "the cell's own text, not the formatted one");
  await page.keyboard.type("99");
  await page.locator("input").dispatchEvent("keydown", { key: "Enter", isComposing: true, bubbles: true });
  assert.equal(await page.locator("input").count(), 1, "while an input method composes, Enter is its own");
  await page.keyboard.press("Escape");
  assert.match((await texts(page))[2] ?? "", /^South\|10\.0\|/);
  await page.keyboard.press("Delete");
  assert.match((await texts(page))[2] ?? "", /^South\|\|/);
});

test("what is typed is what the element says, as long as the data stay", async () => {
  const page = await openTable({ style: { IsEditable: true, SelectionMode: 3, HasPopupMenu: true } });
  const chart = page.locator("plexoras-diagram");
  await page.evaluate(() => document.addEventListener("plexoras-select", (event) => {
    const { value, text } = (event as CustomEvent).detail;
    document.title = `${value} ${text}`;
  }));
  const first = page.getByRole("gridcell", { name: "30" });
  await first.focus();
  await page.keyboard.type("41");
  await page.keyboard.press("Tab");
  const typed = (): Promise<string[]> =>
    chart.evaluate((node: HTMLElement & { table?: { cells: string[][] } }) => node.table?.cells[0] ?? []);
  assert.deepEqual(await typed(), ["41", "-4.5", "7"]);
  await page.getByRole("gridcell", { name: "41" }).click();
  assert.equal(await page.title(), "41 41");
  await page.keyboard.press("Shift+F10");
  await page.getByRole("menuitem", { name: "Show data as a table" }).click();
  assert.match(await page.locator("dialog table tbody tr").first().innerText(), /^North\s+41\s/);
  await page.keyboard.press("Escape");
  const set = (name: string, from: string, to: string): Promise<void> =>
    page.locator(`param[name=${name}]`).evaluate((param, [before, after]) =>
      param.setAttribute("value", param.getAttribute("value")?.replace(before ?? "", after ?? "") ?? ""), [from, to]);
  await set("XmlStyle", ">9<", ">5<");
  await page.locator("plexoras-diagram svg").waitFor();
  assert.deepEqual(await typed(), ["41", "-4.5", "7"], "a chart of the same data");
  await set("XmlContents", "1200", "1300");
  assert.deepEqual(await typed(), ["30", "-4.5", "7"], "other data");
});

test("as many rows and columns stay in view as there are, and have room", async () => {
  const rows = Array.from({ length: 60 }, (_, row) => `Row ${row}`);
  const page = await openCharts(browser, [{}, { rows, columns: ["A"], values: rows.map(() => "1"), fallback: "" }]
    .map((chart) => ({ ...chart, style: { DiagramType: 9, FixedRows: 32767, FixedCols: 32767 } })));
  const kept = (): Promise<number[]> => page.locator("table[part=grid]").evaluateAll((tables) =>
    (tables as HTMLElement[]).map(({ style }) => [...style].filter((name) => /^--_top-/.test(name)).length));
  const [few = 0, many = 0] = await kept();
  assert.equal(few, 3);
  assert(many > 3 && many < 20, String(many));
  await page.locator("plexoras-diagram").last().evaluate((chart) => { chart.style.height = "100px"; });
  await page.waitForTimeout(100);
  const [, less = 0] = await kept();
  assert(less > 0 && less < many, `${less} of ${many}`);
});

test("a large table that has been moved is printed whole", async () => {
  const rows = Array.from({ length: 1000 }, (_, row) => `Row ${row}`);
  const chart = { rows, columns: [..."ABCD"], values: Array(4000).fill("1"), fallback: "", style: { DiagramType: 9 } };
  const page = await openCharts(browser, [chart], { colorScheme: "dark" });
  const printed = await page.locator("plexoras-diagram").evaluate((chart) => {
    document.body.append(chart);
    window.dispatchEvent(new Event("beforeprint"));
    return chart.shadowRoot?.querySelectorAll("tbody tr").length;
  });
  assert.equal(printed, 1000);
});

test("ten thousand cells are all there, and the last can be reached at once", async () => {
  const values = Array.from({ length: 10_000 }, (_, index) => String(index));
  const page = await openTable({
    rows: Array.from({ length: 1000 }, (_, row) => `Row ${row}`), columns: [..."ABCDEFGHIJ"], values, fallback: "",
    style: { FixedRows: 1, FixedCols: 1 },
  });
  await page.getByRole("gridcell", { name: "0", exact: true }).press("Control+End");
  assert.equal(await focusedText(page), "9999");
  assert.equal((await texts(page)).length, 1001);
  const place = await page.locator("plexoras-diagram").evaluate((chart) => {
    const box = chart.getBoundingClientRect();
    const at = (query: string) => chart.shadowRoot?.querySelector(query)?.getBoundingClientRect();
    const over = chart.shadowRoot?.elementFromPoint(box.left + 20, box.top + 30)?.textContent;
    return [...[at("thead th")?.top, at("tbody tr td")?.top].map((top) => Math.round((top ?? 0) - box.top)), over];
  });
  assert.deepEqual(place, [0, 20, "Row 0"], "labels and fixed rows stay in view, over the others");
});

test("a heat table colours each number, and all texts can be read", async () => {
  const page = await openCharts(browser, ["light", "dark"].map((theme) => ({
    attributes: `theme="${theme}"`, style: { DiagramType: 11 }, rows: ["r"],
    columns: [..."abcdefgh"], values: ["-9", "-5", "-1", "0", "2", "5", "8", "9"],
  })));
  const grids = await page.locator("table[part=grid]").all();
  for (const [forcedColors, grid] of (["none", "active"] as const).flatMap((forced) =>
    grids.map((one) => [forced, one] as const))) {
    await page.emulateMedia({ forcedColors });
    await page.evaluate(() => new Promise((drawn) => requestAnimationFrame(() => setTimeout(drawn))));
    const cells = await grid.locator("td.heat").evaluateAll((nodes) => nodes.map((node) => {
      const { color, backgroundColor } = getComputedStyle(node);
      const light = (css: string): number => {
        const parts = (css.match(/\d+/g) ?? []).map((part) => Number(part) / 255)
          .map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
        return 0.2126 * (parts[0] ?? 0) + 0.7152 * (parts[1] ?? 0) + 0.0722 * (parts[2] ?? 0) + 0.05;
      };
      const [one, other] = [light(color), light(backgroundColor)];
      return { ground: backgroundColor, contrast: Math.max(one, other) / Math.min(one, other) };
    }));
    assert.equal(new Set(cells.map(({ ground }) => ground)).size, 8, "each value has its colour");
    assert(cells.every(({ contrast }) => contrast >= 4.5), JSON.stringify(cells));
  }
  assert.equal(await page.getByRole("img", { name: "Colours from -9 to 9" }).count(), 2);
});

test("what is being typed outlives a new scheme, another size and new data", async () => {
  const page = await openTable({ style: { IsEditable: true, DiagramType: 11 } });
  await page.getByRole("gridcell", { name: "10", exact: true }).press("F2");
  const box = page.locator("input");
  await box.pressSequentially("456");
  await box.press("ArrowLeft");
  const changes: [string, () => Promise<unknown>][] = [
    ["scheme", () => page.emulateMedia({ colorScheme: "dark" })],
    ["height, as a keyboard on the screen takes it", () => page.locator("plexoras-diagram").evaluate((chart) => {
      chart.style.height = "150px";
    })],
    ["data", () => page.locator("param[name=XmlContents]").evaluate((param) => {
      param.setAttribute("value", param.getAttribute("value")?.replace("1200", "1300") ?? "");
    })],
  ];
  for (const [name, change] of changes) {
    await change();
    await page.evaluate(() => new Promise((drawn) => requestAnimationFrame(() => setTimeout(drawn, 50))));
    assert.equal((await texts(page)).length, 4, `${name}: all rows are there`);
    const typed = await box.evaluate((node: HTMLInputElement) =>
      [node.value, node.selectionStart, (node.getRootNode() as ShadowRoot).activeElement === node]);
    assert.deepEqual(typed, ["456", 2, true], name);
  }
  await page.keyboard.press("Enter");
  assert.deepEqual((await texts(page)).slice(2), ["South|456|25|n/a", "East|20|5|1300"]);
  await page.getByRole("gridcell", { name: "5", exact: true }).press("F2");
  await page.locator("param[name=XmlContents]").evaluate((param) => {
    param.setAttribute("value", "<xml><rows><row/></><cols><col/></><data><value>1</></></xml>");
  });
  await page.locator("table[part=grid] tbody tr:only-child").waitFor();
  assert.equal(await box.count(), 0, "the box goes with its cell");
});

test("a click that ends the typing does what it does elsewhere", async () => {
  const page = await openTable({ style: { IsEditable: true, OnColLabelClick: 2 } });
  await page.getByRole("gridcell", { name: "30" }).press("F2");
  await page.locator("input").fill("15");
  await page.getByRole("columnheader", { name: "Q1" }).click();
  assert.deepEqual((await texts(page)).slice(1), ["South|10|25|n/a", "North|15|-4.5|7", "East|20|5|1200"]);
});

test("scroll bars: as needed, always, never; wheels scroll with and without them", async () => {
  const rows = Array.from({ length: 60 }, (_, row) => `Row ${row}`);
  const columns = Array.from({ length: 30 }, (_, column) => `Column ${column}`);
  const policies = [0, 1, 2].flatMap((vertical) => [0, 1, 2].map((horizontal) => [vertical, horizontal] as const));
  const chart = { fallback: "", attributes: 'width="280" height="140"' };
  const tables = [{ rows, columns }, { rows: ["r"], columns: ["c"] }].map((size) =>
    policies.map(([VScrollbarPolicy, HScrollbarPolicy]): ChartOnPage => ({
      ...chart, ...size, values: Array(size.rows.length * size.columns.length).fill("1"),
      style: { DiagramType: 9, AutoResize: false, VScrollbarPolicy, HScrollbarPolicy },
    })));
  const wanted = [([0, 1, 2] as const).map((policy) => policy < 2), ([0, 1, 2] as const).map((policy) => policy === 1)];
  for (const [index, charts] of tables.entries()) {
    const page = await openCharts(withBars, charts, { viewport: { width: 900, height: 2000 } });
    for (const [place, [vertical, horizontal]] of policies.entries()) {
      const name = `${index === 0 ? "large" : "small"}, vertical ${vertical}, horizontal ${horizontal}`;
      const scroller = page.locator(".grid-scroll").nth(place);
      const shown = await scroller.evaluate((node) => {
        const clip = node.parentElement?.getBoundingClientRect();
        const box = node.getBoundingClientRect();
        // A bar shows where the box is clipped behind what it scrolls.
        return [(clip?.right ?? 0) - box.left - node.clientWidth > 1,
          (clip?.bottom ?? 0) - box.top - node.clientHeight > 1];
      });
      assert.deepEqual(shown, [wanted[index]?.[vertical], wanted[index]?.[horizontal]], name);
      if (index === 1) continue;
      await scroller.hover();
      const way = async (): Promise<number[]> => scroller.evaluate((node) => [node.scrollLeft, node.scrollTop]);
      // A wheel that turns too soon after the last time belongs to the box that it turned over then.
      for (let turn = 0; turn < 8 && (await way()).some((pixels) => pixels === 0); turn += 1) {
        await page.mouse.wheel(40, 30);
        await page.waitForTimeout(200);
      }
      assert((await way()).every((pixels) => pixels > 0), `${name}: the wheel does not scroll both ways`);
    }
  }
});

test("Alt and arrows are the grid's where it has something to move, and the browser's elsewhere", async () => {
  const cases: [string, Partial<Style>, string, number][] = [
    ["columns that stay", { moveableRows: true }, "Alt+ArrowLeft", 1],
    ["moveable columns", { moveableCols: true }, "Alt+ArrowLeft", 0],
    ["columns of a fixed size", { resizableCols: false }, "Shift+Alt+ArrowLeft", 1],
    ["resizable columns", {}, "Shift+Alt+ArrowLeft", 0],
  ];
  for (const [name, style, key, reached] of cases) {
    const page = await openTable({ style });
    await page.evaluate(() => document.addEventListener("keydown", (event) => {
      event.preventDefault();
      if (event.key.startsWith("Arrow")) document.body.append(document.createElement("hr"));
    }));
    await page.getByRole("gridcell", { name: "25" }).press(key);
    assert.equal(await page.locator("hr").count(), reached, name);
  }
});

test("copying takes the selected cells in the order on show", async () => {
  const page = await openTable({ style: { SelectionMode: 3, MultipleSelection: true, OnColLabelClick: 2 } });
  await page.getByRole("columnheader", { name: "Q1" }).click();
  await page.getByRole("gridcell", { name: "25" }).click();
  await page.getByRole("gridcell", { name: "1200" }).click({ modifiers: ["Control"] });
  const copied = await page.locator("table[part=grid] td:focus").evaluate((cell) => {
    const event = new ClipboardEvent("copy", { clipboardData: new DataTransfer(), bubbles: true, cancelable: true });
    cell.dispatchEvent(event);
    return event.clipboardData?.getData("text/plain");
  });
  assert.equal(copied, "25\t\n\t1200");
});
