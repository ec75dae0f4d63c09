// What readers type into a table's cells. It changes what is on show, and nothing is saved.
import type { CellPlace } from "../charts/chart.ts";
import { numberReader } from "../format/value_format.ts";
import { columnName, rowName } from "../parts/names.ts";
import { textsFor } from "../parts/texts.ts";
import { cellAt } from "./arrangement.ts";
import { type AfterEdit, editCell } from "./cell_editor.ts";
import type { GridView } from "./grid_view.ts";
import type { Position } from "./model.ts";
import { fillCell } from "./nodes.ts";

export class CellTyping {
  private readonly view: GridView;

  constructor(view: GridView) {
    this.view = view;
  }

  /** Opens the active cell, with its text or empty; false where nobody may type. */
  open(keepsText: boolean): boolean {
    const { model, host } = this.view;
    const node = this.view.cell(this.view.active);
    const place = this.place();
    if (!model || !place || !node) return false;
    const texts = textsFor(host.element);
    editCell(node, {
      text: keepsText ? cellAt(model.scene.table, model.arrangement, place.row, place.column).text : null,
      label: `${rowName(model.scene, place.row, texts)}, ${columnName(model.scene, place.column, texts)}`,
      done: (text, after) => this.end(node, place, text, after),
    });
    return true;
  }

  /** Empties the active cell; false where nobody may type. */
  clear(): boolean {
    const place = this.place();
    if (place) this.setText(place, "");
    return place !== null;
  }

  /** The active cell, as the table counts it, if it may be typed into. */
  private place(): CellPlace | null {
    const { model, active } = this.view;
    const row = model?.arrangement.rows[active.row];
    const column = model?.arrangement.columns[active.column];
    return model?.scene.style.IsEditable && row !== undefined && column !== undefined ? { row, column } : null;
  }

  private end(node: HTMLTableCellElement, place: CellPlace, text: string | null, after: AfterEdit): void {
    const hadFocus = this.view.hasFocus();
    if (this.view.model) fillCell(node, this.view.model, place.row, place.column);
    if (text !== null) this.setText(place, text);
    if (hadFocus) this.view.goTo(this.placeAfter(after));
  }

  private placeAfter(after: AfterEdit): Position {
    const { row, column } = this.view.active;
    const { rows, columns } = this.view.extent();
    if (after === "down") return { row: Math.min(row + 1, rows - 1), column };
    const step = after === "next" ? 1 : after === "previous" ? -1 : 0;
    return { row, column: Math.min(Math.max(column + step, 0), columns - 1) };
  }

  private setText(place: CellPlace, text: string): void {
    if (!this.view.model) return;
    const { scene, arrangement } = this.view.model;
    if (cellAt(scene.table, arrangement, place.row, place.column).text === text) return;
    arrangement.edits.set(`${place.row} ${place.column}`, { text, number: numberReader(scene.style)(text) });
    // Widths, heights and heat colours hang on all cells.
    this.view.redraw();
  }
}
