// What bars and lines of one chart have alike.
import { onUpAxis } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import type { Mark, Series } from "./view.ts";

export type Kind = "bar" | "line" | "area";

/** A series with how it is drawn, and its numbers as they are drawn: values or shares. */
export interface Drawn {
  readonly series: Series;
  readonly kind: Kind;
  readonly hasSecondAxis: boolean;
  readonly isStacked: boolean;
  readonly values: readonly (number | null)[];
}

/** All that the series of one chart have alike. */
export interface Context {
  readonly scene: Scene;
  readonly drawn: readonly Drawn[];
  readonly mark: (row: number, column: number) => Mark;
  readonly isShare: boolean;
  /** Nobody points at values now. */
  readonly isMoving: boolean;
}

/** What all kinds of series have alike. */
export function commonOf(context: Context, one: Drawn): object {
  const { scene, isShare } = context;
  const { series } = one;
  const upAxis = upAxisOf(context, one);
  return {
    name: series.name,
    ...(upAxis > 0 ? onUpAxis(scene, upAxis) : {}),
    ...(one.isStacked ? { stack: one.kind === "bar" ? "bars" : "lines" } : {}),
    progressive: 0,
    tooltip: {
      valueFormatter: (_: unknown, row: number) => {
        const text = series.points[row]?.text || "–";
        const share = one.values[row];
        return isShare && share !== undefined && share !== null ? `${text}  (${scene.format.share(share)})` : text;
      },
    },
  };
}

/** Which of the y axes a series belongs to. */
export function upAxisOf({ drawn }: Context, one: Drawn): number {
  return one.hasSecondAxis && drawn.some(({ hasSecondAxis }) => !hasSecondAxis) ? 1 : 0;
}

/** Where a stacked value begins: upon those of its sign before it. */
export function baseBelow(others: readonly Drawn[], one: Drawn, row: number): number {
  const sign = (one.values[row] ?? 0) < 0;
  let base = 0;
  for (const other of others) {
    if (other === one) break;
    const value = other.values[row] ?? 0;
    if (other.isStacked && value < 0 === sign) base += value;
  }
  return base;
}
