// docs/element.md says what every property does, and shows it.
import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";

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

test("the pictures are those that are drawn", () => {
  const shown = Array.from(document.matchAll(/thumbnails\/([\w-]+\.(?:svg|png))/g), ([, name]) => name ?? "");
  assert.deepEqual(shown.sort(), readdirSync(join(PLEXORAS_ROOT, "docs/thumbnails")).sort());
});
