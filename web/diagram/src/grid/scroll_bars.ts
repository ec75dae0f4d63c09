// The scroll bars of a table's box, by the policies of its style.
import type { Style } from "../settings/style.ts";

// By policy: as needed, always, never. Without a bar, wheels, fingers and keys scroll all the same.
const policies = ["auto", "scroll", "hidden"] as const;

/** How a box gets the bars of a style; `fit` again when it has another size. */
export class ScrollBars {
  private readonly scroller: HTMLElement;
  private hides: "both" | "x" | "y" | "none" = "none";

  /** `scroller` stands in a box that clips it. */
  constructor(scroller: HTMLElement) {
    this.scroller = scroller;
  }

  set(style: Style): void {
    const { scroller } = this;
    const x = policies[style.HScrollbarPolicy] ?? "auto";
    const y = policies[style.VScrollbarPolicy] ?? "auto";
    this.hides = x === y && x === "hidden" ? "both" : x === "hidden" ? "x" : y === "hidden" ? "y" : "none";
    scroller.style.scrollbarWidth = this.hides === "both" ? "none" : "thin";
    // A bar that is always there can be moved out of sight.
    const shown = (bar: string): string => (bar !== "hidden" ? bar : this.hides === "both" ? "auto" : "scroll");
    [scroller.style.overflowX, scroller.style.overflowY] = [shown(x), shown(y)];
    this.fit();
  }

  /** Moves the bar that is not to be seen over the edge of the clipping box: no style sheet hides one bar of two. */
  fit(): void {
    const { scroller, hides } = this;
    const [across, down] = [scroller.offsetHeight - scroller.clientHeight, scroller.offsetWidth - scroller.clientWidth];
    scroller.style.marginBlockEnd = hides === "x" ? `${-across}px` : "";
    scroller.style.marginInlineEnd = hides === "y" ? `${-down}px` : "";
  }
}
