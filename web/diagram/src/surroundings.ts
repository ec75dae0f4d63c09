// What around an element decides how it looks and speaks: the page's style, the reader's system and languages.
import { languagesFor, watchLanguage } from "./host/languages.ts";
import type { Reading } from "./look/theme.ts";
import { customProperties } from "./look/theme.ts";

const queries = {
  dark: "(prefers-color-scheme: dark)",
  forced: "(forced-colors: active)",
  still: "(prefers-reduced-motion: reduce)",
} as const;
const paper = "print";

type OfPage = Pick<Reading, "font" | "custom">;

/** The surroundings of one element, watched from `watch` to `release`. */
export class Surroundings {
  private readonly element: HTMLElement;
  private readonly changed: () => void;
  private readonly mediumChanged: () => void;
  private readonly page = new MutationObserver(() => this.compare());
  private lists: MediaQueryList[] = [];
  private leaveLanguage: (() => void) | null = null;
  // What the page asked for when it was last looked at.
  private known = "";

  /** `mediumChanged` is called when the page is shown as on paper, which may be without printing, and afterwards. */
  constructor(element: HTMLElement, changed: () => void, mediumChanged: () => void) {
    this.element = element;
    this.changed = changed;
    this.mediumChanged = mediumChanged;
  }

  get isPaper(): boolean {
    return window.matchMedia(paper).matches;
  }

  watch(): void {
    this.release();
    for (const query of Object.values(queries)) this.listen(query, this.changed);
    this.listen(paper, this.mediumChanged);
    this.leaveLanguage = watchLanguage(this.element, this.compare);
    // Pages switch their scheme at their root or body.
    const { documentElement, body } = this.element.ownerDocument;
    for (const node of [documentElement, body]) if (node) this.page.observe(node, { attributes: true });
  }

  release(): void {
    this.page.disconnect();
    this.leaveLanguage?.();
    this.leaveLanguage = null;
    for (const list of this.lists) {
      list.removeEventListener("change", this.changed);
      list.removeEventListener("change", this.mediumChanged);
    }
    this.lists = [];
  }

  private listen(query: string, changed: () => void): void {
    const list = window.matchMedia(query);
    list.addEventListener("change", changed);
    this.lists.push(list);
  }

  /** What the page and the reader ask for. On paper it is light; what nobody sees does not move. */
  reading({ isPrinting, isUnseen }: { isPrinting: boolean; isUnseen: boolean }): Reading {
    const matches = (query: string): boolean => window.matchMedia(query).matches;
    const theme = this.element.getAttribute("theme");
    const isOwn = theme === "dark" || theme === "light";
    const ofPage = this.ofPage();
    this.known = this.textOf(ofPage);
    return {
      ...ofPage,
      dark: isOwn ? theme === "dark" : !isPrinting && matches(queries.dark),
      forced: matches(queries.forced),
      still: isPrinting || isUnseen || matches(queries.still),
      patterns: this.element.hasAttribute("patterns"),
    };
  }

  private readonly compare = (): void => {
    const now = this.textOf(this.ofPage());
    if (now === this.known) return;
    this.known = now;
    this.changed();
  };

  private ofPage(): OfPage {
    const style = getComputedStyle(this.element);
    return {
      font: style.fontFamily,
      custom: Object.fromEntries(customProperties.map((name) => [name, style.getPropertyValue(name)])),
    };
  }

  private textOf(ofPage: OfPage): string {
    return JSON.stringify([ofPage, languagesFor(this.element)]);
  }
}
