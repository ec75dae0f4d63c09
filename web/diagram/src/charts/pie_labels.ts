// The texts around pies: their words, and places where none covers another.
import type { Box } from "./frame.ts";
import type { Solid, Wedge } from "./pie_geometry.ts";
import type { Pie, Pies, UnlabelledPies } from "./pies.ts";
import { chipOf, cutTo, lineHeight, textStyle, widest } from "./text.ts";
import type { Series } from "./view.ts";

/** What stands at a slice, in one line or two. */
function sliceLines({ hasNames, slices }: UnlabelledPies, series: Series, index: number): string[] {
  const value = series.points[index]?.text ?? "";
  const label = slices[index]?.label ?? "";
  return hasNames && label !== "" ? [label, value] : [value];
}

/** What the tooltip says of a slice's value. */
export function sliceValue({ scene }: Pies, series: Series, index: number): string {
  const sum = series.points.reduce((total, { value }) => total + Math.abs(value ?? 0), 0);
  const point = series.points[index];
  if (!point || point.value === null || sum === 0) return point?.text ?? "";
  return `${point.text}  (${scene.format.share(Math.abs(point.value) / sum)})`;
}

/** A slice's text in its colour. */
export function sliceStyle({ scene, mark }: Pies, series: Series, index: number): object {
  const { look } = scene;
  const point = series.points[index];
  if (point && mark(...point.cell) === "chip") {
    return { ...textStyle(look), fill: look.selectionText, ...chipOf(look) };
  }
  const negative = (point?.value ?? 0) < 0 ? look.negative : null;
  return { ...textStyle(look), fill: negative ?? look.plotText };
}

/** From a slice's rim to its text. */
const leader = 12;

interface TextRoom {
  readonly width: number;
  readonly height: number;
}

/** The width of the widest text at a slice of any pie. */
export function widestLabel(pies: UnlabelledPies): number {
  // Thousands of slices have no texts.
  const shown = pies.slices.slice(0, 100);
  const texts = pies.pies.flatMap(({ series }) => shown.flatMap((_, index) => sliceLines(pies, series, index)));
  return widest(texts, pies.scene.look);
}

/** How much room texts take at each side of the pies in boxes as this; none where they would become too small. */
export function textRoom(pies: Pies, box: Box): TextRoom {
  const { look } = pies.scene;
  const width = Math.min(pies.widestLabel + leader + 6, box.width * 0.32);
  const height = lineHeight(look) * (pies.hasNames ? 1.8 : 1.1);
  const smallest = look.fontSize * 3;
  const fits = box.width / 2 - width >= smallest && box.height / 2 - height >= smallest;
  return fits ? { width, height } : { width: 0, height: 0 };
}

export interface LabelPlace {
  readonly lines: readonly string[];
  readonly x: number;
  readonly y: number;
  readonly isRight: boolean;
  /** From the slice's rim to the text. */
  readonly leader: readonly (readonly [number, number])[];
}

interface Wanted {
  readonly index: number;
  readonly lines: readonly string[];
  readonly share: number;
  readonly rim: readonly [number, number];
  y: number;
}

/** The places of the slices' texts; null for those that have no room. The largest slices go before the others. */
export function labelPlaces(pies: Pies, pie: Pie, solid: Solid, wedges: readonly Wedge[]): (LabelPlace | null)[] {
  const { look } = pies.scene;
  const places: (LabelPlace | null)[] = wedges.map(() => null);
  const room = textRoom(pies, pie.box);
  if (room.width === 0) return places;
  const height = lineHeight(look) * (pies.hasNames ? 2 : 1);
  const most = Math.floor(pie.box.height / height);

  for (const isRight of [true, false]) {
    const side = wedges
      .map((wedge, index): Wanted => wantedOf(pies, pie, solid, wedge, index))
      .filter(({ share, rim }) => share > 0 && (rim[0] >= solid.x) === isRight)
      .sort((a, b) => b.share - a.share)
      .slice(0, most)
      .sort((a, b) => a.y - b.y);
    spread(side, height, pie.box.top + height / 2, pie.box.top + pie.box.height - height / 2);
    for (const wanted of side) places[wanted.index] = placeOf(wanted, pie, solid, room, isRight, look);
  }
  return places;
}

function wantedOf(pies: Pies, pie: Pie, solid: Solid, wedge: Wedge, index: number): Wanted {
  const angle = (wedge.from + wedge.to) / 2;
  const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
  const drop = sin > 0 ? solid.height : 0;
  const share = wedge.to - wedge.from;
  const rim = wedge.radius + solid.pulled;
  const away = solid.radius + solid.pulled + leader * 0.8;
  return {
    index,
    lines: share > 0 ? sliceLines(pies, pie.series, index) : [],
    share,
    rim: [solid.x + cos * rim, solid.y + sin * rim * solid.flatness + drop],
    y: solid.y + sin * away * solid.flatness + drop + sin * lineHeight(pies.scene.look) * 0.4,
  };
}

/** Moves neighbours apart, downward and then, from the lower end, upward again. */
function spread(labels: Wanted[], height: number, from: number, to: number): void {
  let least = from;
  for (const label of labels) {
    label.y = Math.max(label.y, least);
    least = label.y + height;
  }
  let most = to;
  for (const label of [...labels].reverse()) {
    label.y = Math.min(label.y, most);
    most = label.y - height;
  }
}

function placeOf(
  { lines, rim, y }: Wanted,
  pie: Pie,
  solid: Solid,
  room: TextRoom,
  isRight: boolean,
  look: Parameters<typeof cutTo>[2],
): LabelPlace {
  const side = isRight ? 1 : -1;
  // Beside the pie's outline at the text's height, or near its rim where that is farther out.
  const reach = solid.radius + solid.pulled;
  const [radius, high] = [reach + leader, reach * solid.flatness + leader];
  const middle = y > solid.y ? solid.y + solid.height : solid.y;
  const share = Math.min(Math.abs(y - middle) / high, 1);
  const x = solid.x + side * Math.max(radius * Math.sqrt(1 - share * share), Math.abs(rim[0] - solid.x) * 0.6, 4);
  const edge = isRight ? pie.box.left + pie.box.width : pie.box.left;
  const width = Math.max(Math.abs(edge - x), room.width - leader);
  const elbow: [number, number] = [x - side * 3, y];
  return { lines: lines.map((line) => cutTo(line, width, look)), x, y, isRight, leader: [rim, elbow] };
}
