// Series that are drawn by hand.
import type { CustomSeriesRenderItemAPI, CustomSeriesRenderItemParams } from "echarts";
import type { CustomSeriesOption } from "echarts/charts";

/** What the library tells and does for a hand-drawn series while it draws. */
export type Api = CustomSeriesRenderItemAPI;

/** A graphic element as the library takes it: its `type`, `shape`, `style`. */
export type Shape = { readonly type: string; readonly [property: string]: unknown };

/** What a hand-drawn series needs; everything else is passed on as it stands. */
export interface HandDrawn {
  readonly name: string;
  readonly color: string;
  /** Objects with `value` and, where an item stands for a cell, `cell`. */
  readonly data: readonly object[];
  /** Draws one item; none: nothing. */
  readonly draw: (params: CustomSeriesRenderItemParams, api: Api) => readonly Shape[];
  readonly [property: string]: unknown;
}

// The library's own types list every property of every shape and have no room for parts put together from records:
// they are left behind here, once.
export function handDrawn({ draw, ...options }: HandDrawn): CustomSeriesOption {
  return {
    type: "custom",
    itemStyle: { color: options.color },
    progressive: 0,
    ...options,
    renderItem: (params: CustomSeriesRenderItemParams, api: Api) => {
      const children = draw(params, api);
      // A group of one would be a second thing to keep for each of ten thousand dots.
      return children.length > 1 ? { type: "group", children } : children[0] ?? null;
    },
  } as unknown as CustomSeriesOption;
}
