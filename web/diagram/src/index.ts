// The script of published pages: makes the element known, once, however often it is loaded.
import { DiagramElement } from "./element.ts";

declare const PLEXORAS_VERSION: string;

const tag = "plexoras-diagram";

// A browser without what the element stands on goes on showing what is inside it.
const isAble = typeof customElements === "object" && "adoptedStyleSheets" in Document.prototype
  && typeof ResizeObserver === "function" && typeof IntersectionObserver === "function";

if (isAble && !customElements.get(tag)) {
  const names = Object.freeze({ version: PLEXORAS_VERSION, DiagramElement });
  Object.defineProperty(globalThis, "PlexorasDiagram", { value: names, configurable: true });
  customElements.define(tag, DiagramElement);
}
