// The sizes of a grid's nodes, and the places where its fixed rows and columns stay.
import { fixedCount, type GridModel } from "./model.ts";

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
  const { sizes: { labelWidth, labelHeight, titleHeight, columnWidths, padding, needed }, scene } = model;
  const widths = labelWidth > 0 ? [labelWidth, ...columnWidths] : columnWidths;
  const group = document.createElement("colgroup");
  group.append(...widths.map((width) => {
    const column = document.createElement("col");
    column.style.width = `${width}px`;
    return column;
  }));
  table.querySelector("colgroup")?.remove();
  table.prepend(group);
  table.style.width = `${widths.reduce((sum, width) => sum + width, 0)}px`;
  table.style.setProperty("--_padding", `${padding}px`);
  // Paper cannot be scrolled: there, the texts of a table that is too wide for it are smaller.
  table.style.setProperty("--_ems", String(needed / scene.look.fontSize));

  const titleRow = table.querySelector<HTMLElement>(".title-row");
  // The labels stay under the title, so its height must be the one reckoned with.
  if (titleRow) titleRow.style.height = `${titleHeight}px`;
  const rowEnds = ends(titleHeight + labelHeight, fixedCount(scene.style, "rows"), model.sizes.rowHeight);
  const columnEnds = ends(labelWidth, fixedCount(scene.style, "columns"), (place) => columnWidths[place] ?? 0);
  table.style.setProperty("--_label-top", `${titleHeight}px`);
  const top = setPlaces(table, "--_top", rowEnds, room.height);
  const start = setPlaces(table, "--_start", columnEnds, room.width);
  // What is focused must not hide behind what stays.
  scroller.style.scrollPaddingTop = `${top}px`;
  scroller.style.scrollPaddingInlineStart = `${start}px`;
}

/** Gives rows their heights, the first one being at `position`. */
export function setRowHeights(rows: Iterable<HTMLTableRowElement>, model: GridModel): void {
  let position = 0;
  for (const row of rows) row.style.height = `${model.sizes.rowHeight(position++)}px`;
}

/** Where each of the first entries begins and ends, if they stand one after the other. */
function ends(first: number, count: number, size: (place: number) => number): number[] {
  const list = [first];
  for (let place = 0; place < count; ++place) list.push((list[place] ?? 0) + size(place));
  return list;
}

/** Sets a property for each place, and gives the end of the last one that stays in view. */
function setPlaces(table: HTMLTableElement, property: string, list: readonly number[], room: number): number {
  const last = list.filter((end, index) => index === 0 || end <= room * mostFixed).length - 1;
  list.slice(0, -1).forEach((place, index) =>
    table.style.setProperty(`${property}-${index}`, index < last ? `${place}px` : "auto"));
  return list[last] ?? 0;
}
