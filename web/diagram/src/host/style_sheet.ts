// Style sheets of shadow roots. They are constructed, because pages with a strict policy refuse <style> elements.

// A sheet belongs to the document that it was made for.
const sheets = new WeakMap<Document, Map<string, CSSStyleSheet>>();

/** A style sheet for a root, not yet adopted. */
export function makeStyle(root: Document | ShadowRoot, css: string): CSSStyleSheet {
  const view = documentOf(root).defaultView ?? window;
  const sheet = new (view as Window & typeof globalThis).CSSStyleSheet();
  sheet.replaceSync(css);
  return sheet;
}

/** Adds a style sheet to a root, once. All roots of a document share one sheet of the same text. */
export function adoptStyle(root: Document | ShadowRoot, css: string): void {
  const document = documentOf(root);
  const known = sheets.get(document) ?? new Map<string, CSSStyleSheet>();
  sheets.set(document, known);
  const sheet = known.get(css) ?? makeStyle(root, css);
  known.set(css, sheet);
  if (!root.adoptedStyleSheets.includes(sheet)) root.adoptedStyleSheets = [...root.adoptedStyleSheets, sheet];
}

function documentOf(root: Document | ShadowRoot): Document {
  return root.ownerDocument ?? (root as Document);
}
