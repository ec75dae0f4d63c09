// What looking closer looks like, and what fingers do on a chart meanwhile.

export const zoomStyle = `
.zoomable { touch-action: pan-x pan-y; }
.zoomable.zoomed { touch-action: pan-y; user-select: none; -webkit-user-select: none; }
.zoomable.zoomed.upright { touch-action: pan-x; }
.stage.panning > div { cursor: grabbing !important; }
.stage .heavy { will-change: transform; }

.show-all {
  position: absolute; z-index: 6; box-sizing: border-box; padding: 3px 9px; font: 12px/1.4 system-ui, sans-serif;
  cursor: pointer; color: var(--_text); background: var(--_ground); opacity: .9;
  border: 1px solid color-mix(in srgb, var(--_text) 30%, var(--_ground)); border-radius: 6px;
}
.show-all:hover { background: color-mix(in srgb, var(--_text) 8%, var(--_ground)); opacity: 1; }
.show-all:focus-visible { outline: 2px solid var(--_accent); outline-offset: 1px; opacity: 1; }
@media (pointer: coarse) { .show-all { padding: 8px 14px; } }
@media print { .show-all { display: none; } .stage .heavy { will-change: auto; } }
`;
