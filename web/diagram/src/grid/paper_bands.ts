// Wide tables on paper: bands of columns below each other, each with the labels of the rows. Nobody tells a page how
// wide its paper is before it is printed; so there are bands for some usual widths, and container queries choose.
import { extent } from "../data/extent.ts";
import { makeStyle } from "../host/style_sheet.ts";
import type { GridModel } from "./model.ts";
import { bodyRow, headRows, markSelectedLabels } from "./nodes.ts";
import { paperSizes } from "./paper_sizes.ts";
import { columnNodes } from "./size_nodes.ts";
import type { Measure } from "./sizes.ts";

/** A table in bands: how many columns each of them has, and how wide the widest is in the table's font. */
export interface Bands {
  readonly counts: readonly number[];
  readonly ems: number;
}

// Between margins, in pixels: A4 and Letter upright, then lying, the element's own default, wide margins, half of a
// page, and A3 lying. The first ones come first where a large table cannot have all; before them, what is narrower by
// itself than upright paper.
const uprightWidth = 690;
const paperWidths = [uprightWidth, 950, 480, 620, 320, 1400];
const mostCells = 150_000;
// Smaller letters than seven points are hard to read.
const leastLetters = 28 / 3;
// A band of fewer pixels is not parted between two pages.
const mostUnparted = 480;

/** The fewest bands that have room, all about as wide as each other. All widths are in ems. */
export function bandsFor(label: number, needs: readonly number[], room: number): Bands {
  const wanted = filled(label, needs, room).length;
  let [narrow, wide] = [0, room];
  while (wide - narrow > 1) {
    const middle = (narrow + wide) / 2;
    if (filled(label, needs, middle).length > wanted) narrow = middle;
    else wide = middle;
  }
  const counts = filled(label, needs, wide);
  let next = 0;
  const widths = counts.map((count) => needs.slice(next, next += count).reduce((sum, need) => sum + need, label));
  return { counts, ems: extent(widths).greatest };
}

/** How many columns one band after the other takes. One is in each, even if it is too wide. */
function filled(label: number, needs: readonly number[], room: number): number[] {
  const counts = [0];
  let width = label;
  for (const need of needs) {
    const last = counts.length - 1;
    if (width + need > room && (counts[last] ?? 0) > 0) {
      counts.push(1);
      width = label + need;
    } else {
      counts[last] = (counts[last] ?? 0) + 1;
      width += need;
    }
  }
  return counts;
}

/** The bands of one table, from the beginning of printing to its end. The screen shows nothing of them. */
export class PaperBands {
  private readonly root: ShadowRoot;
  private readonly table: HTMLElement;
  private readonly box: HTMLElement;
  private readonly nodes = document.createElement("div");
  private sheet: CSSStyleSheet | null = null;

  /** `box` gets the bands at its end; the table that they stand in for is in a `.grid-scroll`. */
  constructor(root: ShadowRoot, table: HTMLElement, box: HTMLElement) {
    this.root = root;
    this.table = table;
    this.box = box;
    this.nodes.className = "grid-bands";
  }

  /** Makes the bands that some paper may need; none for a table that all have room for. */
  make(model: GridModel, measure: Measure): void {
    this.drop();
    const { look: { fontSize }, width } = model.scene;
    const letters = Math.min(leastLetters, fontSize);
    const [label = 0, ...needs] = paperSizes(model, measure).map((size) => size / fontSize);
    const whole = needs.reduce((sum, need) => sum + need, label);
    // Paper cannot be scrolled: there, the texts of a table that is too wide for it are smaller.
    this.table.style.setProperty("--_ems", String(whole));

    const most = Math.floor(mostCells / Math.max(model.arrangement.rows.length * needs.length, 1));
    const rooms = [Math.min(width, uprightWidth), ...paperWidths]
      .map((room) => room / letters).filter((room) => room < whole);
    const sets = setsOf(label, needs, rooms, Math.max(most, 1));
    if (sets.length > 0) this.show(model, sets, [whole, ...sets.map(({ ems }) => ems)].map((ems) => ems * letters));
  }

  drop(): void {
    this.table.style.removeProperty("--_ems");
    this.nodes.remove();
    this.nodes.replaceChildren();
    if (!this.sheet) return;
    this.root.adoptedStyleSheets = this.root.adoptedStyleSheets.filter((sheet) => sheet !== this.sheet);
    this.sheet = null;
  }

  /** The table as a whole and each set are shown from their width in `from` on, up to the one before. */
  private show(model: GridModel, sets: readonly Bands[], from: readonly number[]): void {
    const rules = sets.map((_, index) => {
      const least = index < sets.length - 1 ? from[index + 1] : 0;
      return `@container (${least}px <= width < ${from[index]}px) { .grid-bands > .set-${index} { display: block; } }`;
    });
    rules.push(`@container (width < ${from[0]}px) { .grid-scroll { display: none !important; } }`);
    this.sheet = makeStyle(this.root, `@media print { ${rules.join(" ")} }`);
    this.root.adoptedStyleSheets = [...this.root.adoptedStyleSheets, this.sheet];
    this.nodes.append(...sets.map((set, index) => setNode(model, set, index)));
    this.box.append(this.nodes);
  }
}

/** The bands for some rooms, at most so many sets of them: those that differ, the widest first. */
function setsOf(label: number, needs: readonly number[], rooms: readonly number[], most: number): Bands[] {
  const sets = new Map<number, Bands>();
  for (const room of rooms) {
    if (sets.size === most) break;
    const bands = bandsFor(label, needs, room);
    if (bands.counts.length > 1) sets.set(bands.counts.length, bands);
  }
  return [...sets.values()].sort((one, other) => one.counts.length - other.counts.length);
}

function setNode(model: GridModel, { counts, ems }: Bands, index: number): HTMLElement {
  const node = document.createElement("div");
  node.className = `set-${index}`;
  node.style.setProperty("--_ems", String(ems));
  let next = 0;
  for (const count of counts) {
    node.append(bandNode(partOf(model, next, next + count)));
    next += count;
  }
  return node;
}

/** The model with the columns at some positions alone. */
function partOf(model: GridModel, from: number, to: number): GridModel {
  const { scene, arrangement, sizes } = model;
  const { style } = scene;
  return {
    ...model,
    scene: { ...scene, style: { ...style, FixedCols: Math.max(style.FixedCols - from, 0) } },
    arrangement: { ...arrangement, columns: arrangement.columns.slice(from, to) },
    sizes: { ...sizes, columnWidths: sizes.columnWidths.slice(from, to) },
  };
}

function bandNode(model: GridModel): HTMLTableElement {
  const { rows } = model.arrangement;
  const table = document.createElement("table");
  table.setAttribute("part", "grid");
  table.append(columnNodes(model));
  const head = headRows(model);
  if (head.length > 0) table.createTHead().append(...head);
  markSelectedLabels(table, model);
  table.createTBody().append(...rows.map((_, position) => bodyRow(model, position)));
  table.classList.toggle("unparted", rows.length * model.sizes.rowHeight(0) <= mostUnparted);
  return table;
}
