// The data as charts see them: transposed if the style says so, cut into rows, with numbers read.
import type { Contents } from "../settings/contents.ts";
import { SettingError } from "../settings/setting_error.ts";

export interface Cell {
  /** As it stands in the contents; empty where a row came out short. */
  readonly text: string;
  /** The number that the text is, or null when it is none. With a date format, a date is its number of milliseconds. */
  readonly number: number | null;
}

/** A rectangle of cells. Rows are the categories of a chart, columns its series. */
export interface Table {
  readonly rowTitle: string;
  readonly columnTitle: string;
  readonly valueTitle: string;
  /** As many as there are rows; empty texts where there are no labels. */
  readonly rowLabels: readonly string[];
  /** As many as there are columns. */
  readonly columnLabels: readonly string[];
  /** Row after row, all of one length. */
  readonly cells: readonly (readonly Cell[])[];
}

// A few bytes of labels could ask for billions of empty cells.
const mostCells = 4_000_000;

/** How a table is to be made. */
export interface TableMaking {
  readonly transposed: boolean;
  readonly numberOf: (text: string) => number | null;
}

/**
 * The table of a chart's data: a row has as many cells as there are column labels, and more where the values would not
 * fit otherwise. Cells that have no value are empty.
 */
export function tableOf(contents: Contents, { transposed, numberOf }: TableMaking): Table {
  const { rows, columns, values } = contents;
  const valueColumns = rows.length === 0 ? 0 : Math.ceil(values.length / rows.length);
  const columnCount = Math.max(columns.length, valueColumns);
  if (rows.length * columnCount > mostCells) {
    throw new SettingError(`${rows.length} rows of ${columnCount} cells are more than a page can show`, "XmlContents");
  }
  const missing: Cell = { text: "", number: null };
  const cells = values.map((text): Cell => ({ text, number: numberOf(text) }));
  const cell = (row: number, column: number): Cell => cells[row * columnCount + column] ?? missing;

  const rowLabels = rows.map((label) => label ?? "");
  const columnLabels = Array.from({ length: columnCount }, (_, column) => columns[column] ?? "");
  const { rowTitle, columnTitle, valueTitle } = contents;
  if (!transposed) {
    const grid = rowLabels.map((_, row) => columnLabels.map((__, column) => cell(row, column)));
    return { rowTitle, columnTitle, valueTitle, rowLabels, columnLabels, cells: grid };
  }
  return {
    rowTitle: columnTitle,
    columnTitle: rowTitle,
    valueTitle,
    rowLabels: columnLabels,
    columnLabels: rowLabels,
    cells: columnLabels.map((_, column) => rowLabels.map((__, row) => cell(row, column))),
  };
}

/** Whether two tables hold the same, so that what the reader has done to one can stay for the other. */
export function sameTable(one: Table, other: Table): boolean {
  return one === other || (sameTexts(one.rowLabels, other.rowLabels) && sameTexts(one.columnLabels, other.columnLabels)
    && one.cells.length === other.cells.length
    && one.cells.every((row, r) => row.every((cell, c) => cell.text === other.cells[r]?.[c]?.text)));
}

function sameTexts(one: readonly string[], other: readonly string[]): boolean {
  return one.length === other.length && one.every((text, index) => text === other[index]);
}
