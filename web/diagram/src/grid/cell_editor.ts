// Typing into a cell.

/** Where the reader goes after typing. */
export type AfterEdit = "stay" | "down" | "next" | "previous";

export interface Editing {
  /** What stands in the box at first; null: the key that opens it writes into the empty box. */
  readonly text: string | null;
  /** What the box is called. */
  readonly label: string;
  /** Called once; `text` is null when the reader has given up. */
  readonly done: (text: string | null, after: AfterEdit) => void;
}

/** Puts a text box into a cell, in place of what it shows; the caller shows the cell again when it is done. */
export function editCell(cell: HTMLTableCellElement, editing: Editing): void {
  const box = document.createElement("input");
  box.className = "cell-box";
  box.value = editing.text ?? "";
  box.setAttribute("aria-label", editing.label);
  let open = true;
  const end = (text: string | null, after: AfterEdit): void => {
    if (!open) return;
    open = false;
    editing.done(text, after);
  };
  box.addEventListener("keydown", (event) => {
    event.stopPropagation();
    // While an input method composes, Enter and Escape are its own.
    if (event.isComposing || event.keyCode === 229) return;
    if (event.key === "Enter") end(box.value, "down");
    else if (event.key === "Tab") end(box.value, event.shiftKey ? "previous" : "next");
    else if (event.key === "Escape") end(null, "stay");
    else return;
    event.preventDefault();
  });
  for (const type of ["pointerdown", "click", "dblclick", "contextmenu"]) {
    box.addEventListener(type, (event) => event.stopPropagation());
  }
  box.addEventListener("blur", () => end(box.value, "stay"));
  cell.replaceChildren(box);
  box.focus();
  if (editing.text !== null) box.select();
}
