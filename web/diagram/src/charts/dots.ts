// A cloud of points, drawn by hand.
import type { CustomSeriesOption } from "echarts/charts";

import { patternOf } from "../look/patterns.ts";
import { placed } from "./cartesian.ts";
import type { Scene } from "./chart.ts";
import type { Cloud, Dot } from "./clouds.ts";
import { type Api, handDrawn, pointable, type Shape, tenth, tracedShape } from "./custom.ts";
import { type Circle, nameOf } from "./dot_names.ts";
import { evenPlane } from "./even_plane.ts";
import { markText } from "./marks.ts";
import { cutTo, literal, wrapped } from "./text.ts";
import { marksOf, type View } from "./view.ts";

/** A cloud as a series of the library. `total` counts the dots of all clouds. */
export function cloudSeries(
  scene: Scene,
  view: View,
  { series, dots }: Cloud,
  { total, isMoving }: { readonly total: number; readonly isMoving: boolean },
): CustomSeriesOption {
  const { look } = scene;
  const mark = marksOf(scene);
  const isLarge = dots.some(({ diameter }) => diameter > 9);
  const pattern = look.patterns ? patternOf(series.index, look.dark) : undefined;
  const isDense = total > (isMoving ? mostMoving : mostCircles);
  const hasNames = view.showCategories && isLarge && dots.length <= 60;
  return handDrawn({
    name: series.name,
    color: series.color,
    clip: true,
    itemStyle: { color: series.color, ...(pattern ? { decal: pattern } : {}) },
    encode: { x: 0, y: 1 },
    tooltip: { formatter: (item: { dataIndex: number }) => tooltipText(view, dots[item.dataIndex]) },
    data: pointable(dots, isMoving && isDense).map(({ x, y, point }) =>
      ({ value: placed(scene, x, y), cell: point.cell })),
    isDense,
    draw: (params, api) => {
      const dot = dots[params.dataIndex];
      if (!dot) return [];
      if (isDense) {
        const painted = params.dataIndex > 0 ? [] : allDots(scene, { series, dots }, isMoving, api);
        return [...painted, ...target(scene, dot, params.context, api)];
      }
      const [cx = 0, cy = 0] = api.coord(placed(scene, dot.x, dot.y));
      const marked = mark(...dot.point.cell);
      const radius = dot.diameter / 2;
      const circle: Shape = {
        type: "circle",
        shape: { cx, cy, r: radius },
        style: {
          fill: series.color,
          opacity: marked !== "none" ? 1 : isLarge ? 0.72 : 0.8,
          stroke: marked === "none" ? look.plotGround : look.selectionGround,
          lineWidth: marked !== "none" ? 2 : dots.length > 300 ? 0 : 1,
          ...(pattern ? { decal: { ...pattern } } : {}),
        },
        emphasis: { style: { opacity: 1 } },
      };
      const box = { left: cx - radius, top: cy - radius, width: dot.diameter, height: dot.diameter };
      const texts = markText(scene, marked, dot.point, box);
      if (!hasNames || texts.length > 0) return [circle, ...texts];
      const circles = dots.map((one): Circle => {
        const [x = 0, y = 0] = api.coord(placed(scene, one.x, one.y));
        return { x, y, radius: one.diameter / 2 };
      });
      const name = view.categories[dot.point.cell[0]] ?? "";
      return [circle, ...nameOf(scene, cutTo(name, 120, look), params.dataIndex, circles, params)];
    },
  });
}

// More dots than these are painted as one shape: a browser does that far sooner.
const mostCircles = 1500;
const mostMoving = 300;
// In pixels. Of the dots in a square of this size the first one answers readers who point at it.
const square = 4;

/** What readers point at for a dot. */
function target(scene: Scene, { x, y, diameter }: Dot, context: object, api: Api): Shape[] {
  const [cx = 0, cy = 0] = api.coord(placed(scene, x, y));
  const taken = ((context as { taken?: Set<string> }).taken ??= new Set());
  const place = `${Math.floor(cx / square)} ${Math.floor(cy / square)}`;
  if (taken.has(place)) return [];
  taken.add(place);
  return [{ type: "circle", invisible: true, shape: { cx, cy, r: Math.max(diameter / 2, square) } }];
}

/**
 * All dots of a cloud; those that are selected once more on top, with an outline and their values. While they move they
 * are squares, which are painted in half the time.
 */
function allDots(scene: Scene, { series, dots }: Cloud, isMoving: boolean, api: Api): Shape[] {
  const { color } = series;
  const mark = marksOf(scene);
  const plane = evenPlane(scene, api, dots.map(({ x }) => x), dots.map(({ y }) => y));
  const marked = dots.filter(({ point }) => mark(...point.cell) !== "none");
  const paint = (some: readonly Dot[], stroke: string, edge: number, opacity: number): Shape[] =>
    [...bySize(some)].map(([size, alike]): Shape => {
      const lineWidth = size + edge;
      const [lineCap, length] = isMoving ? ["butt", lineWidth] : ["round", 0.2];
      return tracedShape((pen) => {
        for (const { x, y } of alike) {
          const [left, top] = placed(scene, plane.along(x), plane.up(y));
          pen.moveTo(tenth(left - length / 2), tenth(top));
          pen.lineTo(tenth(left + length / 2), tenth(top));
        }
      }, { fill: "none", stroke, lineWidth, lineCap, opacity });
    });
  const texts = marked.flatMap(({ point, x, y, diameter }) => {
    const [left = 0, top = 0] = api.coord(placed(scene, x, y));
    const radius = diameter / 2;
    const box = { left: left - radius, top: top - radius, width: diameter, height: diameter };
    return markText(scene, mark(...point.cell), point, box);
  });
  const outlined = [...paint(marked, scene.look.selectionGround, 4, 1), ...paint(marked, color, 0, 1)];
  return [...paint(dots, color, 0, 0.8), ...outlined, ...texts];
}

/** Dots by their diameters in whole pixels, the largest first: smaller ones are not hidden by them. */
function bySize(dots: readonly Dot[]): Map<number, Dot[]> {
  const sizes = new Map<number, Dot[]>();
  for (const dot of dots) {
    const size = Math.round(dot.diameter);
    const alike = sizes.get(size);
    if (alike) alike.push(dot);
    else sizes.set(size, [dot]);
  }
  return new Map([...sizes].sort(([one], [other]) => other - one));
}

function tooltipText(view: View, dot: Dot | undefined): string {
  if (!dot) return "";
  const name = view.categories[dot.point.cell[0]] ?? "";
  const lines = dot.figures().map(([title, text]) => `${title === "" ? "" : `${title}: `}${text}`);
  return literal((name === "" ? lines : [name, ...lines]).map((line) => wrapped(line)).join("\n"));
}
