// Where panels open: beside what they belong to, and inside the window.

/** In pixels of the window. */
export interface Box {
  readonly left: number;
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
}

const margin = 4;

/**
 * The place of a panel of this size: under the box, or with `sideways` at its right. Where there is no room it goes to
 * the other side, and at last over the box.
 */
export function placeOf(
  size: { width: number; height: number }, beside: Box, sideways: boolean, window: { width: number; height: number },
  mirrored: boolean,
): { left: number; top: number } {
  const [after, before] = sideways
    ? [beside.right, beside.left - size.width] : [beside.left, beside.right - size.width];
  const wanted = mirrored ? [before, after] : [after, before];
  const below = sideways ? [beside.top, beside.bottom - size.height] : [beside.bottom, beside.top - size.height];
  return { left: fit(wanted, size.width, window.width), top: fit(below, size.height, window.height) };
}

/** The first place at which the size fits; else the first one, pushed inside. */
function fit(places: readonly number[], size: number, room: number): number {
  const inside = places.find((place) => place >= margin && place + size <= room - margin);
  return inside ?? Math.max(Math.min(places[0] ?? 0, room - margin - size), margin);
}

/** Places a panel that is on show. */
export function placeBeside(panel: HTMLElement, beside: Box, sideways: boolean): void {
  const { width, height } = panel.getBoundingClientRect();
  const room = { width: document.documentElement.clientWidth, height: innerHeight };
  const mirrored = getComputedStyle(panel).direction === "rtl";
  const place = placeOf({ width, height }, beside, sideways, room, mirrored);
  panel.style.left = `${place.left}px`;
  panel.style.top = `${place.top}px`;
}
