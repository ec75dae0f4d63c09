// Dates as data hold them.
import { numberOfText } from "../settings/numbers.ts";

const written = /^(\d{4})(?:-(\d\d)(?:-(\d\d)([Tt ][0-9:.,+\-Zz]+)?)?)?$/;
// What a date can be in browsers: a hundred million days on either side of 1970.
const furthest = 8.64e15;

/**
 * The day that a text stands for, in milliseconds since 1970 (UTC): `2024-05-17` as it stands, whatever time follows;
 * `2024-05` and `2024` the first of the month or year; any other number itself. Null for what is no date.
 */
export function dateOf(text: string): number | null {
  const trimmed = text.replace(/^[ \t\r\n]+|[ \t\r\n]+$/g, "");
  const parts = written.exec(trimmed);
  const day = parts && startOfDay(Number(parts[1]), Number(parts[2] ?? 1), Number(parts[3] ?? 1));
  if (day !== null) return day;
  const number = numberOfText(trimmed);
  return number !== null && isDate(number) ? number : null;
}

/** Whether the number of milliseconds is a date that calendars know. */
export function isDate(milliseconds: number): boolean {
  return Math.abs(milliseconds) <= furthest;
}

// Null for a day that is in no calendar.
function startOfDay(year: number, month: number, day: number): number | null {
  const date = new Date(0);
  date.setUTCFullYear(year, month - 1, day);
  const exists = date.getUTCMonth() === month - 1 && date.getUTCDate() === day;
  return exists ? date.getTime() : null;
}
