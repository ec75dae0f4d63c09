// The table as charts draw it: categories along the axis, series of points beside each other.
import type { Cell, Table } from "../data/table.ts";
import type { ValueFormat } from "../format/value_format.ts";
import { seriesColor } from "../look/shades.ts";
import type { CellPlace, Scene } from "./chart.ts";
import { oneLine, uniqueNames } from "./text.ts";

export interface Point {
  /** Row and column of the scene's table. */
  readonly cell: readonly [number, number];
  /** As it is shown. */
  readonly text: string;
  /** Null: a gap. */
  readonly value: number | null;
}

export interface Series {
  /** Unlike any other's; for the drawing library. */
  readonly name: string;
  readonly label: string;
  /** Its place in the table, for colours and patterns; stays when other series are not on show. */
  readonly index: number;
  readonly color: string;
  readonly points: readonly Point[];
}

export interface View {
  readonly categories: readonly string[];
  /** Heads the categories. */
  readonly categoryTitle: string;
  /** Heads the series. */
  readonly seriesTitle: string;
  readonly valueTitle: string;
  readonly series: readonly Series[];
  /** The labels of categories and of series are to be shown. */
  readonly showCategories: boolean;
  readonly showSeries: boolean;
}

/** The series on show: the table's columns, or the one that a tab has brought to the front. */
export function viewOf(scene: Scene): View {
  const view = allOf(scene, scene.table, (row, column) => [row, column]);
  const one = scene.series === null ? undefined : view.series[scene.series];
  return one ? { ...view, series: [one] } : view;
}

/** One row by itself: its cells are the categories of a lone series. */
export function rowView(scene: Scene, row: number): View {
  const { table } = scene;
  const turned: Table = {
    rowTitle: table.columnTitle,
    columnTitle: table.rowTitle,
    valueTitle: table.valueTitle,
    rowLabels: table.columnLabels,
    columnLabels: [table.rowLabels[row] ?? ""],
    cells: (table.cells[row] ?? []).map((cell) => [cell]),
  };
  const view = allOf(scene, turned, (column) => [row, column]);
  return { ...view, showCategories: scene.style.showColLabels, showSeries: scene.style.showRowLabels };
}

function allOf(scene: Scene, table: Table, placeOf: (row: number, column: number) => [number, number]): View {
  const { look, format, style } = scene;
  const labels = table.columnLabels.map(oneLine);
  const names = uniqueNames(labels);
  return {
    categories: table.rowLabels.map(oneLine),
    categoryTitle: style.ShowRowTitle ? oneLine(table.rowTitle) : "",
    seriesTitle: style.ShowColTitle ? oneLine(table.columnTitle) : "",
    valueTitle: style.ShowRowTitle ? oneLine(table.valueTitle) : "",
    series: labels.map((label, column) => ({
      name: names[column] ?? label,
      label,
      index: column,
      color: labels.length === 1 ? look.curve : seriesColor(look, column),
      points: table.cells.map((cells, row): Point => new CellPoint(placeOf(row, column), cells[column], format)),
    })),
    showCategories: style.showRowLabels,
    showSeries: style.showColLabels,
  };
}

class CellPoint implements Point {
  readonly cell: readonly [number, number];
  readonly value: number | null;
  private readonly raw: string;
  private readonly format: ValueFormat;

  constructor(place: readonly [number, number], cell: Cell | undefined, format: ValueFormat) {
    this.cell = place;
    this.value = plotted(cell?.number ?? null);
    this.raw = cell?.text ?? "";
    this.format = format;
  }

  // Worked out when it is asked for: few of ten thousand are.
  get text(): string {
    return oneLine(this.format.text(this.raw));
  }
}

// Beyond these an axis' arithmetic leaves the numbers that there are.
const largest = 1e150;
const least = 1e-150;

function plotted(value: number | null): number | null {
  if (value === null || Number.isNaN(value)) return null;
  return Math.abs(value) < least ? 0 : bounded(value);
}

/** The number, or the nearest that an axis can work with. */
export function bounded(value: number): number {
  return Math.min(Math.max(value, -largest), largest);
}

/** The values of a series that are none of its gaps. */
export function valuesOf(series: Series): number[] {
  return series.points.flatMap(({ value }) => value === null ? [] : [value]);
}

/** The row that `ShowSelectedRow` shows; -1: none. */
export function shownRow(scene: Scene): number {
  const place = scene.style.ShowSelectedRow && scene.selection.find(({ row }) => row >= 0);
  return place && place.row < scene.table.cells.length ? place.row : -1;
}

/** Each row's sum of sizes over all columns, on show or not: what shares are of. */
export function rowSums(table: Table): number[] {
  return table.cells.map((row) => row.reduce((sum, { number }) => sum + Math.abs(plotted(number) ?? 0), 0));
}

/** How a cell is marked as selected: outlined, or with its value beside it as well. */
export type Mark = "none" | "outline" | "value" | "chip";

/**
 * Tells each cell's mark. A selected cell has its value on a chip, those of the row that is to be shown plainly. A row
 * that is shown alone has no marks as a row.
 */
export function marksOf(scene: Scene, alone = -1): (row: number, column: number) => Mark {
  const shown = alone < 0 ? shownRow(scene) : -1;
  const has = (set: ReadonlySet<string>, place: CellPlace): boolean => set.has(`${place.row},${place.column}`);
  const places = new Set(scene.selection.map(({ row, column }) => `${row},${column}`));
  if (places.size === 0) return () => "none";
  return (row, column) => {
    if (has(places, { row, column })) return "chip";
    if (row === shown) return "value";
    return (row !== alone && has(places, { row, column: -1 })) || has(places, { row: -1, column }) ? "outline" : "none";
  };
}
