// What is written and drawn at points: values of selected cells, outlines, lines at means and at zero.
import type { CustomSeriesOption } from "echarts/charts";

import type { Scene } from "./chart.ts";
import { placed } from "./cartesian.ts";
import { handDrawn, type Shape } from "./custom.ts";
import type { Box } from "./frame.ts";
import { roundedTo, statisticsOf } from "./statistics.ts";
import { chipOf, plotText, type TextStyle, textStyle, textWidth } from "./text.ts";
import { type Mark, type Point, type Series, valuesOf } from "./view.ts";

/** The label of a marked point; `position` is the library's word for where it stands. */
function markLabel(scene: Scene, mark: Mark, point: Point, position: string): object {
  const { look } = scene;
  if (mark !== "value" && mark !== "chip") return {};
  const isNegative = point.value !== null && point.value < 0;
  const style = mark === "chip"
    ? { ...textStyle(look, look.selectionText), ...chipOf(look) }
    : {
      ...textStyle(look, (isNegative ? look.negative : null) ?? look.tag),
      textBorderColor: look.plotGround,
      textBorderWidth: 3,
    };
  return { label: { ...style, show: true, position, distance: 6, formatter: () => point.text } };
}

/** The outline of a marked surface. */
function markOutline(scene: Scene, mark: Mark): object {
  return mark === "none" ? {} : { borderColor: scene.look.selectionGround, borderWidth: 2 };
}

/** The same as `markLabel` for what is drawn by hand: above the box or, where bars lie, at its right. */
export function markText(scene: Scene, mark: Mark, point: Point, box: Box): Shape[] {
  if (mark !== "value" && mark !== "chip") return [];
  const { label } = markLabel(scene, mark, point, "top") as { label: TextStyle & Record<string, unknown> };
  const isLying = scene.style.IsRotated;
  const { color, textBorderColor, textBorderWidth, ...rest } = label;
  return [{
    type: "text",
    z2: 20,
    style: {
      ...rest,
      text: point.text,
      fill: color,
      stroke: textBorderColor,
      lineWidth: textBorderWidth,
      x: isLying ? box.left + box.width + 16 : box.left + box.width / 2,
      y: isLying ? box.top + box.height / 2 : box.top - 10,
      align: isLying ? "left" : "center",
      verticalAlign: isLying ? "middle" : "bottom",
    },
  }];
}

/** A line's data: a sign at each point if there is room, or else at marked ones and those that no line leads to. */
export function lineItems(
  scene: Scene,
  series: Series,
  values: readonly (number | null)[],
  hasSigns: boolean,
  mark: (row: number, column: number) => Mark,
): object[] {
  const isGap = (index: number): boolean => (values[index] ?? null) === null;
  return series.points.map((point, index) => {
    const value = values[index] ?? null;
    const marked = mark(...point.cell);
    const item = { value, cell: point.cell };
    if (marked !== "none") {
      const outline = { ...markOutline(scene, marked), color: series.color };
      return { ...item, symbolSize: 10, itemStyle: outline, ...markLabel(scene, marked, point, "top") };
    }
    const isAlone = isGap(index - 1) && isGap(index + 1);
    return hasSigns || isAlone ? item : { ...item, symbol: "none" };
  });
}

/** What the lines across a plot belong to. */
interface Ruler {
  /** Goes with the series of this name when readers hide it. */
  readonly name: string;
  readonly value: number;
  readonly color: string;
  readonly text: string;
  readonly dash: number[] | null;
  /** The second y axis. */
  readonly axis?: { xAxisIndex: number } | { yAxisIndex: number };
  /** Stands at a place along the x axis. */
  readonly isAlong?: boolean;
  /** The values of lines whose texts go before this one's where both have no room. */
  readonly before: readonly number[];
}

/** A line across the plot at a value. */
function rulerSeries(scene: Scene, ruler: Ruler): CustomSeriesOption {
  const { look } = scene;
  const placeOf = (at: number): [number, number] => (ruler.isAlong ? placed(scene, at, 0) : placed(scene, 0, at));
  const isUpright = scene.style.IsRotated !== (ruler.isAlong === true);
  const lineWith = (shape: object, style: object): Shape => ({ type: "line", shape, style });
  return handDrawn({
    name: ruler.name,
    color: ruler.color,
    ...ruler.axis,
    data: [{ value: placeOf(ruler.value) }],
    // A place on its own axis alone: on the other one it stands for none.
    encode: isUpright ? { x: 0, y: -1 } : { x: -1, y: 1 },
    silent: true,
    tooltip: { show: false },
    animation: false,
    z: 3,
    draw: (params, api) => {
      const box = params.coordSys as unknown as { x: number; y: number; width: number; height: number };
      const at = (value: number): number => api.coord(placeOf(value))[isUpright ? 0 : 1] ?? 0;
      const place = at(ruler.value);
      const [from, length] = isUpright ? [box.x, box.width] : [box.y, box.height];
      if (place < from - 1 || place > from + length + 1) return [];
      const shape = isUpright
        ? { x1: place, x2: place, y1: box.y, y2: box.y + box.height }
        : { x1: box.x, x2: box.x + box.width, y1: place, y2: place };
      const line = lineWith(shape, { stroke: ruler.color, lineWidth: 1, lineDash: ruler.dash ?? "solid" });
      if (!ruler.dash) return [line];
      // On a strip of the ground, so that it shows upon bars of its colour.
      const strip = lineWith(shape, { stroke: look.plotGround, lineWidth: 3, opacity: 0.85 });
      const needed = isUpright ? textWidth(ruler.text, look) + 8 : look.fontSize * 1.2;
      const isFree = ruler.text !== "" && ruler.before.every((other) => Math.abs(at(other) - place) > needed);
      return [strip, line, ...(isFree ? [rulerText(scene, ruler.text, box, place, isUpright)] : [])];
    },
  });
}

/** What stands at a line's upper or right end. */
function rulerText(
  { look }: Scene,
  text: string,
  box: { readonly x: number; readonly y: number; readonly width: number },
  place: number,
  isUpright: boolean,
): Shape {
  const right = box.x + box.width;
  return {
    type: "text",
    z2: 10,
    style: {
      ...plotText(look, look.tag),
      text,
      x: isUpright ? Math.min(place + 4, right - textWidth(text, look)) : right - 2,
      y: isUpright ? box.y + 2 : place - 3,
      align: isUpright ? "left" : "right",
      verticalAlign: isUpright || place < box.y + look.fontSize * 1.5 ? "top" : "bottom",
    },
  };
}

// Means of more series would write over each other and the chart; the figures stand below it as well.
const mostMeanTexts = 3;

/** The line at a series' mean, where statistics are on show. */
export function meanRulers(
  scene: Scene,
  series: readonly Series[],
  axisOf: (series: Series) => Ruler["axis"] = () => undefined,
  isAlong = false,
): CustomSeriesOption[] {
  if (!scene.style.HasStatistics) return [];
  const written: number[] = [];
  return series.flatMap((one) => {
    const figures = statisticsOf(valuesOf(one));
    if (!figures) return [];
    const { mean, deviation } = figures;
    const text = series.length <= mostMeanTexts
      ? `Ø ${scene.format.number(roundedTo(mean, deviation || Math.abs(mean)))}` : "";
    const axis = axisOf(one);
    const ruler = { name: one.name, value: mean, color: one.color, text, dash: [6, 4], isAlong };
    if (axis) return [rulerSeries(scene, { ...ruler, axis, before: [] })];
    const before = [...written];
    if (text !== "") written.push(mean);
    return [rulerSeries(scene, { ...ruler, before })];
  });
}

/** The line at zero, from which values go up and down. */
export function zeroRuler(scene: Scene): CustomSeriesOption {
  return rulerSeries(scene, {
    name: "\u200b0", value: 0, color: scene.look.plotText, text: "", dash: null, before: [],
  });
}
