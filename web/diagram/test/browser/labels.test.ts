// The names of categories: whole, within the picture, and no more room for them than they need.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import type { Browser } from "playwright-core";

import { launch, openCharts } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const kinds: Record<string, (row: number) => string> = {
  short: (row) => `r${row}`,
  sequence: (row) => `${2000 + row} and a half`,
  names: (row) => `December ${2000 + row}`,
};

for (const [kind, name] of Object.entries(kinds)) {
  for (const count of [12, 30, 997, 3000]) {
    test(`${count} ${kind} stay in the picture and leave room for the plot`, async () => {
      const charts = [0, 1].flatMap((Reverse) => [false, true].flatMap((IsRotated) =>
        [0, 3].flatMap((LabelStyle) => [1, 5].map((DiagramType) => ({
          id: JSON.stringify({ Reverse, IsRotated, LabelStyle, DiagramType }).replace(/\W+/g, "-"),
          style: { Reverse, IsRotated, LabelStyle, DiagramType, HasLegend: false, xGridVisible: true },
          rows: Array.from({ length: count }, (_, row) => name(row)),
          columns: ["Q1"],
          values: Array.from({ length: count }, (_, row) => String(row % 90)),
          attributes: 'width="480" height="250"',
          fallback: "",
        })))));
      const page = await openCharts(browser, charts, { reducedMotion: "reduce" });
      const found = await page.evaluate(() => [...document.querySelectorAll("plexoras-diagram")].map((chart) => {
        const svg = chart.shadowRoot?.querySelector("svg");
        if (!svg) return [chart.id, "none"];
        const box = svg.getBoundingClientRect();
        const isInside = ({ left, top, right, bottom }: DOMRect): boolean =>
          left > box.left - 1 && top > box.top - 1 && right < box.right + 1 && bottom < box.bottom + 1;
        const texts = [...svg.querySelectorAll("text")].filter((text) => text.getBoundingClientRect().width > 0);
        const outside = texts.filter((text) => !isInside(text.getBoundingClientRect())).map((text) => text.textContent);
        // The grid's lines run through the whole plot.
        const lines = [...svg.querySelectorAll("path")].map((path) => path.getBoundingClientRect());
        const width = Math.max(...lines.filter((line) => line.height < 2).map((line) => line.width));
        const height = Math.max(...lines.filter((line) => line.width < 2).map((line) => line.height));
        const isRoomy = width > box.width * 0.55 && height > box.height * 0.45;
        return [chart.id, outside.join(), isRoomy ? "roomy" : `${width} x ${height}`];
      }));
      assert.deepEqual(found, charts.map(({ id }) => [id, "", "roomy"]));
      await page.close();
    });
  }
}
