// The chart's style: one table of all properties with their types and defaults, as the chart component has them.
// Names, order and defaults are those of the style document (docs/style-document.md).

interface Kinds {
  Integer: number;
  Long: number;
  Double: number;
  Boolean: boolean;
  String: string;
}

type Row = { [Kind in keyof Kinds]: readonly [Kind, Kinds[Kind]] }[keyof Kinds];

export const styleProperties = {
  DiagramType: ["Long", 5],
  FontName: ["String", "sans-serif"],
  FontBold: ["Boolean", false],
  FontItalic: ["Boolean", false],
  FontSize: ["Integer", 12],
  FormatType: ["Long", 4],
  FormatUseDefaultLocale: ["String", "True"],
  FormatLanguage: ["String", "en"],
  FormatCountry: ["String", "US"],
  FormatVariant: ["String", ""],
  FormatPattern: ["String", "#,##0.00"],
  HasPopupMenu: ["Boolean", false],
  RowSelection: ["Integer", -1],
  ColSelection: ["Integer", -1],
  ForegroundColor: ["String", "black"],
  BackgroundColor: ["String", "white"],
  ForeColor: ["String", "black"],
  BackColor: ["String", "white"],
  GridColor: ["String", "lightgray"],
  CurveColor: ["String", "navy"],
  CrossColor: ["String", "gray"],
  TagColor: ["String", "black"],
  SelectionForeColor: ["String", "white"],
  SelectionBackColor: ["String", "navy"],
  AutoResize: ["Boolean", true],
  DefaultColWidth: ["Integer", 80],
  DefaultRowHeight: ["Integer", 20],
  RowLabelWidth: ["Integer", 80],
  ColLabelHeight: ["Integer", 20],
  SelectionMode: ["Long", 0],
  MultipleSelection: ["Boolean", false],
  ExtendedSelection: ["Boolean", false],
  FixedRows: ["Integer", 0],
  FixedCols: ["Integer", 0],
  EqualCols: ["Boolean", false],
  EqualRows: ["Boolean", false],
  VScrollbarPolicy: ["Long", 0],
  HScrollbarPolicy: ["Long", 0],
  OnRowLabelClick: ["Long", 0],
  OnColLabelClick: ["Long", 0],
  xGridVisible: ["Boolean", false],
  yGridVisible: ["Boolean", true],
  showColLabels: ["Boolean", true],
  showRowLabels: ["Boolean", true],
  moveableRows: ["Boolean", false],
  moveableCols: ["Boolean", false],
  resizableCols: ["Boolean", true],
  resizableRows: ["Boolean", true],
  RectStyle: ["Long", 0],
  ShowSelectedRow: ["Boolean", false],
  PieStyle: ["Long", 0],
  PieType: ["Long", 0],
  BarStyle: ["Long", 0],
  CurveStyle: ["Long", 0],
  xScaleMin: ["Double", 0],
  xScaleMax: ["Double", 0],
  yScaleMin: ["Double", 0],
  yScaleMax: ["Double", 0],
  PieAngle: ["Double", 0],
  TabStyle: ["Long", 0],
  HasLegend: ["Boolean", true],
  HasBorder: ["Boolean", false],
  HasStatistics: ["Boolean", false],
  HasSecondYAxis: ["Boolean", false],
  IsAbsolute: ["Boolean", false],
  IsEditable: ["Boolean", false],
  BucketCount: ["Integer", 10],
  ShowRowTitle: ["Boolean", false],
  ShowColTitle: ["Boolean", false],
  IsTransposed: ["Boolean", false],
  IsRotated: ["Boolean", false],
  LabelStyle: ["Long", 0],
  Thickness: ["Integer", 1],
  Reverse: ["Long", 0],
  FormatDateStyle: ["Long", 2],
  negativeForeColor: ["String", "null"],
} as const satisfies Record<string, Row>;

export type StyleName = keyof typeof styleProperties;
export type Style = { -readonly [Name in StyleName]: Kinds[(typeof styleProperties)[Name][0]] };
