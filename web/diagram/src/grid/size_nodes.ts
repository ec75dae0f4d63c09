// The sizes of a grid's nodes, and the places where its fixed rows and columns stay.
import { keptCount, type GridModel } from "./model.ts";

// What stays in view takes at most this share of it; a table that fixes more than it shows could not be scrolled.
const mostFixed = 0.7;

export interface Room {
  readonly width: number;
  readonly height: number;
}

/**
 * Gives a table's columns and labels their sizes, and what is fixed its place. Rows have theirs from `setRowHeights`.
 * `room` is what of the table is in view; reading it here would make the browser lay the table out once more.
 */
export function applySizes(table: HTMLTableElement, scroller: HTMLElement, model: GridModel, room: Room): void {
  const { sizes: { labelWidth, labelHeight, titleHeight, columnWidths, padding } } = model;
  table.querySelector("colgroup")?.remove();
  table.prepend(columnNodes(model));
  table.style.width = `${columnWidths.reduce((sum, width) => sum + width, labelWidth)}px`;
  table.style.setProperty("--_padding", `${padding}px`);

  const titleRow = table.querySelector<HTMLElement>(".title-row");
  // The labels stay under the title, so its height must be the one reckoned with.
  if (titleRow) titleRow.style.height = `${titleHeight}px`;
  table.style.setProperty("--_label-top", `${titleHeight}px`);
  const top = setPlaces(table, "--_top", room.height, {
    first: titleHeight + labelHeight, count: keptCount(model, "rows"), size: model.sizes.rowHeight,
  });
  const start = setPlaces(table, "--_start", room.width, {
    first: labelWidth, count: keptCount(model, "columns"), size: (place) => columnWidths[place] ?? 0,
  });
  // What is focused must not hide behind what stays.
  scroller.style.scrollPaddingTop = `${top}px`;
  scroller.style.scrollPaddingInlineStart = `${start}px`;
}

/** Makes the nodes that give columns their widths. On paper, those that the reader has set are in ems. */
export function columnNodes({ arrangement, sizes: { labelWidth, columnWidths }, scene }: GridModel): HTMLElement {
  const group = document.createElement("colgroup");
  const columns = labelWidth > 0 ? [-1, ...arrangement.columns] : arrangement.columns;
  const widths = labelWidth > 0 ? [labelWidth, ...columnWidths] : columnWidths;
  group.append(...columns.map((column, position) => {
    const node = document.createElement("col");
    node.style.width = `${widths[position] ?? 0}px`;
    const set = arrangement.sizes.columns.get(column);
    if (set !== undefined) node.style.setProperty("--_set", `${set / scene.look.fontSize}em`);
    return node;
  }));
  return group;
}

/** Gives rows their heights, the first one being at `position`. */
export function setRowHeights(rows: Iterable<HTMLTableRowElement>, model: GridModel): void {
  let position = 0;
  for (const row of rows) row.style.height = `${model.sizes.rowHeight(position++)}px`;
}

/** Rows or columns that are to stay in view, one after the other from `first` on. */
interface Fixed {
  readonly first: number;
  readonly count: number;
  readonly size: (place: number) => number;
}

/** Sets a property for each of them that has room, and gives where the last one ends. Those behind are scrolled. */
function setPlaces(table: HTMLTableElement, property: string, room: number, { first, count, size }: Fixed): number {
  let end = first;
  let place = 0;
  for (; place < count && end + size(place) <= room * mostFixed; ++place) {
    table.style.setProperty(`${property}-${place}`, `${end}px`);
    end += size(place);
  }
  // There was room for more of them before.
  while (table.style.removeProperty(`${property}-${place}`) !== "") place += 1;
  return end;
}
