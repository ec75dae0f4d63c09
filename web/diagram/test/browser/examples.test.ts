// The example site as the tool publishes it: drawn, quiet, and open to everyone.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";

import type { Browser } from "playwright-core";

import { launch } from "./chart_page.ts";

const tool = process.env["PLEXORAS"] ?? join(PLEXORAS_ROOT, "build/release/bin/plexoras");
const axe = readFileSync(join(PLEXORAS_ROOT, "web/diagram/node_modules/axe-core/axe.min.js"), "utf8");
const site = mkdtempSync(join(tmpdir(), "site-"));
let browser: Browser;

before(async () => {
  execFileSync(tool, ["publish", "-q", join(PLEXORAS_ROOT, "examples/site"), "-o", site, "--snapshot"],
    { encoding: "utf8" });
  browser = await launch();
});
after(async () => {
  await browser.close();
  rmSync(site, { recursive: true, force: true });
});

const pages = { "index.html": 1, "about.html": 0, "energy/iowa.html": 2, "weather/seattle.html": 2,
  "weather/by-the-hour.html": 1 };

for (const colorScheme of ["light", "dark"] as const) {
  test(`example pages draw from the disk without a request, and axe finds nothing, ${colorScheme}`, async () => {
    for (const [name, charts] of Object.entries(pages)) {
      const page = await (await browser.newContext({ colorScheme, reducedMotion: "reduce" })).newPage();
      const problems: string[] = [];
      page.on("pageerror", ({ message }) => problems.push(message));
      page.on("console", (message) => message.type() === "error" && problems.push(message.text()));
      page.on("request", (request) => request.url().startsWith("file:") || problems.push(request.url()));
      await page.goto(pathToFileURL(join(site, name)).href);
      // Charts are drawn when they come into view.
      const elements = await page.locator("plexoras-diagram").all();
      for (const element of elements) {
        await element.scrollIntoViewIfNeeded();
        const id = await element.getAttribute("id");
        await page.waitForFunction((id) =>
          document.getElementById(id ?? "")?.shadowRoot?.querySelector("svg, table") !== null, id);
      }
      assert.deepEqual([name, elements.length, problems], [name, charts, []]);
      await page.evaluate(axe);
      const found = await page.evaluate(async () => {
        const { axe } = window as unknown as { axe: { run: () => Promise<Record<string, { id: string }[]>> } };
        const { violations = [], passes = [] } = await axe.run();
        return { violations: violations.map(({ id }) => id), hasLooked: passes.some(({ id }) => id === "color-contrast") };
      });
      assert.deepEqual([name, found], [name, { violations: [], hasLooked: true }]);
    }
  });
}
