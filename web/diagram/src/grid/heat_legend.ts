// The legend of a heat table: its colours from the least value to the greatest.
import type { Texts } from "../parts/texts.ts";
import type { GridModel } from "./model.ts";

const samples = 16;

/** Makes the legend's node; null where there is nothing to tell. */
export function heatLegend(model: GridModel, texts: Texts): HTMLElement | null {
  const { heat, scene: { style, format, table } } = model;
  if (!heat || !style.HasLegend) return null;
  const { least, greatest } = heat;
  const stops = Array.from({ length: samples + 1 }, (_, index) =>
    heat.coloursOf(least + (greatest - least) * (index / samples)).ground);
  const bar = document.createElement("span");
  bar.className = "heat-bar";
  bar.style.backgroundImage = `linear-gradient(to right, ${stops.join(", ")})`;
  const legend = document.createElement("div");
  legend.className = "heat-legend";
  legend.setAttribute("role", "img");
  legend.setAttribute("aria-label", texts("colours", format.number(least), format.number(greatest)));
  if (table.valueTitle !== "") legend.append(word(table.valueTitle));
  legend.append(word(format.number(least)), bar, word(format.number(greatest)));
  if (heat.diverging) bar.append(zeroMark(-least / (greatest - least), format.number(0)));
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
