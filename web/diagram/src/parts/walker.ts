// A chart by the keyboard: one stop of the Tab key, arrows from value to value, and words for the ear.
import type { CellPlace, Scene } from "../charts/chart.ts";
import { isTable } from "../grid/model.ts";
import { announce } from "./announcer.ts";
import { describePicture, figureName, undescribePicture } from "./figure.ts";
import { cellName } from "./names.ts";
import type { Part, PartHost } from "./part.ts";
import { partsStyle } from "./parts_style.ts";
import { selectionByClick, selectionTest } from "./selection.ts";
import { adoptStyle } from "./style_sheet.ts";
import { textsFor } from "./texts.ts";
import { stepInChart } from "./walk.ts";

/** What of a chart has the keyboard, while the scene is a chart; tables have keys of their own. */
export function mountWalker(host: PartHost): Part {
  adoptStyle(host.root, partsStyle);
  const walker = new Walker(host);
  return {
    update: (scene) => walker.update(scene),
    dispose: () => walker.dispose(),
  };
}

class Walker {
  private readonly host: PartHost;
  private readonly node = document.createElement("div");
  private at: CellPlace | null = null;
  // Where ranges of selected cells begin.
  private anchor: CellPlace | null = null;

  constructor(host: PartHost) {
    this.host = host;
    this.node.className = "walker";
    // The keys are the chart's, also while a screen reader has its own for reading pages.
    this.node.setAttribute("role", "application");
    this.node.tabIndex = 0;
    this.node.addEventListener("keydown", (event) => this.onKey(event));
    this.node.addEventListener("blur", () => host.highlight(null));
    // Screen readers heed a live region only if it was there before its text.
    announce(host.root, "");
  }

  update(scene: Scene): void {
    const { host, node } = this;
    if (isTable(scene.style.DiagramType)) {
      node.remove();
      undescribePicture(host.drawing);
      return;
    }
    const texts = textsFor(host.element);
    node.setAttribute("aria-roledescription", texts("chart"));
    node.setAttribute("aria-label", `${figureName(host.element)}. ${texts("walk")}.`);
    describePicture(host);
    // Behind the drawing: what is over it would hide it from tools that look at contrasts, and from pointers.
    if (!node.isConnected) host.root.prepend(node);
    if (this.at && !scene.table.cells[this.at.row]?.[this.at.column]) this.at = null;
    // A drawing that is new has forgotten its mark.
    if (this.at && host.root.activeElement === node) host.highlight(this.at);
  }

  dispose(): void {
    this.node.remove();
  }

  private onKey(event: KeyboardEvent): void {
    if (event.isComposing || event.altKey) return;
    const scene = this.host.scene();
    if (event.key === "Escape") this.leave();
    else if (event.key === "Enter" || event.key === " ") this.select(scene, event);
    else {
      const to = stepInChart(scene, this.at, event.key);
      if (!to) return;
      this.goTo(scene, to);
    }
    event.preventDefault();
  }

  private goTo(scene: Scene, to: CellPlace): void {
    this.at = to;
    this.host.highlight(to);
    announce(this.host.root, cellName(scene, to, textsFor(this.host.element)));
  }

  private leave(): void {
    this.at = null;
    this.host.highlight(null);
    this.node.blur();
  }

  private select(scene: Scene, keys: KeyboardEvent): void {
    if (!this.at) return;
    const at = this.at;
    const after = selectionByClick(scene, at, keys, this.anchor);
    if (!after) return;
    this.anchor = after.anchor;
    this.host.select([...after.cells]);
    const texts = textsFor(this.host.element);
    const selected = selectionTest(after.cells)(at.row, at.column);
    announce(this.host.root, `${cellName(scene, at, texts)}, ${texts(selected ? "selected" : "notSelected")}`);
  }
}
