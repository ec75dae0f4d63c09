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

test("the focus returns to where it was: in the chart, beside its data, in another root, nowhere", async () => {
  const page = await openMenuChart({ fallback: '<a id="inside" href="#x">data</a>' });
  await page.evaluate(() => {
    const other = document.createElement("section");
    other.id = "other";
    const box = document.createElement("input");
    other.attachShadow({ mode: "open" }).append(box);
    document.body.append(other);
  });
  const focus: [string, () => void, string][] = [
    ["the chart", () => {
      document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector<HTMLElement>(".walker")?.focus();
    }, "DIV.walker"],
    ["what it holds", () => document.querySelector<HTMLElement>("#inside")?.focus(), "A"],
    ["another root", () => document.querySelector("#other")?.shadowRoot?.querySelector("input")?.focus(), "INPUT"],
    ["nothing", () => (document.activeElement as HTMLElement | null)?.blur(), "BODY"],
  ];
  for (const [name, go, wanted] of focus) {
    await page.evaluate(go);
    await page.locator("plexoras-diagram").dispatchEvent("contextmenu", { button: 2, clientX: 100, clientY: 100 });
    await page.keyboard.press("ArrowDown");
    assert.equal(await focusedText(page), "Show data as a table", name);
    await page.keyboard.press("Escape");
    const focused = await page.evaluate(() => {
      let node = document.activeElement;
      while (node?.shadowRoot?.activeElement) node = node.shadowRoot.activeElement;
      return node ? [node.tagName, node.className].filter(Boolean).join(".") : "";
    });
    assert.equal(focused, wanted, name);
  }
});

test("a menu that closes by itself leaves the keyboard where it was", async () => {
  const page = await openMenuChart();
  const fire = (types: readonly string[]): Promise<void> => page.evaluate((types) => {
    for (const type of types) document.dispatchEvent(new Event(type, { bubbles: true }));
  }, types);
  for (const types of [["resize"], ["wheel"], ["blur", "focus"]]) {
    await page.locator("plexoras-diagram").evaluate((chart) =>
      chart.shadowRoot?.querySelector<HTMLElement>(".walker")?.focus());
    await page.keyboard.press("Shift+F10");
    await fire(types);
    assert.equal(await page.getByRole("menu").count(), 0, types[0]);
    assert.equal(await page.locator("plexoras-diagram").evaluate((chart) =>
      chart.shadowRoot?.activeElement?.className), "walker", types[0]);
  }
});

test("a menu that opens ends what follows the pointer", async () => {
  const page = await openMenuChart({ style: { DiagramType: 9, moveableCols: true } });
  const labels = page.getByRole("columnheader", { name: "Q" });
  const middle = async (index: number): Promise<{ x: number; y: number }> => {
    const box = await labels.nth(index).boundingBox();
    assert(box);
    return { x: box.x + box.width / 2, y: box.y + box.height / 2 };
  };
  const client = await page.context().newCDPSession(page);
  const [from, to] = [await middle(0), await middle(2)];
  await client.send("Input.dispatchTouchEvent", { type: "touchStart", touchPoints: [from] });
  await page.getByRole("menu").waitFor();
  await client.send("Input.dispatchTouchEvent", { type: "touchMove", touchPoints: [to] });
  await client.send("Input.dispatchTouchEvent", { type: "touchEnd", touchPoints: [] });
  assert.deepEqual(await labels.allTextContents(), ["Q1", "Q2", "Q3"]);
});

test("a long press takes the click that ends it, and no other", async () => {
  for (const [end, counted] of [["pointerup", 0], ["pointercancel", 1]] as const) {
    const page = await openMenuChart();
    const chart = page.locator("plexoras-diagram");
    const touch = { pointerType: "touch", clientX: 100, clientY: 150, bubbles: true, composed: true };
    await chart.dispatchEvent("pointerdown", touch);
    await page.getByRole("menu").waitFor();
    assert.equal(await page.evaluate(([type, init]) => {
      let clicks = 0;
      document.addEventListener("click", () => { clicks += 1; });
      const chart = document.querySelector("plexoras-diagram");
      chart?.dispatchEvent(new PointerEvent(type, init));
      chart?.dispatchEvent(new MouseEvent("click", { bubbles: true, composed: true }));
      return clicks;
    }, [end, touch] as const), counted, end);
  }
});

test("the window with the data is for itself, and goes with its chart", async () => {
  const ends: [string, string][] = [
    ["the chart leaves", "chart.remove()"],
    ["it is hidden", `chart.insertAdjacentHTML("beforeend", '<param name="Visible" value="False">')`],
    ["it fails", `chart.querySelector("[name=XmlContents]").setAttribute("value", "")`],
  ];
  for (const [name, end] of ends) {
    const page = await openMenuChart();
    await page.locator("plexoras-diagram").click({ button: "right" });
    await page.getByRole("menuitem", { name: "Show data as a table" }).click();
    const dialog = page.getByRole("dialog");
    await dialog.getByRole("columnheader", { name: "Q1" }).click({ button: "right" });
    assert.equal(await page.getByRole("menu").count(), 0, "no menu of the chart in the window");
    await dialog.getByRole("columnheader", { name: "Q1" }).click();
    assert.equal(await dialog.locator("[aria-live]").textContent(), "Q1: ascending", "said in the window");
    const root = await page.evaluateHandle("document.querySelector('plexoras-diagram').shadowRoot");
    await page.evaluate(`const chart = document.querySelector("plexoras-diagram"); ${end}`);
    await page.waitForTimeout(50);
    assert.equal(await root.evaluate((node) => (node as ShadowRoot).querySelector("dialog")), null, name);
    await page.close();
  }
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
  const fire = (type: string): string => `window.dispatchEvent(new Event("${type}"));`;
  const ways: [string, string, boolean][] = [
    ["print() waits until it is done", `${fire("beforeprint")} note(); ${fire("afterprint")}`, true],
    ["print() does nothing", "", false],
  ];
  for (const [name, print, isMarked] of ways) {
    const seen = await page.evaluate(`(() => {
      const nodes = ["h1", "plexoras-diagram", "main"].map((name) => document.querySelector(name));
      const seen = [];
      const note = () => seen.push(nodes.map((node) => node.hasAttribute("data-plexoras-unprinted")));
      window.print = () => { ${print} };
      nodes[1].shadowRoot.querySelector(".menu-button").click();
      const items = [...nodes[1].shadowRoot.querySelectorAll("[role=menuitem]")];
      items.find((item) => item.textContent === "Print…").click();
      note();
      ${fire("beforeprint")}
      note();
      ${fire("afterprint")}
      return seen;
    })()`);
    const none = [false, false, false];
    assert.deepEqual(seen, [...(isMarked ? [[true, false, false]] : []), none, none], name);
  }
});
