// Draws every type of chart and every option that shows, light and dark:
//
//     node build.mjs && node test/gallery/make.mjs    -> build/gallery/index.html, gallery.png; docs/charts.png
import { copyFileSync, mkdirSync, mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

import { chromium } from "playwright-core";

import { hard, sections, types } from "./cases.mjs";
import { contentsOf, styleOf, tables } from "./data.mjs";

const root = fileURLToPath(new URL("../../../../", import.meta.url));
const out = join(root, "build/gallery");
const columns = 4;
const [width, height] = [360, 260];

const escaped = (text) => String(text).replace(/[&<>"]/g, (sign) => `&#${sign.charCodeAt(0)};`);

function figure([name, table, style, { patterns = false } = {}], theme) {
  const param = (key, value) => `<param name="${key}" value="${escaped(value)}">`;
  const attributes = `width="${width}" height="${height}" theme="${theme}" lang="en"${patterns ? " patterns" : ""}`;
  return `<figure><figcaption>${escaped(name)}</figcaption><plexoras-diagram ${attributes}>` +
    `${param("XmlStyle", styleOf(style))}${param("XmlContents", contentsOf(tables[table]))}` +
    `${param("Alt", name)}</plexoras-diagram></figure>`;
}

const grid = (cases, theme) =>
  `<div class="grid ${theme}">${cases.map((one) => figure(one, theme)).join("\n")}</div>`;
const both = (cases) => grid(cases, "light") + grid(cases, "dark");
const all = [...sections, ["Hard data", hard]];

const page = `<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Charts: types and options</title>
<link rel="stylesheet" href="gallery.css">
<h1>Charts: types and options</h1>
<section id="types"><h2>Types</h2>${both(types)}</section>
${all.map(([title, cases]) => `<section><h2>${escaped(title)}</h2>${both(cases)}</section>`).join("\n")}
<script defer src="plexoras-diagram.js"></script>
</html>
`;

const css = `
html { color-scheme: light; }
body { margin: 0 auto; padding: 32px 24px; width: ${columns * (width + 40) + (columns - 1) * 12}px;
  background: #f4f3ef; color: #23262b; font: 13px/1.5 system-ui, "Segoe UI", Roboto, "Noto Sans", sans-serif; }
h1 { margin: 0 0 8px; font-size: 28px; }
h2 { margin: 32px 0 12px; font-size: 18px; }
.grid { display: flex; flex-wrap: wrap; gap: 12px; }
.grid.dark { margin: 12px -24px 0; padding: 12px 24px; background: #0d0f12; color: #d9dbe0; }
figure { margin: 0; padding: 12px 20px 16px; border-radius: 8px; background: #fff; }
.dark figure { background: #181b20; }
figcaption { margin-bottom: 8px; font-weight: 600; }
`;

/** Pictures of the page and of its first section; the names of elements that did not draw. */
async function shoot(file) {
  const profile = mkdtempSync(join(tmpdir(), "gallery-"));
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: "/usr/bin/chromium",
    viewport: { width: columns * (width + 40) + 84, height: 900 },
    timeout: 30_000,
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
      "--disable-component-update", "--disable-sync"],
  });
  try {
    const tab = await context.newPage();
    const problems = [];
    tab.on("pageerror", (error) => problems.push(error.message));
    tab.on("console", (message) => message.type() === "error" && problems.push(message.text()));
    await tab.goto(pathToFileURL(file).href);
    // Charts are drawn when they come into view.
    await tab.evaluate(async () => {
      for (let y = 0; y < document.body.scrollHeight; y += 500) {
        scrollTo(0, y);
        await new Promise((done) => setTimeout(done, 60));
      }
      scrollTo(0, 0);
      await new Promise((done) => setTimeout(done, 800));
    });
    const undrawn = await tab.$$eval("plexoras-diagram", (elements) => elements
      .filter((one) => !one.shadowRoot?.querySelector("svg, table"))
      .map((one) => one.querySelector("[name=Alt]").value));
    await tab.screenshot({ path: join(out, "gallery.png"), fullPage: true, timeout: 60_000 });
    await tab.locator("#types").screenshot({ path: join(root, "docs/charts.png") });
    return [...problems, ...undrawn.map((name) => `not drawn: ${name}`)];
  } finally {
    await context.close();
    rmSync(profile, { recursive: true, force: true });
  }
}

mkdirSync(out, { recursive: true });
copyFileSync(join(root, "build/web/plexoras-diagram.js"), join(out, "plexoras-diagram.js"));
writeFileSync(join(out, "gallery.css"), css);
writeFileSync(join(out, "index.html"), page);
const problems = await shoot(join(out, "index.html"));
const count = [types, ...all.map(([, cases]) => cases)].reduce((sum, { length }) => sum + length, 0);
for (const problem of problems) console.error(problem);
console.log(`${count} cases, light and dark: build/gallery/index.html, gallery.png; its types: docs/charts.png`);
process.exitCode = problems.length > 0 ? 1 : 0;
