// Looking closer along the x axis of a chart: how much of it is on show, keys, and the button that shows all again.
import type { Range } from "../charts/chart.ts";
import { announce } from "../host/announcer.ts";
import type { PartHost } from "../host/part.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import type { PlotArea } from "./plot_area.ts";
import { ZoomGestures, type Zoomable } from "./zoom_gestures.ts";
import { zoomStyle } from "./zoom_style.ts";

// With fewer values there is nothing that could be seen better.
const fewest = 12;
// A closer look ends at as many.
const leastShown = 4;
const keyFactor = 0.5;

/** What a zoom needs to know of what is drawn, and how it asks for a new drawing. */
export interface ZoomHost {
  readonly host: PartHost;
  /** The box of the drawing. */
  readonly box: HTMLElement;
  area(): PlotArea | null;
  /** Where the walked value stands, as a share of the whole x axis; null: nowhere. */
  walked(): number | null;
  /** Says what is on show. */
  describe(): string;
  /** The part on show is another one. */
  changed(): void;
}

/** The zoom of one drawing. */
export class Zoom implements Zoomable {
  private readonly on: ZoomHost;
  private readonly button = document.createElement("button");
  private gestures: ZoomGestures | null = null;
  private shown: Range | null = null;
  private least = 1;

  constructor(on: ZoomHost) {
    this.on = on;
    adoptStyle(on.host.root, zoomStyle);
    this.button.type = "button";
    this.button.className = "show-all";
    this.button.setAttribute("part", "show-all");
    this.button.addEventListener("click", () => this.showAll());
    on.host.root.addEventListener("keydown", this.onKey, { capture: true });
  }

  /** Shares of the whole axis; null: all is on show. */
  get part(): Range | null {
    return this.shown;
  }

  get area(): PlotArea | null {
    return this.on.area();
  }

  /** A chart of so many values along its x axis is on show: with few of them it shows all, and stays so. */
  setCount(count: number): void {
    this.least = count < fewest ? 1 : leastShown / count;
    if (this.least === 1) this.shown = null;
    if (this.least < 1) this.gestures ??= new ZoomGestures(this.on.box, this);
    else this.stopGestures();
    this.on.box.classList.toggle("zoomable", this.least < 1);
  }

  /** What is on show is another chart: it shows all. */
  forget(): void {
    this.shown = null;
  }

  show(anchor: number, share: number, length: number): void {
    const before = this.shown;
    const size = Math.min(Math.max(length, this.least), 1);
    const start = Math.min(Math.max(anchor - share * size, 0), 1 - size);
    this.shown = size > 0.999 ? null : [start, start + size];
    if (this.shown?.[0] !== before?.[0] || this.shown?.[1] !== before?.[1]) this.on.changed();
  }

  showAll(): void {
    if (!this.shown) return;
    this.shown = null;
    this.on.changed();
  }

  /** Brings a place of the axis into view. True if another part is on show now. */
  bringIntoView(place: number): boolean {
    if (!this.shown) return false;
    const [start, end] = this.shown;
    const room = (end - start) * 0.05;
    if (place >= start && place <= end) return false;
    const from = place < start ? place - room : place + room - (end - start);
    const first = Math.min(Math.max(from, 0), 1 - (end - start));
    this.shown = [first, first + end - start];
    return true;
  }

  /** Puts the button where the plot is now. */
  placeButton(isRotated: boolean): void {
    const { host, box } = this.on;
    box.classList.toggle("zoomed", this.shown !== null);
    box.classList.toggle("upright", isRotated);
    const { area } = this;
    if (!this.shown || !area) {
      const hadFocus = host.root.activeElement === this.button;
      this.button.remove();
      if (hadFocus) host.root.querySelector<HTMLElement>(".walker")?.focus();
      return;
    }
    this.button.textContent = textsFor(host.element)("showAll");
    const [outer, inner] = [host.element.getBoundingClientRect(), box.getBoundingClientRect()];
    // The corner at the right is the menu's.
    const right = Math.max(outer.right - inner.left - area.box.x - area.box.width + 4, 40);
    this.button.style.right = `${right}px`;
    this.button.style.top = `${inner.top - outer.top + area.box.y + 4}px`;
    if (!this.button.isConnected) host.root.append(this.button);
  }

  dispose(): void {
    this.stopGestures();
    this.button.remove();
    this.on.host.root.removeEventListener("keydown", this.onKey, { capture: true });
  }

  private stopGestures(): void {
    this.gestures?.stop();
    this.gestures = null;
  }

  // Before the walker, which would leave the chart at Escape.
  private readonly onKey = (event: Event): void => {
    const { key, ctrlKey, metaKey, altKey, target } = event as KeyboardEvent;
    const isWalker = target instanceof HTMLElement && target.className === "walker";
    if (!isWalker || this.least === 1 || ctrlKey || metaKey || altKey) return;
    const keys: Readonly<Record<string, () => void>> = {
      "+": () => this.zoomBy(keyFactor),
      "=": () => this.zoomBy(keyFactor),
      "-": () => this.zoomBy(1 / keyFactor),
      "0": () => this.showAll(),
      ...(this.shown ? { Escape: () => this.showAll() } : {}),
    };
    const act = keys[key];
    if (!act) return;
    act();
    announce(this.on.host.root, this.on.describe());
    event.preventDefault();
    event.stopPropagation();
  };

  private zoomBy(factor: number): void {
    const [start, end] = this.shown ?? [0, 1];
    const middle = this.on.walked() ?? (start + end) / 2;
    this.show(middle, (middle - start) / (end - start), (end - start) * factor);
  }
}
