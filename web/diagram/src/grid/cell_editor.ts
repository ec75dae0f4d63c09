// Typing into a cell.

/** Where the reader goes after typing. */
export type AfterEdit = "stay" | "down" | "next" | "previous";

export interface Editing {
  /** What stands in the box at first; null: the key that opens it writes into the empty box. */
  readonly text: string | null;
  /** What the box is called. */
  readonly label: string;
  /** Called once; `text` is null when the reader has given up. The box may still be in its cell. */
  readonly done: (text: string | null, after: AfterEdit) => void;
}

/** A text box in a cell, in place of what the cell shows; whoever opens it shows the cell again when it is done. */
export class CellEditor {
  private readonly box = document.createElement("input");
  private readonly editing: Editing;
  // Out of the table while that is made anew, or done with.
  private lifted = false;
  private caret: readonly [number, number] = [0, 0];

  constructor(cell: HTMLTableCellElement, editing: Editing) {
    this.editing = editing;
    const { box } = this;
    box.className = "cell-box";
    box.value = editing.text ?? "";
    box.setAttribute("aria-label", editing.label);
    box.addEventListener("keydown", (event) => this.onKey(event));
    for (const type of ["pointerdown", "click", "dblclick", "contextmenu", "copy"]) {
      box.addEventListener(type, (event) => event.stopPropagation());
    }
    box.addEventListener("blur", () => this.end(box.value, "stay"));
    cell.replaceChildren(box);
    box.focus();
    if (editing.text !== null) box.select();
  }

  /** Takes the box out of its cell: it keeps its text, and losing the focus by that does not end the typing. */
  lift(): void {
    const { box } = this;
    this.caret = [box.selectionStart ?? 0, box.selectionEnd ?? 0];
    this.lifted = true;
    box.remove();
  }

  /** The typing goes on in another cell's node. */
  putInto(cell: HTMLTableCellElement): void {
    cell.replaceChildren(this.box);
    this.lifted = false;
    this.box.focus({ preventScroll: true });
    this.box.setSelectionRange(...this.caret);
  }

  private onKey(event: KeyboardEvent): void {
    event.stopPropagation();
    // While an input method composes, Enter and Escape are its own.
    if (event.isComposing || event.keyCode === 229) return;
    const { value } = this.box;
    if (event.key === "Enter") this.end(value, "down");
    else if (event.key === "Tab") this.end(value, event.shiftKey ? "previous" : "next");
    else if (event.key === "Escape") this.end(null, "stay");
    else return;
    event.preventDefault();
  }

  private end(text: string | null, after: AfterEdit): void {
    if (this.lifted) return;
    this.lifted = true;
    this.editing.done(text, after);
  }
}
