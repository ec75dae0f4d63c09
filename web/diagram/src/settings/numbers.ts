// Numbers as texts, in every place the same and in no reader's locale.

const numberPattern = /^[ \t]*(?:\+(?!-))?(-?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)[ \t]*$/;

/** The number that a text is: "1234.5", "-1e3", blanks around it; null when it is none or too large for any. */
export function numberOfText(text: string): number | null {
  const value = parsedNumber(text);
  return value !== null && Number.isFinite(value) ? value : null;
}

/** As `numberOfText`, but infinite where the number is too large. */
export function parsedNumber(text: string): number | null {
  const number = numberPattern.exec(text)?.[1];
  return number === undefined ? null : Number(number);
}

/** The shortest text that reads back equal, with a point: "0.1"; very large and very small ones with an exponent. */
export function textOfNumber(value: number): string {
  const magnitude = Math.abs(value);
  if (magnitude === 0) return "0";
  if (magnitude >= 1e-5 && magnitude < 1e15) return String(value);
  return value.toExponential().replace(/e([+-])(\d)$/, "e$10$2");
}
