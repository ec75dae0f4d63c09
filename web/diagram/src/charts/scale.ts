// Round numbers for an axis.
import { extent } from "../data/extent.ts";

export interface Scale {
  readonly from: number;
  readonly to: number;
  /** From `from` to `to`, at equal distances or steps of the calendar. */
  readonly ticks: readonly number[];
}

/** A scale over values with about so many steps of 1, 2, 2.5 or 5 times a power of ten. */
export function scaleOf(values: readonly number[], steps: number): Scale {
  const { least, greatest } = extent(values);
  if (!(greatest > least)) return { from: Math.min(least, 0) || 0, to: 1, ticks: [0, 1] };
  const raw = (greatest - least) / steps;
  const power = 10 ** Math.floor(Math.log10(raw));
  const step = ([1, 2, 2.5, 5].find((factor) => factor * power >= raw * 0.999) ?? 10) * power;
  const first = Math.floor(least / step + 1e-9);
  const count = Math.ceil(greatest / step - 1e-9) - first;
  // Multiples of a step as 0.1 have digits too many.
  const digits = Math.min(Math.max(1 - Math.floor(Math.log10(step)), 0), 100);
  const at = (index: number): number => {
    const value = (first + index) * step;
    return digits <= 15 ? Number(value.toFixed(digits)) : value;
  };
  const ticks = Array.from({ length: count + 1 }, (_, index) => at(index));
  return { from: at(0), to: at(count), ticks };
}
