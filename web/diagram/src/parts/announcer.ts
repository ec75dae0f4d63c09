// What screen readers are told beside what they read for themselves.

/** Says a text through the root's one live region, politely. */
export function announce(root: ShadowRoot, text: string): void {
  let region = root.querySelector<HTMLElement>(".plexoras-live");
  if (!region) {
    region = document.createElement("div");
    region.className = "plexoras-live";
    region.setAttribute("aria-live", "polite");
    root.append(region);
  }
  // The same text again is said only if something changes: a no-break space behind it.
  region.textContent = region.textContent === text ? `${text}\u00a0` : text;
}
