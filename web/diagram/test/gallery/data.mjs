// The tables that the gallery draws: those of the example site, and some put together from them.
import { readFileSync } from "node:fs";

const folder = new URL("../../../../examples/site/data/", import.meta.url);

/** A table of texts: the corner, the columns' labels, and rows that begin with their label. */
function read(name) {
  const text = readFileSync(new URL(`${name}.csv`, folder), "utf8");
  const lines = text.trim().split(/\r?\n/).map((line) => line.split(","));
  const [[corner, ...columns], ...rows] = lines;
  return { rowTitle: corner, columnTitle: "", valueTitle: "", columns, rows };
}

const pick = (table, labels) => {
  const places = labels.map((label) => table.columns.indexOf(label) + 1);
  return { ...table, columns: labels, rows: table.rows.map((row) => [row[0], ...places.map((place) => row[place])]) };
};
const lastRows = (table, count) => ({ ...table, rows: table.rows.slice(-count) });

const rain = read("seattle-rain");
const skies = { ...read("seattle-skies"), columnTitle: "Days" };
const hours = read("seattle-hours");
const months = rain.rows.map(([month]) => month);
const cellOf = (table, row, column) => table.rows[row][table.columns.indexOf(column) + 1];

export const tables = {
  co2: { ...read("co2"), valueTitle: "ppm" },
  rain: { ...rain, valueTitle: "mm" },
  skies,
  skyMix: pick(skies, ["Sun", "Rain", "Fog"]),
  energy: { ...read("iowa-electricity"), columnTitle: "Source", valueTitle: "TWh" },
  energyYears: lastRows({ ...read("iowa-electricity"), columnTitle: "Source", valueTitle: "TWh" }, 3),
  energyShares: { ...read("iowa-2017"), columnTitle: "Year", columns: ["2017"] },
  hours: { ...hours, columnTitle: "Hour" },
  sixHours: { ...pick(hours, ["00:00", "04:00", "08:00", "12:00", "16:00", "20:00"]), columnTitle: "Hour" },
  dayAndNight: { ...pick(hours, ["04:00", "16:00"]), valueTitle: "°C" },
  // Every reading of the year as one list.
  readings: {
    rowTitle: "", columnTitle: "", valueTitle: "", columns: ["°C"],
    rows: hours.rows.flatMap(([month, ...values]) => values.map((value) => [month, value])),
  },
  nightsAndDays: {
    ...hours, columns: ["Night", "Day"],
    rows: hours.rows.flatMap(([month, ...values]) => [0, 1, 2].map((hour) => [month, values[hour], values[hour + 6]])),
  },
  sunAndRain: {
    rowTitle: "Month", columnTitle: "", valueTitle: "", columns: ["°C at noon", "Rain, mm"],
    rows: months.map((month, row) => [month, cellOf(hours, row, "12:00"), rain.rows[row][1]]),
  },
  nightAndDayOverRain: {
    rowTitle: "Month", columnTitle: "", valueTitle: "", columns: ["Rain, mm", "04:00", "16:00"],
    rows: months.map((month, row) =>
      [month, rain.rows[row][1], cellOf(hours, row, "04:00"), cellOf(hours, row, "16:00")]),
  },
  monthBubbles: {
    rowTitle: "Month", columnTitle: "", valueTitle: "", columns: ["°C at noon", "Days of sun", "Rain, mm"],
    rows: months.map((month, row) =>
      [month, cellOf(hours, row, "12:00"), cellOf(skies, row, "Sun"), rain.rows[row][1]]),
  },
  // How much warmer or colder than the year's mean each month is, and the change from the month before.
  anomalies: {
    rowTitle: "Month", columnTitle: "", valueTitle: "K", columns: ["From the mean", "From last month"],
    rows: months.map((month, row) => {
      const noon = (at) => Number(cellOf(hours, (at + 12) % 12, "12:00"));
      const mean = months.reduce((sum, _, at) => sum + noon(at), 0) / 12;
      return [month, (noon(row) - mean).toFixed(1), (noon(row) - noon(row - 1)).toFixed(1)];
    }),
  },
  gaps: {
    rowTitle: "Month", columnTitle: "", valueTitle: "", columns: ["Station A", "Station B"],
    rows: months.map((month, row) => [month, row === 3 || row === 4 ? "" : cellOf(hours, row, "08:00"),
      row === 8 || row === 6 ? "n/a" : cellOf(hours, row, "20:00")]),
  },
  longLabels: {
    rowTitle: "", columnTitle: "", valueTitle: "", columns: ["TWh"],
    rows: [["Fossil fuels: coal, natural gas and petroleum", "29.3"], ["Nuclear energy", "5.2"],
      ["Renewables: wind, solar, hydroelectric and biomass", "21.9"], ["Imports from neighbouring states", "3.4"]],
  },
  hostile: {
    rowTitle: "{a|title}", columnTitle: "<b>bold</b>", valueTitle: "", columns: ["{a|x}", "{b}", "{a|x}"],
    rows: [["{a|row}", "1", "2", "3"], ["line\nbreak \u0007", "4", "", "2"],
      ["<img src=x onerror=alert(1)>", "-2", "1e3x", "1"], ["W".repeat(300), "3", "2", "4"]],
  },
  many: {
    rowTitle: "", columnTitle: "", valueTitle: "", columns: ["A", "B"],
    rows: Array.from({ length: 3000 }, (_, row) =>
      [`Reading ${row + 1}`, (Math.sin(row / 200) * 40 + (row % 17)).toFixed(1),
        (Math.cos(row / 170) * 30).toFixed(1)]),
  },
  slices: {
    rowTitle: "", columnTitle: "", valueTitle: "", columns: ["Share"],
    rows: Array.from({ length: 24 }, (_, row) => [`Region ${row + 1}`, String(Math.round(400 / (row + 1)))]),
  },
  mixedSigns: { rowTitle: "", columnTitle: "", valueTitle: "", columns: ["Result"],
    rows: [["North", "12"], ["South", "-7"], ["East", "5"], ["West", "0"]] },
  nothing: { rowTitle: "", columnTitle: "", valueTitle: "", columns: [], rows: [] },
  oneCell: { rowTitle: "", columnTitle: "", valueTitle: "", columns: ["Total"], rows: [["All", "42"]] },
  allGaps: { rowTitle: "", columnTitle: "", valueTitle: "", columns: ["A", "B"],
    rows: [["x", "", "-"], ["y", "n/a", ""]] },
  huge: { rowTitle: "", columnTitle: "", valueTitle: "", columns: ["A"],
    rows: [["a", "1e308"], ["b", "-1e308"], ["c", "1e-320"]] },
};

const entities = { "&": "&amp;", "<": "&lt;", ">": "&gt;", "\"": "&quot;", "'": "&apos;", "\t": "&tab;" };
const escaped = (text) => String(text).replace(/[&<>"'\t]/g, (sign) => entities[sign]);

/** A table as a contents document. */
export function contentsOf({ rowTitle, columnTitle, valueTitle, columns, rows }) {
  const list = (name, title, element, texts) =>
    `<${name}>${escaped(title)}${texts.map((text) => `<${element}>${escaped(text)}</>`).join("")}</>`;
  const lists = [
    list("rows", rowTitle, "row", rows.map(([label]) => label)),
    list("cols", columnTitle, "col", columns),
    list("data", valueTitle, "value", rows.flatMap((row) => row.slice(1))),
  ];
  return `<xml>${lists.join("")}</>`;
}

/** Properties as a style document. */
export function styleOf(style) {
  const value = (one) => (typeof one === "boolean" ? (one ? "True" : "False") : escaped(one));
  return `<xml>${Object.entries(style).map(([name, one]) => `<${name}>${value(one)}</>`).join("")}</>`;
}
