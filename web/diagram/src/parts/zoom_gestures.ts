// What a reader does with wheel, pointer and fingers to look closer at a chart. All else is left to the page: a plain
// wheel, and one finger on a chart that shows all, scroll it.
import type { Range } from "../charts/chart.ts";
import type { PlotArea } from "./plot_area.ts";

/** What gestures work upon. Shares are of the plot's x axis, from its low end. */
export interface Zoomable {
  readonly part: Range | null;
  readonly area: PlotArea | null;
  /** Shows a part as long as `length`, with what was at `anchor` of the whole axis now at `share` of the plot. */
  show(anchor: number, share: number, length: number): void;
  showAll(): void;
}

// A notch of a wheel is 100 pixels or 3 lines; a trackpad's pinch sends small ones, as Ctrl and wheel.
const perPixel = 0.003;
const pixelsOf: Readonly<Record<number, number>> = { 0: 1, 1: 33, 2: 300 };
/** How far a pressed pointer may move and still click, in pixels. */
export const clickRoom = 4;
// Turns that follow so soon belong to one movement, also when there is nothing left to do for them.
const sameTurn = 400;

/** Listens in the box of a drawing until it is told to stop. */
export class ZoomGestures {
  private readonly box: HTMLElement;
  private readonly zoom: Zoomable;
  private readonly ended = new AbortController();
  private turned: Turn | null = null;
  private ofDrag: AbortController | null = null;

  constructor(box: HTMLElement, zoom: Zoomable) {
    this.box = box;
    this.zoom = zoom;
    const { signal } = this.ended;
    box.addEventListener("wheel", (event) => this.turn(event), { signal, passive: false });
    box.addEventListener("pointerdown", (event) => this.press(event), { signal });
    box.addEventListener("touchstart", (event) => this.pinch(event), { signal, passive: false });
    box.addEventListener("dblclick", (event) => {
      if (this.zoom.part && this.shareAt(event) !== null) this.zoom.showAll();
    }, { signal });
  }

  stop(): void {
    this.ofDrag?.abort();
    this.ended.abort();
  }

  private turn(event: WheelEvent): void {
    if (!event.ctrlKey && !event.metaKey) return;
    const share = this.shareAt(event);
    if (share === null) return;
    const isOurs = this.zoom.part !== null || event.deltaY < 0 || event.timeStamp - (this.turned?.at ?? 0) < sameTurn;
    if (!isOurs) return;
    event.preventDefault();
    // What is under the pointer stays there, also when axes with other labels have another length.
    const isSame = this.turned?.x === event.clientX && this.turned.y === event.clientY
      && event.timeStamp - this.turned.at < sameTurn;
    const anchor = isSame && this.turned ? this.turned.anchor : this.anchorAt(share);
    this.turned = { x: event.clientX, y: event.clientY, at: event.timeStamp, anchor };
    const pixels = Math.min(Math.max(event.deltaY * (pixelsOf[event.deltaMode] ?? 1), -150), 150);
    // The small steps of a pinch have to add up to as much as fingers move.
    const factor = Math.exp(pixels * (Math.abs(pixels) < 20 ? perPixel * 4 : perPixel));
    this.zoom.show(anchor, share, this.length * factor);
  }

  private press(event: PointerEvent): void {
    if (!this.zoom.part || event.button !== 0 || !event.isPrimary || this.ofDrag) return;
    const share = this.shareAt(event);
    if (share === null) return;
    const anchor = this.anchorAt(share);
    const { clientX, clientY } = event;
    let isMoving = false;
    this.follow([window], ["pointerup", "pointercancel"], {
      pointermove: (move) => {
        isMoving ||= Math.hypot(move.clientX - clientX, move.clientY - clientY) > clickRoom;
        if (!isMoving) return;
        this.box.classList.add("panning");
        this.zoom.show(anchor, this.shareAt(move, Infinity) ?? share, this.length);
      },
      // The drawing is not to follow the pointer with its tooltip meanwhile.
      mousemove: (move) => { if (isMoving) move.stopPropagation(); },
      touchmove: (move) => { if (isMoving) move.stopPropagation(); },
    });
  }

  private pinch(event: TouchEvent): void {
    const [one, other] = event.touches;
    if (event.touches.length !== 2 || !one || !other) return;
    const share = this.shareAt(middleOf(one, other));
    if (share === null) return;
    event.preventDefault();
    this.ofDrag?.abort();
    const anchor = this.anchorAt(share);
    const [before, length] = [distanceOf(one, other), this.length];
    // Fingers keep to what they came down on, also when the drawing has taken it away: nothing else hears of them.
    this.follow([one.target, other.target], ["touchend", "touchcancel"], {
      touchmove: (move) => {
        const [first, second] = move.touches;
        if (!first || !second) return;
        move.stopPropagation();
        const to = this.shareAt(middleOf(first, second), Infinity) ?? share;
        this.zoom.show(anchor, to, (length * before) / Math.max(distanceOf(first, second), 1));
      },
    });
  }

  // Wherever the pointer goes, until it or a finger is lifted.
  private follow(targets: readonly EventTarget[], ends: readonly string[], moves: Moves): void {
    const drag = new AbortController();
    this.ofDrag = drag;
    const options = { capture: true, signal: drag.signal };
    for (const target of targets) {
      for (const [type, move] of Object.entries(moves)) target.addEventListener(type, move as EventListener, options);
      for (const type of ends) target.addEventListener(type, () => drag.abort(), options);
    }
    drag.signal.addEventListener("abort", () => {
      this.box.classList.remove("panning");
      this.ofDrag = null;
    });
  }

  private get length(): number {
    const [start, end] = this.zoom.part ?? [0, 1];
    return end - start;
  }

  private anchorAt(share: number): number {
    return (this.zoom.part?.[0] ?? 0) + share * this.length;
  }

  // Null outside of the plot.
  private shareAt({ clientX, clientY }: Pick<MouseEvent, "clientX" | "clientY">, margin = 0): number | null {
    const { left, top } = this.box.getBoundingClientRect();
    const [x, y] = [clientX - left, clientY - top];
    const { area } = this.zoom;
    return area?.holds(x, y, margin) ? area.shareAt(x, y) : null;
  }
}

/** The last turn of a wheel: where the pointer was, when, and what was under it. */
interface Turn {
  readonly x: number;
  readonly y: number;
  readonly at: number;
  readonly anchor: number;
}

/** What a drag listens to. */
type Moves = { readonly [type in "pointermove" | "mousemove" | "touchmove"]?: (event: WindowEventMap[type]) => void };

type Touching = Pick<Touch, "clientX" | "clientY">;

function middleOf(one: Touching, other: Touching): Touching {
  return { clientX: (one.clientX + other.clientX) / 2, clientY: (one.clientY + other.clientY) / 2 };
}

function distanceOf(one: Touching, other: Touching): number {
  return Math.hypot(one.clientX - other.clientX, one.clientY - other.clientY);
}
