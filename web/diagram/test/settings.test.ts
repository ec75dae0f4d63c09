import assert from "node:assert/strict";
import { test } from "node:test";

import { textOfNumber } from "../src/settings/numbers.ts";
import type { Contents } from "../src/settings/contents.ts";
import { readContents } from "../src/settings/read_contents.ts";
import { readMenu, readMenuNodes } from "../src/settings/read_menu.ts";
import { defaultStyle, readStyle } from "../src/settings/read_style.ts";
import { readSettings } from "../src/settings/settings.ts";
import type { Style, StyleName } from "../src/settings/style.ts";
import { styleProperties } from "../src/settings/style.ts";
import { fixtures, outcome } from "./fixtures.ts";

interface DocumentCase {
  name: string;
  document: string;
  refused?: string;
}

function check<Case extends DocumentCase>(
  file: string, shown: (document: string) => string, expected: (one: Case) => string,
): void {
  for (const one of fixtures<Case>(file)) {
    const wanted = one.refused === undefined ? expected(one) : `refused: ${one.refused}`;
    assert.equal(outcome(() => shown(one.document)), wanted, one.name);
  }
}

// "row title/column title/value title [label|-] (column) value,value;value", the values cut into rows.
function shownContents({ rowTitle, columnTitle, valueTitle, rows, columns, values }: Contents): string {
  let text = rowTitle + (columnTitle || valueTitle ? `/${columnTitle}/${valueTitle}` : "");
  for (const row of rows) text += row === null ? " -" : ` [${row}]`;
  for (const column of columns) text += ` (${column})`;
  const count = rows.length === 0 ? 0 : Math.max(columns.length, Math.ceil(values.length / rows.length));
  rows.forEach((_, row) => {
    text += (row === 0 ? " " : ";") + values.slice(row * count, (row + 1) * count).map((value) => `${value},`).join("");
  });
  return text;
}

test("contents documents", () => {
  check<DocumentCase & { table: string }>(
    "contents.json", (document) => shownContents(readContents(document)), (one) => one.table);
});

test("every truncated contents document is refused", () => {
  const document = "<xml><rows>c<row>a&amp;</><row/></><cols><col>b</></><data><value>1</></></xml>";
  readContents(document);
  for (let size = 0; size < document.length; ++size) {
    assert.throws(() => readContents(document.slice(0, size)), /^SettingError: \d+:\d+: /);
  }
});

test("large and hostile documents are read in one pass", () => {
  const many = 300_000;
  assert.throws(() => readContents("<xml>".repeat(many)), /1:6: "<xml>" stands where <rows> is expected/);
  const large = `<xml><rows>${"<row>a&lt;</>".repeat(many)}</><cols/><data>${"<value>1</>".repeat(many)}</></xml>`;
  assert.equal(readContents(large).rows[many - 1], "a<");
  const nested = `<xml>${"<a>".repeat(many)}${"</>".repeat(many)}<FontSize>9</></xml>`;
  assert.equal(readStyle(nested).FontSize, 9);
});

function zeroStyle(): Style {
  const zeros = { Integer: 0, Long: 0, Double: 0, Boolean: false, String: "" };
  return Object.fromEntries(Object.entries(styleProperties).map(([name, [kind]]) => [name, zeros[kind]])) as Style;
}

function textOfValue(value: number | boolean | string): string {
  if (typeof value === "number") return textOfNumber(value);
  return typeof value === "boolean" ? (value ? "True" : "False") : value;
}

// "Name=text " of each property in which a style differs from zeros.
function differences(style: Style): string {
  const zero = zeroStyle();
  return (Object.keys(styleProperties) as StyleName[])
    .filter((name) => style[name] !== zero[name])
    .map((name) => `${name}=${textOfValue(style[name])} `).join("");
}

test("style documents", () => {
  check<DocumentCase & { style: string }>(
    "style.json", (document) => differences(readStyle(document, zeroStyle())), (one) => one.style);
});

// Published pages leave out what has its default.
test("a chart begins with the style that the control begins with", () => {
  const texts = Object.fromEntries(Object.entries(defaultStyle()).map(([name, value]) => [name, textOfValue(value)]));
  assert.deepEqual(texts, fixtures("default_style.json"));
});

test("menu documents", () => {
  const shown = (document: string): string => readMenuNodes(document)
    .map(({ level, type, caption, param }) => `${level} ${type}|${caption}|${param}`).join("\n");
  check<DocumentCase & { menu: string[] }>("menu.json", shown, (one) => one.menu.join("\n"));
});

test("menus are trees", () => {
  const item = (caption: string, type = "script", param = "") => ({ kind: "item", type, param, caption });
  assert.deepEqual(
    readMenu("<xml><MENU>A<MENU>B<ITEM type=\"java\" param=\"print\">C</></><SEPARATOR></></><ITEM>D</></>"),
    [
      { kind: "menu", caption: "A", entries: [
        { kind: "menu", caption: "B", entries: [item("C", "java", "print")] }, { kind: "separator" },
      ] },
      item("D", ""),
    ]);
  assert.deepEqual(readMenu("<xml></></></><A>1</><B>2<C>3</></><"),
    [item("1"), { kind: "menu", caption: "2", entries: [item("3")] }], "below the top is the top");
  assert.equal(readMenu(`<xml>${"<SEPARATOR></>".repeat(1000)}</>`).length, 256);
});

test("settings are read from parameters", () => {
  const empty = readSettings({});
  assert.deepEqual(empty.style, defaultStyle());
  assert.equal(empty.contents, null);
  const read = readSettings({
    XmlStyle: "<xml><RowSelection>1</><ColSelection>1</></xml>", RowSelection: "3", Visible: "False", HasMenu: "false",
    Caption: " A ", Unknown: "<", Menu: "<xml>", constructor: "x",
  });
  const { style, visible, hasMenu, caption, menu } = read;
  assert.deepEqual([style.RowSelection, style.ColSelection, visible, hasMenu, caption, menu],
    [3, 1, false, false, "A", []]);
  const refusals: [Record<string, string>, string, string][] = [
    [{ XmlStyle: "<xml>" }, "XmlStyle", "XmlStyle: 1:1: <xml> is never closed; close it with \"</>\""],
    [{ XmlContents: "" }, "XmlContents", "XmlContents: 1:1: the document holds no element"],
    [{ RowSelection: "x" }, "RowSelection", "RowSelection: Type mismatch: \"x\" is not a number"],
  ];
  for (const [texts, setting, message] of refusals) assert.throws(() => readSettings(texts), { setting, message });
});
