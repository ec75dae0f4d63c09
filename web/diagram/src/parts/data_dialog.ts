// A chart's data as a table, in a window over the page.
import type { Scene } from "../charts/chart.ts";
import { mountGrid } from "../grid/grid.ts";
import type { PartHost } from "./part.ts";
import { partsStyle } from "./parts_style.ts";
import { adoptStyle } from "./style_sheet.ts";
import { textsFor } from "./texts.ts";

/** Shows the data of what is on show until the reader closes the window. */
export function showDataTable(host: PartHost): void {
  const texts = textsFor(host.element);
  adoptStyle(host.root, partsStyle);
  const dialog = document.createElement("dialog");
  dialog.className = "data-dialog";
  const box = document.createElement("div");
  box.className = "data-box";
  const title = document.createElement("h2");
  title.textContent = host.root.querySelector("[part~=caption]")?.textContent || texts("table");
  const close = document.createElement("button");
  close.type = "button";
  close.textContent = texts("close");
  close.addEventListener("click", () => dialog.close());
  const head = document.createElement("div");
  head.className = "data-head";
  head.append(title, close);
  dialog.append(head, box);
  dialog.setAttribute("aria-label", title.textContent);
  const { look } = host.scene();
  dialog.style.font = `${look.fontSize}px ${look.fontFamily}`;
  dialog.style.colorScheme = look.dark ? "dark" : "light";
  host.root.append(dialog);

  const scene = (): Scene => tableScene(host.scene());
  const nothing = (): void => {};
  const grid = mountGrid({
    element: host.element, root: host.root, drawing: box, scene,
    select: nothing, showSeries: nothing, highlight: nothing, command: nothing, redraw: nothing,
  });
  dialog.addEventListener("close", () => {
    grid.dispose();
    dialog.remove();
  });
  // In the window Escape does not leave the table alone.
  dialog.addEventListener("keydown", (event) => {
    if (event.key === "Escape") dialog.close();
  }, { capture: true });
  // Keys in the window are not keys of the chart behind it.
  dialog.addEventListener("keydown", (event) => event.stopPropagation());
  dialog.showModal();
  grid.update(scene());
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
