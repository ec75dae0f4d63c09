// The boxes in an element's shadow: the frame with caption and drawing, and what the page has put into the element.
import { figureStyle } from "./figure_style.ts";
import { adoptStyle, makeStyle } from "./host/style_sheet.ts";
import type { Look } from "./look/look.ts";

/**
 * pending: not drawn yet, the fallback is on show; drawn; failed: the fallback is on show, as high as it is; hidden:
 * nothing is.
 */
export type FigureState = "pending" | "drawn" | "failed" | "hidden";

const defaultSize = { width: "480px", height: "320px" } as const;

/** The boxes of one element, which live as long as it. */
export class FigureBox {
  /** Where charts and tables are drawn. */
  readonly drawing = document.createElement("div");
  private readonly element: HTMLElement;
  private readonly root: ShadowRoot;
  private readonly all = document.createElement("div");
  private readonly frame = document.createElement("div");
  private readonly caption = document.createElement("div");
  private readonly fallback = document.createElement("div");
  // The host's own rule.
  private sheet: CSSStyleSheet | null = null;
  private state: FigureState = "pending";

  constructor(element: HTMLElement, root: ShadowRoot) {
    this.element = element;
    this.root = root;
    this.drawing.className = "drawing";
    this.caption.className = "caption";
    this.caption.part.add("caption");
    this.frame.className = "frame";
    this.frame.part.add("drawing");
    this.frame.append(this.caption, this.drawing);
    this.fallback.className = "fallback";
    this.fallback.append(document.createElement("slot"));
    this.all.append(this.frame, this.fallback);
    root.append(this.all);
    this.adoptStyles();
  }

  /** Gives the root its style sheets, which it loses when the element goes to another document. */
  adoptStyles(): void {
    adoptStyle(this.root, figureStyle);
    this.sheet = makeStyle(this.root, ":host {}");
    this.root.adoptedStyleSheets = [...this.root.adoptedStyleSheets, this.sheet];
    this.setState(this.state);
  }

  setState(state: FigureState): void {
    this.state = state;
    this.all.className = state;
    this.setSize();
  }

  /** Takes the size from the element's attributes. */
  setSize(): void {
    const height = sizeOf(this.element.getAttribute("height")) ?? defaultSize.height;
    this.setRule({
      "width": sizeOf(this.element.getAttribute("width")) ?? defaultSize.width,
      "height": this.state === "failed" ? "auto" : height,
      "min-height": this.state === "failed" && !height.endsWith("%") ? height : "",
      "display": this.state === "hidden" ? "none" : "",
    });
  }

  setCaption(text: string): void {
    this.caption.textContent = text;
  }

  /** A table says the same as the fallback, to the ear as well; and on paper it can go on on the next page. */
  setTable(isTable: boolean): void {
    this.fallback.classList.toggle("repeated", isTable);
    this.setRule({ "break-inside": isTable ? "auto" : "avoid" });
  }

  setLook(look: Look, hasBorder: boolean): void {
    this.setRule({
      "--_text": look.text,
      "--_ground": look.ground,
      "--_line": look.grid,
      "--_accent": look.palette[0] ?? look.text,
      "--_scheme": look.dark ? "dark" : "light",
    });
    this.frame.classList.toggle("bordered", hasBorder);
    const { style } = this.frame;
    style.fontFamily = look.fontFamily;
    style.fontSize = `${look.fontSize}px`;
    style.fontWeight = look.fontWeight;
    style.fontStyle = look.fontStyle;
  }

  // WebKit does not see that a host's rule has changed, only that the sheet has another one.
  private setRule(values: Readonly<Record<string, string>>): void {
    const rule = this.sheet?.cssRules[0] as CSSStyleRule | undefined;
    const before = rule?.cssText;
    for (const [name, value] of Object.entries(values)) rule?.style.setProperty(name, value);
    if (rule && rule.cssText !== before) this.sheet?.replaceSync(rule.cssText);
  }
}

// "480" and "50%", as in pages of old; null for anything else.
function sizeOf(text: string | null): string | null {
  const [, number, percent] = /^\s*(\d+(?:\.\d+)?)(?:px)?(%?)\s*$/.exec(text ?? "") ?? [];
  return number === undefined ? null : `${number}${percent || "px"}`;
}
