// How values are written (docs/formats.md).
import { numberOfText, textOfNumber } from "../settings/numbers.ts";
import type { Style } from "../settings/style.ts";
import { currencyOfCountry } from "./currencies.ts";
import { dateOf, isDate } from "./dates.ts";
import type { FormatLocale } from "./locale.ts";
import { likeliestCountry, localeOf } from "./locale.ts";
import { readPattern } from "./number_pattern.ts";
import { patternFormat } from "./pattern_format.ts";

export interface ValueFormat {
  /** A cell's text as the chart shows it: what is no number (or no date) stays as it is. */
  text(cellText: string): string;
  /** A number that the chart has worked out (an axis' tick, a sum), in the same form. */
  number(value: number): string;
  /** A share, 0.5 as 50 %, in the chart's locale. */
  share(value: number): string;
  /** Numbers stand for dates: they have an order, but no sum. */
  readonly hasDates: boolean;
}

const dateType = 5;
const dateStyles = ["full", "long", "medium", "short"] as const;

/** Makes what writes a number (or a date, in milliseconds) of a type of format. */
type MakeWriter = (style: Style, locale: FormatLocale) => (value: number) => string;

const intlWriter = (options: (locale: FormatLocale) => Intl.NumberFormatOptions): MakeWriter => (_, locale) => {
  const format = new Intl.NumberFormat(locale.tag, options(locale));
  return (value) => format.format(value);
};

const plainWriter: MakeWriter = () => textOfNumber;

/** By FormatType. */
const writers: readonly MakeWriter[] = [
  (style, locale) => patternFormat(readPattern(style.FormatPattern), locale.tag, currencyOf(locale)),
  intlWriter((locale) => ({ style: "currency", currency: currencyOf(locale) })),
  intlWriter(() => ({ style: "percent" })),
  intlWriter(() => ({})),
  plainWriter,
  (style, { tag }) => {
    const dateStyle = dateStyles[style.FormatDateStyle] ?? "medium";
    const format = new Intl.DateTimeFormat(tag, { dateStyle, timeZone: "UTC" });
    // An axis may reach farther than any date.
    return (value) => (isDate(value) ? format.format(value) : textOfNumber(value));
  },
];

function currencyOf(locale: FormatLocale): string {
  return currencyOfCountry(likeliestCountry(locale));
}

/**
 * The format of a style. `languages` are tags for the current locale, the best first: the page's, then the reader's. A
 * `SettingError` for a pattern that is none.
 */
export function valueFormat(style: Style, languages: readonly string[]): ValueFormat {
  const locale = localeOf(style, languages);
  const write = (writers[style.FormatType] ?? plainWriter)(style, locale);
  const numberOf = numberReader(style);
  const shares = new Intl.NumberFormat(locale.tag, { style: "percent", maximumFractionDigits: 1 });
  return {
    text: (cellText) => {
      const value = numberOf(cellText);
      return value === null ? cellText : write(value + 0);  // a zero has no sign
    },
    // Twelve digits leave out what binary fractions add: 0.1 + 0.2 is 0.3.
    number: (value) => write((Number.isInteger(value) ? value : Number(value.toPrecision(12))) + 0),
    share: (value) => shares.format(value),
    hasDates: style.FormatType === dateType,
  };
}

/** What reads a cell's number: with a date format, the milliseconds of a date. */
export function numberReader(style: Style): (text: string) => number | null {
  return style.FormatType === dateType ? dateOf : numberOfText;
}
