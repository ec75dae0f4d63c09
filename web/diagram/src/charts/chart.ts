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

/**
 * Makes a chart's option. Every item of every series' `data` that stands for a cell is an object with
 * `cell: [row, column]`, so that clicks and keys find it.
 */
export type BuildOption = (scene: Scene) => EChartsCoreOption;
