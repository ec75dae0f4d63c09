// A table or heat table as a picture, for where no browser can lay one out: the rows and columns that have room, and
// how many more there are.
import type { Scene } from "../charts/chart.ts";
import { escaped, tag } from "../charts/svg_text.ts";
import { cutTo, oneLine, textWidth } from "../charts/text.ts";
import type { Texts } from "../host/texts.ts";
import { freshArrangement } from "./arrangement.ts";
import { legendHeight, legendMarkup } from "./legend_picture.ts";
import { cellLook, type GridModel, modelOf } from "./model.ts";
import { labelIndent, lineHeight, neededWidth, sizesOf } from "./sizes.ts";
import { labelWeight } from "./text_measure.ts";

/** A place in the picture, in pixels. */
interface Place {
  readonly x: number;
  readonly y: number;
  readonly width: number;
  readonly height: number;
}

interface TextLook {
  readonly color: string;
  readonly ground?: string | undefined;
  readonly isBold?: boolean;
  readonly side?: "left" | "middle" | "right";
  readonly indent?: number;
}

interface Drawing {
  readonly model: GridModel;
  /** Where each row or column on show begins, and where the last one ends. */
  readonly rows: readonly number[];
  readonly columns: readonly number[];
}

/** The markup of the picture's content, as wide and high as the scene. */
export function tablePicture(scene: Scene, texts: Texts): string {
  const model = plainModel(scene);
  const drawing = fitted(model, texts);
  const { width, height, look } = scene;
  const bottom = last(drawing.rows);
  const more = moreOf(drawing, texts);
  return [
    tag("rect", { width, height, fill: look.ground }),
    ...bodyOf(drawing),
    ...headOf(drawing),
    ...linesOf(drawing),
    ...ringsOf(drawing),
    more === "" ? "" : textAt(model, more, { x: 0, y: bottom, width, height: moreHeight(scene) }, {
      color: look.plotText, indent: labelIndent,
    }),
    legendMarkup(model, bottom + (more === "" ? 0 : moreHeight(scene))),
  ].join("");
}

/** The model of a table that no reader has touched. */
function plainModel(scene: Scene): GridModel {
  const arrangement = freshArrangement(scene.table);
  const measure = (text: string, isBold: boolean): number => textWidth(text, scene.look, isBold);
  const needOf = (column: number): number => neededWidth(scene, column, measure);
  return modelOf(scene, arrangement, sizesOf({ scene, arrangement, measure, needOf, available: scene.width }));
}

/** The whole rows and columns that there is room for; a line under them says how many there is none for. */
function fitted(model: GridModel, texts: Texts): Drawing {
  const { scene, sizes, arrangement } = model;
  const columns = places(sizes.labelWidth, arrangement.columns.length, (column) => sizes.columnWidths[column] ?? 0,
    scene.width);
  const rowsIn = (height: number): Drawing => {
    const head = sizes.titleHeight + sizes.labelHeight;
    return { model, columns, rows: places(head, arrangement.rows.length, sizes.rowHeight, height) };
  };
  const height = scene.height - legendHeight(model);
  const all = rowsIn(height);
  return moreOf(all, texts) === "" ? all : rowsIn(height - moreHeight(scene));
}

/** Where the entries that end within `length` begin, and where the last one ends; there is one at the least. */
function places(start: number, count: number, sizeOf: (index: number) => number, length: number): number[] {
  const list = [start];
  for (let index = 0; index < count; index += 1) {
    const end = last(list) + sizeOf(index);
    if (end > length + 0.5 && index > 0) break;
    list.push(end);
  }
  return list;
}

function moreOf({ model, rows, columns }: Drawing, texts: Texts): string {
  const { arrangement } = model;
  const counts = [arrangement.rows.length - rows.length + 1, arrangement.columns.length - columns.length + 1];
  const names = ["moreRows", "moreColumns"] as const;
  return names.flatMap((name, index) => ((counts[index] ?? 0) > 0 ? [texts(name, counts[index] ?? 0)] : [])).join(", ");
}

function moreHeight({ look }: Scene): number {
  return Math.ceil(look.fontSize * lineHeight) + 8;
}

// --- Cells and labels.

function bodyOf(drawing: Drawing): string[] {
  const { model, rows, columns } = drawing;
  const { scene: { table, look }, sizes } = model;
  const drawn: string[] = [];
  for (let row = 0; row + 1 < rows.length; row += 1) {
    for (let column = 0; column + 1 < columns.length; column += 1) {
      drawn.push(cellMarkup(model, row, column, placeOf(drawing, row, column)));
    }
    if (sizes.labelWidth === 0) continue;
    const { y, height } = placeOf(drawing, row, 0);
    drawn.push(textAt(model, table.rowLabels[row] ?? "", { x: 0, y, width: sizes.labelWidth, height }, {
      ...labelLook(model, model.selected(row, -1)), isBold: true, indent: labelIndent,
    }));
  }
  // What is between the cells' ground and the picture's edge is the picture's.
  const { plotGround, ground } = look;
  const body = { x: sizes.labelWidth, y: rows[0] ?? 0, width: last(columns) - sizes.labelWidth };
  const paper = plotGround === ground ? [] : [tag("rect", {
    ...body, height: last(rows) - body.y, fill: plotGround,
  })];
  return [...paper, ...drawn];
}

function cellMarkup(model: GridModel, row: number, column: number, place: Place): string {
  const { scene, negative } = model;
  const { look } = scene;
  const { text, isNumber, isNegative, heat } = cellLook(model, row, column);
  const isSelected = model.selected(row, column);
  const side = isNumber ? "right" : "left";
  if (heat) return textAt(model, text, place, { color: heat.text, ground: heat.ground, side });
  if (isSelected) {
    return textAt(model, text, place, { color: look.selectionText, ground: look.selectionGround, side });
  }
  return textAt(model, text, place, { color: isNegative ? negative : look.plotText, side });
}

/** A selected cell of a heat table keeps its colour, and has a line in each of the selection's around it. */
function ringsOf(drawing: Drawing): string[] {
  const { model, rows, columns } = drawing;
  const { look, style, selection } = model.scene;
  if (!model.heat || selection.length === 0) return [];
  const [right, below] = [style.xGridVisible ? 1 : 0, style.yGridVisible ? 1 : 0];
  const drawn: string[] = [];
  for (let row = 0; row + 1 < rows.length; row += 1) {
    for (let column = 0; column + 1 < columns.length; column += 1) {
      if (!model.selected(row, column) || !cellLook(model, row, column).heat) continue;
      const { x, y, width, height } = placeOf(drawing, row, column);
      const ring = (inset: number, strokeWidth: number, stroke: string): string => tag("rect", {
        x: x + inset, y: y + inset, width: Math.max(width - right - 2 * inset, 0),
        height: Math.max(height - below - 2 * inset, 0), fill: "none", stroke, "stroke-width": strokeWidth,
      });
      drawn.push(ring(1, 2, look.selectionGround), ring(2.5, 1, look.selectionText));
    }
  }
  return drawn;
}

function headOf(drawing: Drawing): string[] {
  const { model, columns } = drawing;
  const { scene, sizes: { labelWidth, labelHeight, titleHeight } } = model;
  const { table, style, look } = scene;
  const drawn: string[] = [];
  if (titleHeight > 0) {
    const place = { x: labelWidth, y: 0, width: last(columns) - labelWidth, height: titleHeight };
    drawn.push(textAt(model, table.columnTitle, place, { color: look.text, side: "middle" }));
  }
  if (labelHeight === 0) return drawn;
  if (style.ShowRowTitle && labelWidth > 0) {
    const corner = { x: 0, y: titleHeight, width: labelWidth, height: labelHeight };
    drawn.push(textAt(model, table.rowTitle, corner, { color: look.text, isBold: true, indent: labelIndent }));
  }
  for (let column = 0; column + 1 < columns.length; column += 1) {
    const place = { ...placeOf(drawing, 0, column), y: titleHeight, height: labelHeight };
    drawn.push(textAt(model, table.columnLabels[column] ?? "", place, {
      ...labelLook(model, model.selected(-1, column)), isBold: true, side: model.numeric.has(column) ? "right" : "left",
    }));
  }
  return drawn;
}

function labelLook({ scene: { look } }: GridModel, isSelected: boolean): TextLook {
  return isSelected ? { color: look.selectionText, ground: look.selectionGround } : { color: look.text };
}

function placeOf({ rows, columns }: Drawing, row: number, column: number): Place {
  const [x = 0, right = x] = columns.slice(column, column + 2);
  const [y = 0, bottom = y] = rows.slice(row, row + 2);
  return { x, y, width: right - x, height: bottom - y };
}

// --- Lines, each within the end of its row or column, as borders are.

function linesOf({ model, rows, columns }: Drawing): string[] {
  const { scene: { style, look }, sizes: { labelWidth, labelHeight, titleHeight }, heat } = model;
  const [right, top, bottom] = [last(columns), rows[0] ?? 0, last(rows)];
  // Between colours the ground parts better than a line.
  const inBody = heat ? look.plotGround : look.grid;
  const quiet: string[] = [];
  const cells: string[] = [];
  if (style.yGridVisible) {
    for (const end of rows.slice(1)) {
      if (labelWidth > 0) quiet.push(`M0 ${end - 0.5}H${labelWidth}`);
      cells.push(`M${labelWidth} ${end - 0.5}H${right}`);
    }
  }
  if (style.xGridVisible) {
    if (labelWidth > 0) quiet.push(`M${labelWidth - 0.5} 0V${bottom}`);
    for (const end of columns.slice(1, -1)) {
      if (labelHeight > 0) quiet.push(`M${end - 0.5} ${titleHeight}V${top}`);
      cells.push(`M${end - 0.5} ${top}V${bottom}`);
    }
  }
  const rule = labelHeight > 0
    ? [tag("path", { d: `M0 ${top - 0.5}H${right}`, stroke: look.text, "stroke-opacity": 0.45 })] : [];
  return [...path(quiet, look.grid), ...path(cells, inBody), ...rule];
}

function path(steps: readonly string[], stroke: string): string[] {
  return steps.length === 0 ? [] : [tag("path", { d: steps.join(""), stroke })];
}

// --- Texts.

/** A text in its place, line under line as it has them, each cut to the width. */
function textAt(model: GridModel, text: string, place: Place, looks: TextLook): string {
  const { scene: { look }, sizes: { padding } } = model;
  const { x, y, width, height } = place;
  const { color, ground, isBold = false, side = "left", indent = 0 } = looks;
  const rect = ground === undefined ? "" : tag("rect", { x, y, width, height, fill: ground });
  const room = Math.max(width - 2 * padding - indent + 2, 1);
  const lines = text.split("\n").map((line) => cutTo(oneLine(line), room, look, isBold));
  const step = look.fontSize * lineHeight;
  const anchors = {
    left: { x: x + padding + indent, "text-anchor": "start" },
    middle: { x: x + width / 2, "text-anchor": "middle" },
    right: { x: x + width - padding, "text-anchor": "end" },
  };
  return rect + lines.map((line, index) => (line === "" ? "" : tag("text", {
    ...anchors[side],
    y: y + height / 2 + (index - (lines.length - 1) / 2) * step,
    dy: "0.35em",
    fill: color,
    ...(isBold && look.fontWeight !== "bold" ? { "font-weight": labelWeight } : {}),
  }, escaped(line)))).join("");
}

function last(list: readonly number[]): number {
  return list[list.length - 1] ?? 0;
}
