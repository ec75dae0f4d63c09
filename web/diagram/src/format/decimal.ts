// Decimal numbers without a sign, for rounding what people see rather than what doubles hold.

/** The number `mantissa` / 10 ^ `scale`. */
export interface Decimal {
  readonly mantissa: bigint;
  readonly scale: number;
}

/** The shortest decimal number that reads back as the magnitude of `value`. */
export function decimalOf(value: number): Decimal {
  const [digits = "0", exponent = "0"] = Math.abs(value).toExponential().split("e");
  const [whole = "0", fraction = ""] = digits.split(".");
  return atPositiveScale({ mantissa: BigInt(whole + fraction), scale: fraction.length - Number(exponent) });
}

/** The decimal number times ten to a power. */
export function shifted(number: Decimal, power: number): Decimal {
  return atPositiveScale({ mantissa: number.mantissa, scale: number.scale - power });
}

/** Rounded to so many digits behind the point, in front of it where negative; ties go up. */
export function rounded(number: Decimal, digits: number): Decimal {
  if (number.scale <= digits) return number;
  const unit = 10n ** BigInt(number.scale - digits);
  return atPositiveScale({ mantissa: (number.mantissa + unit / 2n) / unit, scale: digits });
}

/** Rounded to the nearest multiple of a decimal number other than 0; ties go up. */
export function roundedToMultiple(number: Decimal, of: Decimal): Decimal {
  const scale = Math.max(number.scale, of.scale);
  const step = atScale(of, scale);
  const count = (2n * atScale(number, scale) + step) / (2n * step);
  return { mantissa: count * step, scale };
}

/** The power of ten of the first digit: 2 for 123.4; 0 for zero. */
export function magnitude(number: Decimal): number {
  return number.mantissa === 0n ? 0 : String(number.mantissa).length - 1 - number.scale;
}

/** The digits before and behind the point, without zeros at either end. */
export function digitsOf(number: Decimal): { whole: string; fraction: string } {
  const digits = String(number.mantissa).padStart(number.scale, "0");
  const point = digits.length - number.scale;
  return { whole: digits.slice(0, point).replace(/^0+/, ""), fraction: digits.slice(point).replace(/0+$/, "") };
}

function atScale(number: Decimal, scale: number): bigint {
  return number.mantissa * 10n ** BigInt(scale - number.scale);
}

function atPositiveScale(number: Decimal): Decimal {
  return number.scale >= 0 ? number : { mantissa: atScale(number, 0), scale: 0 };
}
