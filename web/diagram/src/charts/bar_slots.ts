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

/**
 * The slots of bars that are hairs: where those beside each other have less than a pixel each, all have the whole band,
 * and stand behind each other. A lone bar or stack is as wide as a pixel.
 */
export function hairSlotsOf(visible: readonly Drawn[], band: number, look: Look): ReadonlyMap<Drawn, Slot> {
  const slots = slotsOf(visible, band, look);
  const own = [...slots.values()];
  const isShared = own.some(({ offset, width }) => width < 1 && offset !== own[0]?.offset);
  return new Map([...slots].map(([one, { offset }]) =>
    [one, isShared ? { offset: -band / 2, width: band } : { offset, width: 1 }]));
}
