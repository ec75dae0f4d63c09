// The nodes of a grid: a plain table, made from the model row by row.
import { cellLook, keptCount, type GridModel, type Position } from "./model.ts";
import { hasLongWord } from "./paper_words.ts";

/** Makes the rows above the data: the title of the columns, and their labels. */
export function headRows(model: GridModel): HTMLTableRowElement[] {
  const rows: HTMLTableRowElement[] = [];
  if (model.sizes.titleHeight > 0) rows.push(titleRow(model));
  if (model.sizes.labelHeight > 0) rows.push(labelRow(model));
  rows.forEach((row, index) => row.setAttribute("aria-rowindex", String(index + 1)));
  return rows;
}

/** How many rows stand above the data. */
export function headCount({ sizes: { titleHeight, labelHeight } }: GridModel): number {
  return (titleHeight > 0 ? 1 : 0) + (labelHeight > 0 ? 1 : 0);
}

function titleRow(model: GridModel): HTMLTableRowElement {
  const row = document.createElement("tr");
  row.className = "title-row";
  if (model.sizes.labelWidth > 0) row.append(corner(""));
  const title = document.createElement("th");
  title.scope = "colgroup";
  title.colSpan = Math.max(model.arrangement.columns.length, 1);
  title.textContent = model.scene.table.columnTitle;
  row.append(title);
  return row;
}

function labelRow(model: GridModel): HTMLTableRowElement {
  const { scene: { style, table }, arrangement, sizes } = model;
  const row = document.createElement("tr");
  row.className = "label-row";
  row.style.height = `${sizes.labelHeight}px`;
  if (sizes.labelWidth > 0) row.append(corner(style.ShowRowTitle ? table.rowTitle : ""));
  const fixed = keptCount(model, "columns");
  arrangement.columns.forEach((column, position) => {
    const label = heading("col", table.columnLabels[column] ?? "");
    if (model.numeric.has(column)) label.classList.add("number");
    if (arrangement.sorting?.axis === "rows" && arrangement.sorting.by === column) markSorted(label, model);
    if (position < fixed) fix(label, position);
    row.append(label);
  });
  return row;
}

function corner(title: string): HTMLTableCellElement {
  const cell = document.createElement(title === "" ? "td" : "th");
  if (title !== "") cell.scope = "col";
  cell.className = "corner";
  cell.classList.toggle("long", hasLongWord(title));
  cell.textContent = title;
  return cell;
}

/** Makes the row on show at a position. */
export function bodyRow(model: GridModel, position: number): HTMLTableRowElement {
  const { scene: { table }, arrangement, sizes } = model;
  const index = arrangement.rows[position] ?? 0;
  const row = document.createElement("tr");
  row.style.height = `${sizes.rowHeight(position)}px`;
  // The others may still be to come.
  row.setAttribute("aria-rowindex", String(position + headCount(model) + 1));
  if (sizes.labelWidth > 0) {
    const label = heading("row", table.rowLabels[index] ?? "");
    if (arrangement.sorting?.axis === "columns" && arrangement.sorting.by === index) markSorted(label, model);
    row.append(label);
  }
  const fixed = keptCount(model, "columns");
  for (let place = 0; place < arrangement.columns.length; ++place) {
    const cell = document.createElement("td");
    cell.tabIndex = -1;
    fillCell(cell, model, index, arrangement.columns[place] ?? 0);
    if (place < fixed) fix(cell, place);
    row.append(cell);
  }
  if (position < keptCount(model, "rows")) {
    row.className = "fixed-row";
    for (const cell of row.cells) cell.style.top = `var(--_top-${position})`;
  }
  markSelected(row, model, index);
  return row;
}

/** Writes a cell's text and colours. */
export function fillCell(node: HTMLTableCellElement, model: GridModel, row: number, column: number): void {
  const { text, isNumber, isNegative, isLong, heat } = cellLook(model, row, column);
  if (node.childElementCount > 0 || node.textContent !== text) node.textContent = text;
  node.classList.toggle("number", isNumber);
  node.classList.toggle("negative", isNegative);
  node.classList.toggle("long", isLong);
  node.classList.toggle("heat", heat !== null);
  if (!heat) return;
  node.style.setProperty("--_heat", heat.ground);
  node.style.setProperty("--_heat-text", heat.text);
}

/** Writes cells anew that have a node, at these positions. */
export function refill(
  table: HTMLTableElement, model: GridModel, rows: Iterable<number>, columns: readonly number[],
): void {
  const { arrangement, sizes } = model;
  const first = sizes.labelWidth > 0 ? 1 : 0;
  const labels = labelRowOf(table);
  const entries = columns.map((place) => arrangement.columns[place] ?? 0);
  columns.forEach((place, index) =>
    labels?.cells[place + first]?.classList.toggle("number", model.numeric.has(entries[index] ?? 0)));
  for (const position of rows) {
    const row = table.tBodies[0]?.rows[position];
    columns.forEach((place, index) => {
      const node = row?.cells[place + first];
      if (node) fillCell(node, model, arrangement.rows[position] ?? 0, entries[index] ?? 0);
    });
  }
}

/** Marks what is selected in a row of data, the table's `index`th. */
export function markSelected(row: HTMLTableRowElement, model: GridModel, index: number): void {
  const first = model.sizes.labelWidth > 0 ? 1 : 0;
  if (first > 0) mark(row.cells[0], model.selected(index, -1));
  model.arrangement.columns.forEach((column, place) => mark(row.cells[place + first], model.selected(index, column)));
}

/** Marks which columns are selected, at their labels. */
export function markSelectedLabels(table: HTMLTableElement, model: GridModel): void {
  const first = model.sizes.labelWidth > 0 ? 1 : 0;
  const row = labelRowOf(table);
  model.arrangement.columns.forEach((column, place) => mark(row?.cells[place + first], model.selected(-1, column)));
}

function labelRowOf(table: HTMLTableElement): HTMLTableRowElement | null | undefined {
  return table.tHead?.querySelector<HTMLTableRowElement>(".label-row");
}

function mark(cell: HTMLTableCellElement | undefined, selected: boolean): void {
  if (!cell || selected === (cell.getAttribute("aria-selected") === "true")) return;
  if (selected) cell.setAttribute("aria-selected", "true");
  else cell.removeAttribute("aria-selected");
}

function heading(scope: "row" | "col", text: string): HTMLTableCellElement {
  // A heading without words is none.
  const node = document.createElement(text.trim() === "" ? "td" : "th");
  if (node.tagName === "TH") node.scope = scope;
  node.classList.add(scope === "row" ? "row-label" : "column-label");
  node.classList.toggle("long", hasLongWord(text));
  node.tabIndex = -1;
  node.textContent = text;
  return node;
}

function markSorted(label: HTMLTableCellElement, model: GridModel): void {
  const direction = model.arrangement.sorting?.descending ? "descending" : "ascending";
  if (label.tagName === "TH") label.setAttribute("aria-sort", direction);
}

function fix(cell: HTMLTableCellElement, place: number): void {
  cell.classList.add("fixed");
  cell.style.insetInlineStart = `var(--_start-${place})`;
}

/** Where a cell of the table stands on show; null for titles and the corner. */
export function positionOf(cell: HTMLTableCellElement, model: GridModel): Position | null {
  const row = cell.parentElement;
  if (!(row instanceof HTMLTableRowElement)) return null;
  const column = cell.cellIndex - (model.sizes.labelWidth > 0 ? 1 : 0);
  if (row.className === "label-row") return column < 0 ? null : { row: -1, column };
  return row.className === "title-row" ? null : { row: row.sectionRowIndex, column };
}

/** The cell on show at a position; undefined if it is not there, or not yet. */
export function cellOf(
  table: HTMLTableElement, model: GridModel, position: Position,
): HTMLTableCellElement | undefined {
  const row = position.row < 0 ? labelRowOf(table) : table.tBodies[0]?.rows[position.row];
  return row?.cells[position.column + (model.sizes.labelWidth > 0 ? 1 : 0)];
}
