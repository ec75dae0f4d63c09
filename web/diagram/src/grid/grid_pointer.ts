// Dragging labels with the pointer: their edges for sizes, the labels themselves for places.
import type { Axis } from "./arrangement.ts";
import type { Position } from "./model.ts";

/** What dragging can ask of the grid. */
export interface DragTarget {
  readonly table: HTMLTableElement;
  positionAt(node: EventTarget | null): Position | null;
  cellAt(position: Position): HTMLTableCellElement | undefined;
  allows(what: "move" | "resize", axis: Axis): boolean;
  /** The place of a row or column on show goes to another one. */
  moveTo(axis: Axis, from: number, to: number): void;
  /** `position` is -1 for the labels themselves. */
  resizeTo(axis: Axis, position: number, size: number): void;
  /** The size that fits what stands there. */
  fit(axis: Axis, position: number): void;
}

// How near to an edge, in pixels, the pointer takes hold of it; how far it goes before a press becomes a drag.
const edgeReach = 5;
const dragStart = 6;

/** The end of a row or column, or with position -1 that of the labels. */
interface Edge {
  readonly axis: Axis;
  readonly position: number;
}

/** Listens on the table until `signal` says to stop. A drag takes the click that follows it away. */
export function listenForDrags(target: DragTarget, signal: AbortSignal): void {
  const { table } = target;
  table.addEventListener("pointerdown", (event) => {
    if (event.button !== 0 || !event.isPrimary) return;
    const edge = edgeAt(target, event);
    if (edge) dragEdge(target, edge, event);
    else startMove(target, event);
  }, { signal });
  table.addEventListener("pointermove", (event) => {
    if (event.buttons > 0) return;
    const axis = edgeAt(target, event)?.axis ?? "";
    if ((table.dataset.edge ?? "") !== axis) table.dataset.edge = axis;
  }, { signal });
  table.addEventListener("dblclick", (event) => {
    const edge = edgeAt(target, event);
    if (edge) target.fit(edge.axis, edge.position);
  }, { signal });
}

/** The edge of a label under the pointer, if it may be dragged. Over all else nothing is measured. */
function edgeAt(target: DragTarget, event: MouseEvent): Edge | null {
  const cell = target.positionAt(event.target);
  if (!cell || (cell.row >= 0 && cell.column >= 0)) return null;
  const axis: Axis = cell.row < 0 ? "columns" : "rows";
  const node = target.allows("resize", axis) && target.cellAt(cell);
  if (!node) return null;
  const box = node.getBoundingClientRect();
  const [fromStart, fromEnd] = axis === "columns"
    ? [event.clientX - box.left, box.right - event.clientX] : [event.clientY - box.top, box.bottom - event.clientY];
  const isMirrored = axis === "columns" && isFromRight(target.table);
  const position = axis === "columns" ? cell.column : cell.row;
  if ((isMirrored ? fromStart : fromEnd) < edgeReach) return { axis, position };
  const isBefore = (isMirrored ? fromEnd : fromStart) < edgeReach;
  return isBefore && labelOf(target, axis, position - 1) ? { axis, position: position - 1 } : null;
}

function labelOf(target: DragTarget, axis: Axis, position: number): HTMLTableCellElement | undefined {
  return target.cellAt(axis === "columns" ? { row: -1, column: position } : { row: position, column: -1 });
}

function isFromRight(table: HTMLTableElement): boolean {
  return getComputedStyle(table).direction === "rtl";
}

function dragEdge(target: DragTarget, edge: Edge, down: PointerEvent): void {
  down.preventDefault();
  const { axis, position } = edge;
  const box = labelOf(target, axis, position)?.getBoundingClientRect();
  const size = (axis === "columns" ? box?.width : box?.height) ?? 0;
  const direction = axis === "columns" && isFromRight(target.table) ? -1 : 1;
  follow(target.table, down, {
    move: (event) => {
      const way = axis === "columns" ? event.clientX - down.clientX : event.clientY - down.clientY;
      target.resizeTo(axis, position, size + direction * way);
    },
    end: (event) => suppressClick(target.table, event),
  });
}

function startMove(target: DragTarget, down: PointerEvent): void {
  const cell = target.positionAt(down.target);
  if (!cell || (cell.row >= 0 && cell.column >= 0)) return;
  const axis: Axis = cell.row < 0 ? "columns" : "rows";
  if (!target.allows("move", axis)) return;
  const from = axis === "columns" ? cell.column : cell.row;
  const label = target.cellAt(cell);
  let goal: { to: number; node: Element } | null = null;
  let dragging = false;
  const unmark = (): void => goal?.node.removeAttribute("data-drop");
  follow(target.table, down, {
    move: (event) => {
      dragging ||= Math.hypot(event.clientX - down.clientX, event.clientY - down.clientY) > dragStart;
      if (!dragging) return;
      label?.setAttribute("data-dragged", "");
      unmark();
      goal = goalAt(target, axis, event);
      goal?.node.setAttribute("data-drop", `${axis} ${goal.to > from ? "after" : "before"}`);
    },
    end: (event) => {
      label?.removeAttribute("data-dragged");
      unmark();
      if (dragging) suppressClick(target.table, event);
      if (dragging && goal && goal.to !== from && event.type === "pointerup") target.moveTo(axis, from, goal.to);
    },
  });
}

/** The label under the pointer, seen along the axis alone: the pointer may have left the row of labels. */
function goalAt(target: DragTarget, axis: Axis, event: PointerEvent): { to: number; node: Element } | null {
  const root = target.table.getRootNode() as Document | ShadowRoot;
  const under = target.positionAt(root.elementFromPoint(event.clientX, event.clientY));
  const to = axis === "columns" ? under?.column ?? -1 : under?.row ?? -1;
  const node = labelOf(target, axis, to);
  return to >= 0 && node ? { to, node } : null;
}

/** Follows the pointer that went down, wherever it goes, until it is let go. */
function follow(
  node: HTMLElement, down: PointerEvent, on: { move(event: PointerEvent): void; end(event: PointerEvent): void },
): void {
  const watch = new AbortController();
  const mine = (act: (event: PointerEvent) => void) => (event: PointerEvent) => {
    if (event.pointerId === down.pointerId) act(event);
  };
  const end = mine((event) => {
    watch.abort();
    on.end(event);
  });
  const view = node.ownerDocument.defaultView ?? window;
  view.addEventListener("pointermove", mine(on.move), { signal: watch.signal });
  view.addEventListener("pointerup", end, { signal: watch.signal });
  view.addEventListener("pointercancel", end, { signal: watch.signal });
}

function suppressClick(node: HTMLElement, event: Event): void {
  if (event.type !== "pointerup") return;
  const swallow = (click: Event): void => {
    click.stopImmediatePropagation();
    click.preventDefault();
  };
  node.addEventListener("click", swallow, { capture: true, once: true });
  // Where no click follows, because the pointer is elsewhere by then, the next one is a real one again.
  setTimeout(() => node.removeEventListener("click", swallow, true));
}
