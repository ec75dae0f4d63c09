// The popup menu as the menu document holds it (docs/menu-document.md).

export interface MenuItem {
  kind: "item";
  /** "script", or "java" for a command of the element's own. */
  type: string;
  param: string;
  caption: string;
}

export interface Submenu {
  kind: "menu";
  caption: string;
  entries: MenuEntry[];
}

export interface Separator {
  kind: "separator";
}

export type MenuEntry = MenuItem | Submenu | Separator;
