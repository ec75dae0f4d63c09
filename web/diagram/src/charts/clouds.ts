// The points of scatter and bubble charts: pairs of values of a row, in clouds of one colour.
import type { Scene } from "./chart.ts";
import type { Point, Series } from "./view.ts";

/** Points of one colour. */
export interface Cloud {
  /** Names the points; its values are those of y. */
  readonly series: Series;
  readonly dots: readonly Dot[];
}

export interface Dot {
  readonly point: Point;
  readonly x: number;
  readonly y: number;
  /** Of its circle, in pixels. */
  readonly diameter: number;
  /** What the tooltip says: names and values. */
  readonly figures: () => readonly (readonly [string, string])[];
}

/** Where the numbers of a cloud stand in the table. */
export interface Columns {
  /** Null: the row's number. */
  readonly x: Series | null;
  readonly y: Series;
  readonly size: Series | null;
}

/** Rows with a gap have no dot. */
export function dotsOf(
  scene: Scene,
  columns: Columns & { readonly xName: string },
  diameterOf: (size: number | null) => number,
): Dot[] {
  const { x: xs, y: ys, size: sizes } = columns;
  const rowNumber = rowNumberText(scene);
  return ys.points.flatMap((point, row): Dot[] => {
    const x = xs ? xs.points[row]?.value ?? null : row + 1;
    if (x === null || point.value === null) return [];
    const figures = (): [string, string][] => [
      [columns.xName || "x", xs ? xs.points[row]?.text ?? "" : rowNumber(row + 1)],
      [ys.label || "y", point.text],
      ...(sizes ? [[sizes.label, sizes.points[row]?.text ?? ""] as [string, string]] : []),
    ];
    return [{ point, x, y: point.value, diameter: diameterOf(sizes?.points[row]?.value ?? null), figures }];
  });
}

/** Writes the number of a row as an x: as the values, unless these are dates. */
export function rowNumberText({ format }: Scene): (value: number) => string {
  return format.hasDates ? String : format.number;
}
