// Charts on paper: what a PDF of the page says, word by word.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import type { ChartOnPage } from "./chart_page.ts";
import { launch, openCharts, twoFrames } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

/** A word of a PDF: where it stands on its page, in points. */
interface Word {
  readonly text: string;
  readonly page: number;
  readonly left: number;
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
}

interface Paper {
  readonly format: "A4" | "Letter";
  readonly landscape: boolean;
  readonly width: number;
  readonly height: number;
}

// In points.
const papers: readonly Paper[] = [
  { format: "A4", landscape: false, width: 595.9, height: 842.9 },
  { format: "Letter", landscape: false, width: 612, height: 792 },
  { format: "A4", landscape: true, width: 842.9, height: 595.9 },
  { format: "Letter", landscape: true, width: 792, height: 612 },
];
const nameOf = ({ format, landscape }: Paper): string => (landscape ? `${format}, lying` : format);
const margin = 36;

async function printed(page: Page, { format, landscape, width, height }: Paper): Promise<Word[]> {
  const folder = join(PLEXORAS_ROOT, "build/web/tests/pages");
  mkdirSync(folder, { recursive: true });
  const path = join(folder, `${format}.pdf`);
  const inch = `${margin / 72}in`;
  await page.pdf({ path, format, landscape, margin: { top: inch, right: inch, bottom: inch, left: inch } });
  const words: Word[] = [];
  let number = 0;
  for (const line of execFileSync("pdftotext", ["-bbox", path, "-"], { encoding: "utf8" }).split("\n")) {
    const sheet = /<page width="([\d.]+)" height="([\d.]+)"/.exec(line);
    if (sheet) {
      number += 1;
      assert.deepEqual(sheet.slice(1).map((size) => Math.round(Number(size))), [width, height].map(Math.round));
    }
    const word = /<word xMin="(.+?)" yMin="(.+?)" xMax="(.+?)" yMax="(.+?)">(.*)<\/word>/.exec(line);
    if (!word) continue;
    const [left = 0, top = 0, right = 0, bottom = 0] = word.slice(1, 5).map(Number);
    words.push({ text: word[5] ?? "", page: number, left, top, right, bottom });
  }
  return words;
}

/** A chart whose labels are words that no other chart of the page has. */
function chart(name: string, rows: number, columns: number, more: ChartOnPage): ChartOnPage {
  const labels = (letter: string, count: number): string[] =>
    Array.from({ length: count }, (_, index) => `${name}${letter}${index}e`);
  return {
    caption: `${name}caption`, fallback: "", rows: labels("r", rows), columns: labels("c", columns),
    values: Array.from({ length: rows * columns }, (_, index) => String(1000 + index)), ...more,
  };
}

const square = Array.from({ length: 5 }, (_, index) => chart(`square${index}`, 4, 2, { style: { HasBorder: true } }));
const charts: readonly ChartOnPage[] = [
  chart("line", 12, 2, { attributes: "width=1200 height=400", style: { DiagramType: 1, HasBorder: true } }),
  chart("bars", 6, 1, { attributes: "width=1200", style: { IsRotated: true, LabelStyle: 1 } }),
  chart("long", 200, 3, { style: { DiagramType: 9 } }),
  ...square,
  chart("pie", 4, 1, { attributes: "width=100%", style: { DiagramType: 4 } }),
  chart("wide", 5, 30, { style: { DiagramType: 9 }, attributes: "width=1200" }),
];

for (const paper of papers.filter(({ landscape }) => !landscape)) {
  test(`${paper.format}: all words are on the paper, and each chart is on one page`, async () => {
    const page = await openCharts(browser, charts, { viewport: { width: 1400, height: 900 } });
    const words = await printed(page, paper);
    // Captions and labels; a lone series has no legend.
    for (const { caption = "", rows = [], columns = [], style } of charts) {
      const wanted = [caption, ...rows, ...(columns.length > 1 ? columns : [])];
      const found = wanted.map((text) => words.find((word) => word.text === text));
      assert.deepEqual(wanted.filter((_, index) => !found[index]), [], `missing of ${caption}`);
      const outside = found.filter((word) => word && (word.left < margin - 1 || word.right > paper.width - margin + 1
        || word.top < margin - 1 || word.bottom > paper.height - margin + 1));
      assert.deepEqual(outside, []);
      const pages = new Set(found.map((word) => word?.page));
      assert(style?.DiagramType === 9 || pages.size === 1, `${caption} is on pages ${[...pages]}`);
    }
    // Each page of a long table has its heads, and the table begins where the charts before it have ended.
    const heads = words.filter(({ text }) => text === "longc0e").map((word) => word.page);
    assert.deepEqual(heads, [...new Set(words.filter(({ text }) => /^longr/.test(text)).map((word) => word.page))]);
    assert.equal(heads[0], words.find(({ text }) => text === "barscaption")?.page);
    await page.close();
  });
}

/** Cells that say which they are: `a3x5` is in the fourth row and the sixth column. */
function namedCells(name: string, rows: number, columns: number, more: ChartOnPage): ChartOnPage {
  const values = Array.from({ length: rows * columns }, (_, index) =>
    `${name}${Math.floor(index / columns)}x${index % columns}`);
  return chart(name, rows, columns, { values, ...more, style: { DiagramType: 9, ...more.style } });
}

/** The bands of a table on paper by their columns, in order; each cell is once in them, under its heads. */
function bandsOf(words: readonly Word[], name: string, rows: number, columns: number): string[] {
  const named = (text: string): Word[] => words.filter((word) => word.text === text);
  const bands = new Map<string, string>();
  for (let column = 0; column < columns; column += 1) {
    const heads = named(`${name}c${column}e`);
    for (let row = 0; row < rows; row += 1) {
      const [cell, ...more] = named(`${name}${row}x${column}`);
      assert(cell && more.length === 0, `${name}${row}x${column} is there ${cell ? "again" : "never"}`);
      const head = heads.find(({ page, left, right, top }) => page === cell.page && top < cell.top
        && left < cell.right && right > cell.left);
      assert(head, `${cell.text} has a head above it on its page`);
      assert(named(`${name}r${row}e`).some(({ page, top }) => page === cell.page && Math.abs(top - cell.top) < 1),
        `${cell.text} is in the line of its label`);
    }
    // A head is on each page that has cells of its column, and on no other.
    const pages = Array.from({ length: rows }, (_, row) => named(`${name}${row}x${column}`)[0]?.page);
    assert.deepEqual(heads.map(({ page }) => page), [...new Set(pages)], `heads of column ${column}`);
    const place = `${heads[0]?.page} ${Math.round(heads[0]?.top ?? 0)}`;
    bands.set(place, [bands.get(place) ?? "", column].join(" ").trim());
  }
  return [...bands.values()];
}

test("a table that is too wide for its paper stands there in bands of columns", async () => {
  const tables = [
    namedCells("plain", 2, 3, {}),
    namedCells("wide", 5, 30, { attributes: "width=1200" }),
    namedCells("deep", 90, 12, { attributes: "width=100%", style: { DiagramType: 11, FixedCols: 1 } }),
    namedCells("texts", 2, 4, { attributes: "width=1200", values: Array(8).fill("some words that go on ".repeat(9)) }),
  ];
  for (const direction of ["ltr", "rtl"]) {
    const page = await openCharts(browser, tables, { viewport: { width: 1400, height: 900 } });
    await page.evaluate((dir) => { document.documentElement.dir = dir; }, direction);
    for (const paper of direction === "ltr" ? papers : papers.slice(0, 1)) {
      const name = `${nameOf(paper)}, ${direction}`;
      const words = await printed(page, paper);
      const bands = bandsOf(words, "wide", 5, 30);
      assert(bands.length === 2 || bands.length === 3, `${name}: ${bands.join(" | ")}`);
      assert.equal(bands.join(" "), Array.from({ length: 30 }, (_, column) => column).join(" "), name);
      assert.equal(bandsOf(words, "deep", 90, 12).length, paper.landscape ? 1 : 2, name);
      assert.equal(words.filter(({ text }) => text === "textsr0e").length, 1, `${name}: lines are broken first`);
      // Of twelve pixels, which are nine points, seven are left.
      const height = (text: string): number => {
        const found = words.find((word) => word.text === text);
        return found ? found.bottom - found.top : NaN;
      };
      const points = ["wide0x0", "deep0x0", "textsr0e"].map((text) => (9 * height(text)) / height("plain0x0"));
      assert(points.every((size) => size > 6.9), `${name}: ${points}`);
      const outside = words.filter(({ left, right }) => left < margin - 1 || right > paper.width - margin + 1);
      assert.deepEqual(outside, [], name);
      assert.equal(words.filter(({ text }) => text === "widecaption").length, 1, name);
    }
    await page.close();
  }
});

/** Makes columns of the first chart as narrow as the reader can. */
const narrowed = (page: Page, columns: number): Promise<void> => page.evaluate((count) => {
  const root = document.querySelector("plexoras-diagram")?.shadowRoot;
  for (const label of [...root?.querySelectorAll<HTMLElement>(".column-label") ?? []].slice(0, count)) {
    label.focus();
    const init = { key: "ArrowLeft", altKey: true, shiftKey: true, bubbles: true };
    for (let times = 0; times < 30; times += 1) label.dispatchEvent(new KeyboardEvent("keydown", init));
  }
}, columns);

test("no letter is lost on paper, nor too small, however long a word or narrow a column", async () => {
  const table = (name: string, rows: number, columns: number, texts: readonly string[], more: ChartOnPage = {}) =>
    chart(name, rows, columns, {
      fallback: "", values: Array.from({ length: rows * columns }, (_, index) => texts[index % texts.length] ?? ""),
      ...more, style: { DiagramType: 9, resizableCols: true, AutoResize: false, ...more.style },
    });
  const word = "q".repeat(220);
  // How many columns are made narrow, and the letter with how often it is there.
  const cases: [string, ChartOnPage, number, string, number][] = [
    ["narrow numbers", table("a", 2, 30, ["123456789"]), 30, "5", 60],
    ["some of them", table("a", 2, 9, ["123456789"], { attributes: "width=690" }), 3, "5", 18],
    ["narrow words", table("a", 2, 30, ["some qualifying words"]), 30, "q", 60],
    ["a long word", table("a", 3, 3, [word, "7", "short"]), 0, "q", 660],
    ["a narrow column with one", table("a", 3, 3, [word, "7", "short"]), 1, "q", 660],
    ["one in a label", table("a", 1, 2, ["7"], { rows: [word] }), 0, "q", 220],
    ["one in a head", table("a", 1, 2, ["7"], { columns: [word, "b"] }), 0, "q", 220],
    ["a line among numbers", table("a", 4, 1, ["7", "8", "9", "q words ".repeat(40)]), 0, "q", 40],
    // There may be no font for it: its letters are not counted.
    ["a text without blanks", table("a", 1, 3, ["\u8a9e".repeat(200), "7", "8"]), 0, "8", 1],
  ];
  for (const [name, one, columns, letter, count] of cases) {
    const page = await openCharts(browser, [one], { viewport: { width: 1400, height: 900 } });
    await narrowed(page, columns);
    const words = (await printed(page, papers[1] as Paper)).filter(({ text }) => !/^a(caption|[cr]\d+e)/.test(text));
    const found = words.filter(({ left, right }) => left > margin - 1 && right < 612 - margin + 1)
      .reduce((sum, { text }) => sum + text.split(letter).length - 1, 0);
    assert.equal(found, count, name);
    const least = Math.min(...words.map(({ top, bottom }) => bottom - top));
    assert(least > 7, `${name}: ${least} points high`);
    await page.context().close();
  }
});

test("a large table has bands for its own width", async () => {
  const page = await openCharts(browser, [chart("large", 1100, 50, { fallback: "", style: { DiagramType: 9 } })]);
  const size = await onPaper(page);
  assert(size >= 28 / 3 - 0.01, `${size} pixels`);
  await page.context().close();
});

/** The size of the letters of the first cell that is on show, in pixels; what is on show is as on paper. */
async function onPaper(page: Page): Promise<number> {
  await page.evaluate(() => { window.dispatchEvent(new Event("beforeprint")); });
  await page.emulateMedia({ media: "print" });
  return page.evaluate(() => {
    const cells = document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("tbody td") ?? [];
    const cell = [...cells].find((node) => node.getClientRects().length > 0);
    return cell ? parseFloat(getComputedStyle(cell).fontSize) : 0;
  });
}

test("what is shown as on paper has bands without being printed, with what is selected", async () => {
  const wide = chart("wide", 3, 30, { attributes: "width=600", style: { DiagramType: 9, ColSelection: 1 } });
  const page = await openCharts(browser, [wide], { colorScheme: "dark" });
  const seen = (): Promise<string> => page.evaluate(() => {
    const root = document.querySelector("plexoras-diagram")?.shadowRoot;
    const shown = [...root?.querySelectorAll("table") ?? []].filter((table) => table.getClientRects().length > 0);
    const isWithin = shown.every((table) => table.scrollWidth <= 600);
    const marked = shown.flatMap((table) => [...table.querySelectorAll("th[aria-selected=true]")]);
    const frame = root?.querySelector("[part~=drawing]");
    return `${shown.length > 1 && isWithin} ${marked.length} ${frame && getComputedStyle(frame).backgroundColor}`;
  });
  const before = await seen();
  await page.emulateMedia({ media: "print", colorScheme: "dark" });
  await twoFrames(page);
  assert.equal(await seen(), "true 1 rgb(255, 255, 255)");
  await page.emulateMedia({ media: "screen", colorScheme: "dark" });
  await twoFrames(page);
  assert.equal(await seen(), before);
  await page.context().close();
});

test("a table on paper is as the reader has put it, and the reader finds it as it was", async () => {
  const editable = namedCells("own", 40, 30, { style: {
    IsEditable: true, moveableCols: true, resizableCols: true, AutoResize: false, OnColLabelClick: 1,
  } });
  for (const colorScheme of ["light", "dark"] as const) {
    const page = await openCharts(browser, [editable], { colorScheme });
    const label = (column: number): ReturnType<Page["locator"]> => page.locator(".column-label").nth(column);
    await label(0).press("Alt+ArrowRight");
    for (let times = 0; times < 12; times += 1) await label(2).press("Shift+Alt+ArrowRight");
    const cell = page.getByRole("gridcell", { name: "own30x20" });
    await cell.click();
    await cell.press("n");
    await page.keyboard.type("ew");
    const state = (): Promise<unknown> => page.evaluate(() => {
      const root = document.querySelector("plexoras-diagram")?.shadowRoot;
      const box = root?.activeElement as HTMLInputElement | null;
      const scroller = root?.querySelector(".grid-scroll");
      return [box?.value, box?.selectionStart, box?.closest("td")?.cellIndex, scroller?.scrollTop, scroller?.scrollLeft,
        root?.querySelectorAll("[aria-selected=true]").length, root?.querySelectorAll("table").length,
        root?.adoptedStyleSheets.length, root?.querySelector("table")?.outerHTML];
    });
    const before = await state() as unknown[];
    assert.equal(before[0], "new");
    const words = await printed(page, papers[0] as Paper);
    await page.waitForFunction(() =>
      document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("table").length === 1);
    await twoFrames(page);
    assert.deepEqual(await state(), before, colorScheme);
    const leftOf = (column: number): number => words.find(({ text }) => text === `ownc${column}e`)?.left ?? NaN;
    assert(leftOf(1) < leftOf(0) && leftOf(0) < leftOf(2), "a column that was moved");
    assert(leftOf(3) - leftOf(2) > 1.8 * (leftOf(0) - leftOf(1)), "and one that was made wider");
    await page.close();
  }
});

test("the reader's dark scheme stays on the screen, and comes back", async () => {
  const page = await openCharts(browser, [{}], { colorScheme: "dark" });
  const ground = (): Promise<string> => page.evaluate(() => {
    const frame = document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector("[part~=drawing]");
    return frame ? getComputedStyle(frame).backgroundColor : "";
  });
  const dark = await ground();
  await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
  assert.equal(await ground(), "rgb(255, 255, 255)");
  await page.evaluate(() => window.dispatchEvent(new Event("afterprint")));
  await page.waitForFunction((wanted) => {
    const frame = document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector("[part~=drawing]");
    return frame && getComputedStyle(frame).backgroundColor === wanted;
  }, dark);
});

test("a large table prints all its rows, also after a move", async () => {
  const page = await openCharts(browser, [chart("large", 3000, 2, { style: { DiagramType: 9 } })],
    { colorScheme: "dark" });
  assert.equal(await page.evaluate(() => {
    const table = document.querySelector("plexoras-diagram");
    document.body.append(table ?? "");
    window.dispatchEvent(new Event("beforeprint"));
    return table?.shadowRoot?.querySelectorAll("tbody tr").length;
  }), 3000);
});

test("a chart that is far away is drawn before printing", async () => {
  const page = await openCharts(browser, [{}]);
  const drawn = await page.evaluate(() => {
    const far = document.querySelector("plexoras-diagram")?.cloneNode(true) as HTMLElement;
    far.style.marginTop = "5000px";
    document.body.append(far);
    return new Promise<boolean>((resolve) => queueMicrotask(() => queueMicrotask(() => {
      window.dispatchEvent(new Event("beforeprint"));
      resolve(Boolean(far.shadowRoot?.querySelector("svg")));
    })));
  });
  assert(drawn);
});
