// How an element's own boxes stand. What depends on the single element (size, state, colours) is in a rule of its own,
// see figure_box.ts.

export const figureStyle = `
:host {
  display: block;
  position: relative;
  vertical-align: top;
  box-sizing: border-box;
  min-width: 0;
  max-width: 100%;
}
:host([hidden]) { display: none; }

.frame {
  position: absolute;
  inset: 0;
  display: flex;
  flex-direction: column;
  box-sizing: border-box;
  overflow: hidden;
  color: var(--_text);
  background: var(--_ground);
  color-scheme: var(--_scheme);
  print-color-adjust: exact;
  -webkit-print-color-adjust: exact;
}
.frame.bordered { border: 1px solid var(--_line); }
.caption {
  flex: none;
  padding: 10px 14px 0;
  font-size: 1.15em;
  font-weight: 600;
  line-height: 1.35;
  overflow-wrap: anywhere;
}
.caption:empty { display: none; }
.drawing {
  position: relative;
  flex: 1 1 320px;
  min-width: 0;
  min-height: 0;
}
.stage { position: absolute; inset: 0; }
/* The pointer finds the stage, never a shape: the library moves a shape to the front while it is pressed, and a browser
   sends no click for one that was moved. */
.stage svg { display: block; pointer-events: none; }

/* Until there is a drawing, what the page has put into the element is on show; afterwards it is there to be heard. */
.pending { overflow: auto; }
.pending > .frame { visibility: hidden; }
.failed > .frame { display: none; }
.drawn, .pending { height: 100%; }
.drawn > .frame { position: relative; height: 100%; }
.drawn > .fallback:not(:focus-within) {
  position: absolute;
  top: 0;
  left: 0;
  width: 1px;
  height: 1px;
  margin: 0;
  overflow: hidden;
  clip-path: inset(50%);
  white-space: nowrap;
  pointer-events: none;
}
/* A link in it that has the focus is seen, over the drawing. */
.drawn > .fallback:focus-within {
  position: absolute;
  z-index: 5;
  inset: 0 0 auto 0;
  box-sizing: border-box;
  max-height: 100%;
  padding: 10px 14px;
  overflow: auto;
  color: var(--_text);
  background: var(--_ground);
  color-scheme: var(--_scheme);
  border: 1px solid var(--_line);
}
.drawn > .fallback.repeated { display: none; }
/* A picture that stands in for the drawing says what the figure's name and the table say. */
.drawn > .fallback ::slotted(:is(svg, img, picture, [data-stamp])) { display: none; }

@media (forced-colors: active) {
  .stage { forced-color-adjust: none; }
}

@media print {
  :host { height: auto !important; }
  .caption { break-after: avoid; }
  .drawn, .drawn > .frame { height: auto; overflow: visible; }
  .drawing { flex: none; }
  .stage { position: static; }
  .stage > div { width: auto !important; height: auto !important; }
  .stage svg { position: static !important; width: 100% !important; height: auto !important; }
}
`;
