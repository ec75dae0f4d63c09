// The range of many numbers; as arguments of Math.min and Math.max a long list would be too many.

/** The least and the greatest of some numbers; infinite, and the wrong way round, where there are none. */
export function extent(values: Iterable<number>): { readonly least: number; readonly greatest: number } {
  let [least, greatest] = [Infinity, -Infinity];
  for (const value of values) {
    least = Math.min(least, value);
    greatest = Math.max(greatest, value);
  }
  return { least, greatest };
}
