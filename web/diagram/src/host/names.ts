// What rows, columns and cells are called where they are said or shown alone.
import type { CellPlace, Scene } from "../charts/chart.ts";
import type { Texts } from "./texts.ts";

/** A row's label, or its number where it has none. */
export function rowName(scene: Scene, row: number, texts: Texts): string {
  return scene.table.rowLabels[row]?.trim() || texts("row", row + 1);
}

/** A column's label, or its number where it has none. */
export function columnName(scene: Scene, column: number, texts: Texts): string {
  return scene.table.columnLabels[column]?.trim() || texts("column", column + 1);
}

/** Row, column and formatted value of a cell, for the ear. */
export function cellName(scene: Scene, place: CellPlace, texts: Texts): string {
  const value = valueName(scene, place, texts);
  return `${rowName(scene, place.row, texts)}, ${columnName(scene, place.column, texts)}: ${value}`;
}

/** The formatted value of a cell, or that it has none. */
export function valueName({ table, format }: Scene, { row, column }: CellPlace, texts: Texts): string {
  const text = table.cells[row]?.[column]?.text ?? "";
  return text.trim() === "" ? texts("noValue") : format.text(text);
}
