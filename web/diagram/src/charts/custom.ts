// Series that are drawn by hand.
import type { CustomSeriesRenderItemAPI, CustomSeriesRenderItemParams } from "echarts";
import type { CustomSeriesOption } from "echarts/charts";
import { graphic } from "echarts/core";

/** What the library tells and does for a hand-drawn series while it draws. */
export type Api = CustomSeriesRenderItemAPI;

/** What the library tells of the item that it draws, and of the plot around it. */
export type Drawing = CustomSeriesRenderItemParams;

/** A graphic element as the library takes it: its `type`, `shape`, `style`. */
export type Shape = { readonly type: string; readonly [property: string]: unknown };

/** What draws a long path, in pixels. */
export interface Pen {
  moveTo(x: number, y: number): unknown;
  lineTo(x: number, y: number): unknown;
  closePath(): unknown;
}

const traced = "plexoras-traced";
graphic.registerShape(traced, graphic.extendShape({
  buildPath: (pen: Pen, { path }: { path?: { trace(pen: Pen): void } }) => path?.trace(pen),
}));

/** A path of thousands of places: as a text it would be written, read and written once more. */
export function tracedShape(trace: (pen: Pen) => void, style: object): Shape {
  // In an object: the library takes a function for a list, because it has a length.
  return { type: traced, silent: true, shape: { path: { trace } }, style };
}

/** A place that is exact enough for thousands of others beside it, and short where it is written. */
export function tenth(place: number): number {
  return Math.round(place * 10) / 10;
}

/** What a hand-drawn series needs; everything else is passed on as it stands. */
export interface HandDrawn {
  readonly name: string;
  readonly color: string;
  /** Objects with `value` and, where an item stands for a cell, `cell`. */
  readonly data: readonly object[];
  /** Draws one item; none: nothing. */
  readonly draw: (params: Drawing, api: Api) => readonly Shape[];
  readonly [property: string]: unknown;
}

/**
 * The items of a series that its first item draws all at once: the others are there for readers who point at them, and
 * the library takes its time for each.
 */
export function pointable<T>(items: readonly T[], isMoving: boolean): readonly T[] {
  return isMoving ? items.slice(0, 1) : items;
}

/** A list that the library takes as it is. Of others it makes two copies, which takes its time for ten thousand. */
export function uncopied<T>(items: readonly T[]): T[] {
  // Not counted among what the list holds, as pages see it in their option hook.
  return Object.defineProperty([...items], "__ec_primitive__", { value: true });
}

// The library lays a shape upon the one before it, and leaves there what the new one does not say.
const plain = { silent: false, invisible: false, ignore: false };

// The library's own types list every property of every shape and have no room for parts put together from records:
// they are left behind here, once.
export function handDrawn({ draw, data, ...options }: HandDrawn): CustomSeriesOption {
  return {
    type: "custom",
    itemStyle: { color: options.color },
    progressive: 0,
    ...options,
    data: uncopied(data),
    renderItem: (params: Drawing, api: Api) => {
      const children = draw(params, api).map((shape) => ({ ...plain, ...shape }));
      // A group of one would be a second thing to keep for each of ten thousand dots.
      return children.length > 1 ? { type: "group", children } : children[0] ?? null;
    },
  } as unknown as CustomSeriesOption;
}
