// Histograms: bars over buckets of values, and the normal distribution over them.
import type { CustomSeriesOption } from "echarts/charts";
import type { EChartsCoreOption } from "echarts/core";

import { valueAxis } from "./axes.ts";
import { bodyOf, depthOf, manyBoxes, seriesBody } from "./bar_shapes.ts";
import { type Crowd, crowdOf } from "./bar_slots.ts";
import { type BucketCounts, bucketCountsOf, type Counted } from "./bucket_counts.ts";
import { normalCurve } from "./buckets.ts";
import { placed, plotOption } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import { curveOf, curveSeries } from "./curve.ts";
import { type Api, handDrawn } from "./custom.ts";
import type { Box } from "./frame.ts";
import { type HairBar, hairGroup, type HairSeries, hairShapes, hairsOf, seenOf } from "./hairs.ts";
import { meanRulers, zeroRuler } from "./marks.ts";
import { lineHeight, widest } from "./text.ts";

/** Of both kinds: with the counts of single buckets, or with their sums. */
export function histogram(scene: Scene): EChartsCoreOption {
  const { style } = scene;
  const counts = bucketCountsOf(scene);
  const { view, buckets, counted, isCumulative, edgeText } = counts;
  const { edges } = buckets;
  const lone = view.series.length === 1 ? view.series[0]?.label ?? "" : "";
  return plotOption(scene, {
    view,
    along: (place) => {
      const needed = place.side === "top" || place.side === "bottom"
        ? widest(edges.map(edgeText), scene.look) + scene.look.fontSize * 1.5 : lineHeight(scene.look) * 1.5;
      const axis = valueAxis(scene, place, { from: edges[0] ?? 0, to: edges[edges.length - 1] ?? 1, hasZero: false }, {
        show: true, text: edgeText, samples: edges, ticks: everyNth(edges, place.length, needed),
      });
      return { ...axis, axisPointer: rangeLabel(counts) } as typeof axis;
    },
    up: (place) => valueAxis(scene, place, style.IsAbsolute
      ? { from: style.yScaleMin, to: style.yScaleMax, hasZero: true } : { from: 0, to: 0, hasZero: true }, {
      show: true,
      text: String,
      samples: counted.flatMap((one) => [...one.counts]),
      isWhole: true,
    }),
    titles: [view.showSeries && lone !== "" ? lone : view.valueTitle, ""],
    entries: lone === "" || !view.showSeries
      ? view.series.map(({ name, label }) => ({ name, label, icon: "roundRect" })) : [],
    series: [
      ...counted.map((one) => barsOf(scene, counts, one)),
      ...counted.flatMap(({ series, values }) => {
        const points = curveOf(style) === "none" ? [] : normalCurve(values, buckets, isCumulative);
        return points.length === 0 ? [] : [curveSeries(scene, series, points)];
      }),
      ...meanRulers(scene, counted.map(({ series }) => series), () => undefined, true),
      zeroRuler(scene),
    ],
    trigger: "axis",
    hasCategories: false,
  });
}

/** As many of the edges as have room for their labels, at equal distances from the first. */
function everyNth(edges: readonly number[], length: number, needed: number): number[] {
  const buckets = edges.length - 1;
  const stride = Math.max(Math.ceil((needed * buckets) / Math.max(length, 1)), 1);
  // A stride that divides the buckets ends at the last edge.
  const even = Array.from({ length: stride }, (_, index) => stride + index).find((step) => buckets % step === 0);
  return edges.filter((_, index) => index % (even ?? stride) === 0);
}

/** The tooltip's heading: the bucket's range, or what its sum ends at. */
function rangeLabel({ buckets: { edges }, isCumulative, edgeText }: BucketCounts): object {
  const count = edges.length - 1;
  return {
    label: {
      show: false,
      formatter: ({ value }: { value: unknown }) => {
        const [low, high] = [edges[0] ?? 0, edges[count] ?? 1];
        const bucket = Math.min(Math.max(Math.floor(((Number(value) - low) / (high - low)) * count), 0), count - 1);
        const [from, to] = [edgeText(edges[bucket] ?? low), edgeText(edges[bucket + 1] ?? high)];
        return isCumulative ? `${bucket === count - 1 ? "≤" : "<"} ${to}` : `${from} – ${to}`;
      },
    },
  };
}

function barsOf(
  scene: Scene,
  all: BucketCounts,
  own: Counted,
): CustomSeriesOption {
  const { buckets: { edges }, isCumulative } = all;
  const { series, values, counts } = own;
  const { look, style } = scene;
  const draw = bodyOf(style.RectStyle);
  const body = seriesBody(look, series.index, series.color);
  const alike = {
    ...body,
    isLying: style.IsRotated,
    isDown: false,
    round: 0,
    edge: look.plotGround,
    edgeWidth: 0.5,
    depth: depthOf(style.Thickness),
  };
  const middle = (bucket: number): number => ((edges[bucket] ?? 0) + (edges[bucket + 1] ?? 0)) / 2;
  return handDrawn({
    name: series.name,
    color: series.color,
    clip: true,
    itemStyle: { color: series.color, ...(body.pattern ? { decal: body.pattern } : {}) },
    encode: { x: 0, y: 1 },
    tooltip: {
      valueFormatter: (_: unknown, bucket: number) => {
        const count = counts[bucket] ?? 0;
        return isCumulative && values.length > 0
          ? `${count}  (${scene.format.share(count / values.length)})` : String(count);
      },
    },
    data: counts.map((count, bucket) =>
      ({ value: placed(scene, middle(bucket), count), bucket: [bucket, series.index] })),
    draw: ({ dataIndex: bucket, context: known }, api) => {
      // Worked out once for all buckets.
      const layout = (known as { layout?: Layout }).layout ??= layoutOf(scene, all, own, api);
      const { visible, crowd, boxOf, hairsIn } = layout;
      if (crowd === "each") {
        const box = boxOf(bucket);
        return box ? draw({ ...alike, box }) : [];
      }
      if (bucket > 0) return [];
      if (crowd === "all") return manyBoxes(counts.map((_, index) => boxOf(index)), body);
      // What is seen of one depends on all: the last draws them.
      if (own !== visible[visible.length - 1]) return [];
      return hairGroup(hairShapes(seenOf(visible.map(hairsIn)), style.IsRotated));
    },
  });
}

/** The series on show, how their bars share the buckets, and where they stand. */
interface Layout {
  readonly visible: readonly Counted[];
  readonly crowd: Crowd;
  /** Null for no bar. */
  readonly boxOf: (bucket: number) => Box | null;
  readonly hairsIn: (one: Counted) => HairSeries;
}

function layoutOf(scene: Scene, { buckets: { edges }, counted }: BucketCounts, own: Counted, api: Api): Layout {
  const { IsRotated } = scene.style;
  const onShow = new Set(api.currentSeriesIndices());
  const visible = counted.filter((_, index) => onShow.has(index));
  const place = visible.indexOf(own);
  const at = (edge: number, count: number): { along: number; up: number } => {
    const [x = 0, y = 0] = api.coord(placed(scene, edges[edge] ?? 0, count));
    return IsRotated ? { along: y, up: x } : { along: x, up: y };
  };
  const barIn = ({ counts }: Counted, bucket: number): HairBar => {
    const [from, to] = [at(bucket, 0), at(bucket + 1, counts[bucket] ?? 0)];
    const along = Math.min(from.along, to.along);
    return { along, width: Math.abs(to.along - from.along), base: from.up, end: to.up, isNegative: false };
  };
  const { width: band } = barIn(own, 0);
  return {
    visible,
    crowd: crowdOf(band, band / visible.length, visible.length * own.counts.length),
    boxOf: (bucket) => {
      if ((own.counts[bucket] ?? 0) === 0) return null;
      const { along, width, base, end } = barIn(own, bucket);
      const [low, length] = [Math.min(base, end), Math.abs(end - base)];
      return shareOfBox(IsRotated ? { left: low, top: along, width: length, height: width }
        : { left: along, top: low, width, height: length }, IsRotated, place, visible.length);
    },
    hairsIn: (one) => ({
      color: one.series.color,
      isStacked: false,
      hairs: hairsOf(one.counts.flatMap((count, bucket) => (count === 0 ? [] : [barIn(one, bucket)]))),
    }),
  };
}

/** The part of a bucket's box that one of its bars takes, with a little air at both ends of the group. */
function shareOfBox(
  box: Box,
  isLying: boolean,
  index: number,
  count: number,
): Box {
  const length = isLying ? box.height : box.width;
  const air = Math.min(length * (count > 1 ? 0.08 : 0.03), 4);
  const each = (length - 2 * air) / Math.max(count, 1);
  const start = air + each * index;
  const width = Math.max(each, 1);
  return isLying ? { ...box, top: box.top + start, height: width } : { ...box, left: box.left + start, width };
}
