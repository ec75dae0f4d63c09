// Measures the element that draws published charts, in Chromium, beside the drawing library alone with the same data.
//
//     node benchmarks/element.mjs [SCRIPT]      -> JSON: what element_suite.py makes its tables of
//
// SCRIPT is the script to measure, build/web/plexoras-diagram.js if it is left out.
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";
import { gzipSync } from "node:zlib";

const root = join(dirname(fileURLToPath(import.meta.url)), "..");
const { resolve: installed } = createRequire(join(root, "web/diagram/package.json"));
const { default: playwright } = await import(pathToFileURL(installed("playwright-core")).href);

const script = resolve(process.argv[2] ?? join(root, "build/web/plexoras-diagram.js"));
const library = join(dirname(installed("echarts/package.json")), "dist/echarts.min.js");
const folder = join(root, "build/workloads/element");
mkdirSync(folder, { recursive: true });

const flags = [
  "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
  "--disable-component-update", "--disable-sync",
];
const size = { width: 900, height: 480 };
const rounds = 5;
const frames = 60;
const types = { line: 1, area: 2, bar: 5, scatter: 3 };
const tries = Object.keys(types).flatMap((type) => [1, 4].map((series) => ({ type, series, rows: 10_000 })));

/** Numbers that wander, the same in every run: a column for each series. */
function wandering(rows, columns) {
  let seed = 1995;
  const dice = () => {
    seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
    return seed / 2 ** 32 - 0.5;
  };
  return Array.from({ length: columns }, (_, column) => {
    let level = 100 + column * 20;
    return Array.from({ length: rows }, () => {
      level += dice();
      return Number((level + dice() * 12).toFixed(2));
    });
  });
}

const escaped = (text) => text.replace(/[&<"]/g, (sign) => ({ "&": "&amp;", "<": "&lt;", '"': "&quot;" })[sign]);

/** A chart as pages hold it. */
function elementOf({ type, series, rows }) {
  const columns = wandering(rows, series);
  const list = (name, texts) => texts.map((text) => `<${name}>${text}</>`).join("");
  // A scatter's first column is x, unless it is alone.
  const all = type === "scatter" ? [Array.from({ length: rows }, (_, row) => row + 1), ...columns] : columns;
  const contents = `<xml><rows>${list("row", all[0].map((_, row) => `r${row + 1}`))}</>`
    + `<cols>${list("col", all.map((_, column) => `c${column}`))}</>`
    + `<data>${list("value", all[0].flatMap((_, row) => all.map((values) => values[row])))}</></xml>`;
  const style = `<xml><DiagramType>${types[type]}</></xml>`;
  return `<plexoras-diagram width="${size.width}" height="${size.height}">
<param name="XmlStyle" value="${escaped(style)}"><param name="XmlContents" value="${escaped(contents)}">
</plexoras-diagram>`;
}

/** The same chart by the library's own option, with the same pointer and tooltip. */
function plainOption({ type, series, rows }) {
  const isScatter = type === "scatter";
  const columns = wandering(rows, series);
  return {
    animation: false,
    grid: {},
    legend: {},
    tooltip: { trigger: isScatter ? "item" : "axis", axisPointer: { type: "cross" }, confine: true },
    xAxis: isScatter ? { type: "value" }
      : { type: "category", data: columns[0].map((_, row) => `r${row + 1}`), boundaryGap: type === "bar" },
    yAxis: { type: "value" },
    dataZoom: [{ type: "inside", zoomOnMouseWheel: "ctrl" }],
    series: columns.map((values, index) => ({
      name: `c${index}`,
      type: type === "area" ? "line" : type,
      data: isScatter ? values.map((value, row) => [row + 1, value]) : values,
      ...(type === "area" ? { areaStyle: {} } : {}),
      ...(isScatter ? { symbolSize: 4 } : { showSymbol: false }),
    })),
  };
}

const pageOf = (head, body) =>
  `<!doctype html><html lang="en"><head><meta charset="utf-8"><title>Charts</title>${head}</head>`
  + `<body>${body}</body></html>`;

function written(name, text) {
  const file = join(folder, name);
  writeFileSync(file, text);
  return pathToFileURL(file).href;
}

const counting = `let left = document.querySelectorAll("plexoras-diagram").length; window.ends = 0;
document.addEventListener("plexoras-ready", () => { left -= 1; if (left === 0) window.ends = performance.now(); });`;

/** A page with these charts; it sets `ends` when the last is drawn. */
function oursPage(name, charts) {
  const head = `<script defer src="${pathToFileURL(script).href}"></script>`;
  return written(`${name}.html`, pageOf(head, `${charts.map(elementOf).join("\n")}<script>${counting}</script>`));
}

function plainPage(name, charts) {
  const boxes = charts.map(() => `<div style="width:${size.width}px;height:${size.height}px"></div>`).join("\n");
  const draw = `addEventListener("DOMContentLoaded", () => {
    const options = ${JSON.stringify(charts.map(plainOption))};
    window.charts = [...document.querySelectorAll("div")].map((box, index) => {
      const chart = echarts.init(box, null, { renderer: "svg" });
      chart.setOption(options[index]);
      chart.getZr().flush();
      return chart;
    });
    window.ends = performance.now();
  });`;
  const head = `<script defer src="${pathToFileURL(library).href}"></script>`;
  return written(`${name}-plain.html`, pageOf(head, `${boxes}<script>${draw}</script>`));
}

/** A page in a browser context of its own, so that nothing is kept from the one before. */
async function open(browser, address) {
  const context = await browser.newContext({ viewport: { width: 940, height: 700 } });
  const page = await context.newPage();
  page.setDefaultTimeout(60_000);
  const asked = [];
  page.on("request", (request) => asked.push(request.url()));
  await page.goto(address);
  const ends = await (await page.waitForFunction(() => window.ends)).jsonValue();
  return { page, ends, asked, close: () => context.close() };
}

/** The milliseconds from the start of loading until everything is drawn: the best of some runs, and requests. */
async function loading(browser, name, charts) {
  const pages = { ours: oursPage(name, charts), plain: plainPage(name, charts) };
  const loads = { ours: { best: Infinity, scripts: 0 }, plain: { best: Infinity, scripts: 0 } };
  for (let round = 0; round < rounds; round += 1) {
    for (const [who, address] of Object.entries(pages)) {
      const { ends, asked, close } = await open(browser, address);
      loads[who].best = Math.min(loads[who].best, ends);
      loads[who].scripts = asked.filter((url) => url.endsWith(".js")).length;
      await close();
    }
  }
  return loads;
}

/** How long frames take while `move` is done again and again. */
async function framesWhile(page, move) {
  await page.evaluate(() => {
    window.times = [];
    window.isOn = true;
    const note = (time) => {
      window.times.push(time);
      if (window.isOn) requestAnimationFrame(note);
    };
    requestAnimationFrame(note);
  });
  for (let index = 0; index < frames; index += 1) await move(index);
  const times = await page.evaluate(() => {
    window.isOn = false;
    return window.times;
  });
  const lasted = times.slice(1).map((time, index) => time - times[index]).sort((a, b) => a - b);
  const share = (part) => lasted[Math.min(Math.floor(lasted.length * part), lasted.length - 1)];
  return { median: share(0.5), p95: share(0.95) };
}

// The pointer goes to and fro over the plot.
const swing = (index) => [120 + ((index * 17) % 700), 200 + Math.round(Math.sin(index / 5) * 120)];

async function moving(browser, address, isPlain) {
  const { page, ends, close } = await open(browser, address);
  await page.mouse.move(...swing(0));
  await page.waitForTimeout(300);
  const hover = await framesWhile(page, (index) => page.mouse.move(...swing(index)));

  // As far in as to see three tenths, then from side to side.
  await page.mouse.move(450, 250);
  if (isPlain) {
    await page.evaluate(() => window.charts[0].dispatchAction({ type: "dataZoom", start: 35, end: 65 }));
  } else {
    await page.keyboard.down("Control");
    for (let step = 0; step < 4; step += 1) {
      await page.mouse.wheel(0, -100);
      await page.waitForTimeout(100);
    }
    await page.keyboard.up("Control");
  }
  await page.waitForTimeout(500);
  await page.mouse.down();
  const pan = await framesWhile(page, (index) => page.mouse.move(450 + Math.round(Math.sin(index / 8) * 300), 250));
  await page.mouse.up();
  await close();
  return { ends, hover, pan };
}

const browser = await playwright.chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: flags, timeout: 20_000,
});
try {
  const bytes = readFileSync(script);
  const few = (type, series) => ({ type, series, rows: 12 });
  const twenty = Array.from({ length: 20 }, (_, index) => few(Object.keys(types)[index % 4], 3));
  const report = {
    browser: `Chromium ${browser.version()}`,
    library: JSON.parse(readFileSync(installed("echarts/package.json"), "utf8")).version,
    script: { raw: bytes.length, gzip: gzipSync(bytes, { level: 9 }).length },
    one: await loading(browser, "one", [few("bar", 3)]),
    twenty: await loading(browser, "twenty", twenty),
    moves: [],
  };
  for (const chart of tries) {
    const name = `${chart.type}-${chart.series}`;
    const ours = await moving(browser, oursPage(name, [chart]), false);
    const plain = await moving(browser, plainPage(name, [chart]), true);
    report.moves.push({ ...chart, ours, plain });
  }
  console.log(JSON.stringify(report, null, 1));
} finally {
  await browser.close();
}
