// The keys of a table.
import type { Axis } from "./arrangement.ts";
import type { Position } from "./model.ts";

/** What a key can ask of the grid. */
export interface KeyTarget {
  /** How many rows and columns there are, and where the labels begin: -1 where labels are on show, else 0. */
  extent(): { rows: number; columns: number; firstRow: number; firstColumn: number };
  active(): Position;
  goTo(position: Position): void;
  /** Selects, sorts, or edits: what a click would do. */
  operate(event: KeyboardEvent): void;
  /** Goes to a place, and selects all from where the last selection began, or else from the place that it leaves. */
  extendTo(position: Position): void;
  /** Moves the active row or column by one place; false where readers may not. */
  move(axis: Axis, step: -1 | 1): boolean;
  /** Makes the active row or column larger or smaller; false where readers may not. */
  resize(axis: Axis, step: -1 | 1): boolean;
  /** Opens the active cell for typing, with its text or, as a first letter does, empty; false where nobody may type. */
  edit(keepsText: boolean): boolean;
  clear(): boolean;
  leave(): void;
}

const arrows: Record<string, readonly [Axis, -1 | 1]> = {
  ArrowUp: ["rows", -1], ArrowDown: ["rows", 1], ArrowLeft: ["columns", -1], ArrowRight: ["columns", 1],
};

/** Does what a key says; true if it says something. `mirrored`: the page is read from right to left. */
export function pressKey(target: KeyTarget, event: KeyboardEvent, mirrored: boolean): boolean {
  const arrow = arrows[event.key];
  if (arrow) return pressArrow(target, event, arrow[0], mirrored && arrow[0] === "columns" ? flip(arrow[1]) : arrow[1]);
  if (event.altKey || (event.metaKey && event.key !== "Enter")) return false;
  const { row, column } = target.active();
  const { rows, columns } = target.extent();
  switch (event.key) {
    case "Home": target.goTo({ row: event.ctrlKey ? 0 : row, column: 0 }); return true;
    case "End": target.goTo({ row: event.ctrlKey ? rows - 1 : row, column: columns - 1 }); return true;
    case "PageUp": target.goTo({ row: 0, column }); return true;
    case "PageDown": target.goTo({ row: rows - 1, column }); return true;
    case "Enter": return operate(target, event);
    case " ": return operate(target, event);
    case "F2": return target.edit(true);
    case "Delete": case "Backspace": return target.clear();
    case "Escape": target.leave(); return true;
    default: return startTyping(target, event);
  }
}

function operate(target: KeyTarget, event: KeyboardEvent): true {
  target.operate(event);
  return true;
}

/** A letter opens the cell; the key itself must go on into the box, so it is not ours. */
function startTyping(target: KeyTarget, event: KeyboardEvent): false {
  const types = !event.ctrlKey && ([...event.key].length === 1 || event.key === "Process");
  if (types) target.edit(false);
  return false;
}

function pressArrow(target: KeyTarget, event: KeyboardEvent, axis: Axis, step: -1 | 1): boolean {
  // Where nothing may be moved these are the browser's own keys, as that for the page before.
  if (event.altKey) return event.shiftKey ? target.resize(axis, step) : target.move(axis, step);
  const to = stepped(target, axis, step, event.ctrlKey || event.metaKey);
  if (event.shiftKey) target.extendTo(to);
  else target.goTo(to);
  return true;
}

function stepped(target: KeyTarget, axis: Axis, step: -1 | 1, toEnd: boolean): Position {
  const { row, column } = target.active();
  const { rows, columns, firstRow, firstColumn } = target.extent();
  const [from, first, last] = axis === "rows" ? [row, firstRow, rows - 1] : [column, firstColumn, columns - 1];
  const end = step < 0 ? Math.min(from, 0) : last;
  // There is no cell in the corner.
  const lowest = (axis === "rows" ? column : row) < 0 ? 0 : first;
  const to = Math.min(Math.max(toEnd ? end : from + step, lowest), last);
  return axis === "rows" ? { row: to, column } : { row, column: to };
}

function flip(step: -1 | 1): -1 | 1 {
  return step === 1 ? -1 : 1;
}
