// Which of the types by number, `DiagramType`, are tables and no charts.

/** The type of a table. */
export const plainTable = 9;

/** The type of a table whose cells are coloured by their values. */
export const heatTable = 11;

/** The types that are drawn as a table. */
export function isTable(type: number): boolean {
  return type === plainTable || type === heatTable;
}
