// The custom element <plexoras-diagram> (docs/element.md): its children, attributes and properties.
import type { ShownTable } from "./figure.ts";
import { Figure } from "./figure.ts";
import type { OptionHook } from "./parts/stage.ts";

/** Properties that a page may have set before the script has run. */
const ownProperties = ["width", "height", "theme", "patterns", "option"] as const;

export class DiagramElement extends HTMLElement {
  static readonly observedAttributes = ["width", "height", "lang", "theme", "patterns"];

  // Private for good: what a page has set on the plain element may have any name.
  readonly #figure: Figure;
  readonly #watch: MutationObserver;

  constructor() {
    super();
    this.#figure = new Figure(this, this.attachShadow({ mode: "open" }));
    this.#watch = new MutationObserver(() => this.#readParameters());
  }

  connectedCallback(): void {
    for (const name of ownProperties) this.#takeEarly(name);
    this.#figure.start();
    this.#watch.observe(this, { childList: true, subtree: true, attributeFilter: ["name", "value"] });
    // A page that is still being read may not have come to all parameters.
    if (document.readyState === "loading") {
      document.addEventListener("DOMContentLoaded", this.#readParameters, { once: true });
    } else {
      queueMicrotask(this.#readParameters);
    }
  }

  disconnectedCallback(): void {
    document.removeEventListener("DOMContentLoaded", this.#readParameters);
    // A move takes the element out and puts it in again at once: the drawing goes with it.
    queueMicrotask(() => {
      if (this.isConnected) return;
      this.#watch.disconnect();
      this.#figure.stop();
    });
  }

  /** Moved without having left. */
  connectedMoveCallback(): void {
    this.#figure.start();
  }

  adoptedCallback(): void {
    this.#figure.adopt();
  }

  attributeChangedCallback(name: string): void {
    if (name === "width" || name === "height") this.#figure.resize();
    else if (name === "lang") this.#figure.readAgain();
    else this.#figure.redraw();
  }

  get width(): string {
    return this.getAttribute("width") ?? "";
  }

  set width(value: string | number | null) {
    this.#reflect("width", value);
  }

  get height(): string {
    return this.getAttribute("height") ?? "";
  }

  set height(value: string | number | null) {
    this.#reflect("height", value);
  }

  /** "light", "dark", or empty for the reader's own. */
  get theme(): string {
    return this.getAttribute("theme") ?? "";
  }

  set theme(value: string | null) {
    this.#reflect("theme", value);
  }

  get patterns(): boolean {
    return this.hasAttribute("patterns");
  }

  set patterns(value: boolean) {
    this.toggleAttribute("patterns", Boolean(value));
  }

  /** Gets the drawing library's option before each drawing, and may return another. */
  get option(): OptionHook | null {
    return this.#figure.option;
  }

  set option(value: OptionHook | null) {
    this.#figure.option = typeof value === "function" ? value : null;
  }

  /** Labels and cells as they are shown; null until there are any. */
  get table(): ShownTable | null {
    return this.#figure.table;
  }

  readonly #readParameters = (): void => {
    const texts: Record<string, string> = {};
    for (const child of this.children) {
      const name = child.localName === "param" ? child.getAttribute("name") : null;
      if (name) texts[name] = child.getAttribute("value") ?? "";
    }
    this.#figure.read(texts);
  };

  #reflect(name: string, value: string | number | null): void {
    if (value === null || value === "") this.removeAttribute(name);
    else this.setAttribute(name, String(value));
  }

  // A property that was set on the plain element hides the class's own until it is taken away.
  #takeEarly(name: (typeof ownProperties)[number]): void {
    if (!Object.prototype.hasOwnProperty.call(this, name)) return;
    const early: unknown = Reflect.get(this, name);
    Reflect.deleteProperty(this, name);
    Reflect.set(this, name, early);
  }
}
