// What pies are made of.
import type { Scene } from "./chart.ts";
import type { Box } from "./frame.ts";
import type { Mark, Series } from "./view.ts";

/** A slice of every pie: a row. */
export interface Slice {
  /** Unlike any other's. */
  readonly name: string;
  readonly label: string;
  readonly color: string;
  readonly index: number;
}

/** A pie, and its place. */
export interface Pie {
  readonly series: Series;
  readonly box: Box;
}

/** What pies of one chart have alike. */
export interface UnlabelledPies {
  readonly scene: Scene;
  readonly slices: readonly Slice[];
  readonly pies: readonly Pie[];
  /** Slices say their names themselves: no legend does. */
  readonly hasNames: boolean;
  readonly mark: (row: number, column: number) => Mark;
}

/** The same, once the texts around them have been measured. */
export interface Pies extends UnlabelledPies {
  /** In pixels. */
  readonly widestLabel: number;
}

/** Of more slices no legend could be read; they are one series. */
export const mostNamedSlices = 80;

/** The size that a slice stands for: a negative value takes as much room as a positive one. */
export function sizeOf(series: Series, slice: Slice): number {
  return Math.abs(series.points[slice.index]?.value ?? 0);
}
