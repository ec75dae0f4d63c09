// What readers type into a table's cells: from then on it is what the table says. Nothing of it is saved.
import { sameTable, type Table } from "./table.ts";

/** The cells of one element that a reader has typed into. They stay as long as the data that they belong to. */
export class TypedCells {
  private published: Table | null = null;
  private shown: Table | null = null;
  private numberOf: (text: string) => number | null = () => null;
  private readonly texts = new Map<string, { readonly row: number; readonly column: number; readonly text: string }>();

  /** Takes the data as published, and gives them with what has been typed into them. */
  publish(table: Table, numberOf: (text: string) => number | null): Table {
    if (!this.published || !sameTable(this.published, table)) this.texts.clear();
    this.published = this.shown = table;
    this.numberOf = numberOf;
    if (this.texts.size === 0) return table;
    const cells = table.cells.map((row) => [...row]);
    for (const { row, column, text } of this.texts.values()) {
      cells[row]?.splice(column, 1, { text, number: numberOf(text) });
    }
    return this.shown = { ...table, cells };
  }

  /** Takes a text typed into a cell, and gives the table with it; null where there is no such cell. */
  put(row: number, column: number, text: string): Table | null {
    const { shown } = this;
    if (!shown?.cells[row]?.[column]) return null;
    this.texts.set(`${row} ${column}`, { row, column, text });
    const typed = { text, number: this.numberOf(text) };
    const cells = shown.cells.map((line, index) =>
      (index === row ? line.map((cell, place) => (place === column ? typed : cell)) : line));
    return this.shown = { ...shown, cells };
  }

  /** Nothing has been typed. */
  forget(): void {
    this.texts.clear();
    this.published = this.shown = null;
  }
}
