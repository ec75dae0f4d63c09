// Which columns of a table the dots of scatter and bubble charts are made of.

/** The columns of one cloud of dots. */
export interface DotColumns {
  /** Null: the row's number. */
  readonly x: number | null;
  readonly y: number;
  /** Null: all are of one size. */
  readonly size: number | null;
}

/** The clouds of a `DiagramType`, from so many columns; null for charts whose values stand alone. */
export function dotColumnsOf(diagramType: number, count: number): DotColumns[] | null {
  if (diagramType !== 3 && diagramType !== 8) return null;
  if (count === 1) return [{ x: null, y: 0, size: null }];
  if (diagramType === 3) {
    return Array.from({ length: Math.max(count - 1, 0) }, (_, index) => ({ x: 0, y: index + 1, size: null }));
  }
  return Array.from({ length: Math.floor((count + 1) / 3) }, (_, index) => {
    const [x, y, size] = [3 * index, 3 * index + 1, 3 * index + 2];
    return { x, y, size: size < count ? size : null };
  });
}
