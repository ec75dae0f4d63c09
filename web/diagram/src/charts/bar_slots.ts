// How the bars of a category share its band.
import type { Look } from "../look/look.ts";
import type { Drawn } from "./drawn.ts";

/** From the middle of the category to the bar's beginning, and the bar's width; in pixels. */
export interface Slot {
  readonly offset: number;
  readonly width: number;
}

// Of a band, and of a bar.
const airOfBand = 0.28;
const gapOfBar = 0.08;

/** The slot of each series of bars, in bands of this width: stacks share one, all others have their own. */
export function slotsOf(visible: readonly Drawn[], band: number, look: Look): ReadonlyMap<Drawn, Slot> {
  const bars = visible.filter(({ kind }) => kind === "bar");
  const stack = bars.filter(({ isStacked }) => isStacked);
  const alone = bars.filter(({ isStacked }) => !isStacked).map((one) => [one]);
  const groups = stack.length > 0 ? [stack, ...alone] : alone;
  const count = groups.length;
  const most = Math.max(56, look.fontSize * 4);
  const width = Math.min((band * (1 - airOfBand)) / Math.max(count + gapOfBar * (count - 1), 1), most);
  const whole = width * (count + gapOfBar * (count - 1));
  return new Map(groups.flatMap((group, index) =>
    group.map((one): [Drawn, Slot] => [one, { offset: index * width * (1 + gapOfBar) - whole / 2, width }])));
}

/** "each": a shape for each bar; "all": one shape for those of a series; "hairs": they stand behind each other. */
export type Crowd = "each" | "all" | "hairs";

// In bands of so few pixels nobody could tell bars beside each other.
const narrowBand = 2;
// More shapes than these take their time.
const mostShapes = 1500;

/** How so many bars on show are drawn: in bands, and with bars, of these widths in pixels. */
export function crowdOf(band: number, width: number, count: number): Crowd {
  if (areHairs(band)) return "hairs";
  return width < 1 || areMany(count) ? "all" : "each";
}

/** The bars of bands of this width stand behind each other. */
export function areHairs(band: number): boolean {
  return band <= narrowBand;
}

/** So many bars have no shape each, however wide they are. */
export function areMany(count: number): boolean {
  return count > mostShapes;
}
