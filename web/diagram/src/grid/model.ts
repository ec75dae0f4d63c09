// All that a table's nodes, or its picture, are made from: every decision about its look that hangs on more than one
// cell.
import type { Scene } from "../charts/chart.ts";
import type { Cell } from "../data/table.ts";
import { selectionTest } from "../host/selection.ts";
import { heatTable } from "../settings/diagram_types.ts";
import type { Style } from "../settings/style.ts";
import { type Arrangement, type Axis, cellAt } from "./arrangement.ts";
import { readableOn } from "../look/colours.ts";
import { type HeatScale, heatScale } from "./heat.ts";
import { hasLongWord } from "./paper_words.ts";
import type { Sizes } from "./sizes.ts";

export interface GridModel {
  readonly scene: Scene;
  readonly arrangement: Arrangement;
  readonly sizes: Sizes;
  /** For heat tables with numbers. */
  readonly heat: HeatScale | null;
  /** Columns that hold mostly numbers, by the table's count: their labels stand over the numbers' ends. */
  readonly numeric: ReadonlySet<number>;
  /** The colour of negative values' texts where no heat colours them. */
  readonly negative: string;
  readonly selected: (row: number, column: number) => boolean;
}

/** What a scene comes to with what the reader has done to the table. */
export function modelOf(scene: Scene, arrangement: Arrangement, sizes: Sizes): GridModel {
  const { style, look, selection } = scene;
  return {
    scene,
    arrangement,
    sizes,
    heat: style.DiagramType === heatTable ? heatScale(scene.table, look) : null,
    numeric: numericColumns(scene),
    negative: look.negative === null ? look.plotText : readableOn(look.plotGround, look.negative),
    selected: selectionTest(selection),
  };
}

/** How a cell shows by itself, selected or not. */
export interface CellLook {
  readonly text: string;
  /** It stands at the right, as numbers do. */
  readonly isNumber: boolean;
  readonly isNegative: boolean;
  /** On paper its lines may break anywhere. */
  readonly isLong: boolean;
  /** The heat's colours; null where it has none. */
  readonly heat: { readonly ground: string; readonly text: string } | null;
}

/** The look of a cell; row and column by the table's count. */
export function cellLook(model: GridModel, row: number, column: number): CellLook {
  const { scene, heat, numeric } = model;
  const cell = cellAt(scene.table, row, column);
  const { number } = cell;
  const text = scene.format.text(cell.text);
  return {
    text,
    isNumber: number !== null || numeric.has(column),
    isNegative: number !== null && number < 0,
    isLong: number === null && hasLongWord(text, numeric.has(column)),
    heat: number === null ? null : heat?.coloursOf(number) ?? null,
  };
}

/** The columns that hold more numbers than texts. */
function numericColumns({ table }: Scene): Set<number> {
  const weight = (cell: Cell): number => (cell.number !== null ? 1 : cell.text.trim() !== "" ? -1 : 0);
  const isNumeric = (column: number): boolean =>
    table.cells.reduce((lead, _, row) => lead + weight(cellAt(table, row, column)), 0) > 0;
  return new Set(table.columnLabels.map((_, column) => column).filter(isNumeric));
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

// No screen has room for more; each that stays costs the browser something at every movement.
const mostKept = 250;

/** How many rows or columns can stay in view. */
export function keptCount(model: GridModel, axis: Axis): number {
  return Math.min(fixedCount(model, axis), mostKept);
}

/** How many rows or columns are to stay in view, of those that there are. */
export function fixedCount({ scene, arrangement }: Pick<GridModel, "scene" | "arrangement">, axis: Axis): number {
  return Math.min(Math.max(scene.style[axisSettings[axis].fixed], 0), arrangement[axis].length);
}
