// What histograms count: the buckets of a scene, and how many values of each series fall into them.
import { type Buckets, bucketsOf, countsOf, cumulative } from "./buckets.ts";
import type { Table } from "../data/table.ts";
import type { Scene } from "./chart.ts";
import { curveOf, onlyColor } from "./curve.ts";
import { roundedTo } from "./statistics.ts";
import { bounded, type Series, valuesOf, type View, viewOf } from "./view.ts";

/** A series with its values, and for each bucket their count; with all before it, where sums are drawn. */
export interface Counted {
  readonly series: Series;
  readonly values: readonly number[];
  readonly counts: readonly number[];
}

export interface BucketCounts {
  readonly view: View;
  readonly buckets: Buckets;
  readonly counted: readonly Counted[];
  readonly isCumulative: boolean;
  /** A bucket's edge in the chart's format. */
  readonly edgeText: (value: number) => string;
}

/** Whether a `DiagramType` counts values in buckets. */
export function isHistogram(diagramType: number): boolean {
  return diagramType === 0 || diagramType === 10;
}

// Of each table the last ones: whoever walks from bucket to bucket asks for them at each step.
const known = new WeakMap<Table, { readonly of: Scene; readonly counts: BucketCounts }>();

export function bucketCountsOf(scene: Scene): BucketCounts {
  const last = known.get(scene.table);
  if (last && isCountedAlike(last.of, scene)) return last.counts;
  const counts = countedAnew(scene);
  known.set(scene.table, { of: scene, counts });
  return counts;
}

function isCountedAlike(one: Scene, other: Scene): boolean {
  return one.style === other.style && one.look === other.look && one.format === other.format
    && one.series === other.series;
}

function countedAnew(scene: Scene): BucketCounts {
  const { style, format, look } = scene;
  const all = viewOf({ ...scene, series: null }).series;
  // The buckets stay when a tab brings one series to the front.
  const buckets = bucketsOf(all.flatMap(valuesOf), style.BucketCount, bounded(style.xScaleMin),
    bounded(style.xScaleMax));
  const [first = 0, second = 1] = buckets.edges;
  const isCumulative = style.DiagramType === 10;
  const only = all.length === 1 ? onlyColor(look, curveOf(style) !== "none") : null;
  const view = viewOf(scene);
  return {
    view,
    buckets,
    counted: view.series.map((series): Counted => {
      const values = valuesOf(series);
      const counts = countsOf(values, buckets);
      return {
        series: only === null ? series : { ...series, color: only },
        values,
        counts: isCumulative ? cumulative(counts) : counts,
      };
    }),
    isCumulative,
    edgeText: (value) => format.number(roundedTo(value, (second - first) * 20)),
  };
}
