// One panel of the popup menu: its entries, and the panel of the submenu that is open beside it.
import type { MenuEntry, MenuItem } from "../settings/menu.ts";
import { placeBeside, type Box } from "./placement.ts";

export interface PanelOwner {
  readonly root: ShadowRoot;
  /** The look and the language of the chart, put on each panel. */
  dress(panel: HTMLElement): void;
  choose(item: MenuItem): void;
  /** Closes the whole menu. */
  close(): void;
}

// How long the pointer rests on an entry before its submenu opens; how long letters typed count as one word.
const hoverDelay = 150;
const typingDelay = 600;

export class MenuPanel {
  readonly node = document.createElement("div");
  private readonly owner: PanelOwner;
  private readonly parent: MenuPanel | null;
  private readonly items: HTMLElement[] = [];
  private readonly entries: (MenuEntry & { kind: "item" | "menu" })[] = [];
  private submenu: { panel: MenuPanel; index: number } | null = null;
  private typed = "";
  private typingTimer: number | undefined;
  private hoverTimer: number | undefined;

  constructor(owner: PanelOwner, entries: readonly MenuEntry[], label: string, parent: MenuPanel | null = null) {
    this.owner = owner;
    this.parent = parent;
    this.node.className = "menu";
    this.node.setAttribute("part", "menu");
    this.node.setAttribute("role", "menu");
    this.node.setAttribute("aria-label", label);
    this.node.tabIndex = -1;
    owner.dress(this.node);
    entries.forEach((entry) => this.node.append(entry.kind === "separator" ? separatorNode() : this.itemNode(entry)));
    this.node.addEventListener("keydown", (event) => this.onKey(event));
  }

  /** Puts the panel on show beside a box, in pixels of the window, and focuses its first entry if asked to. */
  open(beside: Box, focusFirst: boolean): void {
    this.owner.root.append(this.node);
    showOnTop(this.node);
    placeBeside(this.node, beside, this.parent !== null);
    if (focusFirst) this.focusAt(0);
    else this.node.focus({ preventScroll: true });
  }

  close(): void {
    clearTimeout(this.hoverTimer);
    clearTimeout(this.typingTimer);
    this.closeSubmenu();
    this.node.remove();
  }

  /** Whether a node stands in this panel or in a submenu's. */
  holds(node: Node | null): boolean {
    return this.node.contains(node) || (this.submenu?.panel.holds(node) ?? false);
  }

  private itemNode(entry: MenuEntry & { kind: "item" | "menu" }): HTMLElement {
    const node = document.createElement("div");
    node.className = "menu-item";
    node.setAttribute("part", "menu-item");
    node.setAttribute("role", "menuitem");
    node.tabIndex = -1;
    node.textContent = entry.caption;
    if (entry.kind === "menu") {
      node.setAttribute("aria-haspopup", "menu");
      node.setAttribute("aria-expanded", "false");
    }
    const index = this.items.push(node) - 1;
    this.entries.push(entry);
    node.addEventListener("click", () => this.activate(index, false));
    node.addEventListener("pointerenter", (event) => this.onHover(event, index));
    return node;
  }

  private onHover(event: PointerEvent, index: number): void {
    // A finger that touches an entry is about to choose it.
    if (event.pointerType === "touch") return;
    if (index !== this.submenu?.index) this.focusAt(index);
    clearTimeout(this.hoverTimer);
    this.hoverTimer = window.setTimeout(() => {
      if (this.submenu?.index === index) return;
      this.closeSubmenu();
      if (this.entries[index]?.kind === "menu") this.openSubmenu(index, false);
    }, hoverDelay);
  }

  private activate(index: number, byKey: boolean): void {
    const entry = this.entries[index];
    if (entry?.kind === "menu") this.openSubmenu(index, byKey);
    else if (entry) this.owner.choose(entry);
  }

  private openSubmenu(index: number, focusFirst: boolean): void {
    const [entry, item] = [this.entries[index], this.items[index]];
    if (entry?.kind !== "menu" || !item) return;
    this.closeSubmenu();
    const panel = new MenuPanel(this.owner, entry.entries, entry.caption, this);
    this.submenu = { panel, index };
    item.setAttribute("aria-expanded", "true");
    panel.open(item.getBoundingClientRect(), focusFirst);
    if (!focusFirst) item.focus({ preventScroll: true });
  }

  private closeSubmenu(): void {
    if (!this.submenu) return;
    this.items[this.submenu.index]?.setAttribute("aria-expanded", "false");
    this.submenu.panel.close();
    this.submenu = null;
  }

  private focusAt(index: number): void {
    const count = this.items.length;
    this.items[(index + count) % count]?.focus({ preventScroll: false });
  }

  private focused(): number {
    return this.items.findIndex((item) => item === this.owner.root.activeElement);
  }

  private onKey(event: KeyboardEvent): void {
    if (event.isComposing || event.altKey || event.ctrlKey || event.metaKey) return;
    const at = this.focused();
    const act = this.keys(at)[getComputedStyle(this.node).direction === "rtl" ? mirror(event.key) : event.key];
    if (act) act();
    else if (event.key.length === 1) this.typeAhead(event.key, at);
    else return;
    event.preventDefault();
    // The keys of an open menu are nobody else's.
    event.stopPropagation();
  }

  private keys(at: number): Record<string, (() => void) | undefined> {
    const activate = (): void => this.activate(at, true);
    return {
      ArrowDown: () => this.focusAt(at + 1),
      ArrowUp: () => this.focusAt(at < 0 ? -1 : at - 1),
      Home: () => this.focusAt(0),
      End: () => this.focusAt(-1),
      PageUp: () => this.focusAt(0),
      PageDown: () => this.focusAt(-1),
      ArrowRight: () => this.openSubmenu(at, true),
      ArrowLeft: () => this.parent?.returnHere(),
      Escape: () => (this.parent ? this.parent.returnHere() : this.owner.close()),
      Tab: () => this.owner.close(),
      Enter: activate,
      " ": activate,
    };
  }

  private returnHere(): void {
    const index = this.submenu?.index ?? 0;
    this.closeSubmenu();
    this.focusAt(index);
  }

  /** Goes to the next entry that begins with what has been typed. */
  private typeAhead(letter: string, at: number): void {
    clearTimeout(this.typingTimer);
    this.typingTimer = window.setTimeout(() => { this.typed = ""; }, typingDelay);
    this.typed += letter.toLocaleLowerCase();
    const repeated = [...this.typed].every((other) => other === this.typed[0]);
    const word = repeated ? letter.toLocaleLowerCase() : this.typed;
    const from = repeated ? at + 1 : Math.max(at, 0);
    for (let step = 0; step < this.items.length; ++step) {
      const index = (from + step) % this.items.length;
      if (this.entries[index]?.caption.trim().toLocaleLowerCase().startsWith(word)) return this.focusAt(index);
    }
  }
}

function separatorNode(): HTMLElement {
  const node = document.createElement("div");
  node.className = "menu-separator";
  node.setAttribute("role", "separator");
  return node;
}

/** The top layer is above everything, and no box around the chart cuts it off. Older browsers have none. */
function showOnTop(node: HTMLElement): void {
  if (typeof node.showPopover !== "function") return;
  node.setAttribute("popover", "manual");
  node.showPopover();
}

function mirror(key: string): string {
  return key === "ArrowRight" ? "ArrowLeft" : key === "ArrowLeft" ? "ArrowRight" : key;
}
