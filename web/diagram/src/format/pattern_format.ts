// Writes numbers by a pattern, with the signs of a locale.
import type { Decimal } from "./decimal.ts";
import { decimalOf, digitsOf, magnitude, rounded, roundedToMultiple, shifted } from "./decimal.ts";
import type { Affixes, AffixPart, NumberPattern } from "./number_pattern.ts";

const noBreakSpace = "\u00a0";

/** What a locale writes numbers with. */
interface Symbols {
  readonly digits: readonly string[];
  readonly point: string;
  readonly group: string;
  readonly percent: string;
  readonly minus: string;
  readonly plus: string;
  readonly exponent: string;
  /** A currency's sign: 1 the usual one, 2 the code, 3 the name for `value`. */
  currency(width: number, value: number): string;
}

/** Gives a number's text by a pattern. `currency` is a code; `XXX` stands for none. */
export function patternFormat(pattern: NumberPattern, tag: string, currency: string): (value: number) => string {
  const symbols = symbolsOf(tag, currency, pattern);
  const percent = [...pattern.positive.prefix, ...pattern.positive.suffix].map((part) => part.kind);
  const shift = percent.includes("percent") ? 2 : percent.includes("perMille") ? 3 : 0;
  return (value) => {
    const number = shifted(decimalOf(value), shift);
    const digits = pattern.exponent ? withExponent(number, pattern, symbols) : plain(number, pattern, symbols);
    return withAffixes(digits, value, pattern, symbols);
  };
}

function hasCurrency({ positive, negative, currencyPoint }: NumberPattern): boolean {
  const affixes = [positive, negative ?? positive].flatMap(({ prefix, suffix }) => [...prefix, ...suffix]);
  return currencyPoint || affixes.some((part) => part.kind === "currency");
}

type PartType = Intl.NumberFormatPartTypes;

// By the number of currency signs in a row.
const currencyDisplays = ["symbol", "code", "name"] as const;

function symbolsOf(tag: string, currency: string, pattern: NumberPattern): Symbols {
  const format = (options: Intl.NumberFormatOptions) => new Intl.NumberFormat(tag, options);
  const sign = (type: PartType, otherwise: string, value: number, options: Intl.NumberFormatOptions): string =>
    partOf(format(options), type, value) ?? otherwise;
  // A sign may have marks of direction with it.
  const inFront = (value: number, options: Intl.NumberFormatOptions): string => {
    const parts = format(options).formatToParts(value);
    return parts.slice(0, parts.findIndex((part) => part.type === "integer")).map((part) => part.value).join("");
  };
  const isMoney = hasCurrency(pattern);
  const money: Intl.NumberFormatOptions = { style: "currency", currency };
  const amounts: Intl.NumberFormatOptions = { ...(isMoney ? money : {}), minimumFractionDigits: 1 };
  const currencies = isMoney ? currencyDisplays.map((currencyDisplay) =>
    format({ ...money, ...shownDigits(pattern), currencyDisplay })) : [];
  return {
    digits: Array.from(format({ useGrouping: false }).format(9876543210)).reverse(),
    point: sign("decimal", ".", 1.5, amounts),
    group: sign("group", ",", 1234567.5, { ...amounts, useGrouping: true }),
    minus: inFront(-1, {}),
    plus: inFront(1, { signDisplay: "always" }),
    percent: sign("percentSign", "%", 1, { style: "percent" }),
    exponent: sign("exponentSeparator", "E", 1, { notation: "scientific" }),
    currency: (width, value) => {
      const named = currencies[width - 1];
      return named ? partOf(named, "currency", value) ?? "¤" : "\ufffd";
    },
  };
}

function partOf(format: Intl.NumberFormat, type: PartType, value: number): string | undefined {
  return format.formatToParts(value).find((part) => part.type === type)?.value;
}

// As many digits as the pattern shows: they decide between "dollar" and "dollars".
function shownDigits({ minFraction, maxFraction }: NumberPattern): Intl.NumberFormatOptions {
  const most = 20;
  return { minimumFractionDigits: Math.min(minFraction, most), maximumFractionDigits: Math.min(maxFraction, most) };
}

// Rounded as the pattern says, with `digits` of them in front of the point where an exponent has moved it.
function roundedBy(number: Decimal, pattern: NumberPattern): Decimal {
  if (pattern.significant) return rounded(number, pattern.significant.max - 1 - magnitude(number));
  return pattern.increment ? roundedToMultiple(number, pattern.increment) : rounded(number, pattern.maxFraction);
}

function plain(number: Decimal, pattern: NumberPattern, symbols: Symbols): string {
  const result = roundedBy(number, pattern);
  const minFraction = pattern.significant ? pattern.significant.min - 1 - magnitude(result) : pattern.minFraction;
  return written(result, pattern.minWhole, minFraction, pattern, symbols);
}

function written(
  number: Decimal, minWhole: number, minFraction: number, pattern: NumberPattern, symbols: Symbols,
): string {
  const { whole, fraction } = digitsOf(number);
  const behind = fraction.padEnd(Math.max(minFraction, 0), "0");
  // There is a digit in any case.
  const before = whole.padStart(behind === "" ? Math.max(minWhole, 1) : minWhole, "0");
  const point = pattern.currencyPoint ? symbols.currency(1, 0) : symbols.point;
  const hasPoint = behind !== "" || pattern.keepsPoint;
  return localized(before, pattern.groups, symbols) + (hasPoint ? point : "") + localized(behind, [0, 0], symbols);
}

function withExponent(number: Decimal, pattern: NumberPattern, symbols: Symbols): string {
  const { minWhole, interval, isFixed, round, minFraction } = mantissaOf(pattern);
  const shiftOf = (power: number): number => {
    if (isFixed) return interval - power - 1;
    return (interval <= 1 ? 0 : ((power % interval) + interval) % interval) - power;
  };
  let shift = number.mantissa === 0n ? 0 : shiftOf(magnitude(number));
  let mantissa = round(shifted(number, shift));
  // 9.99 may have become 10.0, which asks for another exponent.
  if (number.mantissa !== 0n && magnitude(mantissa) !== magnitude(number) + shift) {
    const next = shiftOf(magnitude(number) + 1);
    if (next !== shift) mantissa = round(shifted(number, next));
    shift = next;
  }
  const power = -shift;
  const sign = power < 0 ? symbols.minus : pattern.exponent?.plus ? symbols.plus : "";
  const digits = String(Math.abs(power)).padStart(pattern.exponent?.minDigits ?? 1, "0");
  return written(mantissa, minWhole, minFraction(mantissa), pattern, symbols)
    + symbols.exponent + sign + localized(digits, [0, 0], symbols);
}

interface Mantissa {
  minWhole: number;
  /** How many digits stand in front of the point at most, or always where it is fixed. */
  interval: number;
  isFixed: boolean;
  round: (number: Decimal) => Decimal;
  minFraction: (number: Decimal) => number;
}

// With an exponent a pattern counts significant digits.
function mantissaOf(pattern: NumberPattern): Mantissa {
  let { minWhole, maxWhole } = pattern;
  const isFractionOnly = minWhole === 0 && pattern.maxFraction > 0;
  const minFraction = isFractionOnly && maxWhole === 0 ? Math.max(pattern.minFraction, 1) : pattern.minFraction;
  if (!isFractionOnly) minWhole = Math.max(minWhole, 1);
  if (maxWhole >= 0) maxWhole = Math.max(maxWhole, minWhole);
  if (maxWhole > 8) maxWhole = minWhole;
  else if (maxWhole > minWhole && minWhole > 1) minWhole = 1;
  return {
    minWhole,
    interval: maxWhole,
    isFixed: maxWhole === minWhole,
    ...significance(pattern, minFraction),
  };
}

function significance(pattern: NumberPattern, minFraction: number): Pick<Mantissa, "round" | "minFraction"> {
  if (pattern.increment) return { round: (number) => roundedBy(number, pattern), minFraction: () => minFraction };
  const zeros = pattern.minWhole;
  let range = pattern.significant;
  if (!range) {
    if (zeros === 0 && pattern.maxFraction === 0) return { round: (number) => number, minFraction: () => 0 };
    if (zeros === 0 && pattern.minFraction === 0) {
      range = { min: 1, max: pattern.maxFraction + 1 };
    } else {
      const counted = pattern.maxWhole > zeros && zeros > 1 ? 1 : zeros;
      range = { min: counted + pattern.minFraction, max: zeros + pattern.maxFraction };
    }
  }
  const { min, max } = range;
  return {
    round: (number) => rounded(number, max - 1 - magnitude(number)),
    minFraction: (number) => min - 1 - magnitude(number),
  };
}

function localized(digits: string, [first, others]: readonly [number, number], symbols: Symbols): string {
  let text = "";
  for (let i = 0; i < digits.length; ++i) {
    const behind = digits.length - i;
    const isGroupEnd = first > 0 && (behind === first || (behind > first && (behind - first) % others === 0));
    text += (i > 0 && isGroupEnd ? symbols.group : "") + (symbols.digits[Number(digits[i])] ?? "");
  }
  return text;
}

function withAffixes(digits: string, value: number, pattern: NumberPattern, symbols: Symbols): string {
  const isNegative = value < 0;
  const affixes: Affixes = (isNegative && pattern.negative) || pattern.positive;
  const sign = isNegative && !pattern.negative ? symbols.minus : "";
  let prefix = sign + affixText(affixes.prefix, value, symbols);
  let suffix = affixText(affixes.suffix, value, symbols);
  // A currency's letters keep a distance from the digits.
  const isDigit = (character: string): boolean => symbols.digits.includes(character);
  if (isDigit(digits.charAt(0)) && isCurrencyWord(affixes.prefix[affixes.prefix.length - 1], prefix.slice(-1))) {
    prefix += noBreakSpace;
  }
  if (isDigit(digits.slice(-1)) && isCurrencyWord(affixes.suffix[0], suffix.charAt(0))) suffix = noBreakSpace + suffix;
  if (!pattern.padding) return prefix + digits + suffix;

  const { character, place, width } = pattern.padding;
  const fill = character.repeat(Math.max(width - Array.from(prefix + digits + suffix).length, 0));
  const at = (here: typeof place): string => (here === place ? fill : "");
  return at("beforePrefix") + prefix + at("afterPrefix") + digits + at("beforeSuffix") + suffix + at("afterSuffix");
}

function isCurrencyWord(part: AffixPart | undefined, character: string): boolean {
  return part?.kind === "currency" && /[^\p{S}\p{Z}]/u.test(character);
}

function affixText(parts: readonly AffixPart[], value: number, symbols: Symbols): string {
  return parts.map((part) => {
    if (part.kind === "text") return part.text;
    if (part.kind === "currency") return symbols.currency(part.width, value);
    return part.kind === "perMille" ? "‰" : symbols[part.kind];
  }).join("");
}
