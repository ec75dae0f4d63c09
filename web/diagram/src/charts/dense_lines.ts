// A line whose points are more than there are pixels: one shape, with as many points as the eye can tell.
import type { CustomSeriesOption } from "echarts/charts";

import { placed } from "./cartesian.ts";
import { type Api, handDrawn, type Pen, pointable, type Shape, tenth, tracedShape } from "./custom.ts";
import { baseBelow, commonOf, type Context, type Drawn } from "./drawn.ts";
import { evenPlane } from "./even_plane.ts";
import { markText } from "./marks.ts";
import { lineWidth, strokeOf } from "./stroke.ts";

/** A value in pixels along the x axis and up: what it stands on, and its own place. */
interface Stop {
  readonly row: number;
  readonly along: number;
  readonly base: number;
  readonly top: number;
}

// Of more points that are selected the line itself is marked.
const mostDots = 60;

export function denseLine(context: Context, one: Drawn): CustomSeriesOption {
  const { scene, drawn } = context;
  const { style, look } = scene;
  const { series, values } = one;
  return handDrawn({
    ...commonOf(context, one),
    name: series.name,
    color: series.color,
    clip: true,
    z: 3,
    encode: { x: 0, y: 1, tooltip: style.IsRotated ? [0] : [1] },
    data: pointable(values, context.isMoving).map((value, row) =>
      ({ value: placed(scene, row, value), cell: series.points[row]?.cell })),
    draw: (params, api) => {
      if (params.dataIndex > 0) return [];
      const onShow = new Set(api.currentSeriesIndices());
      const visible = drawn.filter(({ kind }, index) => kind !== "bar" && onShow.has(index));
      const stretches = stretchesOf(context, one, visible, api);
      const { under, over } = marksOn(context, one, stretches);
      const line = tracedShape((pen) => drawLine(pen, stretches, style.IsRotated), strokeOf(look, style, series));
      const area = one.kind === "area" ? [surface(one, stretches, style.IsRotated)] : [];
      return [...area, ...under, line, ...over];
    },
  });
}

/** The stretches between gaps. */
function stretchesOf({ scene }: Context, one: Drawn, visible: readonly Drawn[], api: Api): Stop[][] {
  const plane = evenPlane(scene, api, [0, one.values.length - 1], one.values);
  const stretches: Stop[][] = [[]];
  for (const [row, value] of one.values.entries()) {
    const stretch = stretches[stretches.length - 1];
    if (value === null) {
      if (stretch?.length !== 0) stretches.push([]);
      continue;
    }
    const base = one.isStacked ? baseBelow(visible, one, row) : 0;
    stretch?.push({ row, along: plane.along(row), base: plane.up(base), top: plane.up(base + value) });
  }
  return stretches;
}

/** The line through all points, in each pixel along the axis from the first one to the outermost ones and the last. */
function drawLine(pen: Pen, stretches: readonly (readonly Stop[])[], isRotated: boolean): void {
  for (const stretch of stretches) {
    const to = penOf(pen, isRotated);
    eachPixel(stretch, (start, end) => {
      let [least, greatest] = [start, start];
      for (let index = start + 1; index < end; index += 1) {
        const top = topOf(stretch, index);
        if (top < topOf(stretch, least)) least = index;
        if (top > topOf(stretch, greatest)) greatest = index;
      }
      let before = -1;
      for (const index of [start, Math.min(least, greatest), Math.max(least, greatest), end - 1]) {
        const stop = stretch[index];
        if (stop && index !== before) to(stop.along, stop.top);
        before = index;
      }
    });
  }
}

/**
 * The surface under a line. One point a pixel is enough, for the line covers what lies between it and the others, and
 * one plain colour is painted several times as fast as one that fades.
 */
function surface({ series, isStacked }: Drawn, stretches: readonly (readonly Stop[])[], isRotated: boolean): Shape {
  return tracedShape((pen) => {
    for (const stretch of stretches) {
      const last = stretch[stretch.length - 1];
      if (!last) continue;
      const kept: Stop[] = [];
      eachPixel(stretch, (start) => { kept.push(stretch[start] ?? last); });
      kept.push(last);
      const to = penOf(pen, isRotated);
      for (const { along, top } of kept) to(along, top);
      for (const { along, base } of kept.reverse()) to(along, base);
      pen.closePath();
    }
  }, { fill: series.color, opacity: isStacked ? 0.8 : 0.22 });
}

/** What lies under and over a line where values are selected: points with their texts, or a band along the line. */
function marksOn(
  { scene, mark }: Context,
  { series }: Drawn,
  stretches: readonly (readonly Stop[])[],
): { readonly under: Shape[]; readonly over: Shape[] } {
  const { look, style } = scene;
  const markOf = ({ row }: Stop): ReturnType<typeof mark> => {
    const point = series.points[row];
    return point ? mark(...point.cell) : "none";
  };
  const runs = stretches.flatMap((stretch) => runsOf(stretch, (stop) => markOf(stop) !== "none"));
  const marked = runs.flat();
  const stroke = { stroke: look.selectionGround, lineWidth: lineWidth(style) + 5, lineJoin: "round" };
  const band = tracedShape((pen) => drawLine(pen, runs.filter(({ length }) => length > 1), style.IsRotated), {
    ...stroke, fill: "none", lineCap: "round", opacity: 0.45,
  });
  const dots = marked.length > mostDots ? [] : marked.flatMap((stop): Shape[] => {
    const point = series.points[stop.row];
    const [cx, cy] = style.IsRotated ? [stop.top, stop.along] : [stop.along, stop.top];
    const dot = {
      type: "circle", silent: true, shape: { cx, cy, r: 5 },
      style: { fill: series.color, stroke: look.selectionGround, lineWidth: 2 },
    };
    const box = { left: cx - 5, top: cy - 5, width: 10, height: 10 };
    return point ? [dot, ...markText(scene, markOf(stop), point, box)] : [];
  });
  return { under: marked.length > mostDots ? [band] : [], over: dots };
}

/** What of a stretch holds, in pieces without a gap. */
function runsOf(stretch: readonly Stop[], holds: (stop: Stop) => boolean): Stop[][] {
  const runs: Stop[][] = [];
  let last = -2;
  for (const [index, stop] of stretch.entries()) {
    if (!holds(stop)) continue;
    if (index !== last + 1) runs.push([]);
    runs[runs.length - 1]?.push(stop);
    last = index;
  }
  return runs;
}

/** Tells the pieces of a stretch that fall into one pixel along the axis each, from where to before where. */
function eachPixel(stretch: readonly Stop[], tell: (start: number, end: number) => void): void {
  for (let start = 0, end = 0; start < stretch.length; start = end) {
    const pixel = pixelOf(stretch[start]);
    for (end = start + 1; end < stretch.length && pixelOf(stretch[end]) === pixel;) end += 1;
    tell(start, end);
  }
}

function pixelOf(stop: Stop | undefined): number {
  return Math.round(stop?.along ?? 0);
}

function topOf(stretch: readonly Stop[], index: number): number {
  return stretch[index]?.top ?? 0;
}

/** Goes from place to place; to the first one without a line. */
function penOf(pen: Pen, isRotated: boolean): (along: number, up: number) => void {
  let isDown = false;
  return (along, up) => {
    const [x, y] = isRotated ? [up, along] : [along, up];
    if (isDown) pen.lineTo(tenth(x), tenth(y));
    else pen.moveTo(tenth(x), tenth(y));
    isDown = true;
  };
}
