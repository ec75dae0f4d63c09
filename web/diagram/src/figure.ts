// One element at work: from its settings to its drawing, and from what the reader does to events.
import type { CellPlace, Scene } from "./charts/chart.ts";
import type { Table } from "./data/table.ts";
import { tableOf } from "./data/table.ts";
import { TypedCells } from "./data/typed_cells.ts";
import { DrawTimes } from "./draw_times.ts";
import { FigureBox } from "./figure_box.ts";
import { FigureEvents } from "./figure_events.ts";
import type { ValueFormat } from "./format/value_format.ts";
import { numberReader, valueFormat } from "./format/value_format.ts";
import { mountGrid } from "./grid/grid.ts";
import { languagesFor } from "./host/languages.ts";
import type { Part, PartHost } from "./host/part.ts";
import { samePlace } from "./host/selection.ts";
import { settleLook } from "./look/theme.ts";
import { chartName, describeDrawing, nameFigure } from "./parts/announced_figure.ts";
import { runCommand } from "./parts/commands.ts";
import { mountMenu } from "./parts/popup_menu.ts";
import type { OptionHook, Stage } from "./parts/stage.ts";
import { mountStage } from "./parts/stage.ts";
import { mountTabs, seriesWithTabs } from "./parts/tabs.ts";
import { mountWalker } from "./parts/walker.ts";
import { isTable } from "./settings/diagram_types.ts";
import type { MenuItem } from "./settings/menu.ts";
import type { Settings } from "./settings/settings.ts";
import { readSettings } from "./settings/settings.ts";
import { Surroundings } from "./surroundings.ts";

/** The data of a chart as they are shown. */
export interface ShownTable {
  readonly rowTitle: string;
  readonly columnTitle: string;
  readonly valueTitle: string;
  readonly rowLabels: readonly string[];
  readonly columnLabels: readonly string[];
  readonly cells: readonly (readonly string[])[];
}

/** What settings, and what has been typed, come to before anything is measured. */
interface Model {
  readonly settings: Settings;
  readonly table: Table;
  readonly languages: readonly string[];
  readonly format: ValueFormat;
}

export class Figure implements PartHost {
  readonly element: HTMLElement;
  readonly root: ShadowRoot;

  private hook: OptionHook | null = null;
  private readonly box: FigureBox;
  private readonly events: FigureEvents;
  private readonly internals: ElementInternals | null;
  private readonly surroundings: Surroundings;
  private readonly times: DrawTimes;
  private readonly sizes: ResizeObserver;
  // Null: not read yet.
  private texts: Readonly<Record<string, string>> | null = null;
  private isReadDue = false;
  private model: Model | null = null;
  private shown: Scene | null = null;
  // Something was to be drawn while the box had no size.
  private isOwed = false;
  private parts: Part[] = [];
  private stage: Stage | null = null;
  private tabs: Part | null = null;
  private readonly typed = new TypedCells();
  private selection: readonly CellPlace[] = [];
  private series: number | null = null;

  constructor(element: HTMLElement, root: ShadowRoot) {
    this.element = element;
    this.root = root;
    this.box = new FigureBox(element, root);
    this.events = new FigureEvents(element);
    this.internals = typeof element.attachInternals === "function" ? element.attachInternals() : null;
    this.surroundings = new Surroundings(element, () => this.readAgain(), () => this.mediumChanged());
    this.times = new DrawTimes(element, () => this.draw());
    this.sizes = new ResizeObserver(() => this.measure());
  }

  get drawing(): HTMLElement {
    return this.box.drawing;
  }

  get name(): string {
    return chartName(this.element, this.model?.settings ?? { caption: "", alt: "" });
  }

  get isPrinting(): boolean {
    return this.times.isPrinting || this.surroundings.isPaper;
  }

  /** Gets the drawing library's option before each drawing. */
  get option(): OptionHook | null {
    return this.hook;
  }

  set option(hook: OptionHook | null) {
    this.hook = hook;
    // The one before may have been what no drawing came of.
    if (this.model) this.redraw();
    else this.readAgain();
  }

  /** Labels and cells as they are shown; null as long as there are none. */
  get table(): ShownTable | null {
    if (!this.model) return null;
    const { table, format } = this.model;
    const { rowTitle, columnTitle, valueTitle, rowLabels, columnLabels } = table;
    const cells = table.cells.map((row) => row.map((cell) => format.text(cell.text)));
    return { rowTitle, columnTitle, valueTitle, rowLabels, columnLabels, cells };
  }

  /** The element has come into a document, or to another place of it. */
  start(): void {
    this.surroundings.watch();
    this.times.start();
    this.sizes.observe(this.drawing);
    // The language, the colours and the font are those of the new place.
    this.readAgain();
  }

  /** The element has left the document: all that a drawing keeps is given back. */
  stop(): void {
    this.surroundings.release();
    this.times.stop();
    this.sizes.disconnect();
    this.clear();
    this.texts = null;
    this.isReadDue = false;
    this.model = null;
    this.typed.forget();
    this.box.setState("pending");
  }

  /** Takes the texts of the parameters, by name, and draws what has changed. */
  read(texts: Readonly<Record<string, string>>): void {
    // What is beside the parameters may have changed as well.
    this.describe();
    const isSame = this.texts !== null && sameTexts(texts, this.texts);
    if (isSame && !this.isReadDue) return;
    if (!isSame) this.events.settingsChanged();
    const before = this.model;
    this.texts = texts;
    this.isReadDue = false;
    try {
      this.take(readSettings(texts), before);
    } catch (problem) {
      this.fail(problem);
    }
  }

  /** The language may have changed, and with it the format of the values; or what surrounds the element. */
  readAgain(): void {
    if (this.isReadDue || !this.texts) return;
    this.isReadDue = true;
    // Not at once: this may be what a listener does who has just heard of a failure.
    queueMicrotask(() => {
      if (this.isReadDue && this.texts) this.read(this.texts);
    });
  }

  /** The element's own size has been set. */
  resize(): void {
    this.box.setSize();
    this.redraw();
  }

  /** The root's style sheets are gone with the document that they were made for. */
  adopt(): void {
    this.clear();
    this.box.adoptStyles();
    this.redraw();
  }

  scene(): Scene {
    if (!this.shown) throw new Error("nothing has been drawn");
    const { selection, series } = this;
    return { ...this.shown, selection, series };
  }

  select(cells: CellPlace[]): void {
    if (!this.model) return;
    const { table, format } = this.model;
    // What is on show may be a larger table than the one that comes in the next frame.
    const selection = placesIn(table, cells);
    const isSame = selection.length === this.selection.length
      && selection.every((cell, index) => samePlace(cell, this.selection[index] ?? cell));
    if (isSame) return;
    this.selection = selection;
    this.redraw();
    this.events.selected(selection, table, format);
  }

  type({ row, column }: CellPlace, text: string): void {
    const { model, shown } = this;
    const table = model && this.typed.put(row, column, text);
    if (!table) return;
    // What comes in the next frame may be another table than the one on show.
    if (shown?.table === model.table) this.shown = { ...shown, table };
    this.model = { ...model, table };
    this.redraw();
  }

  showSeries(series: number | null): void {
    this.series = series;
    this.redraw();
  }

  highlight(cell: CellPlace | null): void {
    this.stage?.highlight(cell);
  }

  withAll<T>(act: () => T): T {
    return this.stage ? this.stage.withAll(act) : act();
  }

  command(item: MenuItem): void {
    const isWanted = this.events.command(item);
    // A script is the page's own affair.
    if (!isWanted || item.type !== "java") return;
    runCommand(this, item.param).catch((problem: unknown) => this.events.report(problem, "Menu"));
  }

  redraw(): void {
    if (this.model?.settings.visible) this.times.request();
  }

  join(part: Part): () => void {
    this.parts.push(part);
    return () => {
      this.parts = this.parts.filter((other) => other !== part);
    };
  }

  private take(settings: Settings, before: Model | null): void {
    const { style, contents } = settings;
    if (!contents) {
      this.model = null;
      this.clear();
      this.box.setState(settings.visible ? "pending" : "hidden");
      return;
    }
    const numberOf = numberReader(style);
    const table = this.typed.publish(tableOf(contents, { transposed: style.IsTransposed, numberOf }), numberOf);
    const languages = languagesFor(this.element);
    this.model = { settings, table, languages, format: valueFormat(style, languages) };
    this.selection = this.selectionIn(table, settings, before);
    // What no tab stands for any more could not be left.
    if (this.series !== null && !seriesWithTabs(style, table).includes(this.series)) this.series = null;
    // The menu's part is made for its entries.
    if (before && JSON.stringify(before.settings.menu) !== JSON.stringify(settings.menu)) this.clear();
    if (before && before.settings.hasMenu !== settings.hasMenu) this.clear();

    this.box.setCaption(settings.caption);
    if (this.internals) nameFigure(this.internals, this.name);
    if (!settings.visible) {
      this.clear();
      this.box.setState("hidden");
      return;
    }
    if (!this.shown) this.box.setState("pending");
    this.redraw();
  }

  // The settings' selection where they say another one than before, or else the reader's; as far as there are cells.
  private selectionIn(table: Table, { style }: Settings, before: Model | null): readonly CellPlace[] {
    const earlier = before?.settings.style;
    const isKept = earlier?.RowSelection === style.RowSelection && earlier.ColSelection === style.ColSelection;
    return placesIn(table, isKept ? this.selection : [{ row: style.RowSelection, column: style.ColSelection }]);
  }

  // The events of printing ask for drawings of their own.
  private mediumChanged(): void {
    if (!this.times.isPrinting) this.redraw();
  }

  // Draws again where the box has another size than what is drawn.
  private measure(): void {
    const { clientWidth, clientHeight } = this.drawing;
    if (clientWidth === 0) return;
    if (this.isOwed || this.shown?.width !== clientWidth || this.shown.height !== clientHeight) this.redraw();
  }

  private draw(): void {
    const { model } = this;
    if (!model || !model.settings.visible || !this.element.isConnected) return;
    // A box without a size gets one later, and then draws.
    this.isOwed = this.drawing.clientWidth === 0;
    if (this.isOwed) return;
    try {
      this.drawModel(model);
    } catch (problem) {
      this.fail(problem);
      return;
    }
    this.events.drawn(model.settings.style.DiagramType);
  }

  private drawModel(model: Model): void {
    const { settings, table, format } = this.model = this.speak(model);
    const { style } = settings;
    const look = settleLook(style, this.surroundings.reading({ isPrinting: this.isPrinting, isUnseen: this.times.isUnseen }));
    this.box.setLook(look, style.HasBorder);
    const { selection, series } = this;
    this.shown = { table, style, look, format, width: 0, height: 0, selection, series };
    if (this.parts.length === 0) this.mountParts(settings);
    // Caption and tabs leave the rest of the box to the drawing.
    this.tabs?.update(this.shown);
    this.shown = { ...this.shown, width: this.drawing.clientWidth, height: this.drawing.clientHeight };
    for (const part of this.parts) part.update(this.shown);
    this.box.setTable(isTable(style.DiagramType));
    this.box.setState("drawn");
    this.describe();
  }

  // A language that has changed in this same turn is not heard of yet.
  private speak(model: Model): Model {
    const languages = languagesFor(this.element);
    if (String(languages) === String(model.languages)) return model;
    return { ...model, languages, format: valueFormat(model.settings.style, languages) };
  }

  // Data that stand in the element as a table are heard once: there.
  private describe(): void {
    if (!this.shown) return;
    const hasTable = this.element.querySelector("table") !== null;
    const kind = isTable(this.shown.style.DiagramType) ? "table" : hasTable ? "unheard" : "image";
    describeDrawing(this.drawing, kind, this.name);
  }

  private mountParts({ menu, hasMenu }: Settings): void {
    this.tabs = mountTabs(this);
    this.stage = mountStage(this, () => this.hook);
    this.parts = [mountGrid(this), this.stage, mountWalker(this)];
    if (hasMenu) this.parts.push(mountMenu(this, menu ?? []));
  }

  // Takes the drawing away.
  private clear(): void {
    for (const part of this.parts) part.dispose();
    this.tabs?.dispose();
    this.parts = [];
    this.stage = this.tabs = null;
    this.shown = null;
  }

  private fail(problem: unknown): void {
    this.model = null;
    this.clear();
    this.box.setState("failed");
    this.events.failed(problem);
  }
}

// As far as the table has them.
function placesIn({ rowLabels, columnLabels }: Table, cells: readonly CellPlace[]): readonly CellPlace[] {
  return cells
    .map(({ row, column }) => ({ row: placeIn(row, rowLabels.length), column: placeIn(column, columnLabels.length) }))
    .filter(({ row, column }) => row >= 0 || column >= 0);
}

function placeIn(index: number, count: number): number {
  return index >= 0 && index < count ? index : -1;
}

function sameTexts(one: Readonly<Record<string, string>>, other: Readonly<Record<string, string>>): boolean {
  const names = Object.keys(one);
  return names.length === Object.keys(other).length && names.every((name) => one[name] === other[name]);
}
