// The tooltip: a text of the drawing itself, never HTML, in the chart's font.
import type { TooltipComponentOption } from "echarts/components";

import type { Look } from "../look/look.ts";
import type { Scene } from "./chart.ts";
import { textStyle } from "./text.ts";

/** A tooltip for what is under the pointer, or for all points at the axis there, with cross lines. */
export function tooltipOf(scene: Scene, trigger: "item" | "axis", hasCross: boolean): TooltipComponentOption {
  const { look } = scene;
  const line = { color: look.cross, width: 1, type: [4, 3] };
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
      besidePointer(point, inFont(content, scene.look), size.viewSize),
    axisPointer: hasCross
      ? { type: "cross", snap: false, animation: false, lineStyle: line, crossStyle: line }
      : { type: "none" },
  } as TooltipComponentOption;
}

interface TextNode {
  style: { rich?: Record<string, { fontFamily?: string }>; fontFamily?: string; fontSize?: number };
  dirtyStyle(): void;
  getBoundingRect(): { width: number; height: number };
}

/**
 * The tooltip's text in the chart's font; the library sets only its size. Gives its width and height, margin included.
 */
function inFont(content: unknown, { fontFamily, fontSize }: Look): readonly [number, number] {
  if (!isTextNode(content)) return [0, 0];
  Object.assign(content.style, { fontFamily, fontSize });
  for (const part of Object.values(content.style.rich ?? {})) part.fontFamily = fontFamily;
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
