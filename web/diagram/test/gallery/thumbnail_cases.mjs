// What the small pictures of docs/element.md show: for each property its values, each on a chart where it counts.
const table = (columns, rows, titles = {}) => ({ rowTitle: "", columnTitle: "", valueTitle: "", columns, rows, ...titles });

const one = table(["Sales"], [["A", "5"], ["B", "9"], ["C", "6"], ["D", "3"]]);
const two = table(["North", "South"], [["A", "4", "6"], ["B", "7", "3"], ["C", "5", "8"]],
  { rowTitle: "Town", columnTitle: "Region", valueTitle: "Tons" });
const three = table(["x", "y", "z"], [["A", "4", "3", "2"], ["B", "2", "5", "4"], ["C", "5", "2", "3"]]);
const web = table(["a", "b"], [["N", "5", "3"], ["E", "4", "6"], ["S", "7", "4"], ["W", "3", "6"], ["up", "6", "5"]]);
const signs = table(["Result"], [["A", "5"], ["B", "-4"], ["C", "7"], ["D", "-2"]]);
const wave = table(["a", "b"], [["1", "3", "6"], ["2", "7", "5"], ["3", "4", "2"], ["4", "8", "4"], ["5", "6", "7"]]);
const high = table(["ppm"], [["1", "316"], ["2", "330"], ["3", "352"], ["4", "376"], ["5", "411"]]);
const share = table(["Share"], [["A", "45"], ["B", "30"], ["C", "15"], ["D", "10"]]);
const apart = table(["Rain", "°C"], [["A", "120", "4"], ["B", "80", "9"], ["C", "150", "6"], ["D", "60", "12"]]);
const points = table(["x", "y"], [[1, 2], [2, 3.5], [3, 3], [4, 5.5], [5, 5], [6, 7.5], [7, 6.5]]
  .map(([x, y]) => ["", String(x), String(y)]));
const readings = table(["°C"], [4, 7, 8, 9, 10, 10, 11, 11, 12, 12, 12, 13, 13, 14, 14, 15, 16, 17, 19, 22]
  .map((value) => ["", String(value)]));
const bubbles = table(["x", "y", "size"], [["a", "2", "3", "9"], ["b", "4", "6", "30"], ["c", "6", "4", "18"], ["d", "7", "7", "6"]]);
const cells = table(["Q1", "Q2", "Q3", "Q4"], [["North", "20", "35", "42", "50"], ["South", "32", "-8", "36", "44"],
  ["West", "15", "22", "30", "27"], ["East", "18", "25", "19", "33"], ["Isles", "4", "9", "7", "8"], ["Ports", "6", "5", "8", "11"]],
{ rowTitle: "Region" });
const few = { ...cells, columns: ["Q1", "Q2"], rows: cells.rows.slice(0, 3).map((row) => row.slice(0, 3)) };

const bar = { DiagramType: 5, HasLegend: false };
const line = { DiagramType: 1, HasLegend: false, Thickness: 3 };
const pie = { DiagramType: 4, HasLegend: false };
const scatter = { DiagramType: 3, HasLegend: false };
const histogram = { DiagramType: 0, HasLegend: false, BucketCount: 6 };
const grid = { DiagramType: 9, RowLabelWidth: 52, DefaultColWidth: 40, FormatPattern: "0", FormatType: 0,
  AutoResize: false };

/** A picture for each value of a property. */
const each = (property, values, table, style) =>
  values.map((value) => ({ name: `${property}-${value}`, table, style: { ...style, [property]: value } }));
/** The picture of a property that has been set. */
const set = (property, value, table, style) => [{ name: property, table, style: { ...style, [property]: value } }];

export const thumbnails = [
  ...[readings, wave, wave, points, share, two, wave, web, bubbles, cells, readings, cells].map((table, DiagramType) => ({
    name: `DiagramType-${DiagramType}`, table,
    style: { ...(DiagramType === 9 || DiagramType === 11 ? { ...grid, AutoResize: true } : {}), DiagramType,
      HasLegend: false, Thickness: DiagramType === 1 || DiagramType === 7 ? 3 : 1, BucketCount: 6 },
  })),

  ...set("FontName", "serif", one, bar),
  ...set("FontSize", 20, one, bar),
  ...set("FontBold", true, one, bar),
  ...set("FontItalic", true, one, bar),
  ...set("ForegroundColor", "#b5179e", two, { ...bar, HasLegend: true }),
  ...set("BackgroundColor", "#e3f2fd", two, bar),
  ...set("ForeColor", "#b5179e", two, bar),
  ...set("BackColor", "#fff3c4", two, bar),
  ...set("GridColor", "#2a9d8f", two, { ...bar, xGridVisible: true }),
  ...set("CurveColor", "#c1440e", one, bar),
  ...set("TagColor", "#c1440e", two, { ...line, RowSelection: 1, ShowSelectedRow: true }),
  ...set("SelectionForeColor", "#ffd166", cells, { ...grid, RowSelection: 1, ColSelection: 2 }),
  ...set("SelectionBackColor", "#c1440e", cells, { ...grid, RowSelection: 1, ColSelection: 2 }),
  ...set("negativeForeColor", "#c1121f", signs, bar),
  ...set("negativeForeColor", "#c1121f", cells, grid).map((one) => ({ ...one, name: `${one.name}-table` })),
  ...set("FormatType", 1, one, bar),
  ...set("FormatPattern", "0.0 't'", one, { ...bar, FormatType: 0 }),

  ...set("HasBorder", true, one, bar),
  ...each("HasLegend", [true, false], two, bar),
  ...set("xGridVisible", true, two, { ...bar, yGridVisible: false }),
  ...set("yGridVisible", true, two, bar),
  ...set("showRowLabels", false, two, { ...bar, HasLegend: true }),
  ...set("showColLabels", false, two, { ...bar, HasLegend: true }),
  ...set("ShowRowTitle", true, two, bar),
  ...set("ShowColTitle", true, two, { ...bar, HasLegend: true }),
  ...set("xScaleMin", 2, points, { ...scatter, xScaleMax: 6 }).map((one) => ({ ...one, name: "xScale" })),
  ...set("yScaleMin", 0, one, { ...bar, IsAbsolute: true, yScaleMax: 20 }).map((one) => ({ ...one, name: "yScale" })),
  ...each("IsAbsolute", [false, true], high, line),
  ...each("Reverse", [0, 1, 2, 3], one, bar),
  ...set("IsRotated", true, two, bar),
  ...each("LabelStyle", [0, 1, 2, 3], one, bar),
  ...set("HasSecondYAxis", true, apart, line),
  ...each("BarStyle", [0, 1, 2, 3], two, bar),
  ...each("RectStyle", [0, 1, 2, 3], two, bar),
  ...each("CurveStyle", [0, 1, 2], wave, line),
  ...each("CurveStyle", [1, 2], points, scatter).map((one) => ({ ...one, name: `${one.name}-trend` })),
  ...each("Thickness", [1, 6], wave, line),
  ...each("Thickness", [4, 20], two, { ...bar, RectStyle: 1 }).map((one) => ({ ...one, name: `${one.name}-depth` })),
  ...each("PieStyle", [0, 1, 2], share, pie),
  ...each("PieAngle", [90], share, pie),
  ...each("PieAngle", [30, 70], share, { ...pie, PieStyle: 1 }),
  ...each("PieType", [0, 1, 2], share, pie),
  ...each("BucketCount", [4, 12], readings, histogram),
  ...set("HasStatistics", true, one, line),
  ...set("RowSelection", 1, two, bar),
  ...set("ColSelection", 1, two, bar),
  ...set("ShowSelectedRow", true, two, { ...bar, RowSelection: 1 }),
  ...set("ShowSelectedRow", true, { ...web, columns: ["N", "E", "S", "W"], rows: [["a", "5", "4", "7", "3"]] }, { DiagramType: 7, HasLegend: false, RowSelection: 0, Thickness: 3 })
    .map((one) => ({ ...one, name: `${one.name}-radar` })),
  ...each("IsTransposed", [false, true], two, { ...bar, HasLegend: true }),

  ...each("AutoResize", [false, true], few, grid),
  ...set("DefaultColWidth", 70, few, grid),
  ...set("DefaultRowHeight", 34, few, grid),
  ...set("RowLabelWidth", 110, few, grid),
  ...set("ColLabelHeight", 44, few, grid),
  ...each("EqualCols", [false, true], { ...few, columns: ["Q1", "Quarter 2"] }, grid),
  ...each("EqualRows", [false, true], { ...few, rows: [["North\nand East", "20", "35"], ...few.rows.slice(1)] }, grid),
  { name: "patterns", table: three, style: { ...bar, BarStyle: 1 }, patterns: true },
];

/** What shows only in a browser, some of it only while a reader works on it. */
export const liveThumbnails = [
  ...each("TabStyle", [1, 2], two, bar),
  { name: "HasPopupMenu", table: two, style: { ...bar, HasPopupMenu: true },
    act: (page) => page.mouse.click(20, 12, { button: "right" }) },
  { name: "CrossColor", table: wave, style: { ...line, CrossColor: "#c1440e" },
    act: (page) => page.mouse.move(100, 60, { steps: 4 }) },
  { name: "OnColLabelClick", table: { ...few, rows: cells.rows.map((row) => row.slice(0, 3)) },
    style: { ...grid, AutoResize: true, OnColLabelClick: 2 },
    act: (page) => page.getByText("Q2").first().click() },
  { name: "OnRowLabelClick", table: few, style: { ...grid, AutoResize: true, OnRowLabelClick: 2 },
    act: (page) => page.getByText("North").first().click() },
  { name: "IsEditable", table: cells, style: { ...grid, AutoResize: true, IsEditable: true },
    act: (page) => page.getByText("42").first().dblclick() },
  { name: "FixedRows", table: cells, style: { ...grid, AutoResize: true, FixedRows: 1, DefaultRowHeight: 30 },
    act: async (page) => {
      await page.mouse.move(100, 100);
      await page.mouse.wheel(0, 100);
    } },
  { name: "FixedCols", table: cells, style: { ...grid, FixedCols: 1, DefaultColWidth: 60 },
    act: async (page) => {
      await page.mouse.move(100, 100);
      await page.mouse.wheel(100, 0);
    } },
];
