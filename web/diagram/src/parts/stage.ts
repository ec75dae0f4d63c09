// Where charts are drawn: the drawing library's instance in the box of an element.
import type { EChartsCoreOption } from "echarts/core";

import type { CellPlace, CloseUp, Places, Scene } from "../charts/chart.ts";
import { buildOption } from "../charts/index.ts";
import type { EChartsType } from "../charts/library.ts";
import { init, setPlatformAPI } from "../charts/library.ts";
import { fontMeasure } from "../charts/measure.ts";
import { sameTable } from "../data/table.ts";
import { isTable, pie } from "../settings/diagram_types.ts";
import { SettingError } from "../settings/setting_error.ts";
import { rowName } from "../host/names.ts";
import type { Part, PartHost } from "../host/part.ts";
import { PlotArea } from "./plot_area.ts";
import { samePlace, selectionByClick } from "../host/selection.ts";
import { textsFor } from "../host/texts.ts";
import { Zoom } from "./zoom.ts";
import { clickRoom } from "./zoom_gestures.ts";

/** Gets the option of each drawing and may give another one in its place. */
export type OptionHook = (option: EChartsCoreOption) => EChartsCoreOption | undefined | void;

export interface Stage extends Part {
  /** Marks a cell as under the pointer, with its tooltip; null: none. */
  highlight(cell: CellPlace | null): void;
  /** Lets something be done while all of the chart is on show, however closely the reader looks at it. */
  withAll<T>(act: () => T): T;
}

const measure = fontMeasure();
setPlatformAPI({ measureText: (text, font) => ({ width: measure(text, font) }) });

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
    withAll: (act) => (drawn ? drawn.withAll(act) : act()),
    dispose,
  };
}

type WithPlaces = EChartsCoreOption & { readonly places?: Places };

interface DenseSeries {
  readonly isDense?: boolean;
  readonly data: readonly { readonly value?: readonly number[] }[];
  readonly tooltip: { formatter(item: { readonly dataIndex: number }): string };
}

interface LegendOption {
  readonly selected?: Record<string, boolean>;
}

interface Item {
  readonly seriesIndex: number;
  readonly dataIndex: number;
}

// A click at the edge of the plot may be meant for a sign that reaches over it.
const plotMargin = 8;
// After so many milliseconds without a movement readers may point at values.
const restTime = 150;
// A shape of so many places is painted slowly, and is kept apart from the pointer's lines over it.
const heavyPath = 3000;

class Drawn {
  private readonly host: PartHost;
  private readonly box: HTMLElement;
  private readonly chart: EChartsType;
  private readonly zoom: Zoom;
  private option: EChartsCoreOption = {};
  private scene: Scene;
  private hook: OptionHook | null = null;
  private places: Places | null = null;
  private area: PlotArea | null = null;
  /** The ends of the axes where all is on show. */
  private whole: Pick<CloseUp, "along" | "ups"> | null = null;
  private frame = 0;
  private rest = 0;
  private width = 0;
  private height = 0;
  private isFirst = true;
  /** What the reader has hidden and shown by each legend: that of all series, or the one of a series at the front. */
  private readonly legends = new Map<number | null, Record<string, boolean>>();
  private pressed: readonly [x: number, y: number] = [0, 0];
  private anchor: CellPlace | null = null;
  private walked: CellPlace | null = null;
  private marked: Item | null = null;

  constructor(host: PartHost) {
    this.host = host;
    this.box = document.createElement("div");
    this.box.className = "stage";
    host.drawing.append(this.box);
    this.scene = host.scene();
    const { width, height } = this.scene;
    [this.width, this.height] = [width, height];
    this.chart = init(this.box, null, { renderer: "svg", width, height });
    this.chart.on("rendered", () => this.dress());
    this.chart.on("legendselectchanged", (event) => {
      this.legends.set(this.legendOf, (event as { selected: Record<string, boolean> }).selected);
      // The axes may have other ends now.
      if (this.zoom.part) this.show(this.scene, this.hook);
      else this.survey(true);
    });
    // Charts with axes tell by themselves what stands under the pointer.
    this.chart.on("click", (event) => {
      if (!this.places) this.click(placeOf(event.data, "cell"), event.event?.event);
    });
    this.box.addEventListener("pointerdown", ({ clientX, clientY }) => { this.pressed = [clientX, clientY]; });
    this.box.addEventListener("click", (event) => {
      const [x, y] = this.pressed;
      const isDrag = Math.hypot(event.clientX - x, event.clientY - y) > clickRoom;
      if (this.places && !isDrag) this.click(this.cellAt(event), event);
    });
    this.zoom = new Zoom({
      host,
      box: this.box,
      area: () => this.area,
      walked: () => this.shareOf(this.walked),
      describe: () => this.partName(),
      changed: () => {
        if (this.frame === 0) this.frame = requestAnimationFrame(() => this.move());
      },
    });
  }

  show(scene: Scene, hook: OptionHook | null): void {
    if (scene.width !== this.width || scene.height !== this.height) {
      [this.width, this.height] = [scene.width, scene.height];
      this.chart.resize({ width: this.width, height: this.height, silent: true });
    }
    const isOther = !sameTable(scene.table, this.scene.table)
      || scene.style.DiagramType !== this.scene.style.DiagramType;
    if (isOther) this.zoom.forget();
    this.scene = scene;
    this.hook = hook;
    this.whole = null;
    this.draw();
  }

  /** Draws what is on show to the reader; on paper all. */
  draw(part = this.host.isPrinting ? null : this.zoom.part, isMoving = false): void {
    cancelAnimationFrame(this.frame);
    clearTimeout(this.rest);
    this.frame = this.rest = 0;
    // A close-up has the axes of the whole, which must have been drawn to be known.
    const isKnown = this.whole !== null;
    if (!part || !this.whole) this.put(null, isKnown);
    if (part && this.whole) this.put({ part, isMoving, ...this.whole }, isKnown);
    this.isFirst = false;
    this.chart.getZr().flush();
    this.dress();
    this.zoom.placeButton(this.scene.style.IsRotated);
  }

  /** Lets something be done while all is on show. */
  withAll<T>(act: () => T): T {
    if (!this.zoom.part) return act();
    this.draw(null);
    try {
      return act();
    } finally {
      this.draw();
    }
  }

  highlight(cell: CellPlace | null): void {
    const isNew = cell !== null && !(this.walked && samePlace(this.walked, cell));
    this.walked = cell;
    const share = isNew ? this.shareOf(cell) : null;
    if (share !== null && this.zoom.bringIntoView(share)) this.draw();
    if (this.marked) this.chart.dispatchAction({ type: "downplay", ...this.marked });
    this.marked = cell && this.itemOf(cell);
    if (this.marked) {
      this.chart.dispatchAction({ type: "highlight", ...this.marked });
      this.chart.dispatchAction({ type: "showTip", ...this.tipOf(this.marked) });
    } else {
      this.chart.dispatchAction({ type: "hideTip" });
    }
  }

  dispose(): void {
    cancelAnimationFrame(this.frame);
    clearTimeout(this.rest);
    this.zoom.dispose();
    this.chart.dispose();
    this.box.remove();
  }

  private put(closeUp: CloseUp | null, isStill: boolean): void {
    const { scene } = this;
    const built: WithPlaces = (closeUp && this.places?.closer(closeUp)) ?? buildOption(scene);
    const { places = null, ...option } = built;
    const own = this.keptFromBefore(option);
    this.option = withTextTooltip(hooked(isStill ? { ...own, animation: false } : own, this.hook));
    this.marked = null;
    // The library draws with the shapes that there are, and leaves a mark on one that gets another place.
    const seriesIndex = [...listOf(this.option["series"]).keys()];
    if (isStill) this.chart.dispatchAction({ type: "downplay", seriesIndex });
    this.chart.setOption(this.option, { notMerge: true });
    this.places = places;
    this.survey(closeUp === null);
    this.zoom.setCount(this.area ? places?.count ?? 0 : 0);
  }

  // Where the plot lies now and, while all is on show, the ends of its axes.
  private survey(isWhole: boolean): void {
    this.area = PlotArea.of(this.chart, this.scene.style.IsRotated);
    if (!isWhole || !this.area) return;
    const { along, ups } = this.area.ranges;
    this.whole = { along: this.places?.range ?? along, ups };
  }

  // Another part comes on show; what is left out meanwhile is drawn when it rests.
  private move(): void {
    this.draw(this.zoom.part, true);
    if (this.zoom.part) this.rest = window.setTimeout(() => this.draw(), restTime);
  }

  private get legend(): Record<string, boolean> {
    return this.legends.get(this.legendOf) ?? {};
  }

  // The slices that a pie's legend names are those of all series.
  private get legendOf(): number | null {
    const { style, series } = this.scene;
    return style.DiagramType === pie ? null : series;
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

  private dress(): void {
    const svg = this.box.querySelector("svg");
    // With it the drawing can be scaled, as paper needs it. The library does not write one.
    svg?.setAttribute("viewBox", `0 0 ${this.width} ${this.height}`);
    for (const path of svg?.querySelectorAll("path") ?? []) {
      path.classList.toggle("heavy", (path.getAttribute("d")?.length ?? 0) > heavyPath);
    }
  }

  private cellAt({ clientX, clientY }: MouseEvent): CellPlace | null {
    const { area, places, legend } = this;
    const { left, top } = this.box.getBoundingClientRect();
    const [x, y] = [clientX - left, clientY - top];
    if (!area?.holds(x, y, plotMargin) || !places) return null;
    return places.cellAt(area.spot(x, y), area.plane((name) => legend[name] !== false));
  }

  // Where a cell stands, as a share of the whole x axis.
  private shareOf(cell: CellPlace | null): number | null {
    const along = cell && this.places?.alongOf(cell);
    if (typeof along !== "number" || !this.whole) return null;
    const [from, to] = this.whole.along;
    return (along - from) / (to - from);
  }

  // The first and the last row on show, or all.
  private partName(): string {
    const { part } = this.zoom;
    const texts = textsFor(this.host.element);
    const { whole, scene } = this;
    if (!part || !whole) return texts("all");
    const [from, to] = whole.along;
    const [first, last] = part.map((share) => from + (to - from) * share) as [number, number];
    return this.places?.range
      ? texts("range", rowName(scene, Math.round(first + 0.5), texts), rowName(scene, Math.round(last - 0.5), texts))
      : texts("range", scene.format.number(first), scene.format.number(last));
  }

  // A tap is told twice, by the finger and by the click that browsers make of it: that one counts.
  private click(cell: CellPlace | null, event: unknown): void {
    if (!(event instanceof MouseEvent) || event.type !== "click") return;
    const after = cell && selectionByClick(this.host.scene(), cell, event, this.anchor);
    if (!after) return;
    this.anchor = after.anchor;
    this.host.select([...after.cells]);
  }

  // The library finds an item by its shape. One that has none is told by its place.
  private tipOf(item: Item): object {
    const { seriesIndex, dataIndex } = item;
    const one = listOf(this.option["series"])[seriesIndex] as DenseSeries;
    const value = one.data[dataIndex]?.value;
    if (!one.isDense || !value) return item;
    const [x = 0, y = 0] = this.chart.convertToPixel({ seriesIndex }, [...value]);
    return { x, y, tooltip: { content: one.tooltip.formatter({ dataIndex }) } };
  }

  // Where the option holds a cell or, in a histogram, a bucket.
  private itemOf(cell: CellPlace): Item | null {
    for (const [seriesIndex, one] of listOf(this.option["series"]).entries()) {
      const data = (one as { data?: unknown } | undefined)?.data;
      if (!Array.isArray(data)) continue;
      const dataIndex = data.findIndex((item) => {
        const place = placeOf(item, "cell") ?? placeOf(item, "bucket");
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

function placeOf(item: unknown, kind: "cell" | "bucket"): CellPlace | null {
  const place = (item as Partial<Record<typeof kind, unknown>> | null | undefined)?.[kind];
  if (!Array.isArray(place)) return null;
  const [row, column] = place as unknown[];
  return typeof row === "number" && typeof column === "number" ? { row, column } : null;
}
