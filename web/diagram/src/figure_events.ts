// What an element tells its page (docs/element.md, "Events").
import type { CellPlace } from "./charts/chart.ts";
import type { Table } from "./data/table.ts";
import type { ValueFormat } from "./format/value_format.ts";
import type { MenuItem } from "./settings/menu.ts";
import { SettingError } from "./settings/setting_error.ts";

/** The events of one element, which live as long as it. */
export class FigureEvents {
  private readonly element: HTMLElement;
  private isReady = false;
  // What has failed last and is not mended yet.
  private failure = "";

  constructor(element: HTMLElement) {
    this.element = element;
  }

  /** A drawing of this type is done; the page hears of the first one. */
  drawn(type: number): void {
    this.failure = "";
    if (this.isReady) return;
    this.isReady = true;
    this.fire("plexoras-ready", { type });
  }

  /** The settings are others: what fails now is new, even in the same words. */
  settingsChanged(): void {
    this.failure = "";
  }

  /** Nothing can be drawn. The same failure is told once: a listener may try something, and fail. */
  failed(problem: unknown): void {
    const setting = problem instanceof SettingError ? problem.setting : "";
    const failure = `${setting}: ${messageOf(problem)}`;
    if (failure === this.failure) return;
    this.failure = failure;
    this.report(problem, setting);
  }

  /** Something has failed, and what is drawn stays. */
  report(problem: unknown, setting: string): void {
    const message = messageOf(problem);
    console.error(`plexoras-diagram${this.element.id && `#${this.element.id}`}: ${message}`);
    this.fire("plexoras-error", { message, setting });
  }

  /** False when a listener has cancelled the command. */
  command({ type, param, caption }: MenuItem): boolean {
    return this.fire("plexoras-command", { type, param, caption }, true);
  }

  /** The reader has selected these cells of a table. */
  selected(selection: readonly CellPlace[], table: Table, format: ValueFormat): void {
    const cells = selection.map(({ row, column }) => ({ row, column }));
    const { row, column } = cells[cells.length - 1] ?? { row: -1, column: -1 };
    const cell = table.cells[row]?.[column];
    this.fire("plexoras-select", {
      row,
      column,
      rowLabel: table.rowLabels[row] ?? "",
      columnLabel: table.columnLabels[column] ?? "",
      value: cell?.number ?? null,
      text: cell ? format.text(cell.text) : "",
      cells,
    });
  }

  private fire(type: string, detail: object, cancelable = false): boolean {
    return this.element.dispatchEvent(new CustomEvent(type, { bubbles: true, composed: true, cancelable, detail }));
  }
}

function messageOf(problem: unknown): string {
  return problem instanceof Error ? problem.message : String(problem);
}
