// Radar charts: a web with an axis for each row, a closed line for each column. Drawn by hand, so that each of its
// points is a cell of its own, and a gap is a gap.
import type { CustomSeriesOption } from "echarts/charts";
import type { EChartsCoreOption } from "echarts/core";

import { dateScaleOf } from "./calendar.ts";
import { common } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import { handDrawn, type Shape } from "./custom.ts";
import { type Box, emptyFrame, type Frame, roomAt, roundRoom } from "./frame.ts";
import { isNamed, legendInCorner } from "./legend.ts";
import { markText } from "./marks.ts";
import { type Scale, scaleOf } from "./scale.ts";
import { withStatistics } from "./statistics_table.ts";
import { strokeOf } from "./stroke.ts";
import { brokenTo, chipOf, cutTo, lineHeight, plotText, textStyle, textWidth, widest } from "./text.ts";
import { itemTooltip, pointTooltip } from "./tooltip.ts";
import { marksOf, rowView, type Series, shownRow, valuesOf, type View, viewOf } from "./view.ts";

/** The name of an axis beyond the web's rim. */
interface Name {
  readonly axis: number;
  readonly text: string;
  readonly x: number;
  readonly y: number;
  readonly align: "left" | "center" | "right";
  readonly vertical: "bottom" | "middle" | "top";
}

/** Where the web is: its middle, its radius, and what its rings stand for. */
interface Web {
  readonly x: number;
  readonly y: number;
  readonly radius: number;
  readonly axes: number;
  readonly scale: Scale;
  /** What it may fill, names included; and what stands beside that. */
  readonly room: Box;
  readonly frame: Frame;
}

export function radarChart(scene: Scene): EChartsCoreOption {
  const { style, look } = scene;
  const row = shownRow(scene);
  const view = row < 0 ? viewOf(scene) : rowView(scene, row);
  const entries = view.series.map(({ name, label }) => ({ name, label, icon: "roundRect" as const }));
  const hasLegend = view.showSeries && isNamed(view.series.map(({ label }) => label));
  const start = withStatistics(emptyFrame(scene.width, scene.height, look), scene, view.series);
  const frame = legendInCorner(start, scene, view.seriesTitle, hasLegend ? entries : [], style.LabelStyle);
  const web = webOf(scene, view, frame);
  return {
    ...common(scene, frame),
    tooltip: pointTooltip(scene),
    series: [webSeries(scene, view, web), ...view.series.map((one) => lineSeries(scene, view, web, one))],
  };
}

function webOf(scene: Scene, view: View, frame: Frame): Web {
  const { look } = scene;
  const labels = view.showCategories ? view.categories : [];
  const width = Math.min(widest(labels, look) + look.fontSize, frame.room.width * 0.28);
  const height = view.showCategories ? lineHeight(look) * 1.4 : 4;
  const room = roundRoom(frame, { width, height });
  const values = view.series.flatMap(valuesOf);
  return {
    x: room.left + room.width / 2,
    y: room.top + room.height / 2,
    radius: Math.max(Math.min(room.width / 2 - width, room.height / 2 - height), 10),
    axes: view.categories.length,
    scale: (scene.format.hasDates ? dateScaleOf([0, ...values], 4) : null) ?? scaleOf([0, ...values], 4),
    room,
    frame,
  };
}

function angleOf(web: Web, axis: number): number {
  return -Math.PI / 2 + (axis / web.axes) * Math.PI * 2;
}

function pointAt(web: Web, axis: number, value: number): [number, number] {
  const { from, to } = web.scale;
  const share = Math.min(Math.max((value - from) / (to - from), 0), 1);
  const angle = angleOf(web, axis);
  return [web.x + Math.cos(angle) * web.radius * share, web.y + Math.sin(angle) * web.radius * share];
}

function webSeries(scene: Scene, view: View, web: Web): CustomSeriesOption {
  return handDrawn({
    name: "\u200bweb",
    color: scene.look.grid,
    coordinateSystem: "none",
    silent: true,
    tooltip: { show: false },
    animation: false,
    z: 1,
    data: [{ value: [0] }],
    draw: () => {
      const names = view.showCategories ? namesOf(scene, view, web) : [];
      return [...ringsOf(scene, web, names), ...spokesOf(scene, web), ...nameTexts(scene, names)];
    },
  });
}

function ringsOf(scene: Scene, web: Web, names: readonly Name[]): Shape[] {
  const { look } = scene;
  const axes = Array.from({ length: web.axes }, (_, axis) => axis);
  return web.scale.ticks.flatMap((tick, index) => {
    const [x, y] = pointAt(web, 0, tick);
    const isZero = tick === 0 && web.scale.from < 0;
    const shape = web.axes < 3
      ? { cx: web.x, cy: web.y, r: web.y - y } : { points: axes.map((axis) => pointAt(web, axis, tick)) };
    const ring = {
      type: web.axes < 3 ? "circle" : "polygon",
      shape,
      style: { fill: "none", stroke: isZero ? look.plotText : look.grid, lineWidth: 1 },
    };
    const label = scene.format.number(tick);
    const isMiddle = index === 0 && web.scale.from === tick;
    if (isMiddle || touchesName(scene, names, x - textWidth(label, look), y)) return [ring];
    const text = {
      type: "text",
      z2: 2,
      style: {
        ...plotText(look),
        fontSize: Math.max(look.fontSize - 2, 8),
        text: label,
        x: x - 4,
        y,
        align: "right",
        verticalAlign: "middle",
      },
    };
    return [ring, text];
  });
}

function spokesOf(scene: Scene, web: Web): Shape[] {
  const most = 90;
  return Array.from({ length: web.axes <= most ? web.axes : 0 }, (_, axis) => {
    const [x2, y2] = pointAt(web, axis, web.scale.to);
    return { type: "line", shape: { x1: web.x, y1: web.y, x2, y2 }, style: { stroke: scene.look.grid, lineWidth: 1 } };
  });
}

/** Whether a text that ends at the upright axis, and begins at `left`, would come upon a name at the web's left. */
function touchesName({ look }: Scene, names: readonly Name[], left: number, y: number): boolean {
  return names.some((name) => name.align === "right" && left < name.x && Math.abs(name.y - y) < lineHeight(look));
}

/** As many names as have a line's height between them along the rim. */
function namesOf({ look }: Scene, view: View, web: Web): Name[] {
  const line = lineHeight(look);
  const stride = Math.max(Math.ceil(line * 1.3 / ((Math.PI * 2 * web.radius) / web.axes)), 1);
  return view.categories.flatMap((name, axis): Name[] => {
    if (axis % stride !== 0 || name === "") return [];
    const angle = angleOf(web, axis);
    const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
    const [x, y] = [web.x + cos * (web.radius + 8), web.y + sin * (web.radius + 10)];
    const align = Math.abs(cos) < 0.15 ? "center" : cos > 0 ? "left" : "right";
    const { left, width } = web.room;
    if (align === "center") {
      const isAbove = sin < 0;
      const beside = roomAt(web.frame, x, isAbove ? y - line : y, line);
      const text = cutTo(name, Math.max(Math.min(width, 2 * beside), 20), look);
      return [{ axis, text, x, y, align, vertical: isAbove ? "bottom" : "top" }];
    }
    // There is room for two lines where few names are.
    const most = web.axes <= 6 ? 2 : 1;
    const { lines } = brokenTo(name, Math.max(align === "left" ? left + width - x : x - left, 20), most, look);
    return [{ axis, text: lines.join("\n"), x, y, align, vertical: "middle" }];
  });
}

function nameTexts(scene: Scene, names: readonly Name[]): Shape[] {
  const { look } = scene;
  // Of a row alone the names are those of columns.
  const mark = shownRow(scene) < 0 ? marksOf(scene) : () => "none";
  return names.map(({ axis, text, x, y, align, vertical }) => {
    const isMarked = mark(axis, -1) !== "none";
    return {
      type: "text",
      style: {
        ...textStyle(look),
        text,
        fill: isMarked ? look.selectionText : look.plotText,
        ...(isMarked ? chipOf(look) : {}),
        lineHeight: lineHeight(look),
        x,
        y,
        align,
        verticalAlign: vertical,
      },
    };
  });
}

/** Its items are the points; the first of them draws the line as well. */
function lineSeries(scene: Scene, view: View, web: Web, series: Series): CustomSeriesOption {
  const { look, style } = scene;
  const mark = marksOf(scene, shownRow(scene));
  const first = series.points.findIndex(({ value }) => value !== null);
  // Many surfaces upon each other would be mud.
  const surface = Math.min(0.24 / view.series.length, 0.1);
  return handDrawn({
    name: series.name,
    color: series.color,
    coordinateSystem: "none",
    z: 2,
    encode: { value: 0 },
    tooltip: itemTooltip((axis) =>
      [series.label, view.categories[axis] || String(axis + 1), series.points[axis]?.text ?? ""]),
    data: series.points.map(({ value, cell }) => ({ value: [value], cell })),
    draw: (params) => {
      const point = series.points[params.dataIndex];
      if (!point || point.value === null) return [];
      const [x, y] = pointAt(web, params.dataIndex, point.value);
      const marked = mark(...point.cell);
      const sign = {
        type: "circle",
        z2: 10,
        shape: { cx: x, cy: y, r: marked === "none" ? Math.max(3, style.Thickness) : 5 },
        style: {
          fill: series.color,
          stroke: marked === "none" ? look.plotGround : look.selectionGround,
          lineWidth: marked === "none" ? 1 : 2,
        },
        emphasis: { style: { lineWidth: 3 } },
      };
      const texts = markText(scene, marked, point, { left: x, top: y, width: 0, height: 0 });
      const lines = params.dataIndex === first ? linesOf(scene, web, series, surface) : [];
      return [...lines, sign, ...texts];
    },
  });
}

/** A closed area if there are all points; the stretches between gaps if there are not. */
function linesOf(scene: Scene, web: Web, series: Series, surface: number): Shape[] {
  const stroke = strokeOf(scene.look, scene.style, series);
  const points = series.points.map(({ value }, axis) => (value === null ? null : pointAt(web, axis, value)));
  if (points.every((point) => point !== null)) {
    return [
      { type: "polygon", silent: true, shape: { points }, style: { fill: series.color, opacity: surface } },
      { type: "polygon", silent: true, z2: 5, shape: { points }, style: stroke },
    ];
  }
  // From the point after a gap on, so that the stretch over the end of the list is whole.
  const gap = points.indexOf(null);
  const stretches: [number, number][][] = [[]];
  for (const point of [...points.slice(gap), ...points.slice(0, gap)]) {
    if (point) stretches[stretches.length - 1]?.push(point);
    else stretches.push([]);
  }
  return stretches.filter(({ length }) => length > 1).map((stretch) =>
    ({ type: "polyline", silent: true, z2: 5, shape: { points: stretch }, style: stroke }));
}
