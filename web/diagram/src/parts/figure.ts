// What a chart is called for screen readers: a figure with a name.
import type { PartHost } from "./part.ts";
import { textsFor } from "./texts.ts";

/** Caption and description of a chart as one text; a plain word where the author gave neither. */
export function figureName(element: HTMLElement): string {
  const param = (name: string): string =>
    element.querySelector(`:scope > param[name="${name}"]`)?.getAttribute("value")?.trim() ?? "";
  return [param("Caption"), param("Alt")].filter((text) => text !== "").join(". ") || textsFor(element)("chart");
}

/** Makes the element a figure of this name, unless the page has given it a role or a name of its own. */
export function nameFigure(internals: ElementInternals, name: string): void {
  internals.role = "figure";
  internals.ariaLabel = name;
}

/** A picture beside the same data as a table is for the eye alone; without one it is an image with the chart's name. */
export function describePicture(host: PartHost): void {
  const { drawing, element } = host;
  undescribePicture(drawing);
  if (element.querySelector("table")) {
    drawing.setAttribute("aria-hidden", "true");
  } else {
    drawing.setAttribute("role", "img");
    drawing.setAttribute("aria-label", figureName(element));
  }
}

/** Takes away what `describePicture` has said: the drawing is something that screen readers read for themselves. */
export function undescribePicture(drawing: HTMLElement): void {
  for (const name of ["aria-hidden", "role", "aria-label"]) drawing.removeAttribute(name);
}
