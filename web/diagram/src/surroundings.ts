// What around an element decides how it looks and speaks: the page's style, the reader's system and languages.
import type { Reading } from "./look/theme.ts";
import { customProperties } from "./look/theme.ts";

const queries = {
  dark: "(prefers-color-scheme: dark)",
  forced: "(forced-colors: active)",
  still: "(prefers-reduced-motion: reduce)",
} as const;

/** The surroundings of one element, watched from `watch` to `release`. */
export class Surroundings {
  private readonly element: HTMLElement;
  private readonly changed: () => void;
  private lists: MediaQueryList[] = [];

  constructor(element: HTMLElement, changed: () => void) {
    this.element = element;
    this.changed = changed;
  }

  watch(): void {
    this.release();
    this.lists = Object.values(queries).map((query) => window.matchMedia(query));
    for (const list of this.lists) list.addEventListener("change", this.changed);
  }

  release(): void {
    for (const list of this.lists) list.removeEventListener("change", this.changed);
    this.lists = [];
  }

  /** What the page and the reader ask for. On paper it is light; what nobody sees does not move. */
  reading({ isPrinting, isUnseen }: { isPrinting: boolean; isUnseen: boolean }): Reading {
    const style = getComputedStyle(this.element);
    const matches = (query: string): boolean => window.matchMedia(query).matches;
    const theme = this.element.getAttribute("theme");
    const isOwn = theme === "dark" || theme === "light";
    return {
      dark: isOwn ? theme === "dark" : !isPrinting && matches(queries.dark),
      forced: matches(queries.forced),
      still: isPrinting || isUnseen || matches(queries.still),
      patterns: this.element.hasAttribute("patterns"),
      font: style.fontFamily,
      custom: Object.fromEntries(customProperties.map((name) => [name, style.getPropertyValue(name)])),
    };
  }
}
