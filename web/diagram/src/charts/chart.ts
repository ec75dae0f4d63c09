// What a type of chart is: it makes the drawing library's option from a scene.
import type { EChartsCoreOption } from "echarts/core";

import type { Table } from "../data/table.ts";
import type { ValueFormat } from "../format/value_format.ts";
import type { Look } from "../look/look.ts";
import type { Style } from "../settings/style.ts";

/** A row and a column of the scene's table, each from 0; -1: none. */
export interface CellPlace {
  readonly row: number;
  readonly column: number;
}

/** All that a drawing depends on. The same scene gives the same drawing, in a browser and without one. */
export interface Scene {
  readonly table: Table;
  readonly style: Style;
  readonly look: Look;
  readonly format: ValueFormat;
  /** Of the drawing, in pixels. */
  readonly width: number;
  readonly height: number;
  /** What is selected: whole rows have column -1, whole columns have row -1. */
  readonly selection: readonly CellPlace[];
  /** The one series that a tab has brought to the front, or null for all. */
  readonly series: number | null;
}

/** From one end of an axis to the other. */
export type Range = readonly [from: number, to: number];

/** A part of the x axis. The y axes stay as they are where all is on show. */
export interface CloseUp {
  /** Shares of the whole axis, from its low end. */
  readonly part: Range;
  /** It is about to be another one: what only serves those who point at values is left out. */
  readonly isMoving: boolean;
  readonly along: Range;
  readonly ups: readonly Range[];
}

/** Where values stand in a drawing with axes, in pixels; "along" is the x axis, "up" a y axis, wherever they lie. */
export interface Plane {
  /** How long the x axis is. */
  readonly length: number;
  /** The place of a number or, from 0, of a category among those on show. */
  along(value: number): number;
  up(value: number, axis: number): number;
  /** The reader has not hidden the series of this name. */
  isShown(name: string): boolean;
}

/** A place in a plane, in pixels. */
export interface Spot {
  readonly along: number;
  readonly up: number;
}

/** Finds what stands where in a chart with axes whose values are cells. */
export interface Places {
  /** How many values stand along the x axis. */
  readonly count: number;
  /** The ends of an x axis of categories, half a one before the first and behind the last; null: it has numbers. */
  readonly range: Range | null;
  /** The cell at a place, or nearest to it within some pixels. */
  cellAt(spot: Spot, plane: Plane): CellPlace | null;
  /** Where a cell stands along the whole x axis; null for a gap. */
  alongOf(cell: CellPlace): number | null;
  /** The option that draws a part of the chart. */
  closer(closeUp: CloseUp): EChartsCoreOption;
}

/**
 * Makes a chart's option. Every item of every series' `data` that stands for a cell is an object with
 * `cell: [row, column]`, so that clicks and keys find it; those of histograms, for keys alone, have
 * `bucket: [bucket, column]`. Charts with axes tell their `Places` under `places`, which the library does not heed,
 * and series of items without a shape each have `isDense`.
 */
export type BuildOption = (scene: Scene) => EChartsCoreOption;
