// What screen readers are told beside what they read for themselves.

/** Says a text through the root's live region, politely. */
export function announce(root: ShadowRoot, text: string): void {
  // While a window is open all outside of it is silent, so it has a region of its own.
  const place = root.querySelector("dialog[open]") ?? root;
  let region = [...place.children].find((child) => child.className === "plexoras-live");
  if (!region) {
    region = document.createElement("div");
    region.className = "plexoras-live";
    region.setAttribute("aria-live", "polite");
    place.append(region);
  }
  // The same text again is said only if something changes: a no-break space behind it.
  region.textContent = region.textContent === text ? `${text}\u00a0` : text;
}
