// A table as text for other programs.
import type { Table } from "../data/table.ts";

/** The table as comma-separated text: titles and labels first, lines end in CR LF (docs/contents-document.md). */
export function csvOf(table: Table): string {
  return records(table).map((fields) => fields.map(csvField).join(",") + "\r\n").join("");
}

/** The table as spreadsheets take it from the clipboard: fields parted by tabs. */
export function tabTextOf(table: Table): string {
  return records(table).map((fields) => fields.map((field) => field.replace(/[\t\r\n]+/g, " ")).join("\t")).join("\n");
}

function records(table: Table): string[][] {
  const rows = table.cells.map((cells, row) => [table.rowLabels[row] ?? "", ...cells.map((cell) => cell.text)]);
  return [[table.rowTitle, ...table.columnLabels], ...rows];
}

function csvField(text: string, _: number, fields: readonly string[]): string {
  // A line of one empty field would be an empty line, which readers pass over.
  const quoted = /[",\r\n]/.test(text) || (text === "" && fields.length === 1);
  return quoted ? `"${text.replace(/"/g, '""')}"` : text;
}
