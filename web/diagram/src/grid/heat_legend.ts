// The legend of a heat table: its colours from the least value to the greatest.
import type { Texts } from "../host/texts.ts";
import type { HeatScale } from "./heat.ts";
import type { GridModel } from "./model.ts";

/** The colours along the legend's bar, at the same distance from each other. */
export function legendColours({ least, greatest, coloursOf }: HeatScale, samples: number): string[] {
  // The distance itself may be larger than any number.
  const at = (share: number): number => least * (1 - share) + greatest * share;
  return Array.from({ length: samples + 1 }, (_, index) => coloursOf(at(index / samples)).ground);
}

/** Where zero stands on the bar, as a share of its width; null where all values have one sign. */
export function zeroShare({ diverging, least, greatest }: HeatScale): number | null {
  return diverging ? 1 / (1 + greatest / -least) : null;
}

/** Makes the legend's node; null where there is nothing to tell. */
export function heatLegend(model: GridModel, texts: Texts): HTMLElement | null {
  const { heat, scene: { style, format, table } } = model;
  if (!heat || !style.HasLegend) return null;
  const { least, greatest } = heat;
  const bar = document.createElement("span");
  bar.className = "heat-bar";
  bar.style.backgroundImage = `linear-gradient(to right, ${legendColours(heat, 16).join(", ")})`;
  const legend = document.createElement("div");
  legend.className = "heat-legend";
  legend.setAttribute("role", "img");
  legend.setAttribute("aria-label", texts("colours", format.number(least), format.number(greatest)));
  if (table.valueTitle !== "") legend.append(word(table.valueTitle));
  legend.append(word(format.number(least)), bar, word(format.number(greatest)));
  const zero = zeroShare(heat);
  if (zero !== null) bar.append(zeroMark(zero, format.number(0)));
  return legend;
}

function word(text: string): HTMLElement {
  const node = document.createElement("span");
  node.textContent = text;
  return node;
}

/** The sign under the bar at zero, at a share of its width. */
function zeroMark(share: number, text: string): HTMLElement {
  const mark = word(text);
  mark.className = "heat-zero";
  mark.style.left = `${share * 100}%`;
  return mark;
}
