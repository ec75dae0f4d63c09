// Pictures of what shows only while a reader works on a chart, by the browser.
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

import { chromium } from "playwright-core";

import { contentsOf, styleOf } from "./data.mjs";

const escaped = (text) => text.replace(/[&<>"]/g, (sign) => `&#${sign.charCodeAt(0)};`);

/** Draws each case as large as `width` and `height` say, lets its `act` work on it, and writes `out`/name.png. */
export async function shootThumbnails(cases, { script, out, width, height, scale }) {
  const folder = mkdtempSync(join(tmpdir(), "thumbnails-"));
  const browser = await chromium.launch({
    executablePath: "/usr/bin/chromium", args: ["--headless", "--no-sandbox", "--disable-gpu"], timeout: 30_000,
  });
  try {
    // Twice as sharp as it is shown.
    const context = await browser.newContext({
      viewport: { width, height }, deviceScaleFactor: 2 * scale, reducedMotion: "reduce",
    });
    const page = await context.newPage();
    page.setDefaultTimeout(8_000);
    for (const { name, table, style, act } of cases) {
      const file = join(folder, `${name}.html`);
      const param = (key, value) => `<param name="${key}" value="${escaped(value)}">`;
      writeFileSync(file, `<!doctype html><html lang="en"><meta charset="utf-8"><title>${name}</title>
<body style="margin:0;overflow:hidden"><plexoras-diagram width="${width}" height="${height}">
${param("XmlStyle", styleOf(style))}${param("XmlContents", contentsOf(table))}</plexoras-diagram>
<script defer src="${pathToFileURL(script).href}"></script></body></html>`);
      await page.goto(pathToFileURL(file).href);
      await page.locator("plexoras-diagram").locator("svg, table").first().waitFor();
      await act?.(page);
      await page.waitForTimeout(300);
      await page.screenshot({ path: join(out, `${name}.png`) });
    }
  } finally {
    await browser.close();
    rmSync(folder, { recursive: true, force: true });
  }
}
