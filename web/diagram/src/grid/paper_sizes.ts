// How wide columns are on paper, where texts go on in the next line.
import type { GridModel } from "./model.ts";
import { cellPadding, labelIndent, type Measure, textsOf, widestOf } from "./sizes.ts";

// Texts that are longer have several lines, in ems.
const longestLine = 14;

/** The widths of labels (0: none) and columns on show in pixels, before letters become smaller for them. */
export function paperSizes({ scene, arrangement, sizes }: GridModel, measure: Measure): number[] {
  const { table, style, look } = scene;
  const most = longestLine * look.fontSize;
  // What a cell has beside its text there, see the style.
  const padding = look.fontSize - 2 * cellPadding;
  const lines = (texts: readonly string[], bold: boolean): number => {
    const width = widestOf(texts, bold, measure);
    return width <= most ? width : Math.max(most, widestOf(texts.flatMap((text) => text.split(/\s+/)), bold, measure));
  };
  const columns = arrangement.columns.map((column) => arrangement.sizes.columns.get(column) ?? padding + Math.max(
    widestOf(textsOf(scene, column, true), false, measure),
    lines(textsOf(scene, column, false), false),
    style.showColLabels ? lines([table.columnLabels[column] ?? ""], true) : 0));
  const labels = style.ShowRowTitle ? [...table.rowLabels, table.rowTitle] : table.rowLabels;
  return [
    sizes.labelWidth === 0 ? 0
      : arrangement.sizes.columns.get(-1) ?? lines(labels, true) + labelIndent + cellPadding + padding,
    ...columns,
  ];
}
