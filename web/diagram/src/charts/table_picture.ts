// A table or heat table as a picture, for where no browser can lay one out.
import { type Arrangement, freshArrangement } from "../grid/arrangement.ts";
import { type HeatScale, heatScale } from "../grid/heat.ts";
import { heatTable } from "../grid/model.ts";
import { cellPadding, neededWidth, type Sizes, sizesOf } from "../grid/sizes.ts";
import type { Scene } from "./chart.ts";
import { escaped, tag } from "./svg_text.ts";
import { cutTo, lineHeight, oneLine, textWidth } from "./text.ts";

/** A place in the picture, in pixels. */
interface Place {
  readonly x: number;
  readonly y: number;
  readonly width: number;
  readonly height: number;
}

interface Look {
  readonly color: string;
  readonly ground?: string;
  readonly isBold?: boolean;
  readonly isRight?: boolean;
}

interface Drawing {
  readonly scene: Scene;
  readonly sizes: Sizes;
  readonly heat: HeatScale | null;
  /** As many as there is room for. */
  readonly rows: number;
  readonly columns: number;
  readonly isNumeric: readonly boolean[];
}

/** The markup of the picture's content, as wide and high as the scene. Rows and columns without room are left out. */
export function tablePicture(scene: Scene): string {
  const drawing = drawingOf(scene);
  const { width, height, look } = scene;
  return [
    tag("rect", { width, height, fill: look.ground }),
    ...bodyOf(drawing),
    ...linesOf(drawing),
    ...headOf(drawing),
    moreOf(drawing),
  ].join("");
}

function drawingOf(scene: Scene): Drawing {
  const { table, style, look } = scene;
  const arrangement: Arrangement = freshArrangement(table);
  const measure = (text: string, isBold: boolean): number => textWidth(text, look, isBold);
  const sizes = sizesOf({
    scene,
    arrangement,
    measure,
    needOf: (column) => neededWidth(scene, arrangement, column, measure),
    available: scene.width,
  });
  const rows = fitting(table.cells.length, scene.height - sizes.labelHeight, sizes.rowHeight);
  const columns = fitting(table.columnLabels.length, scene.width - sizes.labelWidth,
    (column) => sizes.columnWidths[column] ?? 0);
  return {
    scene,
    sizes,
    heat: style.DiagramType === heatTable ? heatScale(table, look) : null,
    rows,
    columns,
    isNumeric: table.columnLabels.map((_, column) => table.cells.some((row) => (row[column]?.number ?? null) !== null)),
  };
}

/** How many sizes fit into a length; with one more for a cut one the last would be half a row. */
function fitting(count: number, length: number, sizeOf: (index: number) => number): number {
  let [used, index] = [0, 0];
  while (index < count && used + sizeOf(index) <= length + 0.5) {
    used += sizeOf(index);
    index += 1;
  }
  return Math.max(index, Math.min(count, 1));
}

function left({ sizes }: Drawing, column: number): number {
  return sizes.columnWidths.slice(0, column).reduce((sum, width) => sum + width, sizes.labelWidth);
}

function top({ sizes }: Drawing, row: number): number {
  let y = sizes.labelHeight;
  for (let index = 0; index < row; index += 1) y += sizes.rowHeight(index);
  return y;
}

function bodyOf(drawing: Drawing): string[] {
  const { scene, sizes, heat, rows, columns, isNumeric } = drawing;
  const { table, look, format, style } = scene;
  const isSelected = (row: number, column: number): boolean => scene.selection.some((place) =>
    (place.row === row || place.row === -1) && (place.column === column || place.column === -1));
  const drawn: string[] = [];
  for (let row = 0, y = sizes.labelHeight; row < rows; y += sizes.rowHeight(row), row += 1) {
    const height = sizes.rowHeight(row);
    for (let column = 0, x = sizes.labelWidth; column < columns; x += sizes.columnWidths[column] ?? 0, column += 1) {
      const cell = table.cells[row]?.[column];
      if (!cell) continue;
      const colours = heat && cell.number !== null ? heat.coloursOf(cell.number) : null;
      const negative = cell.number !== null && cell.number < 0 ? look.negative : null;
      const own = isSelected(row, column)
        ? { color: look.selectionText, ground: look.selectionGround }
        : { color: colours?.text ?? negative ?? look.plotText, ground: colours?.ground ?? look.plotGround };
      const place = { x, y, width: sizes.columnWidths[column] ?? 0, height };
      drawn.push(cellAt(scene, format.text(cell.text), place, { ...own, isRight: isNumeric[column] === true }));
    }
    if (style.showRowLabels) {
      const place = { x: 0, y, width: sizes.labelWidth, height };
      drawn.push(cellAt(scene, table.rowLabels[row] ?? "", place, { color: look.text, isBold: true }));
    }
  }
  return drawn;
}

function headOf(drawing: Drawing): string[] {
  const { scene, sizes, columns, isNumeric } = drawing;
  const { table, style, look } = scene;
  if (!style.showColLabels) return [];
  const height = sizes.labelHeight;
  const labels = table.columnLabels.slice(0, columns).map((label, column) => {
    const place = { x: left(drawing, column), y: 0, width: sizes.columnWidths[column] ?? 0, height };
    return cellAt(scene, label, place, { color: look.text, isBold: true, isRight: isNumeric[column] === true });
  });
  const corner = style.ShowRowTitle && sizes.labelWidth > 0
    ? [cellAt(scene, table.rowTitle, { x: 0, y: 0, width: sizes.labelWidth, height }, { color: look.text })] : [];
  const rule = tag("line", {
    x1: 0, x2: left(drawing, columns), y1: height - 0.5, y2: height - 0.5, stroke: look.plotText, "stroke-opacity": 0.6,
  });
  return [...corner, ...labels, rule];
}

function linesOf(drawing: Drawing): string[] {
  const { scene, sizes, rows, columns } = drawing;
  const { style, look } = scene;
  const [right, bottom] = [left(drawing, columns), top(drawing, rows)];
  const line = (x1: number, y1: number, x2: number, y2: number): string =>
    tag("line", { x1, y1, x2, y2, stroke: look.grid, "shape-rendering": "crispEdges" });
  const drawn: string[] = [];
  if (style.yGridVisible) {
    for (let row = 0, y = sizes.labelHeight; row < rows; row += 1) {
      y += sizes.rowHeight(row);
      drawn.push(line(0, y, right, y));
    }
  }
  if (style.xGridVisible) {
    for (let column = 0; column <= columns; column += 1) {
      drawn.push(line(left(drawing, column), 0, left(drawing, column), bottom));
    }
  }
  return drawn;
}

/** Says that there are rows or columns without room. */
function moreOf(drawing: Drawing): string {
  const { scene, rows, columns } = drawing;
  const { table, look } = scene;
  if (rows >= table.cells.length && columns >= table.columnLabels.length) return "";
  const place = { x: scene.width - 30, y: scene.height - lineHeight(look), width: 30, height: lineHeight(look) };
  return cellAt(scene, "…", place, { color: look.text, ground: look.ground, isRight: true });
}

function cellAt(scene: Scene, text: string, place: Place, looks: Look): string {
  const { look } = scene;
  const { x, y, width, height } = place;
  const { color, ground, isBold = false, isRight = false } = looks;
  const shown = cutTo(oneLine(text), Math.max(width - 2 * cellPadding + 2, 1), look, isBold);
  const rect = ground === undefined || ground === look.ground ? "" : tag("rect", { x, y, width, height, fill: ground });
  if (shown === "") return rect;
  return rect + tag("text", {
    x: isRight ? x + width - cellPadding : x + cellPadding,
    y: y + height / 2,
    dy: "0.35em",
    fill: color,
    "text-anchor": isRight ? "end" : "start",
    ...(isBold ? { "font-weight": "bold" } : {}),
  }, escaped(shown));
}
