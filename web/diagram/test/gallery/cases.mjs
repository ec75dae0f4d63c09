// What the gallery shows: sections of named cases, each a table and a style.
const histogram = { DiagramType: 0 };
const line = { DiagramType: 1 };
const area = { DiagramType: 2 };
const scatter = { DiagramType: 3 };
const pie = { DiagramType: 4 };
const bar = { DiagramType: 5 };
const barAndLine = { DiagramType: 6 };
const radar = { DiagramType: 7 };
const bubble = { DiagramType: 8 };

/** The types of chart by themselves. */
export const types = [
  ["Histogram", "readings", { ...histogram }],
  ["Line", "dayAndNight", { ...line, ShowRowTitle: true }],
  ["Area", "energy", { ...area, BarStyle: 1 }],
  ["Scatter", "sunAndRain", { ...scatter }],
  ["Pie", "energyShares", { ...pie }],
  ["Bar", "rain", { ...bar }],
  ["Bar and line", "energy", { ...barAndLine, BarStyle: 1 }],
  ["Radar", "skyMix", { ...radar }],
  ["Bubble", "monthBubbles", { ...bubble }],
  ["Table", "skies", { DiagramType: 9, ShowRowTitle: true }],
  ["Cumulative histogram", "readings", { DiagramType: 10 }],
  ["Heat table", "sixHours",
    { DiagramType: 11, FormatType: 0, FormatPattern: "0", FontSize: 11, RowLabelWidth: 44, DefaultRowHeight: 18,
      ColLabelHeight: 18 }],
];

export const sections = [
  ["Bars", [
    ["Beside each other", "energyYears", { ...bar }],
    ["Stacked", "skies", { ...bar, BarStyle: 1 }],
    ["Shares", "skyMix", { ...bar, BarStyle: 2 }],
    ["Shares, stacked", "skies", { ...bar, BarStyle: 3 }],
    ["Boxes", "energyYears", { ...bar, RectStyle: 1 }],
    ["Boxes, stacked", "energy", { ...bar, RectStyle: 1, BarStyle: 1, Thickness: 8 }],
    ["Dark cylinders", "rain", { ...bar, RectStyle: 2 }],
    ["Light cylinders", "energyYears", { ...bar, RectStyle: 3 }],
    ["Rotated", "energyShares", { ...bar, IsRotated: true }],
    ["Rotated boxes", "energyYears", { ...bar, IsRotated: true, RectStyle: 1, Thickness: 6 }],
    ["Rotated cylinders, stacked", "energyYears", { ...bar, IsRotated: true, RectStyle: 3, BarStyle: 1 }],
    ["Negative values", "anomalies", { ...bar, negativeForeColor: "#b3261e" }],
  ]],
  ["Lines and areas", [
    ["Thicker lines", "dayAndNight", { ...line, Thickness: 3 }],
    ["Smooth", "dayAndNight", { ...line, CurveStyle: 1, Thickness: 2 }],
    ["Smooth and filled", "dayAndNight", { ...line, CurveStyle: 2, Thickness: 2 }],
    ["Many values", "co2", { ...line, Thickness: 2, ShowRowTitle: true }],
    ["Gaps", "gaps", { ...line, Thickness: 2 }],
    ["Areas over each other", "energy", { ...area }],
    ["Shares, stacked", "energy", { ...area, BarStyle: 3, CurveStyle: 1 }],
    ["Area from zero", "co2", { ...area }],
    ["Second y axis", "energy", { ...line, HasSecondYAxis: true, Thickness: 2 }],
    ["Bars and line, second axis", "anomalies", { ...barAndLine, HasSecondYAxis: true, Thickness: 2 }],
  ]],
  ["Axes", [
    ["Grid lines of x", "rain", { ...bar, xGridVisible: true }],
    ["No grid lines", "rain", { ...bar, yGridVisible: false }],
    ["Absolute, from zero", "co2", { ...line, IsAbsolute: true, Thickness: 2 }],
    ["Absolute, with a range", "co2", { ...line, IsAbsolute: true, yScaleMin: 300, yScaleMax: 420, Thickness: 2 }],
    ["x reversed", "rain", { ...bar, Reverse: 1 }],
    ["y reversed", "rain", { ...bar, Reverse: 2, LabelStyle: 2 }],
    ["Labels right and below", "rain", { ...bar, LabelStyle: 1 }],
    ["Labels left and above", "rain", { ...bar, LabelStyle: 2 }],
    ["Labels right and above", "rain", { ...bar, LabelStyle: 3 }],
    ["No row labels", "rain", { ...bar, showRowLabels: false }],
    ["Titles", "energyYears", { ...bar, ShowRowTitle: true, ShowColTitle: true }],
    ["Transposed", "energyYears", { ...bar, IsTransposed: true }],
    ["Long labels", "longLabels", { ...bar }],
    ["Long labels, rotated", "longLabels", { ...bar, IsRotated: true }],
  ]],
  ["Scatter and bubble", [
    ["Trend", "sunAndRain", { ...scatter, CurveStyle: 1 }],
    ["Trend, filled", "sunAndRain", { ...scatter, CurveStyle: 2 }],
    ["Two series", "nightAndDayOverRain", { ...scatter, CurveStyle: 1 }],
    ["A lone column", "rain", { ...scatter }],
    ["Range of x", "sunAndRain", { ...scatter, xScaleMin: 0, xScaleMax: 40 }],
    ["Equal circles", "sunAndRain", { ...bubble }],
    ["Rotated", "monthBubbles", { ...bubble, IsRotated: true }],
  ]],
  ["Pies", [
    ["Ring", "energyShares", { ...pie, PieType: 1 }],
    ["Rose", "rain", { ...pie, PieType: 2, HasLegend: false }],
    ["Exploded", "energyShares", { ...pie, PieStyle: 2 }],
    ["Exploded ring", "energyShares", { ...pie, PieStyle: 2, PieType: 1, LabelStyle: 3 }],
    ["3D", "energyShares", { ...pie, PieStyle: 1 }],
    ["3D ring", "energyShares", { ...pie, PieStyle: 1, PieType: 1, Thickness: 24, HasLegend: false }],
    ["3D rose", "rain", { ...pie, PieStyle: 1, PieType: 2, HasLegend: false }],
    ["3D, tilted by 30°, 30 thick", "energyShares",
      { ...pie, PieStyle: 1, PieAngle: 30, Thickness: 30, LabelStyle: 1 }],
    ["From 90°", "energyShares", { ...pie, PieAngle: 90, HasLegend: false }],
    ["Some pies", "energyYears", { ...pie, IsTransposed: true, LabelStyle: 3 }],
    ["Some 3D pies", "energyYears", { ...pie, PieStyle: 1, IsTransposed: true, LabelStyle: 1 }],
    ["The selected row", "energyYears", { ...pie, ShowSelectedRow: true, RowSelection: 1, ShowRowTitle: true }],
    ["Many slices", "slices", { ...pie }],
    ["Negative values", "mixedSigns", { ...pie, negativeForeColor: "#b3261e", HasLegend: false }],
  ]],
  ["Histograms", [
    ["20 buckets", "readings", { ...histogram, BucketCount: 20 }],
    ["Two series", "nightsAndDays", { ...histogram, BucketCount: 8 }],
    ["Normal distribution", "readings", { ...histogram, CurveStyle: 1 }],
    ["Normal distribution, filled", "readings", { ...histogram, CurveStyle: 2, BucketCount: 14 }],
    ["Boxes", "readings", { ...histogram, RectStyle: 1, Thickness: 8 }],
    ["Dark cylinders", "readings", { ...histogram, RectStyle: 2 }],
    ["Rotated", "readings", { ...histogram, IsRotated: true }],
    ["Range of x", "readings", { ...histogram, xScaleMin: 0, xScaleMax: 30, BucketCount: 6 }],
    ["Cumulative, with its curve", "readings", { DiagramType: 10, CurveStyle: 1 }],
  ]],
  ["Radars", [
    ["Two series, thick", "dayAndNight", { ...radar, Thickness: 3 }],
    ["Gaps", "gaps", { ...radar, LabelStyle: 3 }],
    ["The selected row", "skies", { ...radar, ShowSelectedRow: true, RowSelection: 4 }],
  ]],
  ["Statistics, selection, legend, look", [
    ["Statistics", "dayAndNight", { ...line, HasStatistics: true, Thickness: 2 }],
    ["Statistics of a histogram", "readings", { ...histogram, HasStatistics: true }],
    ["Selected cell", "energyYears", { ...bar, RowSelection: 1, ColSelection: 2 }],
    ["Selected row on show", "energyYears", { ...bar, RowSelection: 1, ShowSelectedRow: true }],
    ["Selected row of lines", "dayAndNight", { ...line, RowSelection: 7, ShowSelectedRow: true, Thickness: 2 }],
    ["Selected column", "energyYears", { ...bar, ColSelection: 0 }],
    ["No legend", "energyYears", { ...bar, HasLegend: false }],
    ["Border and own colours", "rain", { ...bar, HasBorder: true,
      BackgroundColor: "#fff8e7", ForegroundColor: "#4a3b12", BackColor: "#fffdf6", ForeColor: "#6b5a2e",
      GridColor: "#e8dcc0", CurveColor: "#b5651d" }],
    ["Own font", "rain", { ...bar, FontName: "serif", FontSize: 15, FontBold: true, FontItalic: true }],
    ["Euros in Germany", "energyYears", { ...bar, FormatType: 1, FormatUseDefaultLocale: "False", FormatLanguage: "de",
      FormatCountry: "DE" }],
    ["Patterns", "skies", { ...bar, BarStyle: 1 }, { patterns: true }],
    ["Patterns of lines", "energy", { ...line, Thickness: 2 }, { patterns: true }],
    ["Patterns of a 3D pie", "energyShares", { ...pie, PieStyle: 1 }, { patterns: true }],
  ]],
];

/** Data that are nobody's friends: these must give a drawing as well. */
export const hard = [
  ["Markup in texts", "hostile", { ...bar, ShowRowTitle: true, ShowColTitle: true }],
  ["Markup in a pie", "hostile", { ...pie }],
  ["Markup in a radar", "hostile", { ...radar }],
  ["3,000 categories", "many", { ...line }],
  ["3,000 bars", "many", { ...bar }],
  ["Nothing", "nothing", { ...bar }],
  ["One cell", "oneCell", { ...bar }],
  ["One cell, as a line", "oneCell", { ...line }],
  ["All gaps", "allGaps", { ...bar }],
  ["All gaps in a pie", "allGaps", { ...pie }],
  ["Huge and tiny", "huge", { ...line, Thickness: 2 }],
  ["Infinite range", "rain", { ...bar, IsAbsolute: true, yScaleMin: -1e308, yScaleMax: 1e308 }],
];
