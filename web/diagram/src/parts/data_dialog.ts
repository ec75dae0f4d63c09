// A chart's data as a table, in a window over the page.
import type { Scene } from "../charts/chart.ts";
import { mountGrid } from "../grid/grid.ts";
import { announce } from "../host/announcer.ts";
import type { Part, PartHost } from "../host/part.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import { partsStyle } from "./parts_style.ts";

// What happens in the window is the window's: the chart behind it would take it for its own.
const ownEvents = ["keydown", "pointerdown", "contextmenu"] as const;

/** Shows the data of what is on show until the reader closes the window, or the drawing goes. */
export function showDataTable(host: PartHost): void {
  adoptStyle(host.root, partsStyle);
  const dialog = document.createElement("dialog");
  dialog.className = "data-dialog";
  const box = document.createElement("div");
  box.className = "data-box";
  const title = document.createElement("h2");
  dialog.append(headOf(host, dialog, title), box);
  host.root.append(dialog);
  const grid = mountGrid({ ...gridHost(host), drawing: box });
  const part: Part = {
    update(scene) {
      const { look } = scene;
      title.textContent = host.root.querySelector("[part~=caption]")?.textContent || textsFor(host.element)("table");
      dialog.setAttribute("aria-label", title.textContent);
      dialog.style.font = `${look.fontSize}px ${look.fontFamily}`;
      dialog.style.colorScheme = look.dark ? "dark" : "light";
      grid.update(tableScene(scene));
    },
    dispose() {
      grid.dispose();
      dialog.remove();
    },
  };
  const leave = host.join(part);
  dialog.addEventListener("close", () => {
    leave();
    part.dispose();
  });
  // In the window Escape does not leave the table alone.
  dialog.addEventListener("keydown", (event) => {
    if (event.key === "Escape") dialog.close();
  }, { capture: true });
  for (const type of ownEvents) dialog.addEventListener(type, (event) => event.stopPropagation());
  dialog.showModal();
  part.update(host.scene());
  // Screen readers heed a live region only if it was there before its text.
  announce(host.root, "");
}

function headOf(host: PartHost, dialog: HTMLDialogElement, title: HTMLElement): HTMLElement {
  const close = document.createElement("button");
  close.type = "button";
  close.textContent = textsFor(host.element)("close");
  close.addEventListener("click", () => dialog.close());
  const head = document.createElement("div");
  head.className = "data-head";
  head.append(title, close);
  return head;
}

/** What the table in the window can do of the chart: look at its data. */
function gridHost(host: PartHost): PartHost {
  const { element, root, drawing, name } = host;
  const nothing = (): void => {};
  return {
    element, root, drawing, name, scene: () => tableScene(host.scene()),
    get isPrinting() { return host.isPrinting; },
    select: nothing, type: nothing, showSeries: nothing, highlight: nothing, command: nothing, redraw: nothing, join: () => nothing,
    withAll: (act) => act(),
  };
}

/** The same data as a plain table that can be sorted. */
function tableScene(scene: Scene): Scene {
  const style = {
    ...scene.style, DiagramType: 9, SelectionMode: 0, IsEditable: false, OnRowLabelClick: 0, OnColLabelClick: 2,
    FixedRows: 0, FixedCols: 0, showRowLabels: true, showColLabels: true, ShowRowTitle: true, ShowColTitle: true,
    AutoResize: true, DefaultRowHeight: 26, ColLabelHeight: 28, VScrollbarPolicy: 0, HScrollbarPolicy: 0,
  };
  return { ...scene, style, selection: [] };
}
