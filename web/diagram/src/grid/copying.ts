// What a reader copies out of a table: the cells that are selected.
import { tabText } from "../data/table_text.ts";
import { cellAt } from "./arrangement.ts";
import type { GridModel } from "./model.ts";

/** Answers the browser's copy command with what is selected; where nothing is, it stays the browser's. */
export function copySelected(model: GridModel | null, event: ClipboardEvent): void {
  if (!model || model.scene.selection.length === 0 || !event.clipboardData) return;
  event.clipboardData.setData("text/plain", tabText(selectedTexts(model)));
  event.preventDefault();
}

/** The rows and columns with selected cells, as they are on show; what of them is not selected is empty. */
function selectedTexts({ scene: { table }, arrangement, selected }: GridModel): string[][] {
  const columns = arrangement.columns.filter((column) => arrangement.rows.some((row) => selected(row, column)));
  const rows = arrangement.rows.filter((row) => columns.some((column) => selected(row, column)));
  return rows.map((row) => columns.map((column) =>
    (selected(row, column) ? cellAt(table, row, column).text : "")));
}
