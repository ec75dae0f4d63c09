// Scenes for tests of charts.
import type { Scene } from "../src/charts/chart.ts";
import { tableOf } from "../src/data/table.ts";
import { numberReader, valueFormat } from "../src/format/value_format.ts";
import { plainReading, type Reading, settleLook } from "../src/look/theme.ts";
import { defaultStyle } from "../src/settings/read_style.ts";
import type { Style } from "../src/settings/style.ts";

/** Labels of columns, then rows that begin with their label. */
export type Cells = readonly (readonly (string | number)[])[];

export const quarters: Cells = [["North", "South"], ["Q1", 10, 30], ["Q2", 20, 20], ["Q3", 40, 10]];

/** A scene of this table: the style's defaults with some changed. */
export function sceneOf(
  cells: Cells,
  changed: Partial<Style> = {},
  others: Partial<Scene> = {},
  reading: Partial<Reading> = {},
): Scene {
  const style = { ...defaultStyle(), ...changed };
  const [columns = [], ...rows] = cells;
  const contents = {
    rowTitle: "Quarter",
    columnTitle: "Region",
    valueTitle: "Sales",
    rows: rows.map(([label]) => String(label)),
    columns: columns.map(String),
    values: rows.flatMap((row) => row.slice(1).map(String)),
  };
  const { RowSelection: row, ColSelection: column } = style;
  return {
    table: tableOf(contents, { transposed: style.IsTransposed, numberOf: numberReader(style) }),
    style,
    look: settleLook(style, { ...plainReading, ...reading }),
    format: valueFormat(style, ["en-US"]),
    width: 480,
    height: 320,
    selection: row >= 0 || column >= 0 ? [{ row, column }] : [],
    series: null,
    ...others,
  };
}
