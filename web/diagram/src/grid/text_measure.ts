// The widths of texts before they are on show.
import type { Look } from "../look/look.ts";
import type { Measure } from "./sizes.ts";

/** Measures texts in the font of a look, in pixels. Labels are semi-bold at least. */
export function textMeasure(look: Look): Measure {
  const context = document.createElement("canvas").getContext("2d");
  if (!context) return (text) => text.length * look.fontSize * 0.6;
  const font = (weight: string): string => `${look.fontStyle} ${weight} ${look.fontSize}px ${look.fontFamily}`;
  const [plain, bold] = [font(look.fontWeight), font(look.fontWeight === "bold" ? "bold" : labelWeight)];
  return (text, isLabel) => {
    context.font = isLabel ? bold : plain;
    return context.measureText(text).width;
  };
}

export const labelWeight = "600";
