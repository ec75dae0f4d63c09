// All settings of one chart, from the texts of its parameters.
import type { Contents } from "./contents.ts";
import type { MenuEntry } from "./menu.ts";
import { readContents } from "./read_contents.ts";
import { readMenu } from "./read_menu.ts";
import { defaultStyle, isTrue, readStyle, valueOfText } from "./read_style.ts";
import { SettingError } from "./setting_error.ts";
import type { Style } from "./style.ts";

export interface Settings {
  style: Style;
  /** Null: the chart has been given no data, and there is nothing to draw yet. */
  contents: Contents | null;
  visible: boolean;
  caption: string;
  alt: string;
  /** Null: the chart has no menu of its own. */
  menu: MenuEntry[] | null;
  hasMenu: boolean;
}

/** Puts one parameter's text into the settings. */
type Take = (settings: Settings, text: string) => void;

const selection = (name: "RowSelection" | "ColSelection"): Take => (settings, text) => {
  // The style document has them as well; a parameter of its own counts for more. Nothing in it: nothing selected.
  settings.style[name] = text.trim() === "" ? -1 : (valueOfText(name, text) as number);
};

/** By name, in the order in which they are taken. Parameters of other names are ignored. */
const parameters: Readonly<Record<string, Take>> = {
  XmlStyle: (settings, text) => { settings.style = readStyle(text); },
  XmlContents: (settings, text) => { settings.contents = readContents(text); },
  RowSelection: selection("RowSelection"),
  ColSelection: selection("ColSelection"),
  Visible: (settings, text) => { settings.visible = text.trim() === "" || isTrue(text); },
  Caption: (settings, text) => { settings.caption = text.trim(); },
  Alt: (settings, text) => { settings.alt = text.trim(); },
  HasMenu: (settings, text) => { settings.hasMenu = text.trim() === "" || isTrue(text); },
  Menu: (settings, text) => { settings.menu = readMenu(text); },
};

/** The settings that these parameters hold, by name; a `SettingError` with the name of one that cannot be read. */
export function readSettings(texts: Readonly<Record<string, string>>): Settings {
  const settings: Settings = {
    style: defaultStyle(), contents: null, visible: true, caption: "", alt: "", menu: null, hasMenu: true,
  };
  for (const [name, take] of Object.entries(parameters)) {
    const text = Object.prototype.hasOwnProperty.call(texts, name) ? texts[name] : undefined;
    if (text === undefined) continue;
    try {
      take(settings, text);
    } catch (problem) {
      const message = problem instanceof Error ? problem.message : String(problem);
      throw new SettingError(`${name}: ${message}`, name);
    }
  }
  return settings;
}
