// Types by number, `DiagramType`, that more than one drawing depends on; and which are tables and no charts.

/** The type of a pie, whose legend names rows. */
export const pie = 4;

/** The type of a table. */
export const plainTable = 9;

/** The type of a table whose cells are coloured by their values. */
export const heatTable = 11;

/** The types that are drawn as a table. */
export function isTable(type: number): boolean {
  return type === plainTable || type === heatTable;
}
