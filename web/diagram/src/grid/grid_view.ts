// One table on show: its nodes, its sizes, and the place in it that is active.
import type { Scene } from "../charts/chart.ts";
import type { Table } from "../data/table.ts";
import type { PartHost } from "../parts/part.ts";
import { selectionTest } from "../parts/selection.ts";
import { adoptStyle } from "../parts/style_sheet.ts";
import { textsFor } from "../parts/texts.ts";
import { type Arrangement, type Axis, cellAt, freshArrangement, sameTable } from "./arrangement.ts";
import { listenToReader } from "./grid_actions.ts";
import { gridStyle, setColours } from "./grid_style.ts";
import { heatScale } from "./heat.ts";
import { heatLegend } from "./heat_legend.ts";
import { type GridModel, heatTable, type Position } from "./model.ts";
import { bodyRow, cellOf, headRows, markSelected, markSelectedLabels, positionOf } from "./nodes.ts";
import { RowFiller } from "./row_filler.ts";
import { applySizes, type Room, setRowHeights } from "./size_nodes.ts";
import { type Measure, neededWidth, type Sizes, sizesOf } from "./sizes.ts";
import { textMeasure } from "./text_measure.ts";

/** The least that a row or column can be made, in pixels. */
export const smallest = 16;

export class GridView {
  readonly host: PartHost;
  private readonly box = document.createElement("div");
  private readonly scroller = document.createElement("div");
  readonly table = document.createElement("table");
  private readonly body = this.table.createTBody();
  private readonly filler = new RowFiller();
  private readonly stop = new AbortController();
  private readonly watch: ResizeObserver;
  /** Null before the first scene. */
  model: GridModel | null = null;
  /** The place that the Tab key reaches. */
  active: Position = { row: 0, column: 0 };
  private arrangement: Arrangement | null = null;
  private measure: Measure = () => 0;
  private readonly needs = new Map<number, number>();
  private room: Room = { width: 0, height: 0 };

  constructor(host: PartHost) {
    this.host = host;
    adoptStyle(host.root, gridStyle);
    this.box.className = "grid-box";
    this.scroller.className = "grid-scroll";
    this.table.setAttribute("part", "grid");
    this.table.setAttribute("role", "grid");
    this.scroller.append(this.table);
    this.box.append(this.scroller);
    host.drawing.append(this.box);
    this.watch = new ResizeObserver(() => this.fitRoom());
    this.watch.observe(this.scroller);
    const { signal } = this.stop;
    this.table.addEventListener("pointerover", (event) => showWhole(event.target), { signal });
    this.table.addEventListener("focusin", (event) => this.followFocus(event.target), { signal });
    // A page that is printed has all rows.
    window.addEventListener("beforeprint", () => this.filler.finish(), { signal });
    listenToReader(this, this.stop.signal);
  }

  dispose(): void {
    this.stop.abort();
    this.filler.stop();
    this.watch.disconnect();
    this.box.remove();
  }

  /** Shows a scene. What the reader has arranged stays while the table does. */
  show(scene: Scene): void {
    const before = this.model?.scene;
    if (!this.arrangement || !before || !sameTable(before.table, scene.table)) {
      this.arrangement = freshArrangement(scene.table);
      this.active = { row: 0, column: 0 };
    }
    if (before && looksAlike(before, scene)) this.showSelection(scene);
    else this.draw(scene);
  }

  // --- Drawing.

  private draw(scene: Scene): void {
    const arrangement = this.arrangement ?? freshArrangement(scene.table);
    const hadFocus = this.hasFocus();
    const { style, look } = scene;
    this.measure = textMeasure(look);
    this.needs.clear();
    setColours(this.box, scene);
    this.room = this.roomNow();
    const model: GridModel = this.model = {
      scene, arrangement, sizes: this.settledSizes(scene, arrangement),
      heat: style.DiagramType === heatTable ? heatScale(shownTable(scene, arrangement), look) : null,
      numeric: numericColumns(scene, arrangement),
      selected: selectionTest(scene.selection),
    };
    this.describe(model);
    this.fillHead(model);
    this.filler.start(this.body, arrangement.rows.length, arrangement.columns.length,
      (position) => bodyRow(this.model ?? model, position));
    this.box.querySelector(".heat-legend")?.remove();
    const legend = heatLegend(model, textsFor(this.host.element));
    if (legend) this.box.append(legend);
    applySizes(this.table, this.scroller, model, this.room);
    this.showActive(hadFocus);
  }

  /** Draws anew what the reader has arranged. */
  redraw(): void {
    if (this.model) this.draw(this.model.scene);
  }

  private fillHead(model: GridModel): void {
    this.table.tHead?.remove();
    const rows = headRows(model);
    if (rows.length === 0) return;
    this.table.createTHead().append(...rows);
    markSelectedLabels(rows[rows.length - 1], model);
  }

  private describe(model: GridModel): void {
    const { scene: { style, table }, sizes } = model;
    const texts = textsFor(this.host.element);
    const name = this.host.root.querySelector("[part~=caption]")?.textContent || texts("table");
    this.table.setAttribute("aria-label", name);
    this.table.setAttribute("aria-rowcount", String(table.cells.length + (sizes.labelHeight > 0 ? 1 : 0)));
    this.table.setAttribute("aria-colcount", String(table.columnLabels.length + (sizes.labelWidth > 0 ? 1 : 0)));
    this.table.setAttribute("aria-readonly", String(!style.IsEditable));
    this.table.setAttribute("aria-multiselectable", String(style.MultipleSelection));
  }

  private showSelection(scene: Scene): void {
    if (!this.model) return;
    const before = this.model.scene.selection;
    const model: GridModel = this.model = { ...this.model, scene, selected: selectionTest(scene.selection) };
    this.filler.finish();
    const changed = new Set([...before, ...scene.selection].map(({ row }) => row));
    model.arrangement.rows.forEach((index, position) => {
      const row = this.body.rows[position];
      // A whole column that comes or goes changes all rows.
      if (row && (changed.has(-1) || changed.has(index))) markSelected(row, model, index);
    });
    markSelectedLabels(this.table.tHead?.rows[this.table.tHead.rows.length - 1], model);
    this.fitRoom();
  }

  // --- Sizes.

  private settledSizes(scene: Scene, arrangement: Arrangement): Sizes {
    const needOf = (column: number): number => {
      const known = this.needs.get(column) ?? neededWidth(scene, arrangement, column, this.measure);
      this.needs.set(column, known);
      return known;
    };
    return sizesOf({ scene, arrangement, measure: this.measure, needOf, available: this.room.width });
  }

  private roomNow(): Room {
    return { width: this.scroller.clientWidth, height: this.box.clientHeight };
  }

  private fitRoom(): void {
    const room = this.roomNow();
    if (room.width === 0 || (room.width === this.room.width && room.height === this.room.height)) return;
    this.room = room;
    this.layOut("columns");
  }

  private layOut(axis: Axis): void {
    if (!this.model) return;
    const { scene, arrangement } = this.model;
    this.model = { ...this.model, sizes: this.settledSizes(scene, arrangement) };
    applySizes(this.table, this.scroller, this.model, this.room);
    if (axis === "rows") setRowHeights(this.body.rows, this.model);
    const labels = this.table.tHead?.querySelector<HTMLElement>(".label-row");
    if (labels) labels.style.height = `${this.model.sizes.labelHeight}px`;
  }

  /** Gives a row or column on show a size, in pixels; position -1: the labels. */
  setSize(axis: Axis, position: number, size: number): void {
    if (!this.model) return;
    const entry = position < 0 ? -1 : this.model.arrangement[axis][position] ?? -1;
    this.model.arrangement.sizes[axis].set(entry, Math.max(Math.round(size), smallest));
    if (axis === "rows") this.filler.finish();
    this.layOut(axis);
  }

  /** Gives a row or column on show the size that what stands in it needs. */
  fit(axis: Axis, position: number): void {
    if (!this.model) return;
    const { scene, arrangement } = this.model;
    const entry = arrangement[axis][position];
    if (axis === "columns" && entry !== undefined) {
      this.setSize(axis, position, neededWidth(scene, arrangement, entry, this.measure));
    } else {
      arrangement.sizes[axis].delete(entry ?? -1);
      this.layOut(axis);
    }
  }

  // --- The active cell: the one that the Tab key reaches.

  hasFocus(): boolean {
    const focused = this.host.root.activeElement;
    return focused !== null && this.table.contains(focused);
  }

  blur(): void {
    if (this.hasFocus()) (this.host.root.activeElement as HTMLElement | null)?.blur();
  }

  /** How many rows and columns there are, and where positions begin: at -1 where labels are on show. */
  extent(): { rows: number; columns: number; firstRow: number; firstColumn: number } {
    const { rows = [], columns = [] } = this.arrangement ?? {};
    const { labelHeight = 0, labelWidth = 0 } = this.model?.sizes ?? {};
    return {
      rows: rows.length,
      columns: columns.length,
      firstRow: labelHeight > 0 ? -1 : 0,
      firstColumn: labelWidth > 0 ? -1 : 0,
    };
  }

  /** The node on show at a position. */
  cell(position: Position): HTMLTableCellElement | undefined {
    if (this.model && position.row >= this.body.rows.length) this.filler.finish();
    return this.model ? cellOf(this.table, this.model, position) : undefined;
  }

  /** Makes a place the active one, and focuses it. */
  goTo(position: Position): void {
    this.leaveActive();
    this.active = position;
    this.showActive(true);
  }

  private leaveActive(): void {
    const cell = this.cell(this.active);
    if (cell) cell.tabIndex = -1;
  }

  // Screen readers, too, can put the focus on any cell.
  private followFocus(target: EventTarget | null): void {
    const position = this.positionAt(target);
    if (!position || (position.row === this.active.row && position.column === this.active.column)) return;
    this.leaveActive();
    this.active = position;
    this.showActive(false);
  }

  private showActive(focus: boolean): void {
    const cell = this.cell(this.active) ?? this.cell(this.active = { row: 0, column: 0 });
    if (!cell) {
      // A table without cells can still be scrolled.
      this.scroller.tabIndex = 0;
      return;
    }
    this.scroller.removeAttribute("tabindex");
    cell.tabIndex = 0;
    if (this.model && this.model.scene.style.SelectionMode > 0 && !cell.hasAttribute("aria-selected")) {
      cell.setAttribute("aria-selected", "false");
    }
    if (focus) cell.focus();
  }

  /** Where a node of the table stands on show; null outside its cells and labels. */
  positionAt(target: EventTarget | null): Position | null {
    const cell = target instanceof Element ? target.closest<HTMLTableCellElement>("td, th") : null;
    return cell && this.model && this.table.contains(cell) ? positionOf(cell, this.model) : null;
  }
}

/** Whether a second scene differs from the first in its size and selection at most. */
function looksAlike(one: Scene, other: Scene): boolean {
  const looks = (scene: Scene): string => JSON.stringify([scene.style, scene.look]);
  return one.format === other.format && looks(one) === looks(other) && sameTable(one.table, other.table);
}

/** The table as the reader has left it, for what depends on all values. */
function shownTable(scene: Scene, arrangement: Arrangement): Table {
  const { table } = scene;
  if (arrangement.edits.size === 0) return table;
  return { ...table, cells: table.cells.map((cells, row) => cells.map((_, column) =>
    cellAt(table, arrangement, row, column))) };
}

/** The columns that hold more numbers than texts. */
function numericColumns({ table }: Scene, arrangement: Arrangement): Set<number> {
  const isNumeric = (column: number): boolean => {
    const lead = table.cells.reduce((sum, _, row) => {
      const cell = cellAt(table, arrangement, row, column);
      return sum + (cell.number !== null ? 1 : cell.text.trim() !== "" ? -1 : 0);
    }, 0);
    return lead > 0;
  };
  return new Set(table.columnLabels.map((_, column) => column).filter(isNumeric));
}

/** A text that is cut off shows whole in the browser's own tip. */
function showWhole(target: EventTarget | null): void {
  const cell = target instanceof Element ? target.closest<HTMLElement>("td, th") : null;
  if (!cell) return;
  if (cell.scrollWidth > cell.clientWidth) cell.title = cell.textContent ?? "";
  else cell.removeAttribute("title");
}
