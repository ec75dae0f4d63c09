// All that a grid's nodes are made from.
import type { Scene } from "../charts/chart.ts";
import type { Style } from "../settings/style.ts";
import type { Arrangement, Axis } from "./arrangement.ts";
import type { HeatScale } from "./heat.ts";
import type { Sizes } from "./sizes.ts";

export interface GridModel {
  readonly scene: Scene;
  readonly arrangement: Arrangement;
  readonly sizes: Sizes;
  /** For heat tables with numbers. */
  readonly heat: HeatScale | null;
  /** Columns that hold mostly numbers, by the table's count: their labels stand over the numbers' ends. */
  readonly numeric: ReadonlySet<number>;
  readonly selected: (row: number, column: number) => boolean;
}

/** A place on show, counted in the order that the reader sees; -1: the labels. */
export interface Position {
  readonly row: number;
  readonly column: number;
}

/** What a click on a label of an axis does. */
export type LabelAction = "nothing" | "select" | "sort";

const labelActions: readonly LabelAction[] = ["nothing", "select", "sort"];

const axisSettings = {
  rows: { click: "OnRowLabelClick", moveable: "moveableRows", resizable: "resizableRows", fixed: "FixedRows" },
  columns: { click: "OnColLabelClick", moveable: "moveableCols", resizable: "resizableCols", fixed: "FixedCols" },
} as const;

export function labelAction(style: Style, axis: Axis): LabelAction {
  return labelActions[style[axisSettings[axis].click]] ?? "nothing";
}

export function isMoveable(style: Style, axis: Axis): boolean {
  return style[axisSettings[axis].moveable];
}

export function isResizable(style: Style, axis: Axis): boolean {
  return style[axisSettings[axis].resizable];
}

export function fixedCount(style: Style, axis: Axis): number {
  return Math.max(style[axisSettings[axis].fixed], 0);
}

/** The types that are drawn as a table. */
export function isTable(type: number): boolean {
  return type === 9 || type === heatTable;
}

export const heatTable = 11;
