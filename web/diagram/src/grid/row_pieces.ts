// Works through the rows of a table a piece at a time, so that a large one does not hold up the page.

// The first piece fills the box of a table; what a reader scrolls to comes after it.
const cellsAtOnce = 1000;

export class RowPieces {
  private timer: number | undefined;
  private next = 0;
  private total = 0;
  private work: (from: number, to: number) => void = () => {};
  private rowsAtOnce = 1;

  /** Has `work` done for the rows from one position up to another: the first ones now, the others as there is time. */
  start(total: number, cellsInRow: number, work: (from: number, to: number) => void): void {
    this.stop();
    [this.total, this.work, this.next] = [total, work, 0];
    this.rowsAtOnce = Math.max(Math.ceil(cellsAtOnce / Math.max(cellsInRow, 1)), 1);
    this.step();
  }

  /** Does what is still to do. */
  finish(): void {
    while (this.next < this.total) this.doPiece();
    clearTimeout(this.timer);
  }

  /** Leaves the rest undone. */
  stop(): void {
    clearTimeout(this.timer);
    this.next = this.total;
  }

  private step(): void {
    this.doPiece();
    if (this.next < this.total) this.timer = window.setTimeout(() => this.step());
  }

  private doPiece(): void {
    const from = this.next;
    this.next = Math.min(from + this.rowsAtOnce, this.total);
    this.work(from, this.next);
    // Each piece makes the browser lay the table out anew; larger ones later keep that linear.
    this.rowsAtOnce *= 2;
  }
}
