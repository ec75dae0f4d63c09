// Pages with charts, in Chromium, for tests.
import { mkdirSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

import type { Browser, BrowserContextOptions, Page } from "playwright-core";
import playwright from "playwright-core";

import type { Style } from "../../src/settings/style.ts";

const folder = join(PLEXORAS_ROOT, "build/web/tests/pages");
const flags = [
  "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
  "--disable-component-update", "--disable-sync",
];

/** One chart of a page. What is left out is as in a new chart. */
export interface ChartOnPage {
  readonly id?: string;
  readonly style?: Partial<Style>;
  readonly rows?: readonly string[];
  readonly columns?: readonly string[];
  readonly values?: readonly string[];
  /** Row, column and value title. */
  readonly titles?: readonly [string, string, string];
  readonly caption?: string;
  readonly alt?: string;
  readonly menu?: string;
  readonly attributes?: string;
  /** Without it, the data as a table. */
  readonly fallback?: string;
}

export function launch(...more: string[]): Promise<Browser> {
  const args = [...flags, ...more];
  return playwright.chromium.launch({ executablePath: "/usr/bin/chromium", args, timeout: 20_000 });
}

/** A browser that shows scroll bars: Playwright hides them otherwise. */
export function launchWithBars(): Promise<Browser> {
  const options = { ignoreDefaultArgs: ["--hide-scrollbars"], args: flags, timeout: 20_000 };
  return playwright.chromium.launch({ executablePath: "/usr/bin/chromium", ...options });
}

/** Opens a page with these charts from a file, and waits until all are drawn. Errors of the page end the test. */
export async function openCharts(
  browser: Browser, charts: readonly ChartOnPage[], options: BrowserContextOptions & { head?: string } = {},
): Promise<Page> {
  const { head = "", ...context } = options;
  const page = await (await browser.newContext({ viewport: { width: 900, height: 700 }, ...context })).newPage();
  page.setDefaultTimeout(20_000);
  page.on("pageerror", (error) => { throw error; });
  mkdirSync(folder, { recursive: true });
  const file = join(folder, `${Math.random().toString(36).slice(2)}.html`);
  writeFileSync(file, pageOf(charts, head));
  await page.goto(pathToFileURL(file).href);
  await page.waitForFunction((count) => {
    const charts = [...document.querySelectorAll("plexoras-diagram")];
    return charts.length === count && charts.every((chart) => chart.shadowRoot?.querySelector("svg, table"));
  }, charts.length);
  return page;
}

function pageOf(charts: readonly ChartOnPage[], head: string): string {
  const script = pathToFileURL(join(PLEXORAS_ROOT, "build/web/plexoras-diagram.js")).href;
  return `<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>Charts</title>${head}
<script defer src="${script}"></script></head>
<body><main><h1>Charts</h1>
${charts.map(chartElement).join("\n")}
</main></body></html>`;
}

export function chartElement(chart: ChartOnPage, index: number): string {
  const params: Record<string, string | undefined> = {
    XmlStyle: styleDocument(chart.style ?? {}),
    XmlContents: contentsDocument(chart),
    Caption: chart.caption,
    Alt: chart.alt,
    Menu: chart.menu,
  };
  const elements = Object.entries(params)
    .filter(([, value]) => value !== undefined)
    .map(([name, value]) => `<param name="${name}" value="${escaped(value ?? "")}">`);
  return `<plexoras-diagram id="${chart.id ?? `chart${index}`}" ${chart.attributes ?? ""}>
${elements.join("\n")}
${chart.fallback ?? fallbackTable(chart)}
</plexoras-diagram>`;
}

function styleDocument(style: Partial<Style>): string {
  const texts = Object.entries(style).map(([name, value]) => {
    const text = typeof value === "boolean" ? (value ? "True" : "False") : String(value);
    return `<${name}>${escaped(text)}</>`;
  });
  return `<xml>${texts.join("")}</xml>`;
}

export const sample = {
  rows: ["North", "South", "East"],
  columns: ["Q1", "Q2", "Q3"],
  values: ["30", "-4.5", "7", "10", "25", "n/a", "20", "5", "1200"],
} as const;

function contentsDocument(chart: ChartOnPage): string {
  const { rows = sample.rows, columns = sample.columns, values = sample.values, titles } = chart;
  const [rowTitle, columnTitle, valueTitle] = (titles ?? ["", "", ""]).map(escaped);
  const list = (name: string, texts: readonly string[]): string =>
    texts.map((text) => `<${name}>${escaped(text)}</>`).join("");
  return `<xml><rows>${rowTitle}${list("row", rows)}</><cols>${columnTitle}${list("col", columns)}</>`
    + `<data>${valueTitle}${list("value", values)}</></xml>`;
}

function fallbackTable({ rows = sample.rows, columns = sample.columns, values = sample.values }: ChartOnPage): string {
  const cell = (tag: string, text: string): string => `<${tag}>${escaped(text)}</${tag.split(" ")[0]}>`;
  const head = `<tr><td></td>${columns.map((label) => cell('th scope="col"', label)).join("")}</tr>`;
  const body = rows.map((label, row) => `<tr>${cell('th scope="row"', label)}`
    + `${columns.map((_, column) => cell("td", values[row * columns.length + column] ?? "")).join("")}</tr>`);
  return `<table><thead>${head}</thead><tbody>${body.join("")}</tbody></table>`;
}

function escaped(text: string): string {
  const entities: Record<string, string> = { "&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;", "'": "&apos;" };
  return text.replace(/[&<>"']/g, (sign) => entities[sign] ?? sign);
}

/** The text of what has the focus inside a chart; null where nothing has. */
export function focusedText(page: Page): Promise<string | null> {
  return page.evaluate(() => document.activeElement?.shadowRoot?.activeElement?.textContent ?? null);
}

/** A page that keeps the names and details of all events of its charts, in the order in which they come. */
export const recorder = `<script>
  window.events = [];
  for (const name of ["ready", "error", "select", "command"]) {
    addEventListener("plexoras-" + name, (event) => window.events.push([name, event.detail]));
  }
</script>`;

export function events(page: Page): Promise<[string, Record<string, unknown>][]> {
  return page.evaluate(() => (window as unknown as { events: [string, Record<string, unknown>][] }).events);
}

export async function waitForState(page: Page, wanted: string): Promise<void> {
  await page.waitForFunction((name) =>
    document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector(`div.${name}`), wanted);
}

/** The texts in a chart's picture. */
export function pictureTexts(page: Page): Promise<string[]> {
  return page.evaluate(() => {
    const svg = document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector("svg");
    return [...svg?.querySelectorAll("text") ?? []].map((text) => text.textContent ?? "");
  });
}

export function twoFrames(page: Page): Promise<unknown> {
  return page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve))));
}

export function setParam(page: Page, name: string, value: string): Promise<void> {
  return page.evaluate(([param = "", text = ""]) => {
    document.querySelector(`param[name=${param}]`)?.setAttribute("value", text);
  }, [name, value]);
}
