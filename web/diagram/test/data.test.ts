import assert from "node:assert/strict";
import { test } from "node:test";

import { numberOfText, textOfNumber } from "../src/settings/numbers.ts";
import type { Table } from "../src/data/table.ts";
import { tableOf } from "../src/data/table.ts";
import { numberReader, valueFormat } from "../src/format/value_format.ts";
import { readContents } from "../src/settings/read_contents.ts";
import { defaultStyle } from "../src/settings/read_style.ts";
import { fixtures, outcome } from "./fixtures.ts";

interface FormatCase {
  locale: string;
  type: number;
  dateStyle?: number;
  pattern?: string;
  text: string;
  shown: string;
}

test("values are shown as everywhere", () => {
  for (const one of fixtures<FormatCase>("formats.json")) {
    const [FormatLanguage = "", FormatCountry = "", FormatVariant = ""] = one.locale.split("_");
    const style = {
      ...defaultStyle(), FormatType: one.type, FormatUseDefaultLocale: "False", FormatLanguage, FormatCountry,
      FormatVariant,       FormatPattern: one.pattern ?? "", FormatDateStyle: one.dateStyle ?? 2,
    };
    const shown = outcome(() => valueFormat(style, []).text(one.text)).replace(/^refused: /, "");
    assert.equal(shown, one.shown, JSON.stringify(one));
  }
});

test("the current locale is the first of the reader's that is one", () => {
  const style = { ...defaultStyle(), FormatType: 3, FormatLanguage: "ja" };
  const cases: [string[], string][] = [
    [["de-DE", "en"], "1.234,5"], [["no language at all", "zz", "de"], "1.234,5"], [[], "1,234.5"],
    [["iw"], "1,234.5"], [["hi-u-nu-deva"], "१,२३४.५"],
  ];
  for (const [languages, shown] of cases) {
    assert.equal(valueFormat(style, languages).text("1234.5"), shown, languages[0]);
  }
  const own = { ...style, FormatUseDefaultLocale: "0", FormatLanguage: "de" };
  assert.equal(valueFormat(own, ["en"]).share(0.125), "12,5\u00a0%");
});

test("numbers that a chart works out lose the noise of binary fractions", () => {
  const plain = valueFormat(defaultStyle(), []);
  const shown = [0.1 + 0.2, -0, 1 / 3, 1e21].map((value) => plain.number(value));
  assert.deepEqual(shown, ["0.3", "0", "0.333333333333", "1e+21"]);
  const dates = valueFormat({ ...defaultStyle(), FormatType: 5, FormatDateStyle: 1 }, ["en-US"]);
  assert.equal(dates.number(Date.UTC(2024, 4, 17)), "May 17, 2024");
});

test("numbers and their texts", () => {
  const cases: [string, number | null][] = [
    ["1234.5", 1234.5], ["-1e3", -1000], [" +.5\t", 0.5], ["5.", 5], ["", null], ["1,5", null], ["+-1", null],
    ["1e", null], ["0x1", null], ["Infinity", null], ["1e999", null], ["1\n", null], ["١", null],
  ];
  for (const [text, number] of cases) assert.equal(numberOfText(text), number, text);
  const texts: [number, string][] = [
    [-0, "0"], [1e15, "1e+15"], [123456.789, "123456.789"], [0.00001, "0.00001"], [1e-6, "1e-06"],
    [-2.5e-120, "-2.5e-120"],
  ];
  for (const [number, text] of texts) assert.equal(textOfNumber(number), text);
});

// "row title/column title | column columns | label: number-or-text, ... "
function shown({ rowTitle, columnTitle, columnLabels, rowLabels, cells }: Table): string {
  const rows = rowLabels.map((label, row) =>
    `${label}: ${cells[row]?.map(({ text, number }) => (number === null ? `"${text}"` : number)).join(" ")}`);
  return `${rowTitle}/${columnTitle} | ${columnLabels.join(" ")} | ${rows.join(" | ")}`;
}

test("tables are cut from the cells", () => {
  const labelled = "<xml><rows>R<row>a</><row/></><cols>C<col>x</></><data><value>1</><value>n</><value>3</></></xml>";
  const cases: [string, boolean, string][] = [
    [labelled, false, "R/C | x  | a: 1 \"n\" | : 3 \"\""],
    [labelled, true, "C/R | a  | x: 1 3 | : \"n\" \"\""],
    ["<xml><rows/><cols><col>x</></><data/></xml>", false, "/ | x | "],
    ["<xml><rows/><cols><col>x</></><data/></xml>", true, "/ |  | x: "],
    ["<xml><cols/><rows/><data/></>", true, "/ |  | "],
  ];
  for (const [document, transposed, table] of cases) {
    assert.equal(shown(tableOf(readContents(document), { transposed, numberOf: numberOfText })), table, document);
  }
  const style = { ...defaultStyle(), FormatType: 5 };
  const dated = "<xml><rows><row/></><cols/><data><value>1970-01-02</><value>x</></></xml>";
  const dates = tableOf(readContents(dated), { transposed: false, numberOf: numberReader(style) });
  assert.equal(shown(dates), "/ |   | : 86400000 \"x\"");
});

test("a short document cannot ask for more cells than there is memory", () => {
  const many = 20_000;
  const contents = readContents(`<xml><rows>${"<row/>".repeat(many)}</><cols>${"<col/>".repeat(many)}</><data/></xml>`);
  assert.throws(() => tableOf(contents, { transposed: false, numberOf: numberOfText }), { setting: "XmlContents" });
});
