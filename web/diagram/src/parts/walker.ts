// A chart by the keyboard: one stop of the Tab key, arrows from value to value, and words for the ear.
import { isHistogram } from "../charts/bucket_counts.ts";
import type { CellPlace, Scene } from "../charts/chart.ts";
import { announce } from "../host/announcer.ts";
import type { Part, PartHost } from "../host/part.ts";
import { selectionByClick, selectionTest } from "../host/selection.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import { isTable } from "../settings/diagram_types.ts";
import { partsStyle } from "./parts_style.ts";
import { isInChart, placeName, stepInChart } from "./walk.ts";

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
      return;
    }
    const texts = textsFor(host.element);
    node.setAttribute("aria-roledescription", texts("chart"));
    node.setAttribute("aria-label", `${host.name}. ${texts("walk")}.`);
    this.put();
    if (this.at && !isInChart(scene, this.at)) this.at = null;
    // A drawing that is new has forgotten its mark.
    if (this.at && host.root.activeElement === node) host.highlight(this.at);
  }

  dispose(): void {
    this.node.remove();
  }

  // Before the drawing, and so behind tabs above it and ahead of those below: in the order of what readers see.
  private put(): void {
    const { host, node } = this;
    if (node.nextSibling === host.drawing) return;
    const hasFocus = host.root.activeElement === node;
    host.drawing.before(node);
    if (hasFocus) node.focus();
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
    announce(this.host.root, placeName(scene, to, textsFor(this.host.element)));
  }

  private leave(): void {
    this.at = null;
    this.host.highlight(null);
    this.node.blur();
  }

  private select(scene: Scene, keys: KeyboardEvent): void {
    // Buckets are no cells: there is nothing to select.
    if (!this.at || isHistogram(scene.style.DiagramType)) return;
    const at = this.at;
    const after = selectionByClick(scene, at, keys, this.anchor);
    if (!after) return;
    this.anchor = after.anchor;
    this.host.select([...after.cells]);
    const texts = textsFor(this.host.element);
    const selected = selectionTest(after.cells)(at.row, at.column);
    announce(this.host.root, `${placeName(scene, at, texts)}, ${texts(selected ? "selected" : "notSelected")}`);
  }
}
