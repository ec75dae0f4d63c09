// What readers type into a table's cells. It changes what is on show, and nothing is saved.
import type { CellPlace } from "../charts/chart.ts";
import { columnName, rowName } from "../host/names.ts";
import { textsFor } from "../host/texts.ts";
import { cellAt } from "./arrangement.ts";
import { type AfterEdit, CellEditor } from "./cell_editor.ts";
import type { GridView } from "./grid_view.ts";
import type { Position } from "./model.ts";
import { fillCell } from "./nodes.ts";

export class CellTyping {
  private readonly view: GridView;
  private open: { readonly editor: CellEditor; readonly place: CellPlace } | null = null;

  constructor(view: GridView) {
    this.view = view;
  }

  /** Opens the active cell, with its text or empty; false where nobody may type. */
  start(keepsText: boolean): boolean {
    const { model, host } = this.view;
    const node = this.view.cell(this.view.active);
    const place = this.activePlace();
    if (!model || !place || !node) return false;
    const texts = textsFor(host.element);
    const editor = new CellEditor(node, {
      text: keepsText ? cellAt(model.scene.table, place.row, place.column).text : null,
      label: `${rowName(model.scene, place.row, texts)}, ${columnName(model.scene, place.column, texts)}`,
      done: (text, after) => this.end(place, text, after),
    });
    this.open = { editor, place };
    return true;
  }

  /** Empties the active cell; false where nobody may type. */
  clear(): boolean {
    const place = this.activePlace();
    if (place) this.setText(place, "");
    return place !== null;
  }

  /**
   * Has the table's nodes made anew. An open box goes on in its cell's new node, as the reader has left it: a new
   * scheme or new data must not take away what is being typed. It closes where that cell is gone.
   */
  carryOver(rebuild: () => void): void {
    const { open, view } = this;
    if (!open) return rebuild();
    open.editor.lift();
    const position = view.positionOfPlace(open.place);
    if (position) view.active = position;
    rebuild();
    const node = position && this.activePlace() ? view.cell(position) : undefined;
    if (node) open.editor.putInto(node);
    else this.open = null;
  }

  /** The table goes away, and what is being typed with it. */
  abandon(): void {
    this.open?.editor.lift();
    this.open = null;
  }

  /** The active cell, as the table counts it, if it may be typed into. */
  private activePlace(): CellPlace | null {
    const { model, active } = this.view;
    const row = model?.arrangement.rows[active.row];
    const column = model?.arrangement.columns[active.column];
    return model?.scene.style.IsEditable && row !== undefined && column !== undefined ? { row, column } : null;
  }

  private end(place: CellPlace, text: string | null, after: AfterEdit): void {
    const { view } = this;
    const hadFocus = view.hasFocus();
    this.open = null;
    const position = view.positionOfPlace(place);
    const node = position && view.cell(position);
    if (node && view.model) fillCell(node, view.model, place.row, place.column);
    if (text !== null) this.setText(place, text);
    if (hadFocus) view.goTo(this.placeAfter(after));
  }

  private placeAfter(after: AfterEdit): Position {
    const { row, column } = this.view.active;
    const { rows, columns } = this.view.extent();
    if (after === "down") return { row: Math.min(row + 1, rows - 1), column };
    const step = after === "next" ? 1 : after === "previous" ? -1 : 0;
    return { row, column: Math.min(Math.max(column + step, 0), columns - 1) };
  }

  private setText(place: CellPlace, text: string): void {
    const { model, host } = this.view;
    if (!model || cellAt(model.scene.table, place.row, place.column).text === text) return;
    host.type(place, text);
    this.view.showEdit(place);
  }
}
