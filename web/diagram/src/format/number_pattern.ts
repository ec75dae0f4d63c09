// Reads number patterns, as `#,##0.00;(#,##0.00)` (docs/formats.md).
import type { Decimal } from "./decimal.ts";
import { SettingError } from "../settings/setting_error.ts";

/** A piece of the text in front of a number or behind it. */
export type AffixPart =
  | { readonly kind: "text"; readonly text: string }
  | { readonly kind: "percent" | "perMille" | "minus" | "plus" }
  | { readonly kind: "currency"; readonly width: number };

export interface Affixes {
  readonly prefix: readonly AffixPart[];
  readonly suffix: readonly AffixPart[];
}

export interface NumberPattern {
  readonly positive: Affixes;
  /** Null: the positive ones behind a minus sign. */
  readonly negative: Affixes | null;
  readonly minWhole: number;
  /** Counts with an exponent only. */
  readonly maxWhole: number;
  readonly minFraction: number;
  readonly maxFraction: number;
  /** How many digits a group has, the one at the point first; 0: no groups. */
  readonly groups: readonly [number, number];
  /** How many digits count, in place of those behind the point; null: it is those that do. */
  readonly significant: { readonly min: number; readonly max: number } | null;
  /** Numbers are rounded to multiples of it. */
  readonly increment: Decimal | null;
  readonly exponent: { readonly minDigits: number; readonly plus: boolean } | null;
  /** The point shows even where nothing follows. */
  readonly keepsPoint: boolean;
  /** The currency's sign stands in the point's place. */
  readonly currencyPoint: boolean;
  readonly padding: Padding | null;
}

export interface Padding {
  readonly character: string;
  readonly place: PaddingPlace;
  /** Characters of the whole. */
  readonly width: number;
}

export type PaddingPlace = "beforePrefix" | "afterPrefix" | "beforeSuffix" | "afterSuffix";

const problems = {
  special: "a character that has a meaning of its own stands where it has none; quote it with '",
  order: "\"#\" comes before \"0\" left of the point and after it to the right, \",\" between digits",
  open: "a quote (') or a fill (*) is not complete",
  exponent: "an exponent and \",\" do not go together",
  fills: "there is more than one fill (*)",
} as const;

/** The pattern that a text is; a `SettingError` where it is none. The empty text stands for up to six decimals. */
export function readPattern(text: string): NumberPattern {
  if (text === "") return { ...readPattern("#.######"), minWhole: 1 };
  const reader = new PatternReader(text);
  const positive = reader.readSubpattern();
  const negative = reader.take(";") && !reader.atEnd() ? reader.readSubpattern() : null;
  if (!reader.atEnd()) throw patternError("special");
  return patternOf(positive, negative);
}

function patternError(problem: keyof typeof problems): SettingError {
  return new SettingError(`Pattern: ${problems[problem]}`, "FormatPattern");
}

/** What one of the two halves of a pattern says. */
interface Subpattern extends Affixes, NumberPart {
  padding: { character: string; place: PaddingPlace } | null;
}

interface NumberPart {
  /** Characters of the number, without its prefix and suffix. */
  width: number;
  /** Of the whole part: "#" in front, "0" and other digits, "@" and "#" behind those. */
  hashes: number;
  zeros: number;
  ats: number;
  hashesAfterAts: number;
  /** Digits since the last "," and between the last two; -1: no such ",". */
  groups: [number, number];
  hasPoint: boolean;
  currencyPoint: boolean;
  fractionZeros: number;
  fractionHashes: number;
  /** All digits other than 0, with the zeros between them. */
  incrementDigits: string;
  exponent: { minDigits: number; plus: boolean } | null;
}

class PatternReader {
  private readonly characters: readonly string[];
  private position = 0;

  constructor(text: string) {
    this.characters = Array.from(text);
  }

  atEnd(): boolean {
    return this.position >= this.characters.length;
  }

  take(character: string): boolean {
    if (this.peek() !== character) return false;
    this.position += 1;
    return true;
  }

  readSubpattern(): Subpattern {
    let padding = this.readPadding(null, "beforePrefix");
    const prefix = this.readAffix();
    padding = this.readPadding(padding, "afterPrefix");
    const number = this.readNumber();
    padding = this.readPadding(padding, "beforeSuffix");
    const suffix = this.readAffix();
    padding = this.readPadding(padding, "afterSuffix");
    return { ...number, prefix, suffix, padding };
  }

  private peek(): string {
    return this.characters[this.position] ?? "";
  }

  private readPadding(before: Subpattern["padding"], place: PaddingPlace): Subpattern["padding"] {
    if (this.peek() !== "*") return before;
    if (before) throw patternError("fills");
    this.position += 1;
    return { character: this.readLiteral(), place };
  }

  private readAffix(): AffixPart[] {
    const parts: AffixPart[] = [];
    const marks: Readonly<Record<string, "percent" | "perMille" | "minus" | "plus">> =
      { "%": "percent", "‰": "perMille", "-": "minus", "+": "plus" };
    while (!this.atEnd() && !/[#@;*.,0-9]/.test(this.peek())) {
      const mark = marks[this.peek()];
      if (mark) {
        this.position += 1;
        parts.push({ kind: mark });
      } else if (this.peek() === "¤") {
        let width = 0;
        while (this.take("¤")) width += 1;
        parts.push({ kind: "currency", width });
      } else {
        parts.push({ kind: "text", text: this.readLiteral() });
      }
    }
    return parts;
  }

  // One character, or what stands in quotes; two quotes are one.
  private readLiteral(): string {
    if (this.atEnd()) throw patternError("open");
    const first = this.peek();
    this.position += 1;
    if (first !== "'") return first;
    if (this.take("'")) return "'";
    let text = "";
    for (; !this.atEnd(); this.position += 1) {
      if (this.peek() !== "'") {
        text += this.peek();
      } else if (this.characters[this.position + 1] === "'") {
        text += "'";
        this.position += 1;
      } else {
        this.position += 1;
        return text;
      }
    }
    throw patternError("open");
  }

  private readNumber(): NumberPart {
    const from = this.position;
    const number: NumberPart = {
      width: 0, hashes: 0, zeros: 0, ats: 0, hashesAfterAts: 0, groups: [-1, -1], hasPoint: false,
      currencyPoint: false, fractionZeros: 0, fractionHashes: 0, incrementDigits: "", exponent: null,
    };
    this.readWhole(number);
    number.currencyPoint = this.peek() === "¤" && /[#0-9]/.test(this.characters[this.position + 1] ?? "");
    if (number.currencyPoint || this.peek() === ".") {
      this.position += 1;
      number.hasPoint = true;
      this.readFraction(number);
    }
    if (this.peek() === "E") number.exponent = this.readExponent(number.groups[0] >= 0);
    number.width = this.position - from;
    return number;
  }

  private readWhole(number: NumberPart): void {
    // Digits in each group so far, the first one from the start.
    const groups = [0];
    for (;; this.position += 1) {
      const character = this.peek();
      if (character === ",") {
        groups.push(0);
        continue;
      }
      if (character === "#") {
        if (number.zeros > 0) throw patternError("order");
        if (number.ats > 0) number.hashesAfterAts += 1;
        else number.hashes += 1;
      } else if (character === "@") {
        if (number.zeros > 0 || number.hashesAfterAts > 0) throw patternError("order");
        number.ats += 1;
      } else if (/^[0-9]$/.test(character)) {
        if (number.ats > 0) throw patternError("order");
        number.zeros += 1;
        number.incrementDigits += character;
      } else {
        break;
      }
      groups.push((groups.pop() ?? 0) + 1);
    }
    const [last, before] = [groups[groups.length - 1] ?? 0, groups[groups.length - 2] ?? 0];
    // A "," in front of all digits opens a group of its own, which may be empty.
    if ((groups.length > 1 && last === 0) || (groups.length > 2 && before === 0)) throw patternError("order");
    number.groups = [groups.length > 1 ? last : -1, groups.length > 2 ? before : -1];
  }

  private readFraction(number: NumberPart): void {
    for (; /^[#0-9]$/.test(this.peek()); this.position += 1) {
      if (this.peek() === "#") {
        number.fractionHashes += 1;
      } else {
        if (number.fractionHashes > 0) throw patternError("order");
        number.fractionZeros += 1;
        number.incrementDigits += this.peek();
      }
    }
  }

  private readExponent(hasGroups: boolean): NumberPart["exponent"] {
    if (hasGroups) throw patternError("exponent");
    this.position += 1;
    const plus = this.take("+");
    let minDigits = 0;
    while (this.take("0")) minDigits += 1;
    return minDigits > 0 ? { minDigits, plus } : null;
  }
}

function patternOf(positive: Subpattern, negative: Subpattern | null): NumberPattern {
  const { hashes, zeros, ats, hashesAfterAts, fractionZeros, fractionHashes, exponent } = positive;
  const [first, others] = positive.groups;
  const wholeDigits = hashes + zeros + ats + hashesAfterAts;
  const maxFraction = fractionZeros + fractionHashes;
  const isFractionOnly = wholeDigits === 0 && maxFraction > 0;
  const hasIncrement = ats === 0 && /[1-9]/.test(positive.incrementDigits);
  let minWhole = zeros;
  if (exponent) minWhole = ats > 0 ? 1 : zeros;
  else if (!isFractionOnly && zeros === 0 && fractionZeros === 0) minWhole = 1;
  return {
    positive: { prefix: positive.prefix, suffix: positive.suffix },
    negative: negative && { prefix: negative.prefix, suffix: negative.suffix },
    minWhole,
    maxWhole: ats > 0 ? -1 : wholeDigits,
    minFraction: isFractionOnly ? Math.max(1, fractionZeros) : fractionZeros,
    maxFraction,
    groups: [Math.max(first, 0), Math.max(others < 0 ? first : others, 0)],
    significant: ats > 0 ? { min: ats, max: ats + hashesAfterAts } : null,
    increment: hasIncrement ? { mantissa: BigInt(positive.incrementDigits), scale: fractionZeros } : null,
    exponent,
    keepsPoint: positive.hasPoint && maxFraction === 0,
    currencyPoint: positive.currencyPoint,
    padding: positive.padding && { ...positive.padding, width: positive.width + affixWidth(positive) },
  };
}

function affixWidth({ prefix, suffix }: Affixes): number {
  return [...prefix, ...suffix].reduce((width, part) => width + partWidth(part), 0);
}

function partWidth(part: AffixPart): number {
  if (part.kind === "text") return Array.from(part.text).length;
  return part.kind === "currency" ? part.width : 1;
}
