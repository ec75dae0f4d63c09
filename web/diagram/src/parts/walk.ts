// From value to value of a chart by keys: along the axis of its categories, and from series to series.
import type { CellPlace, Scene } from "../charts/chart.ts";

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
  const upright = scene.style.IsRotated ? turned[key] ?? "" : key;
  const way = ways[(scene.style.Reverse & 1) === 1 ? mirrored[upright] ?? upright : upright];
  const rows = scene.table.cells.map((_, row) => row);
  const columns = scene.series === null ? scene.table.columnLabels.map((_, column) => column) : [scene.series];
  const start = { row: rows[0], column: columns[0] };
  if (!way || start.row === undefined || start.column === undefined) return null;
  if (!at) return { row: start.row, column: start.column };
  const [axis, step] = way;
  // A tab may have taken the series away meanwhile.
  const here = { ...at, column: columns.includes(at.column) ? at.column : start.column };
  const to = placeAfter(axis === "row" ? rows : columns, here[axis], step);
  return { ...here, [axis]: to ?? here[axis] };
}

function placeAfter(places: readonly number[], from: number, step: Way[1]): number | undefined {
  if (step === "first") return places[0];
  const last = places.length - 1;
  return places[step === "last" ? last : Math.min(Math.max(places.indexOf(from) + step, 0), last)];
}
