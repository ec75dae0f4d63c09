// One table on show: its nodes, its sizes, and the place in it that is active.
import type { Scene } from "../charts/chart.ts";
import { sameTable } from "../data/table.ts";
import type { PartHost } from "../host/part.ts";
import type { CellPlace } from "../charts/chart.ts";
import { selectionTest } from "../host/selection.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import { type Arrangement, type Axis, freshArrangement } from "./arrangement.ts";
import { CellTyping } from "./cell_typing.ts";
import { listenToReader } from "./grid_actions.ts";
import { gridStyle, setColours } from "./grid_style.ts";
import { sameScale } from "./heat.ts";
import { heatLegend } from "./heat_legend.ts";
import { type GridModel, modelOf, type Position } from "./model.ts";
import { bodyRow, cellOf, headCount, headRows, markSelected, markSelectedLabels, positionOf, refill } from "./nodes.ts";
import { PaperBands } from "./paper_bands.ts";
import { RowPieces } from "./row_pieces.ts";
import { ScrollBars } from "./scroll_bars.ts";
import { applySizes, type Room, setRowHeights } from "./size_nodes.ts";
import { type Measure, neededWidth, type Sizes, sizesOf } from "./sizes.ts";
import { textMeasure } from "./text_measure.ts";

/** The least that a row or column can be made, in pixels. */
export const smallest = 16;

export class GridView {
  readonly host: PartHost;
  private readonly box = document.createElement("div");
  private readonly scroller = document.createElement("div");
  private readonly bars = new ScrollBars(this.scroller);
  readonly table = document.createElement("table");
  private body = this.table.createTBody();
  private readonly filler = new RowPieces();
  private readonly painter = new RowPieces();
  private readonly stop = new AbortController();
  private readonly bands: PaperBands;
  private readonly watch: ResizeObserver;
  /** What the reader types. */
  readonly typing: CellTyping;
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
    this.typing = new CellTyping(this);
    adoptStyle(host.root, gridStyle);
    this.box.className = "grid-box";
    this.scroller.className = "grid-scroll";
    this.table.setAttribute("part", "grid");
    this.table.setAttribute("role", "grid");
    this.scroller.append(this.table);
    const clip = document.createElement("div");
    clip.className = "grid-clip";
    clip.append(this.scroller);
    this.box.append(clip);
    host.drawing.append(this.box);
    this.bands = new PaperBands(host.root, this.table, clip);
    this.watch = new ResizeObserver(() => this.fitRoom());
    this.watch.observe(this.scroller);
    const { signal } = this.stop;
    this.table.addEventListener("pointerover", (event) => showWhole(event.target), { signal });
    this.table.addEventListener("focusin", (event) => this.followFocus(event.target), { signal });
    listenToReader(this, this.stop.signal);
  }

  dispose(): void {
    this.stop.abort();
    this.typing.abandon();
    this.filler.stop();
    this.painter.stop();
    this.watch.disconnect();
    this.bands.drop();
    this.box.remove();
  }

  /** Shows a scene. What the reader has arranged stays while the table does. */
  show(scene: Scene): void {
    const before = this.model?.scene;
    if (!this.arrangement || !before || !sameTable(before.table, scene.table)) {
      this.arrangement = freshArrangement(scene.table);
    }
    if (before && looksAlike(before, scene)) this.showSelection(scene);
    else this.typing.carryOver(() => this.draw(scene));
    if (!this.host.isPrinting) return this.bands.drop();
    // Paper has all rows.
    this.filler.finish();
    this.painter.finish();
    if (this.model) this.bands.make(this.model, this.measure);
  }

  // --- Drawing.

  private draw(scene: Scene): void {
    const arrangement = this.arrangement ?? freshArrangement(scene.table);
    const hadFocus = this.hasFocus();
    this.measure = textMeasure(scene.look);
    this.needs.clear();
    this.bars.set(scene.style);
    this.room = this.roomNow();
    const model = this.model = modelOf(scene, arrangement, this.settledSizes(scene, arrangement));
    setColours(this.box, scene, model.negative);
    this.describe(model);
    this.fillHead(model);
    this.fillBody(model);
    this.showLegend(model);
    applySizes(this.table, this.scroller, model, this.room);
    this.showActive(hadFocus);
  }

  /** Draws anew what the reader has arranged. */
  redraw(): void {
    const { model } = this;
    if (model) this.typing.carryOver(() => this.draw(model.scene));
  }

  /**
   * Shows what the reader has typed into a cell, and what hangs on it. The nodes stay: a click that ends the typing has
   * already gone down on one of them.
   */
  showEdit(place: CellPlace): void {
    const before = this.model;
    if (!before) return;
    this.needs.delete(place.column);
    const scene = { ...before.scene, table: this.host.scene().table };
    const model = this.model = modelOf(scene, before.arrangement, before.sizes);
    this.layOut("rows");
    const { rows, columns } = model.arrangement;
    const [row, column] = [rows.indexOf(place.row), columns.indexOf(place.column)];
    const hasTurned = before.numeric.has(place.column) !== model.numeric.has(place.column);
    refill(this.table, model, hasTurned ? rows.keys() : [row], [column]);
    if (sameScale(before.heat, model.heat)) return;
    this.showLegend(model);
    this.painter.start(rows.length, columns.length, (from, to) =>
      refill(this.table, this.model ?? model, range(from, to), [...columns.keys()]));
  }

  private showLegend(model: GridModel): void {
    this.box.querySelector(".heat-legend")?.remove();
    const legend = heatLegend(model, textsFor(this.host.element));
    if (legend) this.box.append(legend);
  }

  // A new body in the place of the old one: rows that are taken away one by one can call us back while we do it.
  private fillBody(model: GridModel): void {
    const body = document.createElement("tbody");
    const { rows, columns } = model.arrangement;
    this.painter.stop();
    this.filler.start(rows.length, columns.length, (from, to) =>
      body.append(...range(from, to).map((position) => bodyRow(this.model ?? model, position))));
    // Who has scrolled down stays there.
    if (this.scroller.scrollTop > 0) this.filler.finish();
    this.body.replaceWith(body);
    this.body = body;
  }

  private fillHead(model: GridModel): void {
    this.table.tHead?.remove();
    const rows = headRows(model);
    if (rows.length === 0) return;
    this.table.createTHead().append(...rows);
    markSelectedLabels(this.table, model);
  }

  private describe(model: GridModel): void {
    const { scene: { style, table }, sizes } = model;
    const texts = textsFor(this.host.element);
    const name = this.host.root.querySelector("[part~=caption]")?.textContent || texts("table");
    this.table.setAttribute("aria-label", name);
    this.table.setAttribute("aria-rowcount", String(table.cells.length + headCount(model)));
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
    markSelectedLabels(this.table, model);
    this.fitRoom();
  }

  // --- Sizes.

  private settledSizes(scene: Scene, arrangement: Arrangement): Sizes {
    const needOf = (column: number): number => {
      const known = this.needs.get(column) ?? neededWidth(scene, column, this.measure);
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
    this.bars.fit();
    this.room = this.roomNow();
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
      this.setSize(axis, position, neededWidth(scene, entry, this.measure));
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

  /** Where a cell of the table is on show; null where there is no such cell. */
  positionOfPlace(place: CellPlace): Position | null {
    const { rows = [], columns = [] } = this.arrangement ?? {};
    const [row, column] = [rows.indexOf(place.row), columns.indexOf(place.column)];
    return row < 0 || column < 0 ? null : { row, column };
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

function range(from: number, to: number): number[] {
  return Array.from({ length: to - from }, (_, index) => from + index);
}

/** Whether a second scene differs from the first in its size and selection at most. */
function looksAlike(one: Scene, other: Scene): boolean {
  const looks = (scene: Scene): string => JSON.stringify([scene.style, scene.look]);
  return one.format === other.format && looks(one) === looks(other) && sameTable(one.table, other.table);
}

/** A text that is cut off shows whole in the browser's own tip. */
function showWhole(target: EventTarget | null): void {
  const cell = target instanceof Element ? target.closest<HTMLElement>("td, th") : null;
  if (!cell) return;
  if (cell.scrollWidth > cell.clientWidth) cell.title = cell.textContent ?? "";
  else cell.removeAttribute("title");
}
