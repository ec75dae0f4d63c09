// What a table looks like. Colours and fonts come as custom properties from the look.
import type { Scene } from "../charts/chart.ts";
import { heatTable } from "../settings/diagram_types.ts";
import { longestLine } from "./paper_words.ts";
import { cellPadding, labelIndent, lineHeight } from "./sizes.ts";
import { labelWeight } from "./text_measure.ts";

/** Hands a scene's colours, font and lines to a grid's box; `negative` is the colour of negative values. */
export function setColours(box: HTMLElement, scene: Scene, negative: string): void {
  const { look, style } = scene;
  const values: Record<string, string> = {
    "--_text": look.text,
    "--_ground": look.ground,
    "--_cell-text": look.plotText,
    "--_cell-ground": look.plotGround,
    "--_line": look.grid,
    "--_negative": negative,
    "--_selection-text": look.selectionText,
    "--_selection-ground": look.selectionGround,
    "--_accent": look.palette[0] ?? look.text,
    "--_across": style.yGridVisible ? "1px" : "0",
    "--_down": style.xGridVisible ? "1px" : "0",
  };
  for (const [name, value] of Object.entries(values)) box.style.setProperty(name, value);
  box.style.font = `${look.fontStyle} ${look.fontWeight} ${look.fontSize}px/${lineHeight} ${look.fontFamily}`;
  box.style.colorScheme = look.dark ? "dark" : "light";
  box.classList.toggle("is-heat", style.DiagramType === heatTable);
  box.classList.toggle("is-selectable", style.SelectionMode > 0);
  box.classList.toggle("row-labels-work", style.OnRowLabelClick > 0);
  box.classList.toggle("column-labels-work", style.OnColLabelClick > 0);
  box.classList.toggle("rows-move", style.moveableRows);
  box.classList.toggle("columns-move", style.moveableCols);
}

export const gridStyle = `
.grid-box {
  display: flex; flex-direction: column; box-sizing: border-box; width: 100%; height: 100%; min-height: 0;
  color: var(--_text); background: var(--_ground);
}
.grid-clip { display: flex; flex-direction: column; min-height: 0; overflow: hidden; overflow: clip; }
.grid-scroll { contain: content; min-height: 0; }
table { table-layout: fixed; border-collapse: separate; border-spacing: 0; font: inherit; }
th, td {
  box-sizing: border-box; padding: 0 var(--_padding); overflow: hidden; text-overflow: ellipsis; white-space: pre;
  text-align: start; vertical-align: middle; font-weight: inherit;
  color: var(--_cell-text); background-color: var(--_cell-ground);
  border: 0 solid var(--_line); border-block-end-width: var(--_across); border-inline-end-width: var(--_down);
}
.number { text-align: right; unicode-bidi: plaintext; font-variant-numeric: tabular-nums lining-nums; }
.negative { color: var(--_negative); }
td:last-child, th:last-child { border-inline-end-width: 0; }

.row-label, .column-label, .corner, .title-row > * {
  position: sticky; z-index: 2; font-weight: ${labelWeight}; color: var(--_text); background-color: var(--_ground);
}
.row-label, .corner { inset-inline-start: 0; padding-inline-start: ${cellPadding + labelIndent}px; }
.caption:not(:empty) ~ .drawing .grid-box { padding-block-start: 6px; }
.title-row > * { top: 0; z-index: 5; font-weight: inherit; text-align: center; border-block-end-width: 0; }
.label-row > * {
  top: var(--_label-top); z-index: 5; border-block-end: 1px solid var(--_text);
  border-block-end-color: color-mix(in srgb, var(--_text) 45%, var(--_ground));
}
.label-row > .corner, .label-row > .fixed, .title-row > .corner { z-index: 6; }
.fixed { position: sticky; z-index: 2; }
.fixed-row > * { position: sticky; z-index: 3; }
.fixed-row > .row-label, .fixed-row > .fixed { z-index: 4; }
.fixed-row:not(:has(+ .fixed-row)) > * {
  border-block-end: 1px solid color-mix(in srgb, var(--_text) 45%, var(--_ground));
}
.fixed:not(:has(+ .fixed)) { border-inline-end: 1px solid color-mix(in srgb, var(--_text) 45%, var(--_ground)); }

.heat { color: var(--_heat-text); background-color: var(--_heat); }
.is-heat td:not(.row-label, .column-label, .corner) { border-color: var(--_cell-ground); }

.is-selectable td, .row-labels-work .row-label, .column-labels-work .column-label { cursor: pointer; }
.is-selectable td { user-select: none; -webkit-user-select: none; }
.row-label, .column-label { user-select: none; -webkit-user-select: none; }
.columns-move .column-label { touch-action: pan-y; }
.rows-move .row-label { touch-action: pan-x; }
[data-edge=columns] > * > * > * { cursor: col-resize !important; }
[data-edge=rows] > * > * > * { cursor: row-resize !important; }
tbody > tr:hover > :not(.heat, [aria-selected=true]) {
  background-image: linear-gradient(color-mix(in srgb, var(--_text) 5%, transparent) 0 100%);
}
:is(th, td)[aria-selected=true] { color: var(--_selection-text); background-color: var(--_selection-ground); }
.heat[aria-selected=true] {
  color: var(--_heat-text); background-color: var(--_heat);
  box-shadow: inset 0 0 0 2px var(--_selection-ground), inset 0 0 0 3px var(--_selection-text);
}
:is(th, td):focus-visible { outline: 2px solid var(--_accent); outline-offset: -2px; }
[aria-selected=true]:focus-visible { outline-color: var(--_selection-text); outline-offset: -3px; }
[aria-sort]::after { font-size: .75em; }
[aria-sort=ascending]::after { content: " \\25B2"; content: " \\25B2" / ""; }
[aria-sort=descending]::after { content: " \\25BC"; content: " \\25BC" / ""; }
[data-dragged] { color: color-mix(in srgb, var(--_text) 50%, var(--_ground)); }
[data-drop="columns before"] { box-shadow: inset 3px 0 var(--_accent); }
[data-drop="columns after"] { box-shadow: inset -3px 0 var(--_accent); }
[data-drop="rows before"] { box-shadow: inset 0 3px var(--_accent); }
[data-drop="rows after"] { box-shadow: inset 0 -3px var(--_accent); }

.cell-box {
  box-sizing: border-box; width: calc(100% + 2 * var(--_padding)); margin-inline: calc(-1 * var(--_padding));
  padding: 0 calc(var(--_padding) - 2px); height: 100%; font: inherit; text-align: inherit;
  color: var(--_cell-text); background: var(--_cell-ground); border: 2px solid var(--_accent); outline: none;
}

.heat-legend {
  display: flex; flex: none; align-items: center; justify-content: flex-end; gap: 8px;
  padding: 8px ${cellPadding}px 16px;
  color: var(--_text); font-variant-numeric: tabular-nums lining-nums; white-space: nowrap; direction: ltr;
}
.heat-bar { position: relative; flex: 0 1 160px; height: 10px; border-radius: 2px; }
.heat-zero { position: absolute; top: 100%; transform: translateX(-50%); font-size: .85em; }

@media (forced-colors: active) {
  :is(th, td)[aria-selected=true], .heat[aria-selected=true] {
    forced-color-adjust: none; color: HighlightText; background-color: Highlight; box-shadow: none;
  }
  .heat { forced-color-adjust: none; }
  .heat:not([aria-selected=true]):focus-visible { outline-color: var(--_heat-text); }
  .heat-bar { forced-color-adjust: none; border: 1px solid CanvasText; }
  tbody > tr:hover > * { background-image: none; }
}
.grid-bands, .grid-bands > div { display: none; }
@media print {
  .grid-bands { display: block; }
  .grid-bands > div > table + table { margin-block-start: 1.5em; }
  .unparted { break-inside: avoid; }
  .grid-box, .grid-clip, .grid-scroll { display: block; height: auto; }
  .grid-box, .grid-clip, .grid-scroll { margin: 0 !important; overflow: visible !important; }
  .grid-box { container-type: inline-size; }
  table { table-layout: auto; width: 100% !important; font-size: min(1em, 100cqi / var(--_ems, 1)); }
  col { width: var(--_set, auto) !important; }
  th, td { position: static !important; padding-inline: .4em; white-space: pre-wrap; overflow-wrap: break-word; }
  td.number:not(.long) { white-space: pre; }
  .long { min-width: ${longestLine}em; overflow-wrap: anywhere; }
  .heat, .heat-bar, [aria-selected=true] { print-color-adjust: exact; }
  tr { break-inside: avoid; }
}
`;
