// A table as text for other programs.
import { numberOfText } from "../settings/numbers.ts";
import type { Table } from "./table.ts";

/** The table as comma-separated text: titles and labels first, lines end in CR LF (docs/contents-document.md). */
export function csvOf(table: Table): string {
  return records(table).map((fields) => fields.map(withoutFormula).map(csvField).join(",") + "\r\n").join("");
}

/** The table as spreadsheets take it from the clipboard, with its labels. */
export function tabTextOf(table: Table): string {
  return tabText(records(table));
}

/** Lines of fields, parted by tabs. */
export function tabText(lines: readonly (readonly string[])[]): string {
  const field = (text: string): string => withoutFormula(text).replace(/[\t\r\n]+/g, " ");
  return lines.map((fields) => fields.map(field).join("\t")).join("\n");
}

function records(table: Table): string[][] {
  const rows = table.cells.map((cells, row) => [table.rowLabels[row] ?? "", ...cells.map((cell) => cell.text)]);
  return [[table.rowTitle, ...table.columnLabels], ...rows];
}

const formulaStart = /^[=+\-@\t\r\n\uff0b\uff0d\uff1d\uff20]/;
// A sign and nothing that a formula could name or call: "-5 %", "+1,234.50 €".
const signedNumber = /^[+-][\d\s.,'\u2019%\p{Sc}]*$/u;

/** A text that spreadsheets would run as a formula, as one that they show: with an apostrophe before it. */
function withoutFormula(text: string): string {
  const isSafe = !formulaStart.test(text) || signedNumber.test(text) || numberOfText(text) !== null;
  return isSafe ? text : `'${text}`;
}

function csvField(text: string, _: number, fields: readonly string[]): string {
  // A line of one empty field would be an empty line, which readers pass over.
  const quoted = /[",\r\n]/.test(text) || (text === "" && fields.length === 1);
  return quoted ? `"${text.replace(/"/g, '""')}"` : text;
}
