// Patterns that tell surfaces apart beside their colours: one for each colour of the palette, the first plain.

/** A pattern as the drawing library takes it. */
export interface Pattern {
  readonly symbol: string;
  readonly symbolSize: number;
  readonly color: string;
  readonly dashArrayX: number | number[] | number[][];
  readonly dashArrayY: number | number[];
  readonly rotation: number;
}

type Strokes = Omit<Pattern, "color">;

const lines = (rotation: number, gap: number): Strokes =>
  ({ symbol: "rect", symbolSize: 1, dashArrayX: [1, 0], dashArrayY: [2, gap], rotation });
const dots = (symbol: string, symbolSize: number, gap: number): Strokes =>
  ({ symbol, symbolSize, dashArrayX: [[gap, gap], [0, gap, gap, 0]], dashArrayY: [gap, 0], rotation: 0 });

const strokes: readonly Strokes[] = [
  lines(-Math.PI / 4, 6),
  dots("circle", 0.6, 7),
  lines(Math.PI / 4, 4),
  lines(0, 5),
  dots("rect", 0.55, 6),
  lines(Math.PI / 2, 5),
  dots("triangle", 0.8, 8),
];

/** The pattern of a series or slice, counted from 0; undefined for the plain one. */
export function patternOf(index: number, dark: boolean): Pattern | undefined {
  const chosen = strokes[(index % (strokes.length + 1)) - 1];
  return chosen && { ...chosen, color: dark ? "rgba(0,0,0,0.45)" : "rgba(255,255,255,0.55)" };
}

const dashes = ["solid", [7, 3], [2, 3], [10, 3, 2, 3], [5, 5], [14, 4], [3, 2, 3, 6], [1, 4]] as const;

/** How a series' line is broken when lines are told apart by more than their colours. */
export function dashOf(index: number): "solid" | number[] {
  const dash = dashes[index % dashes.length] ?? "solid";
  return dash === "solid" ? dash : [...dash];
}
