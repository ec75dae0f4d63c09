// What readers do to a table: its order and its sizes. Nothing of it is saved.
import type { Cell, Table } from "../data/table.ts";

/** Rows sort by a column's values, columns by a row's. */
export type Axis = "rows" | "columns";

export interface Sorting {
  /** What is being sorted. */
  readonly axis: Axis;
  /** The column, or row, by whose values; as the table counts it. */
  readonly by: number;
  readonly descending: boolean;
}

/** All numbers are rows and columns as the table counts them; positions are those on show. */
export interface Arrangement {
  rows: readonly number[];
  columns: readonly number[];
  sorting: Sorting | null;
  /** Sizes that the reader has set, in pixels; -1 is the labels'. */
  readonly sizes: { readonly rows: Map<number, number>; readonly columns: Map<number, number> };
}

export function freshArrangement(table: Table): Arrangement {
  return {
    rows: table.cells.map((_, row) => row),
    columns: table.columnLabels.map((_, column) => column),
    sorting: null,
    sizes: { rows: new Map(), columns: new Map() },
  };
}

/** The table's cell; an empty one where there is none. */
export function cellAt(table: Table, row: number, column: number): Cell {
  return table.cells[row]?.[column] ?? emptyCell;
}

/** Takes the entry at one position out and puts it in at another. */
export function moved(order: readonly number[], from: number, to: number): number[] {
  const rest = order.filter((_, position) => position !== from);
  rest.splice(to, 0, ...order.slice(from, from + 1));
  return rest;
}

/**
 * The order sorted by a cell of each entry. The first `fixed` entries keep their places, as do entries of equal cells.
 * Numbers come before texts, and empty cells last in both directions.
 */
export function sorted(
  order: readonly number[], fixed: number, descending: boolean, cellOf: (entry: number) => Cell,
): number[] {
  const direction = descending ? -1 : 1;
  const cells = new Map(order.map((entry) => [entry, cellOf(entry)]));
  const compare = (one: number, other: number): number => {
    const [a, b] = [cells.get(one) ?? emptyCell, cells.get(other) ?? emptyCell];
    return rank(a) - rank(b) || direction * compareAlike(a, b);
  };
  return [...order.slice(0, fixed), ...order.slice(fixed).sort(compare)];
}

const emptyCell: Cell = { text: "", number: null };
const collator = new Intl.Collator(undefined, { numeric: true });

function rank(cell: Cell): number {
  return cell.number !== null ? 0 : cell.text.trim() !== "" ? 1 : 2;
}

function compareAlike(a: Cell, b: Cell): number {
  return a.number !== null && b.number !== null ? Math.sign(a.number - b.number) : collator.compare(a.text, b.text);
}
