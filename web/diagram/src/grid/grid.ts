// Tables and heat tables: the diagram types that are an HTML table and no picture.
import type { Scene } from "../charts/chart.ts";
import type { Part, PartHost } from "../host/part.ts";
import { GridView } from "./grid_view.ts";
import { isTable } from "../settings/diagram_types.ts";

/** A table in the host's drawing box, while the scene is one; nothing there otherwise. */
export function mountGrid(host: PartHost): Part {
  let view: GridView | null = null;
  const dispose = (): void => {
    view?.dispose();
    view = null;
  };
  return {
    update(scene: Scene): void {
      if (!isTable(scene.style.DiagramType)) return dispose();
      view ??= new GridView(host);
      view.show(scene);
    },
    dispose,
  };
}
