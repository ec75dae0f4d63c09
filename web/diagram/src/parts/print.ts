// Printing one element of a page alone.
import { adoptStyle } from "../host/style_sheet.ts";

const mark = "data-plexoras-unprinted";
const style = `@media print { [${mark}] { display: none !important; } }`;

/** Opens the browser's print dialog for the element without the page around it. */
export function printAlone(element: HTMLElement): void {
  const asked = new AbortController();
  window.addEventListener("beforeprint", () => hideBesides(element), { once: true, signal: asked.signal });
  window.print();
  // Where nothing is printed (in a sandboxed frame), the next print is another one, of the whole page.
  asked.abort();
}

function hideBesides(element: HTMLElement): void {
  const hidden = [...besides(element)];
  for (const node of hidden) {
    adoptStyle(node.getRootNode() as Document | ShadowRoot, style);
    node.setAttribute(mark, "");
  }
  const restore = (): void => hidden.forEach((node) => node.removeAttribute(mark));
  window.addEventListener("afterprint", restore, { once: true });
}

/** All elements that neither hold the element nor stand in it, from the inside out. */
function* besides(element: Element): Generator<Element> {
  for (let node = element; node !== document.body && node !== document.documentElement;) {
    const parent = node.parentNode;
    for (const other of parent?.children ?? []) if (other !== node && !other.matches("style, script")) yield other;
    const next = parent instanceof ShadowRoot ? parent.host : parent;
    if (!(next instanceof Element)) return;
    node = next;
  }
}
