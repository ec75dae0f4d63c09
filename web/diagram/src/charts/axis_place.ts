// Where an axis stands.

export type Side = "left" | "right" | "top" | "bottom";

/** Where an axis is, and what it shows. */
export interface AxisPlace {
  readonly side: Side;
  /** Runs to the left, or down. */
  readonly inverse: boolean;
  readonly hasGrid: boolean;
  readonly title: string;
  /** How long the axis is, and how much room its labels may take across it; both in pixels, about. */
  readonly length: number;
  readonly across: number;
}

export function isLying(side: Side): boolean {
  return side === "top" || side === "bottom";
}
