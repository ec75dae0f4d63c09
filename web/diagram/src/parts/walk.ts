// From value to value of a chart by keys: along the axis of its categories, and from series to series. In a histogram
// the places are its buckets: there a place's row is a bucket, counted from 0. Dots are walked by their y values.
import { bucketCountsOf, isHistogram } from "../charts/bucket_counts.ts";
import { bucketCount } from "../charts/buckets.ts";
import type { CellPlace, Scene } from "../charts/chart.ts";
import { type DotColumns, dotColumnsOf } from "../charts/dot_columns.ts";
import { cellName, columnName, rowName, valueName } from "../host/names.ts";
import type { Texts } from "../host/texts.ts";

type Way = readonly ["row" | "column", "first" | "last" | -1 | 1];

const ways: Record<string, Way> = {
  ArrowRight: ["row", 1],
  ArrowLeft: ["row", -1],
  Home: ["row", "first"],
  End: ["row", "last"],
  ArrowDown: ["column", 1],
  ArrowUp: ["column", -1],
  PageUp: ["column", "first"],
  PageDown: ["column", "last"],
};

// In a chart with a reversed x axis the first category is at the right, or below.
const mirrored: Record<string, string> = { ArrowRight: "ArrowLeft", ArrowLeft: "ArrowRight", Home: "End", End: "Home" };

// In a rotated chart the categories stand one above the other, and the series of each of them beside it.
const turned: Record<string, string> = {
  ArrowRight: "ArrowDown", ArrowLeft: "ArrowUp", ArrowDown: "ArrowRight", ArrowUp: "ArrowLeft",
  Home: "PageUp", End: "PageDown", PageUp: "Home", PageDown: "End",
};

/** Where a key goes from a cell, or from nowhere yet; null if the key means nothing here. */
export function stepInChart(scene: Scene, at: CellPlace | null, key: string): CellPlace | null {
  const { IsRotated, Reverse, DiagramType } = scene.style;
  const upright = IsRotated ? turned[key] ?? "" : key;
  // A histogram's buckets grow upward when they stand; categories read downward.
  const isMirrored = ((Reverse & 1) === 1) !== (IsRotated && isHistogram(DiagramType));
  const way = ways[isMirrored ? mirrored[upright] ?? upright : upright];
  const rows = rowCount(scene);
  const columns = scene.series === null ? walkedColumns(scene) : [scene.series];
  const [first] = columns;
  if (!way || rows === 0 || first === undefined) return null;
  if (!at) return { row: 0, column: first };
  const [axis, step] = way;
  if (axis === "column") {
    return { ...at, column: columns[placeAfter(columns.indexOf(at.column), step, columns.length)] ?? first };
  }
  // A tab may have taken the series away meanwhile.
  return { row: placeAfter(at.row, step, rows), column: columns.includes(at.column) ? at.column : first };
}

/** Whether the place is still in the chart. */
export function isInChart(scene: Scene, { row, column }: CellPlace): boolean {
  return row < rowCount(scene) && walkedColumns(scene).includes(column);
}

/**
 * A place for the ear: row, column and value; the row and all values of a dot; a bucket's range, how many values it
 * holds, and whose they are.
 */
export function placeName(scene: Scene, place: CellPlace, texts: Texts): string {
  const { style: { DiagramType }, table } = scene;
  if (isHistogram(DiagramType)) return bucketName(scene, place, texts);
  const dot = dotColumnsOf(DiagramType, table.columnLabels.length)?.find(({ y }) => y === place.column);
  return dot ? dotName(scene, place.row, dot, texts) : cellName(scene, place, texts);
}

function dotName(scene: Scene, row: number, { x, y, size }: DotColumns, texts: Texts): string {
  const value = (column: number): string =>
    `${columnName(scene, column, texts)}: ${valueName(scene, { row, column }, texts)}`;
  const columns = [x, y, size].flatMap((column) => (column === null ? [] : [column]));
  return [rowName(scene, row, texts), ...columns.map(value)].join(", ");
}

function bucketName(scene: Scene, { row: bucket, column }: CellPlace, texts: Texts): string {
  const { buckets, counted, isCumulative, edgeText } = bucketCountsOf(scene);
  const one = counted.find(({ series }) => series.index === column);
  const count = one?.counts[bucket] ?? 0;
  const [from, to] = [buckets.edges[bucket] ?? 0, buckets.edges[bucket + 1] ?? 0].map(edgeText);
  const range = isCumulative ? texts("upTo", to ?? "") : texts("range", from ?? "", to ?? "");
  const values = count === 0 ? texts("noValue") : count === 1 ? texts("oneValue") : texts("values", count);
  const share = isCumulative && one && one.values.length > 0
    ? ` (${scene.format.share(count / one.values.length)})` : "";
  const isNamed = scene.table.columnLabels.length > 1 || (one?.series.label ?? "") !== "";
  return `${range}: ${values}${share}${isNamed ? `, ${columnName(scene, column, texts)}` : ""}`;
}

function rowCount({ style, table }: Scene): number {
  return isHistogram(style.DiagramType) && table.cells.length > 0 ? bucketCount(style.BucketCount) : table.cells.length;
}

/** The table's columns that the keys stop at. */
function walkedColumns({ style, table }: Scene): readonly number[] {
  const count = table.columnLabels.length;
  return dotColumnsOf(style.DiagramType, count)?.map(({ y }) => y) ?? [...table.columnLabels.keys()];
}

function placeAfter(from: number, step: Way[1], count: number): number {
  if (step === "first") return 0;
  return step === "last" ? count - 1 : Math.min(Math.max(from + step, 0), count - 1);
}
