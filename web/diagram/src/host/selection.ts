// What a click selects: the rules of SelectionMode, MultipleSelection and ExtendedSelection.
import type { CellPlace, Scene } from "../charts/chart.ts";
import type { Table } from "../data/table.ts";
import type { Style } from "../settings/style.ts";

export type SelectionRules = Pick<Style, "SelectionMode" | "MultipleSelection" | "ExtendedSelection">;

/** A click or a key on one place. */
export interface Gesture {
  readonly place: CellPlace;
  /** Ctrl (or the command key) is held: the place is added or taken away. */
  readonly toggle: boolean;
  /** Shift is held: all from the anchor to the place. */
  readonly range: boolean;
}

/** Rows and columns of the table in the order in which they are on show. */
export interface Order {
  readonly rows: readonly number[];
  readonly columns: readonly number[];
}

export interface Selected {
  readonly cells: readonly CellPlace[];
  /** Where ranges begin: the last place that was selected without Shift. */
  readonly anchor: CellPlace | null;
}

/** What a click on a cell means by SelectionMode: its column, its row, the cell, or nothing. */
export function placeOfClick(mode: number, cell: CellPlace): CellPlace | null {
  const { row, column } = cell;
  return [null, { row: -1, column }, { row, column: -1 }, { row, column }][mode] ?? null;
}

/** The order of a table that nobody has rearranged. */
function naturalOrder(table: Table): Order {
  return { rows: [...table.cells.keys()], columns: [...table.columnLabels.keys()] };
}

/** The selection after a gesture. `gesture.place` is a cell, a whole row (column -1) or a whole column (row -1). */
export function selectionAfter(before: Selected, gesture: Gesture, rules: SelectionRules, order: Order): Selected {
  const { place } = gesture;
  const others = before.cells.filter((cell) => !samePlace(cell, place));
  const wasSelected = others.length < before.cells.length;
  if (!rules.MultipleSelection) {
    return { cells: wasSelected && gesture.toggle ? [] : [place], anchor: place };
  }
  if (gesture.range && before.anchor && sameKind(before.anchor, place)) {
    const range = placesBetween(before.anchor, place, order);
    const keeps = gesture.toggle || rules.ExtendedSelection;
    return { cells: keeps ? union(before.cells, range) : range, anchor: before.anchor };
  }
  if (gesture.toggle || rules.ExtendedSelection) {
    return { cells: wasSelected ? others : [...others, place], anchor: place };
  }
  return { cells: [place], anchor: place };
}

/**
 * The selection after a click, or Enter, on a cell of a chart; null where a click selects nothing. Without an anchor
 * ranges begin at what was selected last.
 */
export function selectionByClick(
  scene: Pick<Scene, "style" | "table" | "selection">, cell: CellPlace,
  keys: { ctrlKey: boolean; metaKey: boolean; shiftKey: boolean }, anchor: CellPlace | null,
): Selected | null {
  const place = placeOfClick(scene.style.SelectionMode, cell);
  if (!place) return null;
  const gesture = { place, toggle: keys.ctrlKey || keys.metaKey, range: keys.shiftKey };
  const before = { cells: scene.selection, anchor: anchor ?? scene.selection[scene.selection.length - 1] ?? null };
  return selectionAfter(before, gesture, scene.style, naturalOrder(scene.table));
}

/** Says quickly whether a cell is selected, by itself or with its row or column. */
export function selectionTest(selection: readonly CellPlace[]): (row: number, column: number) => boolean {
  const keys = new Set(selection.map(keyOf));
  return (row, column) => keys.size > 0
    && (keys.has(`${row} ${column}`) || keys.has(`${row} -1`) || keys.has(`-1 ${column}`));
}

export function samePlace(one: CellPlace, other: CellPlace): boolean {
  return one.row === other.row && one.column === other.column;
}

function sameKind(one: CellPlace, other: CellPlace): boolean {
  return (one.row < 0) === (other.row < 0) && (one.column < 0) === (other.column < 0);
}

function keyOf(cell: CellPlace): string {
  return `${cell.row} ${cell.column}`;
}

function union(cells: readonly CellPlace[], more: readonly CellPlace[]): CellPlace[] {
  const keys = new Set(cells.map(keyOf));
  return [...cells, ...more.filter((cell) => !keys.has(keyOf(cell)))];
}

function placesBetween(from: CellPlace, to: CellPlace, order: Order): CellPlace[] {
  const columns = stretch(order.columns, from.column, to.column);
  return stretch(order.rows, from.row, to.row).flatMap((row) => columns.map((column) => ({ row, column })));
}

/** The entries of `order` from one to the other, in order; -1 stands for all of them together. */
function stretch(order: readonly number[], from: number, to: number): readonly number[] {
  if (from < 0) return [-1];
  const ends = [order.indexOf(from), order.indexOf(to)].sort((a, b) => a - b);
  return order.slice(ends[0], (ends[1] ?? 0) + 1);
}
