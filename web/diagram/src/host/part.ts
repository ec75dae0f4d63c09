// The pieces that an element is put together from: stage, grid, tabs, menu, keys.
import type { CellPlace, Scene } from "../charts/chart.ts";
import type { MenuItem } from "../settings/menu.ts";

/** A piece of one element. It lives from its mount to `dispose`, which takes its nodes and listeners away. */
export interface Part {
  /** Shows another scene; called in each drawing. */
  update(scene: Scene): void;
  dispose(): void;
}

/** What the element gives its parts. */
export interface PartHost {
  readonly element: HTMLElement;
  readonly root: ShadowRoot;
  /** The box of the drawing: a chart's picture, or a table's grid. */
  readonly drawing: HTMLElement;
  /** What the chart is called for screen readers. */
  readonly name: string;
  /** What is drawn now is for paper. */
  readonly isPrinting: boolean;
  /** What is on show now, with what is selected by now. */
  scene(): Scene;
  /** The reader has selected these cells: draws them so and fires plexoras-select. */
  select(cells: CellPlace[]): void;
  /** The reader has typed a text into a cell: from now on the scene's table says it. */
  type(cell: CellPlace, text: string): void;
  /** Brings one series to the front, or all with null. */
  showSeries(series: number | null): void;
  /** Marks a cell in the drawing, as under the pointer; null: none. */
  highlight(cell: CellPlace | null): void;
  /** Lets something be done while all of the chart is on show, however closely the reader looks at it. */
  withAll<T>(act: () => T): T;
  /** Fires plexoras-command, and runs the command if it is one of ours and nobody has cancelled it. */
  command(item: MenuItem): void;
  /** Draws again in the next frame. */
  redraw(): void;
  /** Takes a part that has come after the drawing, to go with it at the latest; gives what lets it go before. */
  join(part: Part): () => void;
}
