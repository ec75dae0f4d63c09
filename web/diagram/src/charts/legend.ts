// Legends: a row above a plot, or a column in a corner.
import type { LegendComponentOption, TitleComponentOption } from "echarts/components";

import type { Look } from "../look/look.ts";
import type { Scene } from "./chart.ts";
import { type Box, type Frame, lineOfText, without } from "./frame.ts";
import { cutTo, lineHeight, textStyle, textWidth, widest } from "./text.ts";

export interface LegendEntry {
  /** The series' or slice's, unlike any other's. */
  readonly name: string;
  readonly label: string;
  /** What its sign is; without one the series' own, as a line. */
  readonly icon?: "roundRect" | "circle";
}

const iconWidth = 18;
const iconGap = 6;
const itemGap = 16;
const rowGap = 8;
const smallestPlot = 90;

/** The frame with a legend in a row, or a few, above what is left. */
export function legendAbove(frame: Frame, scene: Scene, title: string, entries: readonly LegendEntry[]): Frame {
  const { look } = scene;
  if (!scene.style.HasLegend || entries.length === 0 || frame.room.height < smallestPlot) return frame;
  const { room, titles } = titled(frame, title, look);

  const most = Math.max(room.width * 0.6, 60);
  const labels = entries.map(({ label }) => cutTo(label, most, look));
  const lines = linesNeeded(entries, labels, room.width, look);
  const scrolls = lines * (look.fontSize + itemGap) > room.height * 0.3 + itemGap;
  const legend: LegendComponentOption = {
    ...common(look, entries, labels),
    type: scrolls ? "scroll" : "plain",
    orient: "horizontal",
    left: room.left,
    top: room.top,
    width: room.width,
  };
  const height = (scrolls ? 1 : lines) * (look.fontSize + itemGap) - itemGap + Math.round(look.fontSize * 1.1);
  return { room: without(room, "top", height), legends: [...frame.legends, legend], titles };
}

/** The frame with a legend in a corner: 0 left below, 1 right below, 2 left above, 3 right above. */
export function legendInCorner(
  frame: Frame,
  scene: Scene,
  title: string,
  entries: readonly LegendEntry[],
  corner: number,
): Frame {
  const { look } = scene;
  if (!scene.style.HasLegend || entries.length === 0) return frame;
  const { room } = frame;
  const most = room.width * 0.32;
  const labels = entries.map(({ label }) => cutTo(label, most, look));
  const heading = cutTo(title, most, look, true);
  const width = Math.max(iconWidth + iconGap + widest(labels, look), textWidth(heading, look, true)) + 4;
  // Beside a plot that would have no room left it goes above.
  if (width > room.width * 0.45 || room.width < 260) return legendAbove(frame, scene, title, entries);

  const line = look.fontSize + rowGap;
  const titleHeight = title === "" ? 0 : lineHeight(look) + 4;
  const wanted = entries.length * line - rowGap;
  const available = room.height - titleHeight;
  const pager = Math.max(look.fontSize, 11) + 6;
  const height = wanted <= available ? wanted : Math.floor((available - pager) / line) * line - rowGap + pager;
  const [right, above] = [corner === 1 || corner === 3, corner === 2 || corner === 3];
  const side = right ? "right" : "left";
  const gap = look.fontSize;
  const left = right ? room.left + room.width - width : room.left;
  const top = above ? room.top : room.top + room.height - titleHeight - height;
  const legend: LegendComponentOption = {
    ...common(look, entries, labels),
    type: wanted > available ? "scroll" : "plain",
    orient: "vertical",
    align: "left",
    itemGap: rowGap,
    left,
    top: top + titleHeight,
    height,
  };
  const headings = title === "" ? [] : [lineOfText(heading, { x: left, top, align: "left" }, look, { bold: true })];
  return {
    room: without(room, side, width + gap),
    corner: { box: { left: right ? left - gap : left, top, width: width + gap, height: titleHeight + height }, side },
    legends: [...frame.legends, legend],
    titles: [...frame.titles, ...headings],
  };
}

function titled(frame: Frame, title: string, look: Look): { room: Box; titles: readonly TitleComponentOption[] } {
  const { room, titles } = frame;
  if (title === "") return frame;
  const text = cutTo(title, room.width, look, true);
  return {
    room: without(room, "top", lineHeight(look) + 2),
    titles: [...titles, lineOfText(text, { x: room.left, top: room.top, align: "left" }, look, { bold: true })],
  };
}

function linesNeeded(entries: readonly LegendEntry[], labels: readonly string[], width: number, look: Look): number {
  let [lines, used] = [1, 0];
  for (const [index, label] of labels.slice(0, 200).entries()) {
    // A line's sign is a little wider than its icon.
    const item = iconWidth + iconGap + textWidth(label, look) + (entries[index]?.icon ? 0 : 4);
    if (used > 0 && used + item > width) {
      lines += 1;
      used = 0;
    }
    used += item + itemGap;
  }
  return lines + Math.max(labels.length - 200, 0);
}

function common(look: Look, entries: readonly LegendEntry[], labels: readonly string[]): LegendComponentOption {
  const shown = new Map(entries.map(({ name }, index) => [name, labels[index] ?? ""]));
  return {
    show: true,
    data: entries.map(({ name, icon }) => (icon ? { name, icon } : { name })),
    formatter: (name: string) => shown.get(name) ?? "",
    itemWidth: iconWidth,
    itemHeight: Math.round(Math.min(look.fontSize * 0.85, 14)),
    itemGap,
    padding: 0,
    textStyle: { ...textStyle(look), padding: [0, 0, 0, 1] },
    itemStyle: { borderWidth: 0 },
    pageButtonGap: 6,
    inactiveColor: look.grid,
    inactiveBorderColor: look.grid,
    pageIconColor: look.text,
    pageIconInactiveColor: look.grid,
    pageIconSize: 11,
    pageTextStyle: textStyle(look),
    animation: false,
  } as LegendComponentOption;
}

/** Whether series have names that a legend could show: not a lone series without one. */
export function isNamed(labels: readonly string[]): boolean {
  return labels.length > 1 || (labels[0] ?? "") !== "";
}
