// Reads the menu document (docs/menu-document.md).
import type { MenuEntry } from "./menu.ts";

const capacity = 256;
const entities: Readonly<Record<string, string>> =
  { "&apos;": "'", "&quot;": "\"", "&amp;": "&", "&lt;": "<", "&gt;": ">" };

/** An entry at its depth in the menu, 0 at the top. */
export interface MenuNode {
  readonly level: number;
  /** "script", another item's type ("java"), or "separator"; a submenu counts as a script without param. */
  readonly type: string;
  readonly param: string;
  readonly caption: string;
}

/** The entries of a menu document. It need not be well formed, and is never complained of. */
export function readMenu(document: string): MenuEntry[] {
  return menuTree(readMenuNodes(document));
}

/**
 * The entries in the order of the document, 256 at most. The document is read as far as its tags go, up to the first
 * missing ">" or "<".
 *
 * Kept: "&tab;" stays as it stands; tags are not matched, so that after the root was closed the next tag is taken for a
 * root again.
 */
export function readMenuNodes(document: string): MenuNode[] {
  const nodes: MenuNode[] = [];
  let level = -1;
  let tagEnd = 0;
  for (let start = 0; start < document.length && nodes.length < capacity;) {
    // A tag reaches to the next ">", its text to the next "<". A ">" found behind many "<" is looked for once.
    if (tagEnd <= start) tagEnd = document.indexOf(">", start + 1);
    const next = document.indexOf("<", start + 1);
    if (tagEnd < 0 || next < 0) break;
    const tag = document.slice(start + 1, tagEnd);

    if (tag === "/") {
      level -= 1;
    } else if (level === -1) {
      level = 0;
    } else {
      nodes.push({ level, ...entryOf(tag, next > tagEnd ? document.slice(tagEnd + 1, next) : "") });
      level += 1;
    }
    start = next;
  }
  return nodes;
}

/** The tree of such entries: one followed by deeper ones is a submenu, whatever it was. */
function menuTree(nodes: readonly MenuNode[]): MenuEntry[] {
  const top: MenuEntry[] = [];
  // The entries of the menus that are open, and how deep the entry is that opened each.
  const open: { readonly level: number; readonly entries: MenuEntry[] }[] = [{ level: -Infinity, entries: top }];
  nodes.forEach((node, index) => {
    while ((open[open.length - 1]?.level ?? -Infinity) >= node.level) open.pop();
    const entries = open[open.length - 1]?.entries ?? top;
    const isSubmenu = (nodes[index + 1]?.level ?? -Infinity) > node.level;
    if (isSubmenu) {
      const below: MenuEntry[] = [];
      entries.push({ kind: "menu", caption: node.caption, entries: below });
      open.push({ level: node.level, entries: below });
    } else if (node.type === "separator") {
      entries.push({ kind: "separator" });
    } else {
      entries.push({ kind: "item", type: node.type, param: node.param, caption: node.caption });
    }
  });
  return top;
}

// The entry that a start tag and the text behind it stand for.
function entryOf(tag: string, text: string): Omit<MenuNode, "level"> {
  if (tag === "SEPARATOR") return { type: "separator", param: "", caption: "--" };
  const caption = unescaped(text);
  if (!tag.startsWith("ITEM")) return { type: "script", param: "", caption };
  const type = attribute(tag, "type=\"");
  const param = attribute(tag, "param=\"");
  return { type, param: type === "script" ? unescaped(param) : param, caption };
}

// What stands in a tag between `start` (as in `type="`) and the next double quote or the tag's end.
function attribute(tag: string, start: string): string {
  const found = tag.indexOf(start);
  return found < 0 ? "" : tag.slice(found + start.length).split("\"", 1)[0] ?? "";
}

function unescaped(text: string): string {
  return text.replace(/&\w+;/g, (written) => entities[written] ?? written);
}
