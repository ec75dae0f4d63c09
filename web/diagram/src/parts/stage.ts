// Where charts are drawn: the drawing library's instance in the box of an element.
import type { EChartsCoreOption } from "echarts/core";

import type { CellPlace, Scene } from "../charts/chart.ts";
import { buildOption } from "../charts/index.ts";
import type { EChartsType } from "../charts/library.ts";
import { init } from "../charts/library.ts";
import { isTable } from "../grid/model.ts";
import { SettingError } from "../settings/setting_error.ts";
import type { Part, PartHost } from "./part.ts";
import { selectionByClick } from "./selection.ts";

/** Gets the option of each drawing and may give another one in its place. */
export type OptionHook = (option: EChartsCoreOption) => EChartsCoreOption | undefined | void;

export interface Stage extends Part {
  /** Marks a cell as under the pointer, with its tooltip; null: none. */
  highlight(cell: CellPlace | null): void;
}

/** Draws each scene that is a chart; there is nothing here for tables. `hook` gives the page's own. */
export function mountStage(host: PartHost, hook: () => OptionHook | null): Stage {
  let drawn: Drawn | null = null;
  const dispose = (): void => {
    drawn?.dispose();
    drawn = null;
  };
  return {
    update(scene: Scene): void {
      if (isTable(scene.style.DiagramType)) return dispose();
      drawn ??= new Drawn(host);
      drawn.show(scene, hook());
    },
    highlight: (cell) => drawn?.highlight(cell),
    dispose,
  };
}

interface LegendOption {
  readonly selected?: Record<string, boolean>;
}

interface Item {
  readonly seriesIndex: number;
  readonly dataIndex: number;
}

class Drawn {
  private readonly host: PartHost;
  private readonly box: HTMLElement;
  private readonly chart: EChartsType;
  private option: EChartsCoreOption = {};
  private width = 0;
  private height = 0;
  private isFirst = true;
  /** What the reader has hidden and shown by the legend. */
  private legend: Record<string, boolean> = {};
  private anchor: CellPlace | null = null;
  private marked: Item | null = null;

  constructor(host: PartHost) {
    this.host = host;
    this.box = document.createElement("div");
    this.box.className = "stage";
    host.drawing.append(this.box);
    const { width, height } = host.scene();
    [this.width, this.height] = [width, height];
    this.chart = init(this.box, null, { renderer: "svg", width, height });
    this.chart.on("rendered", () => this.setViewBox());
    this.chart.on("legendselectchanged", (event) => {
      this.legend = (event as { selected: Record<string, boolean> }).selected;
    });
    this.chart.on("click", (event) => this.click(event.data, event.event?.event));
  }

  show(scene: Scene, hook: OptionHook | null): void {
    if (scene.width !== this.width || scene.height !== this.height) {
      [this.width, this.height] = [scene.width, scene.height];
      this.chart.resize({ width: this.width, height: this.height, silent: true });
    }
    const own = this.keptFromBefore(buildOption(scene));
    this.option = withTextTooltip(hooked(own, hook));
    this.marked = null;
    this.chart.setOption(this.option, { notMerge: true });
    this.isFirst = false;
    this.chart.getZr().flush();
    this.setViewBox();
  }

  highlight(cell: CellPlace | null): void {
    if (this.marked) this.chart.dispatchAction({ type: "downplay", ...this.marked });
    this.marked = cell && this.itemOf(cell);
    if (this.marked) {
      this.chart.dispatchAction({ type: "highlight", ...this.marked });
      this.chart.dispatchAction({ type: "showTip", ...this.marked });
    } else {
      this.chart.dispatchAction({ type: "hideTip" });
    }
  }

  dispose(): void {
    this.chart.dispose();
    this.box.remove();
  }

  // A drawing takes the place of the one before without growing anew, and with what the reader did to the legend.
  private keptFromBefore(option: EChartsCoreOption): EChartsCoreOption {
    const legend = option["legend"];
    const withSelected = (one: LegendOption): LegendOption =>
      ({ ...one, selected: { ...one.selected, ...this.legend } });
    return {
      ...option,
      ...(this.isFirst ? {} : { animationDuration: 0 }),
      ...(legend ? { legend: listOf(legend).map((one) => withSelected(one as LegendOption)) } : {}),
    };
  }

  // With it the drawing can be scaled, as paper needs it. The library does not write one.
  private setViewBox(): void {
    this.box.querySelector("svg")?.setAttribute("viewBox", `0 0 ${this.width} ${this.height}`);
  }

  private click(data: unknown, event: unknown): void {
    const cell = cellOf(data);
    const keys = event instanceof MouseEvent ? event : { ctrlKey: false, metaKey: false, shiftKey: false };
    const after = cell && selectionByClick(this.host.scene(), cell, keys, this.anchor);
    if (!after) return;
    this.anchor = after.anchor;
    this.host.select([...after.cells]);
  }

  // Where the option holds a cell.
  private itemOf(cell: CellPlace): Item | null {
    for (const [seriesIndex, one] of listOf(this.option["series"]).entries()) {
      const data = (one as { data?: unknown } | undefined)?.data;
      if (!Array.isArray(data)) continue;
      const dataIndex = data.findIndex((item) => {
        const place = cellOf(item);
        return place?.row === cell.row && place.column === cell.column;
      });
      if (dataIndex >= 0) return { seriesIndex, dataIndex };
    }
    return null;
  }
}

function hooked(option: EChartsCoreOption, hook: OptionHook | null): EChartsCoreOption {
  try {
    return hook?.(option) ?? option;
  } catch (problem) {
    throw new SettingError(problem instanceof Error ? problem.message : String(problem), "option");
  }
}

// Tooltips are texts: labels are no markup, and strict policies refuse the style attributes of any.
function withTextTooltip(option: EChartsCoreOption): EChartsCoreOption {
  const tooltips = listOf(option["tooltip"]).filter((one) => typeof one === "object" && one !== null);
  return { ...option, tooltip: tooltips.map((one) => ({ ...one, renderMode: "richText" })) };
}

function listOf(value: unknown): readonly unknown[] {
  return Array.isArray(value) ? value : [value];
}

function cellOf(item: unknown): CellPlace | null {
  const cell = (item as { cell?: unknown } | null | undefined)?.cell;
  if (!Array.isArray(cell)) return null;
  const [row, column] = cell as unknown[];
  return typeof row === "number" && typeof column === "number" ? { row, column } : null;
}
