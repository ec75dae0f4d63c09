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
  /** The colours of the series, in order; see `seriesColor` for charts that have more. */
  readonly palette: readonly string[];
  /** For the only series of a chart. */
  readonly curve: string;
  /** For curves drawn through or over a series; null: a shade of the series' own colour. */
  readonly drawnCurve: string | null;
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
