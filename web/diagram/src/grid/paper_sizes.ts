// How wide columns are on paper, where texts go on in the next line.
import type { GridModel } from "./model.ts";
import { hasLongWord, isLongWord, longestLine, wordsOf } from "./paper_words.ts";
import { cellPadding, labelIndent, type Measure, textsOf, widestOf } from "./sizes.ts";

/** The widths of labels (0: none) and columns on show in pixels, before letters become smaller for them. */
export function paperSizes({ scene, arrangement, sizes, numeric }: GridModel, measure: Measure): number[] {
  const { table, style, look } = scene;
  const most = longestLine * look.fontSize;
  const widthOf = (texts: readonly string[], bold: boolean): number =>
    texts.length === 0 ? 0 : widestOf(texts, bold, measure) - 2 * cellPadding;
  // What the reader has made narrower still has room for the longest word: no column is narrower than that.
  const lines = (texts: readonly string[], bold: boolean, set?: number, isLine?: boolean): number => {
    const width = widthOf(texts, bold);
    const isLong = texts.some((text) => hasLongWord(text, isLine));
    if (set === undefined && width <= most && !isLong) return width;
    const words = texts.flatMap((text) => wordsOf(text, isLine)).filter((word) => !isLongWord(word));
    return Math.max(set === undefined || isLong ? most : 0, widthOf(words, bold));
  };
  // What a cell has beside its text, see the style.
  const padding = look.fontSize;
  const columns = arrangement.columns.map((column) => {
    const set = arrangement.sizes.columns.get(column);
    return Math.max(set ?? 0, padding + Math.max(
      widthOf(textsOf(scene, column, true), false),
      lines(textsOf(scene, column, false), false, set, numeric.has(column)),
      style.showColLabels ? lines([table.columnLabels[column] ?? ""], true, set) : 0));
  });
  const labels = style.ShowRowTitle ? [...table.rowLabels, table.rowTitle] : table.rowLabels;
  const set = arrangement.sizes.columns.get(-1);
  return [
    sizes.labelWidth === 0 ? 0 : Math.max(set ?? 0, lines(labels, true, set) + labelIndent + cellPadding + padding),
    ...columns,
  ];
}
