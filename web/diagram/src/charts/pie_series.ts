// Pies, flat and 3D. A series for each slice, so that a legend hides and shows it and the others close up.
import type { CustomSeriesOption } from "echarts/charts";

import { patternOf } from "../look/patterns.ts";
import { shade } from "../look/shades.ts";
import { depthOf } from "./bar_shapes.ts";
import { type Api, handDrawn, type Shape } from "./custom.ts";
import { facesOf, type Solid, type Wedge, wedgesOf } from "./pie_geometry.ts";
import { labelPlaces, type LabelPlace, sliceStyle, sliceValue, textRoom } from "./pie_labels.ts";
import { mostNamedSlices, type Pie, type Pies, type Slice, sizeOf } from "./pies.ts";
import { lineHeight } from "./text.ts";
import { itemTooltip } from "./tooltip.ts";

/** A slice of one pie: an item of a series. */
interface Piece {
  readonly slice: Slice;
  readonly pie: number;
}

/** A pie with what is worked out for all of its slices together. */
interface Laid {
  readonly pie: Pie;
  readonly solid: Solid;
  readonly wedges: readonly Wedge[];
  readonly labels: readonly (LabelPlace | null)[];
}

export function pieSeries(pies: Pies): CustomSeriesOption[] {
  const { scene, slices } = pies;
  const all = pies.pies.map((_, pie) => pie);
  const lay = layer(pies);
  const rings = pies.pies.filter(({ series }) => slices.every((slice) => sizeOf(series, slice) === 0));
  const series = slices.length > mostNamedSlices
    ? [seriesOf(pies, scene.look.curve, "", slices.flatMap((slice) => all.map((pie) => ({ slice, pie }))), lay)]
    : slices.map((slice) => seriesOf(pies, slice.color, slice.name, all.map((pie) => ({ slice, pie })), lay));
  return rings.length === 0 ? series : [...series, emptySeries(pies, rings)];
}

/** Lays a pie out for the slices on show; the same ones are not laid out again for each of them. */
function layer(pies: Pies): (pie: number, api: Api) => Laid | null {
  const known = new Map<number, { readonly shown: string; readonly laid: Laid }>();
  const { slices } = pies;
  return (index, api) => {
    const pie = pies.pies[index];
    if (!pie) return null;
    const onShow = slices.length > mostNamedSlices ? null : api.currentSeriesIndices();
    const shown = onShow?.join() ?? "";
    const before = known.get(index);
    if (before?.shown === shown) return before.laid;
    const visible = onShow && new Set(onShow);
    const sizes = slices.map((one, place) => (visible?.has(place) ?? true ? sizeOf(pie.series, one) : 0));
    const solid = solidOf(pies, pie);
    const { PieType, PieStyle, PieAngle } = pies.scene.style;
    const turned = PieStyle === 1 ? 0 : ((PieAngle % 360) / 180) * Math.PI;
    const wedges = wedgesOf(sizes, turned - Math.PI / 2, solid.radius, PieType === 2, solid.hole);
    const laid = { pie, solid, wedges, labels: labelPlaces(pies, pie, solid, wedges) };
    known.set(index, { shown, laid });
    return laid;
  };
}

function solidOf(pies: Pies, { box }: Pie): Solid {
  const { style } = pies.scene;
  const room = textRoom(pies, box);
  const isTilted = style.PieStyle === 1;
  const tilt = isTilted ? (Math.min(style.PieAngle === 0 ? 55 : Math.abs(style.PieAngle), 85) / 180) * Math.PI : 0;
  const flatness = Math.cos(tilt);
  const height = isTilted ? Math.min(depthOf(style.Thickness) * Math.sin(tilt), box.height * 0.5) : 0;
  const across = box.width / 2 - room.width;
  const radius = Math.max(Math.min(across, (box.height / 2 - room.height - height / 2) / flatness), 8);
  const hole = style.PieType === 1 ? radius * 0.57 : 0;
  const [x, y] = [box.left + box.width / 2, box.top + (box.height - height) / 2];
  const pulled = style.PieStyle === 2 ? radius * 0.1 : 0;
  return { x, y, radius: radius - pulled, flatness, height, hole, pulled };
}

function seriesOf(
  pies: Pies,
  color: string,
  name: string,
  pieces: readonly Piece[],
  lay: (pie: number, api: Api) => Laid | null,
): CustomSeriesOption {
  const { look } = pies.scene;
  const pattern = look.patterns && name !== "" ? patternOf(pieces[0]?.slice.index ?? 0, look.dark) : undefined;
  const seriesAt = (index: number): Pie["series"] | undefined => pies.pies[pieces[index]?.pie ?? -1]?.series;
  return handDrawn({
    name,
    color,
    coordinateSystem: "none",
    itemStyle: { color, ...(pattern ? { decal: pattern } : {}) },
    encode: { value: 0 },
    tooltip: itemTooltip((index) => {
      const [piece, series] = [pieces[index], seriesAt(index)];
      return piece && series
        ? [piece.slice.label, pies.pies.length > 1 ? series.label : "", sliceValue(pies, series, piece.slice.index)]
        : ["", "", ""];
    }),
    data: pieces.map(({ slice }, index) => {
      const series = seriesAt(index);
      return {
        value: [series ? sizeOf(series, slice) : 0],
        cell: series?.points[slice.index]?.cell,
      };
    }),
    draw: (params, api) => {
      const piece = pieces[params.dataIndex];
      const laid = piece && lay(piece.pie, api);
      const wedge = laid?.wedges[piece?.slice.index ?? -1];
      if (!piece || !laid || !wedge || wedge.to === wedge.from) return [];
      const body = pies.scene.style.PieStyle === 1 ? solidBody : flatBody;
      return [...body(pies, laid, piece.slice, wedge), ...labelOf(pies, laid, piece.slice)];
    },
  });
}

type DrawSlice = (pies: Pies, laid: Laid, slice: Slice, wedge: Wedge) => Shape[];

/** What is alike in flat and 3D slices: the face that is seen from above. */
function faceStyle(pies: Pies, { pie }: Laid, slice: Slice): { readonly style: object; readonly isMarked: boolean } {
  const { look } = pies.scene;
  const point = pie.series.points[slice.index];
  const isMarked = point !== undefined && pies.mark(...point.cell) !== "none";
  const pattern = look.patterns ? patternOf(slice.index, look.dark) : undefined;
  const isFine = pies.slices.length > mostNamedSlices;
  return {
    isMarked,
    style: {
      fill: slice.color,
      lineJoin: "round",
      stroke: isMarked ? look.selectionGround : look.plotGround,
      lineWidth: isMarked ? 2 : isFine ? 0 : 1.5,
      ...(pattern ? { decal: { ...pattern } } : {}),
    },
  };
}

/** Under the pointer. */
function lit({ color }: Slice): object {
  return { style: { fill: shade(color, 0.15) } };
}

const flatBody: DrawSlice = (pies, laid, slice, wedge) => {
  const { solid } = laid;
  const { style, isMarked } = faceStyle(pies, laid, slice);
  const middle = (wedge.from + wedge.to) / 2;
  const shape = {
    cx: solid.x + Math.cos(middle) * solid.pulled,
    cy: solid.y + Math.sin(middle) * solid.pulled,
    r0: solid.hole,
    r: wedge.radius,
    startAngle: wedge.from,
    endAngle: wedge.to,
  };
  return [{ type: "sector", z2: isMarked ? 11 : 10, shape, style, emphasis: lit(slice) }];
};

const shades = { outer: -0.24, inner: -0.36, cut: -0.14 } as const;

const solidBody: DrawSlice = (pies, laid, slice, wedge) => {
  const isRose = pies.scene.style.PieType === 2;
  const { sides, top } = facesOf(laid.solid, wedge, isRose);
  const { style, isMarked } = faceStyle(pies, laid, slice);
  const z2 = 10 + Math.round(nearness(wedge) * 5) + (isMarked ? 1 : 0);
  return [
    ...sides.map(({ outline, kind }): Shape => ({
      type: "polygon",
      z2: kind === "inner" ? 1 : z2,
      shape: { points: outline },
      style: { ...style, decal: null, fill: shade(slice.color, shades[kind]), lineWidth: isMarked ? 2 : 0.5 },
    })),
    {
      type: "polygon",
      z2: isRose ? z2 : isMarked ? 21 : 20,
      shape: { points: top },
      style,
      emphasis: lit(slice),
    },
  ];
};

/** What is nearer to the eye is drawn later; the library's order is by `z2` over all series. */
function nearness({ from, to }: Wedge): number {
  const quarter = Math.PI / 2;
  return from <= quarter && to >= quarter ? 1 : Math.sin((from + to) / 2);
}

function labelOf(pies: Pies, { pie, labels }: Laid, slice: Slice): Shape[] {
  const { look } = pies.scene;
  const place = labels[slice.index];
  if (!place) return [];
  const { x, y, lines, isRight, leader } = place;
  const style = {
    ...sliceStyle(pies, pie.series, slice.index),
    text: lines.join("\n"),
    x,
    y,
    align: isRight ? "left" : "right",
    verticalAlign: "middle",
    lineHeight: lineHeight(look),
  };
  return [
    { type: "polyline", z2: 22, silent: true, shape: { points: leader }, style: { fill: "none", stroke: look.grid } },
    { type: "text", z2: 30, silent: true, style },
  ];
}

/** A ring in place of a pie whose slices are all nothing. */
function emptySeries(pies: Pies, empty: readonly Pie[]): CustomSeriesOption {
  const { look } = pies.scene;
  return handDrawn({
    name: "\u200bempty",
    color: look.grid,
    coordinateSystem: "none",
    silent: true,
    tooltip: { show: false },
    data: empty.map(() => ({ value: [0] })),
    encode: { value: 0 },
    draw: (params) => {
      const pie = empty[params.dataIndex];
      if (!pie) return [];
      const { x, y, radius } = solidOf(pies, pie);
      const style = { fill: "none", stroke: look.grid, lineWidth: 1 };
      return [{ type: "circle", shape: { cx: x, cy: y, r: radius }, style }];
    },
  });
}
