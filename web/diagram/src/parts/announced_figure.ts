// What screen readers are told that a chart is: one figure with a name, and its data once.
import { textsFor } from "../host/texts.ts";

/** Caption and description of a chart as one text; a plain word where the author gave neither. */
export function chartName(element: HTMLElement, { caption, alt }: { caption: string; alt: string }): string {
  return [caption, alt].filter((text) => text !== "").join(". ") || textsFor(element)("chart");
}

/** Makes the element a figure of this name, unless the page has given it a role or a name of its own. */
export function nameFigure(internals: ElementInternals, name: string): void {
  internals.role = "figure";
  internals.ariaLabel = name;
}

/** A drawing to the ear: a table that is read itself, a picture of data that are read elsewhere, or an image. */
export type DrawingKind = "table" | "unheard" | "image";

const attributes = ["aria-hidden", "role", "aria-label"] as const;

/** Says of the box of a drawing what it is, and nothing that was said before. */
export function describeDrawing(drawing: HTMLElement, kind: DrawingKind, name: string): void {
  const said: Record<DrawingKind, Partial<Record<(typeof attributes)[number], string>>> = {
    table: {},
    unheard: { "aria-hidden": "true" },
    image: { role: "img", "aria-label": name },
  };
  for (const attribute of attributes) {
    const value = said[kind][attribute];
    if (value === undefined) drawing.removeAttribute(attribute);
    else drawing.setAttribute(attribute, value);
  }
}
