// The widths of texts, by the fonts of the page or, where there are none to ask, by estimate.

// Shares of the font's size, by what a sign is like; the first that holds counts. They are those of a wide font: a text
// that comes out narrower leaves a little air, one that came out wider would be cut.
const widths: readonly (readonly [RegExp, number])[] = [
  [/[iljI.,:;'|!\u2009\u200a]/, 0.32],
  [/[ ftr()[\]\-/"\u00b7]/, 0.4],
  [/[mwMW@%\u2026\u2014]/, 0.94],
  [/[\p{M}\u200b-\u200f\u2060]/u, 0],
  [/\d/, 0.62],
  [/\p{Lu}/u, 0.7],
  [/[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Hangul}\p{Extended_Pictographic}\uff00-\uff60]/u, 1],
];
const usual = 0.6;
const usualFont = "12px sans-serif";

const known = new Map<string, number>();

// The drawing library takes this sign's width for the height of a line.
const lineSign = "\u56fd";

/** What measures texts by the fonts of the page: the width of a text in a font as style sheets write it. */
export function fontMeasure(): (text: string, font?: string) => number {
  const context = document.createElement("canvas").getContext("2d");
  if (!context) return estimatedWidth;
  let current = "";
  return (text, font = usualFont) => {
    // Without a font that has it, browsers draw a sign as a box of any width, and lines would be as high.
    if (text === lineSign) return sizeOf(font);
    if (font !== current) context.font = current = font;
    return context.measureText(text).width;
  };
}

/** The width of a text in a font as style sheets write it: "bold 12px serif". */
export function estimatedWidth(text: string, font = usualFont): number {
  const size = sizeOf(font);
  const weight = /\bbold\b/.test(font) ? 1.07 : 1;
  let share = 0;
  for (const sign of text) {
    let width = known.get(sign);
    if (width === undefined) {
      width = widths.find(([like]) => like.test(sign))?.[1] ?? usual;
      known.set(sign, width);
    }
    share += width;
  }
  return share * size * weight;
}

function sizeOf(font: string): number {
  return Number(/(\d+(?:\.\d+)?)px/.exec(font)?.[1] ?? 12);
}
