// The widths of texts before they are on show.
import { fontMeasure } from "../charts/measure.ts";
import type { Look } from "../look/look.ts";
import type { Measure } from "./sizes.ts";

/** Measures texts in the font of a look, in pixels. Labels are semi-bold at least. */
export function textMeasure(look: Look): Measure {
  const measure = fontMeasure();
  const font = (weight: string): string => `${look.fontStyle} ${weight} ${look.fontSize}px ${look.fontFamily}`;
  const [plain, bold] = [font(look.fontWeight), font(look.fontWeight === "bold" ? "bold" : labelWeight)];
  return (text, isLabel) => measure(text, isLabel ? bold : plain);
}

export const labelWeight = "600";
