// The chart's data as the contents document holds them (docs/contents-document.md).

export interface Contents {
  rowTitle: string;
  columnTitle: string;
  valueTitle: string;
  /** One entry a row; null: the row has no label. */
  rows: (string | null)[];
  /** The labels of the columns; empty when they have none. */
  columns: string[];
  /** The cells, row after row; the last rows may be short. */
  values: string[];
}
