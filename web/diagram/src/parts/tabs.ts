// The tabs of a chart: all series, or one of them.
import type { Scene } from "../charts/chart.ts";
import { dotColumnsOf } from "../charts/dot_columns.ts";
import type { Table } from "../data/table.ts";
import { columnName } from "../host/names.ts";
import type { Part, PartHost } from "../host/part.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import { isTable } from "../settings/diagram_types.ts";
import type { Style } from "../settings/style.ts";
import { partsStyle } from "./parts_style.ts";

// By TabStyle: where the tabs stand.
const places = [null, "above", "below"] as const;

/** The row of tabs above or below the drawing, while the scene has one. */
export function mountTabs(host: PartHost): Part {
  adoptStyle(host.root, partsStyle);
  const list = document.createElement("div");
  list.setAttribute("part", "tabs");
  list.setAttribute("role", "tablist");
  list.className = "tabs";
  list.addEventListener("keydown", (event) => {
    const to = tabAfter(event, list);
    if (!to) return;
    event.preventDefault();
    event.stopPropagation();
    to.click();
    to.focus();
  });
  let shown = "";
  return {
    update(scene: Scene): void {
      const place = places[scene.style.TabStyle];
      const series = seriesWithTabs(scene.style, scene.table);
      if (!place || series.length === 0) {
        list.remove();
        shown = "";
        return;
      }
      put(list, place, host.drawing);
      list.classList.toggle("tabs-below", place === "below");
      const texts = textsFor(host.element);
      list.setAttribute("aria-label", texts("series"));
      const captions = [texts("all"), ...series.map((column) => columnName(scene, column, texts))];
      // New tabs only for new captions, or the focus would be lost.
      if (shown !== JSON.stringify(captions)) {
        shown = JSON.stringify(captions);
        list.replaceChildren(...captions.map((caption, index) =>
          tabNode(caption, () => host.showSeries(series[index - 1] ?? null))));
      }
      const chosen = scene.series === null ? 0 : series.indexOf(scene.series) + 1;
      [...list.children].forEach((tab, index) => choose(tab as HTMLElement, index === chosen));
    },
    dispose: () => list.remove(),
  };
}

/** Puts the tabs beside the drawing. Where they are already they stay: a move would take the focus from them. */
function put(list: HTMLElement, place: "above" | "below", drawing: HTMLElement): void {
  const isAbove = place === "above";
  const isBefore = (drawing.compareDocumentPosition(list) & Node.DOCUMENT_POSITION_PRECEDING) !== 0;
  if (list.parentNode === drawing.parentNode && isBefore === isAbove) return;
  if (isAbove) drawing.before(list);
  else drawing.after(list);
}

/** The columns that have a tab of their own: none without tabs, which a lone series has not. */
export function seriesWithTabs(style: Style, table: Table): readonly number[] {
  if (!places[style.TabStyle]) return [];
  const series = seriesOf(style, table);
  return series.length > 1 ? series : [];
}

/** The columns that can stand alone: not those that are x values of others. */
function seriesOf(style: Style, table: Table): number[] {
  const all = table.columnLabels.map((_, column) => column);
  if (isTable(style.DiagramType)) return [];
  return dotColumnsOf(style.DiagramType, all.length)?.map(({ y }) => y) ?? all;
}

function tabNode(caption: string, show: () => void): HTMLElement {
  const tab = document.createElement("button");
  tab.type = "button";
  tab.className = "tab";
  tab.setAttribute("part", "tab");
  tab.setAttribute("role", "tab");
  tab.textContent = caption;
  tab.addEventListener("click", show);
  return tab;
}

function choose(tab: HTMLElement, chosen: boolean): void {
  tab.setAttribute("aria-selected", String(chosen));
  tab.tabIndex = chosen ? 0 : -1;
}

function tabAfter({ key, target }: KeyboardEvent, list: HTMLElement): HTMLElement | undefined {
  const tabs = [...list.children] as HTMLElement[];
  const at = tabs.findIndex((tab) => tab === target);
  const mirrored = getComputedStyle(list).direction === "rtl";
  const forward = mirrored ? -1 : 1;
  const steps: Record<string, number> = { ArrowRight: at + forward, ArrowLeft: at - forward, Home: 0, End: -1 };
  const to = steps[key];
  return to === undefined ? undefined : tabs[(to + tabs.length) % tabs.length];
}
