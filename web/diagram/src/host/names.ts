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
  const text = scene.table.cells[place.row]?.[place.column]?.text ?? "";
  const value = text.trim() === "" ? texts("noValue") : scene.format.text(text);
  return `${rowName(scene, place.row, texts)}, ${columnName(scene, place.column, texts)}: ${value}`;
}
