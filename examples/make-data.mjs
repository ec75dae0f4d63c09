// Makes the tables in site/data/ from the data files of the npm package vega-datasets.
//
//     npm pack vega-datasets@3.2.1 && tar xzf vega-datasets-3.2.1.tgz
//     node examples/make-data.mjs package/data

import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { fileURLToPath } from "node:url";

const months = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"];

const sourceFolder = process.argv[2];
if (sourceFolder === undefined) {
  console.error("make-data: which folder? Usage: node make-data.mjs FOLDER, with the data files of vega-datasets");
  process.exit(2);
}
const targetFolder = fileURLToPath(new URL("site/data/", import.meta.url));

/** The records of one file as objects. None of the files used here quotes a field. */
function read(name) {
  const [header, ...records] = readFileSync(join(sourceFolder, name), "utf8").trim().split(/\r?\n/);
  const fields = header.split(",");
  return records.map((record) => Object.fromEntries(record.split(",").map((value, i) => [fields[i], value])));
}

/** Writes a table: the header with the corner first, and of each row its label first. */
function write(name, header, rows) {
  writeFileSync(join(targetFolder, name), [header, ...rows].map((row) => row.join(",") + "\n").join(""));
}

function groupBy(rows, keyOf) {
  const groups = new Map();
  for (const row of rows) {
    const key = keyOf(row);
    if (!groups.has(key)) groups.set(key, []);
    groups.get(key).push(row);
  }
  return groups;
}

const sum = (numbers) => numbers.reduce((total, number) => total + number, 0);
const mean = (numbers) => sum(numbers) / numbers.length;
const yearOf = (date) => date.slice(0, 4);
const monthOf = (date) => months[Number(date.slice(5, 7)) - 1];
const hourOf = (date) => date.slice(11, 16);

/**
 * Carbon dioxide: the mean of each year's months, with the seasons taken out, so that a year that lacks some months
 * (1964 lacks three) is not pulled towards the others. Years with less than half of their months are left out.
 */
function carbonDioxide() {
  const byYear = groupBy(read("co2-concentration.csv"), (row) => yearOf(row.Date));
  const measured = [...byYear].filter(([, rows]) => rows.length >= 6);
  const rows = measured.map(([year, rows]) => [year, mean(rows.map((row) => Number(row["adjusted CO2"]))).toFixed(1)]);
  write("co2.csv", ["Year", "ppm"], rows);
}

/** Seattle, four years of days: the rain of a mean month, and how many days of each kind a month had. */
function seattleDays() {
  const days = read("seattle-weather.csv");
  const years = new Set(days.map((day) => yearOf(day.date))).size;
  const byMonth = groupBy(days, (day) => monthOf(day.date));

  const rain = months.map((month) => {
    const total = sum(byMonth.get(month).map((day) => Number(day.precipitation)));
    return [month, (total / years).toFixed(0)];
  });
  write("seattle-rain.csv", ["Month", "mm"], rain);

  const kinds = ["sun", "fog", "drizzle", "rain", "snow"];
  const skies = months.map((month) => [
    month,
    ...kinds.map((kind) => byMonth.get(month).filter((day) => day.weather === kind).length),
  ]);
  write("seattle-skies.csv", ["Month", "Sun", "Fog", "Drizzle", "Rain", "Snow"], skies);
}

/** Seattle, hour by hour: the mean temperature of every other hour in each month. */
function seattleHours() {
  const hours = read("seattle-weather-hourly-normals.csv");
  const columns = Array.from({ length: 12 }, (_, i) => String(2 * i).padStart(2, "0") + ":00");
  const rows = months.map((month) => [
    month,
    ...columns.map((hour) => {
      const same = hours.filter((row) => monthOf(row.date) === month && hourOf(row.date) === hour);
      return mean(same.map((row) => Number(row.temperature))).toFixed(1);
    }),
  ]);
  write("seattle-hours.csv", ["Month", ...columns], rows);
}

/** Iowa's electricity by source, in terawatt-hours: all years, and the last one alone. */
function iowaElectricity() {
  const records = read("iowa-electricity.csv");
  const sources = [...new Set(records.map((row) => row.source))];
  const years = [...new Set(records.map((row) => yearOf(row.year)))];
  const generation = (year, source) =>
    records.find((row) => yearOf(row.year) === year && row.source === source).net_generation / 1000;

  const rows = years.map((year) => [year, ...sources.map((source) => generation(year, source).toFixed(1))]);
  write("iowa-electricity.csv", ["Year", ...sources], rows);

  const last = years[years.length - 1];
  write(`iowa-${last}.csv`, ["Source", "TWh"], sources.map((source) => [source, generation(last, source).toFixed(1)]));
}

carbonDioxide();
seattleDays();
seattleHours();
iowaElectricity();
