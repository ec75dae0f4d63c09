// The figures of each series, as a small table under the chart. Its headings are signs that need no language.
import type { Scene } from "./chart.ts";
import { type Frame, lineOfText, without } from "./frame.ts";
import { type Statistics, roundedTo, statisticsOf } from "./statistics.ts";
import { cutTo, lineHeight, widest } from "./text.ts";
import { type Series, valuesOf } from "./view.ts";

const figures: readonly (readonly [string, keyof Statistics])[] = [
  ["n", "count"],
  ["Σ", "sum"],
  ["Ø", "mean"],
  ["σ", "deviation"],
  ["min", "least"],
  ["max", "greatest"],
];

/** The frame with the figures of the series at its lower end. */
export function withStatistics(frame: Frame, scene: Scene, series: readonly Series[]): Frame {
  if (!scene.style.HasStatistics || series.length === 0) return frame;
  const { look } = scene;
  const { room } = frame;
  const line = lineHeight(look) + 2;
  // As many series as take less than half of the height; the plot needs the rest.
  const most = Math.floor((room.height * 0.42) / line) - 1;
  if (most < 1) return frame;
  const shown = series.slice(0, series.length <= most ? most : Math.max(most - 1, 1));
  const more = shown.length < series.length ? ["…"] : [];
  const height = (shown.length + more.length + 1) * line;
  const top = room.top + room.height - height;

  const names = shown.map(({ label }) => cutTo(label, room.width * 0.28, look));
  // A sum of dates is no date, nor is their deviation.
  const told = scene.format.hasDates ? figures.filter(([, figure]) => figure !== "sum" && figure !== "deviation")
    : figures;
  const found = shown.map((one) => statisticsOf(valuesOf(one)));
  const columns = told.map(([sign, figure]) => [sign, ...found.map((one) => figureText(scene, one, figure))]);
  const columnWidths = columns.map((texts) => widest(texts, look));
  const left = room.width - widest(names, look) - columnWidths.reduce((sum, width) => sum + width, 0);
  const gap = Math.min(Math.max(left / columns.length, look.fontSize * 0.7), look.fontSize * 1.5);
  const widths = columnWidths.map((width) => width + gap);
  let right = room.left + widest(names, look);
  const first = { x: room.left, top, align: "left" as const };
  const titles = [lineOfText(["", ...names, ...more].join("\n"), first, look, texts(scene, line))];
  for (const [index, column] of columns.entries()) {
    right += widths[index] ?? 0;
    if (right > room.left + room.width) break;
    titles.push(lineOfText(column.join("\n"), { x: right, top, align: "right" }, look, texts(scene, line)));
  }
  return {
    ...frame,
    room: without(room, "bottom", height + Math.round(look.fontSize * 0.6)),
    titles: [...frame.titles, ...titles],
  };
}

function texts(scene: Scene, line: number): { color: string; lineHeight: number } {
  return { color: scene.look.tag, lineHeight: line };
}

function figureText(scene: Scene, found: Statistics | null, figure: keyof Statistics): string {
  if (!found) return figure === "count" ? "0" : "–";
  if (figure === "count") return String(found.count);
  return scene.format.number(roundedTo(found[figure], found.deviation || Math.abs(found.mean)));
}
