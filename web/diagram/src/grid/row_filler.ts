// Fills a table with rows a piece at a time, so that a large one does not hold up the page.

// The first piece fills the box of a table; what a reader scrolls to comes after it.
const cellsAtOnce = 1000;

export class RowFiller {
  private timer: number | undefined;
  private next = 0;
  private total = 0;
  private body: HTMLTableSectionElement | null = null;
  private make: (position: number) => HTMLTableRowElement = () => document.createElement("tr");
  private rowsAtOnce = 1;

  /** Fills the body with `total` rows: the first ones now, the others as soon as the page has been drawn. */
  start(
    body: HTMLTableSectionElement, total: number, cellsInRow: number, make: (position: number) => HTMLTableRowElement,
  ): void {
    this.stop();
    [this.body, this.total, this.make, this.next] = [body, total, make, 0];
    this.rowsAtOnce = Math.max(Math.ceil(cellsAtOnce / Math.max(cellsInRow, 1)), 1);
    body.replaceChildren();
    this.step();
  }

  /** Makes the rows that are still missing. */
  finish(): void {
    while (this.next < this.total) this.fill();
    this.stop();
  }

  stop(): void {
    clearTimeout(this.timer);
    this.timer = undefined;
  }

  private step(): void {
    this.fill();
    if (this.next < this.total) this.timer = window.setTimeout(() => this.step());
  }

  private fill(): void {
    const end = Math.min(this.next + this.rowsAtOnce, this.total);
    const rows: HTMLTableRowElement[] = [];
    while (this.next < end) rows.push(this.make(this.next++));
    this.body?.append(...rows);
    // Each piece makes the browser lay the table out anew; larger ones later keep that linear.
    this.rowsAtOnce *= 2;
  }
}
