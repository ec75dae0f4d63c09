// docs/element.md says what every property does, and shows it.
import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { pathToFileURL } from "node:url";

import { fixtures } from "./fixtures.ts";

const document = readFileSync(join(PLEXORAS_ROOT, "docs/element.md"), "utf8");
const styleNames = Object.keys(fixtures("default_style.json"));
const rows = document.split("\n").filter((line) => line.startsWith("| "));

// Others are for a reader's hand; the types of charts have a table of their own.
const isSeen = (name: string): boolean =>
  !/^(DiagramType|SelectionMode|(Multiple|Extended)Selection|[VH]ScrollbarPolicy|(moveable|resizable)(Rows|Cols))$/.test(name);

test("every property has its row, and a picture where it shows", () => {
  const named = (row: string): string[] =>
    Array.from(row.split("|")[1]?.matchAll(/`(\w+)`/g) ?? [], ([, name]) => name ?? "");
  const documented = new Set(rows.flatMap(named));
  const isFormat = /^Format(?!Type)/;
  assert.deepEqual(styleNames.filter((name) => !documented.has(name) && !isFormat.test(name)), []);
  const pictured = new Set(rows.filter((row) => row.includes("thumbnails/")).flatMap(named));
  const isBare = (name: string): boolean => documented.has(name) && !pictured.has(name);
  assert.deepEqual(styleNames.filter((name) => isBare(name) && isSeen(name)), []);
});

test("the pictures are those that are drawn now (\"./run gallery\" makes them anew)", async () => {
  const folder = join(PLEXORAS_ROOT, "docs/thumbnails");
  const shown = Array.from(document.matchAll(/thumbnails\/([\w-]+\.(?:svg|png))/g), ([, name]) => name ?? "");
  const pictures = readdirSync(folder);
  assert.deepEqual(shown.sort(), [...pictures].sort());

  const program = join(PLEXORAS_ROOT, "web/diagram/test/gallery/drawn_thumbnails.mjs");
  const { drawThumbnails } = await import(pathToFileURL(program).href) as
    { drawThumbnails: (root: string) => Map<string, string> };
  const drawn = drawThumbnails(PLEXORAS_ROOT);
  assert.deepEqual(pictures.filter((name) => name.endsWith(".svg")).sort(), [...drawn.keys()].sort());
  const isStale = ([name, text]: [string, string]): boolean => readFileSync(join(folder, name), "utf8") !== text;
  assert.deepEqual([...drawn].filter(isStale).map(([name]) => name), []);
});
