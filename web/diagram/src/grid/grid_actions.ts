// What readers do to a table: select, sort, move, resize.
import type { CellPlace } from "../charts/chart.ts";
import { announce } from "../host/announcer.ts";
import { columnName, rowName } from "../host/names.ts";
import { placeOfClick, selectionAfter } from "../host/selection.ts";
import { textsFor } from "../host/texts.ts";
import { type Axis, cellAt, moved, sorted } from "./arrangement.ts";
import { copySelected } from "./copying.ts";
import { type KeyTarget, pressKey } from "./grid_keys.ts";
import { listenForDrags } from "./grid_pointer.ts";
import { type GridView, smallest } from "./grid_view.ts";
import { fixedCount, isMoveable, isResizable, labelAction, type Position } from "./model.ts";

// By how many pixels a key makes a row or column larger or smaller.
const sizeStep = 8;

/** Listens to keys and pointer in a grid until the signal says to stop. */
export function listenToReader(view: GridView, signal: AbortSignal): void {
  const actions = new GridActions(view);
  const { table } = view;
  table.addEventListener("click", (event) => {
    const position = view.positionAt(event.target);
    if (!position) return;
    view.goTo(position);
    actions.operate(event);
  }, { signal });
  table.addEventListener("dblclick", (event) => {
    if (view.positionAt(event.target)) actions.edit(true);
  }, { signal });
  table.addEventListener("keydown", (event) => {
    if (event.isComposing || !view.positionAt(event.target)) return;
    if (!pressKey(actions, event, getComputedStyle(table).direction === "rtl")) return;
    event.preventDefault();
    event.stopPropagation();
  }, { signal });
  table.addEventListener("copy", (event) => copySelected(view.model, event), { signal });
  listenForDrags({
    table,
    positionAt: (node) => view.positionAt(node),
    cellAt: (position) => view.cell(position),
    allows: (what, axis) => actions.allows(what, axis),
    moveTo: (axis, from, to) => actions.moveTo(axis, from, to),
    resizeTo: (axis, position, size) => view.setSize(axis, position, size),
    fit: (axis, position) => view.fit(axis, position),
  }, signal);
}

class GridActions implements KeyTarget {
  private readonly view: GridView;
  // Where ranges begin.
  private anchor: CellPlace | null = null;
  // Where the last selection has ended; null since the reader has gone on without selecting.
  private reached: Position | null = null;

  constructor(view: GridView) {
    this.view = view;
  }

  extent(): ReturnType<KeyTarget["extent"]> {
    return this.view.extent();
  }

  active(): Position {
    return this.view.active;
  }

  goTo(position: Position): void {
    this.reached = null;
    this.view.goTo(position);
  }

  leave(): void {
    this.view.blur();
  }

  edit(keepsText: boolean): boolean {
    return this.view.typing.start(keepsText);
  }

  clear(): boolean {
    return this.view.typing.clear();
  }

  allows(what: "move" | "resize", axis: Axis): boolean {
    const style = this.view.model?.scene.style;
    return style !== undefined && (what === "move" ? isMoveable : isResizable)(style, axis);
  }

  /** Does what a click on the active cell or label does; the Enter key rather opens a cell for typing. */
  operate(event: MouseEvent | KeyboardEvent): void {
    const { model, active } = this.view;
    if (!model || ("key" in event && event.key === "Enter" && this.edit(true))) return;
    const axis: Axis | null = active.row < 0 ? "columns" : active.column < 0 ? "rows" : null;
    if (axis && labelAction(model.scene.style, axis) === "sort") this.sortBy(axis);
    else this.select({ toggle: event.ctrlKey || event.metaKey, range: event.shiftKey });
  }

  extendTo(position: Position): void {
    const { model, active } = this.view;
    const goesOn = this.reached?.row === active.row && this.reached.column === active.column;
    if (!goesOn) this.anchor = this.activePlace();
    this.view.goTo(position);
    if (model?.scene.style.MultipleSelection) this.select({ toggle: false, range: true });
  }

  private select(keys: { toggle: boolean; range: boolean }): void {
    const { model, host } = this.view;
    const place = this.activePlace();
    if (!model || !place) return;
    const { arrangement } = model;
    const scene = host.scene();
    const anchor = this.anchor ?? scene.selection[scene.selection.length - 1] ?? null;
    const after = selectionAfter({ cells: scene.selection, anchor }, { place, ...keys }, scene.style, arrangement);
    this.anchor = after.anchor;
    this.reached = this.view.active;
    host.select([...after.cells]);
  }

  /** What a click on the active cell or label selects: nothing, a cell, a row or a column of the table. */
  private activePlace(): CellPlace | null {
    const { model, active: { row, column } } = this.view;
    if (!model) return null;
    const { scene: { style }, arrangement } = model;
    const place = { row: arrangement.rows[row] ?? -1, column: arrangement.columns[column] ?? -1 };
    if (row >= 0 && column >= 0) return placeOfClick(style.SelectionMode, place);
    return labelAction(style, row < 0 ? "columns" : "rows") === "select" ? place : null;
  }

  /** Sorts by the active label: a column's sorts the rows, a row's the columns. */
  private sortBy(labels: Axis): void {
    const { model, active } = this.view;
    if (!model) return;
    const { scene, arrangement } = model;
    const axis: Axis = labels === "columns" ? "rows" : "columns";
    const by = arrangement[labels][labels === "columns" ? active.column : active.row] ?? 0;
    const before = arrangement.sorting;
    const descending = before?.axis === axis && before.by === by && !before.descending;
    arrangement.sorting = { axis, by, descending };
    arrangement[axis] = sorted(arrangement[axis], fixedCount(model, axis), descending, (entry) =>
      axis === "rows" ? cellAt(scene.table, entry, by) : cellAt(scene.table, by, entry));
    this.view.redraw();
    this.say(descending ? "sortedDown" : "sortedUp", this.nameOf(labels, by));
  }

  moveTo(axis: Axis, from: number, to: number): void {
    const { model, active } = this.view;
    const entry = model?.arrangement[axis][from];
    if (!model || entry === undefined || to < 0 || to >= model.arrangement[axis].length) return;
    const { arrangement } = model;
    arrangement[axis] = moved(arrangement[axis], from, to);
    // What somebody has moved by hand is sorted no longer.
    if (arrangement.sorting?.axis === axis) arrangement.sorting = null;
    this.view.active = axis === "rows" ? { ...active, row: to } : { ...active, column: to };
    this.view.redraw();
    this.say("moved", this.nameOf(axis, entry), to + 1, arrangement[axis].length);
  }

  move(axis: Axis, step: -1 | 1): boolean {
    const from = this.activeAlong(axis);
    const may = this.allows("move", axis);
    if (may && from >= 0) this.moveTo(axis, from, from + step);
    return may;
  }

  resize(axis: Axis, step: -1 | 1): boolean {
    const box = this.view.cell(this.view.active)?.getBoundingClientRect();
    if (!this.allows("resize", axis)) return false;
    if (!box) return true;
    const size = Math.max((axis === "rows" ? box.height : box.width) + step * sizeStep, smallest);
    this.view.setSize(axis, this.activeAlong(axis), size);
    const entry = this.view.model?.arrangement[axis][this.activeAlong(axis)];
    this.say("size", entry === undefined ? "" : this.nameOf(axis, entry), Math.round(size));
    return true;
  }

  private activeAlong(axis: Axis): number {
    return axis === "rows" ? this.view.active.row : this.view.active.column;
  }

  private nameOf(axis: Axis, entry: number): string {
    const name = axis === "rows" ? rowName : columnName;
    return this.view.model ? name(this.view.model.scene, entry, textsFor(this.view.host.element)) : "";
  }

  private say(...words: Parameters<ReturnType<typeof textsFor>>): void {
    announce(this.view.host.root, textsFor(this.view.host.element)(...words));
  }
}
