// Pies: a slice for each row, a pie for each column.
import type { TitleComponentOption } from "echarts/components";
import type { EChartsCoreOption } from "echarts/core";

import { seriesColor } from "../look/shades.ts";
import { common } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import { type Box, emptyFrame, type Frame, inset, lineOfText, roomAt, roundRoom, without } from "./frame.ts";
import { isNamed, legendInCorner } from "./legend.ts";
import { widestLabel } from "./pie_labels.ts";
import { pieSeries } from "./pie_series.ts";
import { mostNamedSlices, type Pie, type Slice } from "./pies.ts";
import { withStatistics } from "./statistics_table.ts";
import { cutTo, lineHeight, uniqueNames } from "./text.ts";
import { pointTooltip } from "./tooltip.ts";
import { marksOf, rowView, shownRow, type View, viewOf } from "./view.ts";

export function pieChart(scene: Scene): EChartsCoreOption {
  const { look, style } = scene;
  const row = shownRow(scene);
  const view = row < 0 ? viewOf(scene) : rowView(scene, row);
  const slices = slicesOf(scene, view);

  const hasLegend = style.HasLegend && view.showCategories && slices.length <= mostNamedSlices
    && isNamed(slices.map(({ label }) => label));
  const start = withStatistics(emptyFrame(scene.width, scene.height, look), scene, view.series);
  const frame = legendInCorner(start, scene, view.categoryTitle,
    hasLegend ? slices.map(({ name, label }) => ({ name, label, icon: "roundRect" })) : [], style.LabelStyle);
  const { pies, captions } = placesOf(scene, view, frame);
  const bare = { scene, slices, pies, hasNames: !hasLegend && view.showCategories, mark: marksOf(scene, row) };
  const option = common(scene, { ...frame, titles: [...frame.titles, ...captions] });
  return { ...option, tooltip: pointTooltip(scene), series: pieSeries({ ...bare, widestLabel: widestLabel(bare) }) };
}

function slicesOf(scene: Scene, view: View): Slice[] {
  const names = uniqueNames(view.categories);
  return view.categories.map((label, index) => ({
    name: names[index] ?? label,
    label,
    index,
    color: seriesColor(scene.look, index),
  }));
}

/** Shares the room among pies in rows and columns, so that they get as large as they can. */
function placesOf(scene: Scene, view: View, frame: Frame): { pies: Pie[]; captions: TitleComponentOption[] } {
  const { look } = scene;
  const count = view.series.length;
  const line = view.showSeries && view.series.some(({ label }) => label !== "") ? lineHeight(look) + 4 : 0;
  const room = count === 1 ? roundRoom(frame, { width: look.fontSize * 4.5, height: look.fontSize * 1.7 + line / 2 })
    : frame.room;
  let best = { columns: 1, size: 0 };
  for (let columns = 1; columns <= count; columns += 1) {
    // A tilted pie is about half as high as it is wide.
    const height = (room.height / Math.ceil(count / columns) - line) * (scene.style.PieStyle === 1 ? 1.6 : 1);
    const size = Math.min(room.width / columns, height);
    if (size > best.size) best = { columns, size };
  }
  const rows = Math.max(Math.ceil(count / best.columns), 1);
  const [width, height] = [room.width / best.columns, room.height / rows];
  const captions: TitleComponentOption[] = [];
  const pies = view.series.map((series, index): Pie => {
    const row = Math.floor(index / best.columns);
    // The last row may have fewer: they stand in its middle.
    const missing = Math.max((row + 1) * best.columns - count, 0);
    const cell: Box = {
      left: room.left + ((index % best.columns) + missing / 2) * width,
      top: room.top + row * height,
      width,
      height,
    };
    const box = inset(without(cell, "bottom", line), 4, 2);
    if (line > 0) {
      const [x, top] = [cell.left + cell.width / 2, cell.top + cell.height - line + 2];
      const width = Math.min(cell.width - 8, 2 * roomAt(frame, x, top, line));
      const text = cutTo(series.label, width, look, true);
      const place = { x, top, align: "center" as const };
      captions.push(lineOfText(text, place, look, { bold: true }));
    }
    return { series, box };
  });
  return { pies, captions };
}
