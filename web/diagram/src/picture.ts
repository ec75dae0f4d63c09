// A chart as an SVG picture, drawn without a document.
import type { Scene } from "./charts/chart.ts";
import { buildOption } from "./charts/index.ts";
import { init, setPlatformAPI } from "./charts/library.ts";
import { estimatedWidth } from "./charts/measure.ts";
import { escaped, picture, settled, tag } from "./charts/svg_text.ts";
import { cutTo, lineHeight, oneLine } from "./charts/text.ts";
import { tableOf } from "./data/table.ts";
import { numberReader, valueFormat } from "./format/value_format.ts";
import { tablePicture } from "./grid/table_picture.ts";
import { textsOf } from "./host/texts.ts";
import type { Look } from "./look/look.ts";
import { plainReading, settleLook } from "./look/theme.ts";
import { isTable } from "./settings/diagram_types.ts";
import { readSettings } from "./settings/settings.ts";

export interface PictureRequest {
  /** The texts of the parameters, by name. */
  readonly settings: Readonly<Record<string, string>>;
  /** Of the whole picture, in pixels. */
  readonly width: number;
  readonly height: number;
  readonly isDark: boolean;
  readonly hasPatterns: boolean;
  /** What ids begin with; pictures on one page need different ones. */
  readonly prefix: string;
  /** For formats with the current locale: language tags, the best first. */
  readonly languages: readonly string[];
}

/** The picture of a chart; a `SettingError` for a parameter that cannot be read. */
export function drawPicture(request: PictureRequest): string {
  setPlatformAPI({ measureText: (text, font) => ({ width: estimatedWidth(text, font) }) });
  const { style, contents, visible, caption, alt } = readSettings(request.settings);
  const { width, height } = request;
  const label = oneLine([caption, alt].filter((text) => text !== "").join(". "));
  if (!visible) return picture(width, height, label, tag("g", {}));

  const empty = { rowTitle: "", columnTitle: "", valueTitle: "", rows: [], columns: [], values: [] };
  const table = tableOf(contents ?? empty, { transposed: style.IsTransposed, numberOf: numberReader(style) });
  const look = settleLook(style, { ...plainReading, dark: request.isDark, patterns: request.hasPatterns });
  const head = caption === "" ? 0 : Math.round(lineHeight(look) * 1.6);
  const place = {
    row: style.RowSelection < table.cells.length ? style.RowSelection : -1,
    column: style.ColSelection < table.columnLabels.length ? style.ColSelection : -1,
  };
  const scene: Scene = {
    table,
    style,
    look,
    format: valueFormat(style, request.languages),
    width,
    height: Math.max(height - head, 1),
    selection: place.row >= 0 || place.column >= 0 ? [place] : [],
    series: null,
  };
  const drawn = isTable(style.DiagramType)
    ? tablePicture(scene, textsOf(request.languages[0] ?? "en")) : settled(chartMarkup(scene), request.prefix);
  const content = [
    tag("rect", { width, height, fill: look.ground }),
    head === 0 ? "" : captionLine(caption, width, head, look),
    head === 0 ? drawn : tag("g", { transform: `translate(0 ${head})` }, drawn),
    style.HasBorder ? borderOf(width, height, look) : "",
  ].join("");
  const { fontFamily, fontSize, fontWeight, fontStyle } = look;
  return picture(width, height, label, tag("g", {
    "font-family": fontFamily, "font-size": `${fontSize}px`, "font-weight": fontWeight, "font-style": fontStyle,
    "font-variant": "tabular-nums",
  }, content));
}

/** The drawing library's picture without its outer element. */
function chartMarkup(scene: Scene): string {
  const { width, height } = scene;
  const chart = init(null, null, { renderer: "svg", ssr: true, width, height });
  try {
    chart.setOption({ ...buildOption(scene), animation: false });
    return chart.renderToSVGString().replace(/^[\s\S]*?<svg\b[^>]*>/, "").replace(/<\/svg>\s*$/, "");
  } finally {
    chart.dispose();
  }
}

function captionLine(caption: string, width: number, height: number, look: Look): string {
  const text = cutTo(oneLine(caption), width - 2 * look.fontSize, look, true);
  return tag("text", { x: look.fontSize, y: height - look.fontSize * 0.5, fill: look.text, "font-weight": "bold" },
    escaped(text));
}

function borderOf(width: number, height: number, look: Look): string {
  return tag("rect", { x: 0.5, y: 0.5, width: width - 1, height: height - 1, fill: "none", stroke: look.grid });
}
