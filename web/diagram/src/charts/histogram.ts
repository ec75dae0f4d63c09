// Histograms: bars over buckets of values, and the normal distribution over them.
import type { CustomSeriesOption } from "echarts/charts";
import type { EChartsCoreOption } from "echarts/core";

import { valueAxis } from "./axes.ts";
import { bodyOf, depthOf, seriesBody } from "./bar_shapes.ts";
import { type BucketCounts, bucketCountsOf, type Counted } from "./bucket_counts.ts";
import { normalCurve } from "./buckets.ts";
import { placed, plotOption } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import { curveOf, curveSeries } from "./curve.ts";
import { handDrawn } from "./custom.ts";
import type { Box } from "./frame.ts";
import { areHairs, type HairSeries, hairShapes, hairsOf, seenOf } from "./hairs.ts";
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
  { buckets: { edges }, counted, isCumulative }: BucketCounts,
  own: Counted,
): CustomSeriesOption {
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
  const isMany = areHairs(scene, counted.length * counts.length);
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
    draw: (params, api) => {
      const bucket = params.dataIndex;
      if (isMany && bucket > 0) return [];
      const onShow = new Set(api.currentSeriesIndices());
      const visible = counted.filter((_, index) => onShow.has(index));
      const boxIn = (one: Counted, index: number): Box | null => {
        if ((one.counts[index] ?? 0) === 0) return null;
        const [x0 = 0, y0 = 0] = api.coord(placed(scene, edges[index] ?? 0, 0));
        const [x1 = 0, y1 = 0] = api.coord(placed(scene, edges[index + 1] ?? 0, one.counts[index] ?? 0));
        const [left, top] = [Math.min(x0, x1), Math.min(y0, y1)];
        const whole = { left, top, width: Math.abs(x1 - x0), height: Math.abs(y1 - y0) };
        // Hairs stand behind each other.
        return isMany ? whole : shareOfBox(whole, style.IsRotated, visible.indexOf(one), visible.length);
      };
      if (isMany) {
        // What is seen of one depends on all: the last draws them.
        if (own !== visible[visible.length - 1]) return [];
        const hairs = visible.map((one) => hairsIn(one, style.IsRotated, (index) => boxIn(one, index)));
        return hairShapes(seenOf(hairs), style.IsRotated);
      }
      const box = boxIn(own, bucket);
      return box ? draw({ ...alike, box }) : [];
    },
  });
}

function hairsIn(
  { series, counts }: Counted,
  isLying: boolean,
  boxOf: (bucket: number) => Box | null,
): HairSeries {
  const bars = counts.flatMap((_, bucket) => {
    const box = boxOf(bucket);
    if (!box) return [];
    const { left, top, width, height } = box;
    return [isLying ? { along: top, width: height, base: left, end: left + width, isNegative: false }
      : { along: left, width, base: top, end: top + height, isNegative: false }];
  });
  return { color: series.color, isStacked: false, hairs: hairsOf(bars) };
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
  return isLying ? { ...box, top: box.top + start, height: each } : { ...box, left: box.left + start, width: each };
}
