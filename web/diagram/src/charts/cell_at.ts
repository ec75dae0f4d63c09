// Which value of a chart with categories stands at a place, however densely they are drawn.
import { areHairs, type Slot, slotsOf } from "./bar_slots.ts";
import type { CellPlace, Plane, Spot } from "./chart.ts";
import { barHairs, chosenRows, inFront } from "./dense_bars.ts";
import { baseBelow, type Context, type Drawn, upAxisOf } from "./drawn.ts";
import { type HairSeries, seenOf } from "./hairs.ts";

// How far readers may miss, in pixels.
const reach = 16;
// Where categories are narrower, those beside the nearest one count as well.
const narrow = 3;
// A line that is nearer than this goes before the bar or surface on which it lies.
const onTop = 6;

interface Found {
  readonly one: Drawn;
  readonly row: number;
  /** How far the shape is, and its point. */
  readonly away: number;
  readonly fromPoint: number;
}

/** The cell of the bar, line or surface at a place or nearest to it, in the category there. */
export function cellAt(context: Context, spot: Spot, plane: Plane): CellPlace | null {
  const visible = context.drawn.filter(({ series }) => plane.isShown(series.name));
  const rows = context.drawn[0]?.values.length ?? 0;
  const start = plane.along(0);
  const step = rows > 1 ? (plane.along(rows - 1) - start) / (rows - 1) : plane.length;
  const at = (spot.along - start) / step;
  const around = Math.abs(step) < 2 * narrow ? narrow / Math.abs(step) : 0;
  const [first = 0, last = -1] = [at - around, at + around].map((place) =>
    Math.min(Math.max(Math.round(place), 0), rows - 1));
  const band = Math.abs(step);
  const measures: Record<Drawn["kind"], Measure> = {
    bar: areHairs(band)
      ? hairMeasure(context, visible, plane, { band, spot, first, last })
      : barMeasure(context, visible, plane, slotsOf(visible, band, context.scene.look)),
    line: lineMeasure(context, visible, plane),
    area: lineMeasure(context, visible, plane),
  };
  let best: Found | null = null;
  for (const one of visible) {
    for (let row = first; row <= last; row += 1) {
      const distance = measures[one.kind](one, row, spot);
      if (!distance) continue;
      const found = { one, row, ...distance };
      if (!best || isNearer(found, best)) best = found;
    }
  }
  const cell = best?.one.series.points[best.row]?.cell;
  return cell ? { row: cell[0], column: cell[1] } : null;
}

type Distance = Pick<Found, "away" | "fromPoint">;

/** How far a series' value in a row is; null: too far, or a gap. */
type Measure = (one: Drawn, row: number, spot: Spot) => Distance | null;

// Of two that are equally near the later one lies in front.
function isNearer(one: Found, other: Found): boolean {
  const difference = one.away - other.away;
  return Math.abs(difference) > 0.01 ? difference < 0 : one.fromPoint <= other.fromPoint;
}

/** The places of a value's two ends: where its shape begins, and where it has its point. */
function endsOf(context: Context, visible: readonly Drawn[], plane: Plane): (one: Drawn, row: number) => Ends | null {
  return (one, row) => {
    const value = one.values[row] ?? null;
    if (value === null) return null;
    const alike = visible.filter(({ kind }) => (kind === "bar") === (one.kind === "bar"));
    const base = one.isStacked ? baseBelow(alike, one, row) : 0;
    const axis = upAxisOf(context, one);
    return { along: plane.along(row), base: plane.up(base, axis), top: plane.up(base + value, axis) };
  };
}

interface Ends {
  readonly along: number;
  readonly base: number;
  readonly top: number;
}

/** `isHair`: bars are less than a pixel wide, and are told apart by their ends. */
function barMeasure(
  context: Context, visible: readonly Drawn[], plane: Plane, slots: ReadonlyMap<Drawn, Slot>, isHair = false,
): Measure {
  const ends = endsOf(context, visible, plane);
  return (one, row, spot) => {
    const at = ends(one, row);
    const slot = slots.get(one);
    if (!at || !slot) return null;
    const left = at.along + slot.offset;
    const along = outside(spot.along, left, left + slot.width);
    const away = Math.hypot(along, outside(spot.up, at.base, at.top));
    if (away > reach) return null;
    return { away: Math.max(away, onTop), fromPoint: isHair ? away : along };
  };
}

interface Near {
  /** Of a category, in pixels. */
  readonly band: number;
  readonly spot: Spot;
  /** The rows around the spot. */
  readonly first: number;
  readonly last: number;
}

/** The bar whose colour is at the spot, of selected rows if it is marked; where there is none, the nearest. */
function hairMeasure(context: Context, visible: readonly Drawn[], plane: Plane, near: Near): Measure {
  const { band, spot, first, last } = near;
  const bars = visible.filter(({ kind }) => kind === "bar");
  const around = Array.from({ length: last - first + 1 }, (_, index) => first + index);
  const hairsIn = (rowsOf: (index: number) => readonly number[]): HairSeries[] => bars.map((one, index) => {
    const axis = upAxisOf(context, one);
    const up = (value: number): number => plane.up(value, axis);
    return barHairs({ visible: bars, band }, one, { along: plane.along, up }, rowsOf(index));
  });
  // Of a stack the later ones are painted over those before.
  const indexAt = (all: readonly HairSeries[]): number => {
    const isThere = all.map(({ hairs }) => hairs.some(({ pixel, low, high }) =>
      pixel === Math.floor(spot.along) && low <= spot.up && spot.up < high));
    return isThere.lastIndexOf(true);
  };
  const chosen = bars.map((one) => chosenRows(context, one));
  const chosenHere = chosen.map((rows) => rows.filter((row) => row >= first && row <= last));
  const seen = seenOf(hairsIn(() => around));
  const count = chosen.reduce((sum, { length }) => sum + length, 0);
  const marked = indexAt(inFront(seen, hairsIn((index) => chosenHere[index] ?? []), count));
  const there = bars[marked >= 0 ? marked : indexAt(seen)];
  const rows = marked >= 0 ? chosenHere[marked] : undefined;
  const slots = new Map(bars.map((one) => [one, { offset: -band / 2, width: band }]));
  const measure = barMeasure(context, visible, plane, slots, true);
  return (one, row, place) => {
    const isOther = (there !== undefined && one !== there) || rows?.includes(row) === false;
    return isOther ? null : measure(one, row, place);
  };
}

function lineMeasure(context: Context, visible: readonly Drawn[], plane: Plane): Measure {
  const ends = endsOf(context, visible, plane);
  return (one, row, spot) => {
    const at = ends(one, row);
    if (!at) return null;
    const point = { along: at.along, up: at.top };
    const fromPoint = Math.hypot(spot.along - point.along, spot.up - point.up);
    const beside = [row - 1, row + 1].flatMap((next) => {
      const other = ends(one, next);
      return other ? [fromSegment(spot, point, { along: other.along, up: other.top })] : [];
    });
    const away = Math.min(fromPoint, ...beside);
    if (away <= reach) return { away, fromPoint };
    // A surface reaches down to what it stands on.
    const isOnSurface = one.kind === "area" && outside(spot.up, at.base, at.top) === 0;
    return isOnSurface ? { away: one.isStacked ? reach : away, fromPoint } : null;
  };
}

/** How far a number is from a range, whichever of its ends is the lower one. */
function outside(value: number, one: number, other: number): number {
  return Math.max(Math.min(one, other) - value, 0, value - Math.max(one, other));
}

function fromSegment(spot: Spot, from: Spot, to: Spot): number {
  const [along, up] = [to.along - from.along, to.up - from.up];
  const square = along * along + up * up;
  const part = square === 0 ? 0 : ((spot.along - from.along) * along + (spot.up - from.up) * up) / square;
  const share = Math.min(Math.max(part, 0), 1);
  return Math.hypot(spot.along - from.along - along * share, spot.up - from.up - up * share);
}
