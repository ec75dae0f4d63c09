// The colours and fonts of one drawing, with the reader's scheme, forced colours and the page's custom properties
// settled. Colours are texts that SVG takes.

export interface Look {
  readonly text: string;
  readonly ground: string;
  readonly plotText: string;
  readonly plotGround: string;
  readonly grid: string;
  readonly cross: string;
  readonly tag: string;
  readonly selectionText: string;
  readonly selectionGround: string;
  /** For the texts of negative values; null: as all others. */
  readonly negative: string | null;
  /** The colours of the series, in order; what has more series begins anew. */
  readonly palette: readonly string[];
  /** For the only series of a chart, and for drawn curves. */
  readonly curve: string;
  readonly fontFamily: string;
  readonly fontSize: number;
  readonly fontWeight: "normal" | "bold";
  readonly fontStyle: "normal" | "italic";
  readonly dark: boolean;
  /** Surfaces have patterns beside their colours. */
  readonly patterns: boolean;
  /** Nothing moves. */
  readonly still: boolean;
}
