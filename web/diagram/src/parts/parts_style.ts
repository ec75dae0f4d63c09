// What the pieces around a drawing look like. Their colours are custom properties of the element (figure_box.ts).

export const partsStyle = `
.plexoras-live {
  position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); white-space: nowrap;
}
/* As large as the frame, for what follows the focus; pointers reach what lies under it. */
.walker { position: absolute; inset: 0; outline: none; pointer-events: none; }
.walker:focus { z-index: 5; outline: 2px solid var(--_accent); outline-offset: -2px; }

.menu-button {
  position: absolute; inset-block-start: 4px; inset-inline-end: 4px; z-index: 6; box-sizing: border-box;
  width: 28px; height: 28px; padding: 0; font: 600 18px/1 system-ui, sans-serif; cursor: pointer;
  color: var(--_text); background: var(--_ground); border: 1px solid transparent; border-radius: 6px; opacity: 0;
}
.menu-button[hidden] { display: none; }
.menu-button.below { inset-block: auto 4px; }
:host(:hover) .menu-button, :host(:focus-within) .menu-button, .menu-button:focus, .menu-button[aria-expanded=true] {
  opacity: 1;
}
.menu-button:hover, .menu-button[aria-expanded=true] {
  border-color: color-mix(in srgb, var(--_text) 30%, var(--_ground));
  background: color-mix(in srgb, var(--_text) 8%, var(--_ground));
}
@media (hover: none) { .menu-button { opacity: 1; } }

.menu {
  position: fixed; inset: auto; z-index: 7; box-sizing: border-box; margin: 0; padding: 5px;
  min-width: 160px; max-width: min(360px, calc(100vw - 8px)); max-height: calc(100vh - 8px); overflow: auto;
  font-size: 13px; line-height: 1.35; color: var(--_text); background: var(--_ground);
  border: 1px solid color-mix(in srgb, var(--_text) 18%, var(--_ground)); border-radius: 8px;
  box-shadow: 0 6px 24px rgb(0 0 0 / .18), 0 1px 3px rgb(0 0 0 / .12); outline: none;
  user-select: none; -webkit-user-select: none;
}
.menu-item {
  display: flex; align-items: center; padding: 6px 12px; border-radius: 5px; cursor: default; outline: none;
  min-height: 1.35em; white-space: pre-wrap; overflow-wrap: anywhere;
}
.menu-item:focus, .menu-item[aria-expanded=true] {
  background: color-mix(in srgb, var(--_accent) 16%, var(--_ground));
}
.menu-item:focus-visible { box-shadow: inset 0 0 0 2px var(--_accent); }
.menu-item[aria-haspopup]::after {
  content: "›"; content: "›" / ""; margin-inline-start: auto; translate: 4px -1px; font-size: 1.2em; line-height: 1;
}
.menu-item[aria-haspopup] { column-gap: 20px; }
.menu-separator { height: 1px; margin: 5px 8px; background: color-mix(in srgb, var(--_text) 18%, var(--_ground)); }

.tabs {
  display: flex; flex: none; gap: 4px; padding-inline: 2px; overflow-x: auto; scrollbar-width: none;
  border-block-end: 1px solid var(--_line);
}
.tabs-below { border-block-end: none; border-block-start: 1px solid var(--_line); }
.tab {
  flex: none; padding: 7px 12px; font: inherit; cursor: pointer; color: var(--_text); background: none; border: 0;
  border-block: 2px solid transparent; white-space: nowrap; max-width: 16em; overflow: hidden; text-overflow: ellipsis;
}
.tab:hover { background: color-mix(in srgb, var(--_text) 6%, transparent); }
.tab[aria-selected=true] { border-block-end-color: var(--_accent); font-weight: 600; }
.tabs-below .tab[aria-selected=true] { border-block-color: var(--_accent) transparent; }
.tab:focus-visible { outline: 2px solid var(--_accent); outline-offset: -2px; }

.data-dialog {
  box-sizing: border-box; width: min(900px, calc(100vw - 32px)); max-height: min(720px, calc(100vh - 32px)); padding: 0;
  color: var(--_text); background: var(--_ground); border-radius: 10px;
  border: 1px solid color-mix(in srgb, var(--_text) 18%, var(--_ground));
  box-shadow: 0 12px 48px rgb(0 0 0 / .3); overflow: hidden;
}
.data-dialog[open] { display: flex; flex-direction: column; }
.data-dialog::backdrop { background: rgb(0 0 0 / .45); }
.data-head {
  display: flex; flex: none; align-items: center; justify-content: space-between; gap: 16px; padding: 12px 16px;
}
.data-head h2 { margin: 0; font-size: 1.25em; font-weight: 600; }
.data-head button {
  padding: 6px 14px; font: inherit; color: inherit; background: none; cursor: pointer;
  border: 1px solid color-mix(in srgb, var(--_text) 30%, var(--_ground)); border-radius: 6px;
}
.data-head button:focus-visible { outline: 2px solid currentColor; outline-offset: 2px; }
.data-box { display: flex; flex: 1 1 auto; min-height: 0; padding: 0 8px 8px; }

@media (forced-colors: active) {
  .menu-item:focus, .tab[aria-selected=true] { forced-color-adjust: none; color: HighlightText; background: Highlight; }
  .menu-separator { background: CanvasText; }
}
@media print { .menu-button, .menu, .tabs, .walker, .data-dialog[open] { display: none; } }
`;
