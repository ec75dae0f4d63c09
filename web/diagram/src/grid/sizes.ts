// How wide columns are and how high rows.
import type { Scene } from "../charts/chart.ts";
import { extent } from "../data/extent.ts";
import type { Style } from "../settings/style.ts";
import { type Arrangement, type Axis, cellAt } from "./arrangement.ts";
import { labelAction } from "./model.ts";

/** All in pixels; of columns and rows by position. */
export interface Sizes {
  /** 0: no row labels. */
  readonly labelWidth: number;
  readonly columnWidths: readonly number[];
  /** Beside a cell's text, on either side: less than usual where columns that share the width need it. */
  readonly padding: number;
  /** 0: no column labels. */
  readonly labelHeight: number;
  /** Of the line over the labels with their title; 0: none. */
  readonly titleHeight: number;
  rowHeight(position: number): number;
}

/** The width of a text in the table's font. */
export type Measure = (text: string, bold: boolean) => number;

export const cellPadding = 8;
/** How much farther from the edge row labels stand, under a caption's first letter. */
export const labelIndent = 6;
const leastPadding = 3;
const widest = 320;
const narrowest = 16;
// The widest text is looked for among the longest ones: measuring all of a large table takes too long.
const measured = 16;
// Room for the sign of the sorting.
const signWidth = 14;
// The shares of the whole width that row labels may take, however long they are.
const mostLabels = 0.4;
const leastLabels = 0.25;

export interface SizeInput {
  readonly scene: Scene;
  readonly arrangement: Arrangement;
  readonly measure: Measure;
  /** The room that a column's texts need; see `neededWidth`. */
  readonly needOf: (column: number) => number;
  /** The width for labels and columns together. */
  readonly available: number;
}

export function sizesOf(input: SizeInput): Sizes {
  const { scene, arrangement } = input;
  const { style, table } = scene;
  const labelWidth = style.showRowLabels ? labelColumnWidth(input) : 0;
  const labelHeight = !style.showColLabels ? 0
    : arrangement.sizes.rows.get(-1) ?? Math.max(style.ColLabelHeight, textHeight(scene, table.columnLabels));
  const hasTitle = style.ShowColTitle && table.columnTitle !== "";
  const padding = paddingWithin(input, input.available - labelWidth);
  return {
    labelWidth,
    columnWidths: columnWidths(input, input.available - labelWidth, 2 * (cellPadding - padding)),
    padding,
    labelHeight,
    titleHeight: hasTitle ? Math.max(labelHeight || style.ColLabelHeight, textHeight(scene, [table.columnTitle])) : 0,
    rowHeight: rowHeights(scene, arrangement),
  };
}

/** As wide as the labels need; where columns share the width, no wider than they leave it. */
function labelColumnWidth({ scene, arrangement, measure, needOf, available }: SizeInput): number {
  const { style, table } = scene;
  const set = arrangement.sizes.columns.get(-1);
  if (set !== undefined) return set;
  const texts = style.ShowRowTitle ? [...table.rowLabels, table.rowTitle] : table.rowLabels;
  const need = widestOf(texts, true, measure) + labelIndent + signRoom(style, "rows");
  const left = style.AutoResize
    ? available - arrangement.columns.reduce((sum, column) => sum + needOf(column), 0) : available * mostLabels;
  return Math.max(style.RowLabelWidth, Math.min(need, widest, Math.max(left, available * leastLabels)));
}

function paddingWithin({ scene, arrangement, needOf }: SizeInput, available: number): number {
  const { columns } = arrangement;
  if (!scene.style.AutoResize || columns.length === 0) return cellPadding;
  const excess = columns.reduce((sum, column) => sum + needOf(column), -available);
  const less = Math.ceil(excess / columns.length / 2);
  return Math.min(Math.max(cellPadding - less, leastPadding), cellPadding);
}

/** `saved` is what a column does not need of its padding. */
function columnWidths({ scene, arrangement, needOf }: SizeInput, available: number, saved: number): number[] {
  const { style } = scene;
  const set = arrangement.columns.map((column) => arrangement.sizes.columns.get(column));
  const needs = arrangement.columns.map((column, position) => set[position] ?? needOf(column) - saved);
  const widths = style.AutoResize ? shared(needs, set, available) : needs.map((need) => Math.max(need, 0));
  const least = style.AutoResize ? 0 : style.DefaultColWidth;
  const settled = widths.map((width, position) => set[position] ?? Math.max(width, least));
  const { greatest } = extent(settled);
  return style.EqualCols ? settled.map(() => greatest) : settled;
}

/**
 * Widths that fill what is available: all alike as far as their needs allow, the needs where these do not fit. What
 * the reader has set stays.
 */
export function shared(needs: readonly number[], set: readonly (number | undefined)[], available: number): number[] {
  const open = needs.filter((_, position) => set[position] === undefined).sort((a, b) => b - a);
  let room = available - set.reduce<number>((sum, width) => sum + (width ?? 0), 0);
  // The widest needs are met first, while they are above an equal share of what is left.
  let count = open.length;
  for (const need of open) {
    if (need <= room / count) break;
    room -= need;
    count -= 1;
  }
  const share = count > 0 ? Math.floor(room / count) : 0;
  let spare = count > 0 ? room - share * count : 0;
  return needs.map((need, position) => {
    const width = set[position] ?? Math.max(need, share);
    if (set[position] !== undefined || width > share || spare < 1) return width;
    spare -= 1;
    return width + 1;
  });
}

/** The room that a column's texts need. A long text ends in an ellipsis; a number must not. */
export function neededWidth(scene: Scene, column: number, measure: Measure): number {
  const { style, table } = scene;
  const widthOf = (isNumber: boolean): number => widestOf(textsOf(scene, column, isNumber), false, measure);
  const label = style.showColLabels
    ? widestOf([table.columnLabels[column] ?? ""], true, measure) + signRoom(style, "columns") : 0;
  return Math.max(widthOf(true), Math.min(Math.max(widthOf(false), label, narrowest), widest));
}

/** What the cells of a column say: the numbers, or all others. */
export function textsOf({ table, format }: Scene, column: number, isNumber: boolean): string[] {
  return table.cells.flatMap((_, row) => {
    const { text, number } = cellAt(table, row, column);
    return (number !== null) === isNumber ? [format.text(text)] : [];
  });
}

/** The room of a cell for the widest of some texts. */
export function widestOf(texts: readonly string[], bold: boolean, measure: Measure): number {
  const lines = texts.some((text) => text.includes("\n")) ? texts.flatMap((text) => text.split("\n")) : texts;
  const longest = [...new Set(lines)].sort((a, b) => b.length - a.length).slice(0, measured);
  const most = longest.reduce((width, text) => Math.max(width, measure(text, bold)), 0);
  return Math.ceil(most) + 2 * cellPadding + 1;
}

function signRoom(style: Style, axis: Axis): number {
  return labelAction(style, axis) === "sort" ? signWidth : 0;
}

function rowHeights(scene: Scene, arrangement: Arrangement): (position: number) => number {
  const { style, table } = scene;
  const natural = (row: number): number => arrangement.sizes.rows.get(row) ?? Math.max(
    style.DefaultRowHeight,
    textHeight(scene, [table.rowLabels[row] ?? "", ...arrangement.columns.map((column) =>
      cellAt(table, row, column).text)]));
  if (!style.EqualRows) return (position) => natural(arrangement.rows[position] ?? 0);
  const height = arrangement.rows.reduce((most, row) => Math.max(most, natural(row)), 0);
  return () => height;
}

/** The height of the text with the most lines. */
function textHeight(scene: Scene, texts: readonly string[]): number {
  const lines = texts.reduce((most, text) => Math.max(most, text.includes("\n") ? text.split("\n").length : 1), 1);
  return Math.ceil(lines * scene.look.fontSize * lineHeight) + 4;
}

export const lineHeight = 1.25;
