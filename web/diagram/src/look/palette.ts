// The colours that drawings have unless their style or the page says others.

/** The colours of drawings that follow the reader's scheme. */
export interface SchemeColours {
  readonly text: string;
  /** Of axes and other small texts of the plot: quieter, and still readable. */
  readonly plotText: string;
  readonly ground: string;
  readonly grid: string;
  /** Of series. Neighbours stay apart for colour-blind readers, and all stand 3 : 1 off the ground. */
  readonly palette: readonly string[];
}

export const light: SchemeColours = {
  text: "#1f2329",
  plotText: "#4b525c",
  ground: "#ffffff",
  grid: "#e2e5e9",
  palette: ["#1e73b6", "#c3882f", "#40a486", "#722f83", "#a64d5e", "#847905", "#8885e2", "#243051"],
};

export const dark: SchemeColours = {
  text: "#e8e9ec",
  plotText: "#b4b9c2",
  ground: "#181b20",
  grid: "#343a43",
  palette: ["#5492ec", "#e5a927", "#54d3a8", "#b970a6", "#f8ee90", "#d66b37", "#cbb0fe", "#b3effe"],
};
