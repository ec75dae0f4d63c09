// The tooltip: a text of the drawing itself, never HTML, in the chart's font.
import type { SeriesOption } from "echarts";
import type { TooltipComponentOption } from "echarts/components";

import type { Look } from "../look/look.ts";
import type { Scene } from "./chart.ts";
import { literal, textStyle, wrapped } from "./text.ts";
import type { Series } from "./view.ts";

/** Names a value and says it; the mark is the library's markup for a series' sign. */
interface Line {
  readonly mark: string;
  readonly label: string;
  readonly text: string;
}

/** What the library tells of an item under the pointer. */
interface Item {
  readonly marker?: unknown;
  readonly seriesName?: string;
  readonly dataIndex: number;
  readonly axisValueLabel?: string;
}

/** A tooltip for what is under the pointer; each series says it by `itemTooltip` or a formatter of its own. */
export function pointTooltip(scene: Scene): TooltipComponentOption {
  return tooltipOf(scene, "item", { type: "none" });
}

/** A tooltip with cross lines, for a point or, by `axis`, for all points at the axis there. */
export function crossTooltip(
  scene: Scene,
  trigger: "item" | "axis",
  shown: { readonly view: readonly Series[]; readonly series: readonly SeriesOption[] },
): TooltipComponentOption {
  const line = { color: scene.look.cross, width: 1, type: [4, 3] };
  const pointer = { type: "cross", snap: false, animation: false, lineStyle: line, crossStyle: line };
  const option = tooltipOf(scene, trigger, pointer);
  return trigger === "item" ? option : { ...option, formatter: axisFormatter(scene, shown) } as TooltipComponentOption;
}

/** The tooltip of a series whose items say a heading, a name and a value each. */
export function itemTooltip(tell: (index: number) => readonly [heading: string, label: string, text: string]): object {
  return {
    formatter: ({ marker, dataIndex }: Item) => {
      const [heading, label, text] = tell(dataIndex);
      return tooltipText(heading, [{ mark: typeof marker === "string" ? marker : "", label, text }]);
    },
  };
}

function tooltipOf(scene: Scene, trigger: "item" | "axis", axisPointer: object): TooltipComponentOption {
  const { look } = scene;
  return {
    show: true,
    trigger,
    renderMode: "richText",
    confine: true,
    backgroundColor: look.ground === "transparent" ? look.plotGround : look.ground,
    borderColor: look.grid,
    borderWidth: 1,
    borderRadius: 4,
    padding: [8, 12],
    // A shadow is painted slowly, and with it all that lies under the tooltip.
    shadowBlur: scene.table.cells.length > 1000 ? 0 : 8,
    shadowColor: "rgba(0,0,0,0.12)",
    shadowOffsetY: 2,
    textStyle: textStyle(look),
    transitionDuration: 0,
    position: (point: number[], _: unknown, content: unknown, __: unknown, size: { viewSize: number[] }) =>
      besidePointer(point, dressed(content, scene.look), size.viewSize),
    axisPointer,
  } as TooltipComponentOption;
}

const lineHeight = 22;

/** A line for each series with a point there, as far as they have room; texts come from the series' valueFormatter. */
function axisFormatter(
  scene: Scene,
  { view, series }: Parameters<typeof crossTooltip>[2],
): (items: readonly Item[]) => string {
  const labels = new Map(view.map(({ name, label }) => [name, label || (view.length > 1 ? name : "")]));
  type Format = (value: unknown, index: number) => string;
  const formats = new Map(series.map(({ name, tooltip }) =>
    [name, (tooltip as { valueFormatter?: Format } | undefined)?.valueFormatter]));
  const most = Math.max(Math.floor((scene.height - 24) / lineHeight) - 1, 2);
  return (items) => {
    const lines = items.flatMap(({ marker, seriesName, dataIndex }): Line[] => {
      const text = formats.get(seriesName)?.(undefined, dataIndex);
      if (text === undefined) return [];
      return [{ mark: typeof marker === "string" ? marker : "", label: labels.get(seriesName ?? "") ?? "", text }];
    });
    const shown = lines.length <= most ? lines : [...lines.slice(0, most - 1), { mark: "", label: "…", text: "" }];
    return tooltipText(items[0]?.axisValueLabel ?? "", shown);
  };
}

const valueStyle = "value";
const longestValue = 60;

/** All texts as they are, whatever signs they hold. */
function tooltipText(heading: string, lines: readonly Line[]): string {
  const texts = lines.map(({ mark, label, text }) => {
    const value = text.length > longestValue ? `${text.slice(0, longestValue)}…` : text;
    // A closing brace would end the style that takes values to the right: such a one follows its name.
    const right = value === "" ? "" : value.includes("}") ? `   ${literal(value)}` : `{${valueStyle}|${value}}`;
    return `${mark}${literal(wrapped(label))}${right}`;
  });
  return [...(heading.trim() === "" ? [] : [literal(wrapped(heading))]), ...texts].join("\n");
}

interface TextNode {
  style: { rich?: Record<string, object>; [property: string]: unknown };
  dirtyStyle(): void;
  getBoundingRect(): { width: number; height: number };
}

/**
 * Gives the tooltip's text the chart's font, and its values their place at the right; the library knows of neither.
 * Returns its width and height, margin included.
 */
function dressed(content: unknown, look: Look): readonly [number, number] {
  if (!isTextNode(content)) return [0, 0];
  const { fontFamily, fontSize, fontWeight, fontStyle } = look;
  const font = { fontFamily, fontSize, fontWeight, fontStyle };
  Object.assign(content.style, font, { lineHeight });
  content.style.rich = { ...content.style.rich, [valueStyle]: { ...font, padding: [0, 0, 0, 20], align: "right" } };
  content.dirtyStyle();
  const { width, height } = content.getBoundingRect();
  return [width, height];
}

function isTextNode(content: unknown): content is TextNode {
  return typeof content === "object" && content !== null && "style" in content && "dirtyStyle" in content;
}

/** At the pointer's right; where there is no room at its left; never outside. */
function besidePointer(
  [x = 0, y = 0]: readonly number[],
  [width, height]: readonly [number, number],
  [viewWidth = 0, viewHeight = 0]: readonly number[],
): number[] {
  const [gap, edge] = [14, 4];
  const right = x + gap + width + edge <= viewWidth;
  const left = right ? x + gap : x - gap - width;
  return [Math.max(Math.min(left, viewWidth - width - edge), edge),
    Math.max(Math.min(y + gap, viewHeight - height - edge), edge)];
}
