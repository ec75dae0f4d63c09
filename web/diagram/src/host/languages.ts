// The language of an element's formats and words.

/** The language tags for an element, the best first: of the nearest `lang` around it, then the reader's. */
export function languagesFor(element: Element): string[] {
  const tag = languageAround(element);
  return [...(tag ? [tag] : []), ...navigator.languages];
}

function languageAround(element: Element): string {
  const holder = element.closest("[lang]");
  if (holder) return holder.getAttribute("lang") ?? "";
  const root = element.getRootNode();
  return root instanceof ShadowRoot ? languageAround(root.host) : "";
}
