// Charts on paper: what a PDF of the page says, word by word.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import type { ChartOnPage } from "./chart_page.ts";
import { launch, openCharts } from "./chart_page.ts";

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
  readonly width: number;
  readonly height: number;
}

// Upright, in points.
const papers: readonly Paper[] = [
  { format: "A4", width: 595.9, height: 842.9 },
  { format: "Letter", width: 612, height: 792 },
];
const margin = 36;

async function printed(page: Page, { format, width, height }: Paper): Promise<Word[]> {
  const folder = join(PLEXORAS_ROOT, "build/web/tests/pages");
  mkdirSync(folder, { recursive: true });
  const path = join(folder, `${format}.pdf`);
  const inch = `${margin / 72}in`;
  await page.pdf({ path, format, margin: { top: inch, right: inch, bottom: inch, left: inch } });
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

for (const paper of papers) {
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
