// How the line of a series is drawn.
import type { Look } from "../look/look.ts";
import { dashOf } from "../look/patterns.ts";
import type { Style } from "../settings/style.ts";
import type { Series } from "./view.ts";

/** In pixels. */
export function lineWidth({ Thickness }: Style): number {
  return Math.min(Math.max(Thickness, 1), 60);
}

/** The stroke of a shape that is drawn by hand. */
export function strokeOf(look: Look, style: Style, series: Series): object {
  return {
    fill: "none",
    stroke: series.color,
    lineWidth: lineWidth(style),
    lineJoin: "round",
    lineDash: look.patterns ? dashOf(series.index) : "solid",
  };
}
