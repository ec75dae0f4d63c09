// The language of an element's formats and words, and when it may be another.

/** The language tags for an element, the best first: of the nearest `lang` around it, then the reader's. */
export function languagesFor(element: Element): string[] {
  const tag = languageAround(element);
  return [...(tag ? [tag] : []), ...navigator.languages];
}

function languageAround(element: Element): string {
  const holder = element.closest("[lang]");
  if (holder) return holder.getAttribute("lang") ?? "";
  const host = hostOf(element.getRootNode());
  return host ? languageAround(host) : "";
}

// In a frame, shadow roots are of another class than here.
function hostOf(root: Node): Element | null {
  return root.nodeType === Node.DOCUMENT_FRAGMENT_NODE ? (root as ShadowRoot).host ?? null : null;
}

/** One observer of a document or shadow tree, for all the elements in it: who is to be told, with the node around it. */
interface Watch {
  readonly observer: MutationObserver;
  readonly around: Map<() => void, Node>;
}

const watches = new WeakMap<Node, Watch>();

/**
 * Calls `changed` when a `lang` has changed on what is around a connected element, through the shadow trees that it
 * stands in; until the function is called that it gives.
 */
export function watchLanguage(element: Element, changed: () => void): () => void {
  const roots: Node[] = [];
  // The element hears of its own attributes itself.
  for (let node = element.parentNode; node;) {
    const root = node.getRootNode();
    const watch = watches.get(root) ?? watchOf(root);
    watch.around.set(changed, node);
    roots.push(root);
    node = hostOf(root);
  }
  return () => roots.forEach((root) => leave(root, changed));
}

function watchOf(root: Node): Watch {
  const around: Watch["around"] = new Map();
  const observer = new MutationObserver((records) => {
    const targets = [...new Set(records.map(({ target }) => target))];
    for (const [changed, node] of [...around]) if (targets.some((target) => target.contains(node))) changed();
  });
  observer.observe(root, { subtree: true, attributeFilter: ["lang"] });
  const watch = { observer, around };
  watches.set(root, watch);
  return watch;
}

function leave(root: Node, changed: () => void): void {
  const watch = watches.get(root);
  if (!watch?.around.delete(changed) || watch.around.size > 0) return;
  watch.observer.disconnect();
  watches.delete(root);
}
