// The popup menu of a chart: the author's own or that of all built-in commands, and the ways by which it opens.
import type { Scene } from "../charts/chart.ts";
import type { Part, PartHost } from "../host/part.ts";
import { adoptStyle } from "../host/style_sheet.ts";
import { textsFor } from "../host/texts.ts";
import { isTable } from "../settings/diagram_types.ts";
import type { MenuEntry, MenuItem } from "../settings/menu.ts";
import { defaultMenu } from "./commands.ts";
import { focusHolder } from "./focus.ts";
import { MenuPanel } from "./menu_panel.ts";
import { partsStyle } from "./parts_style.ts";
import type { Box } from "./placement.ts";

// How long a finger rests until the menu opens, and how far it may slip meanwhile.
const longPress = 500;
const slip = 10;

/** The menu of these entries, or without any the one of all commands; while the scene's HasPopupMenu is set. */
export function mountMenu(host: PartHost, entries: MenuEntry[]): Part {
  adoptStyle(host.root, partsStyle);
  const menu = new PopupMenu(host, entries);
  return {
    update: (scene) => menu.update(scene),
    dispose: () => menu.dispose(),
  };
}

class PopupMenu {
  private readonly host: PartHost;
  private readonly entries: readonly MenuEntry[];
  private readonly button = document.createElement("button");
  private readonly stop = new AbortController();
  private enabled = false;
  private panel: MenuPanel | null = null;
  // Ends the watch for clicks outside an open menu.
  private watch = new AbortController();
  // What had the focus before the menu.
  private before: Element | null = null;
  private pressTimer: number | undefined;
  // Of the pointer that is down.
  private press: PointerEvent | null = null;

  constructor(host: PartHost, entries: readonly MenuEntry[]) {
    this.host = host;
    this.entries = entries;
    this.button.type = "button";
    this.button.className = "menu-button";
    this.button.setAttribute("part", "menu-button");
    this.button.setAttribute("aria-haspopup", "menu");
    this.button.setAttribute("aria-expanded", "false");
    // The chart is one stop of the Tab key; in it, the menu key does what this button does.
    this.button.tabIndex = -1;
    this.button.textContent = "⋮";
    this.button.hidden = true;
    host.root.append(this.button);
    this.listen();
  }

  update(scene: Scene): void {
    this.enabled = scene.style.HasPopupMenu;
    this.button.hidden = !this.enabled;
    this.button.setAttribute("aria-label", textsFor(this.host.element)("menu"));
    // At the head of a table it would lie over a label that can be clicked.
    this.button.classList.toggle("below", isTable(scene.style.DiagramType));
    this.dress(this.button);
    if (!this.enabled) this.close();
  }

  dispose(): void {
    this.close();
    this.stop.abort();
    clearTimeout(this.pressTimer);
    this.button.remove();
  }

  private listen(): void {
    const { signal } = this.stop;
    const { element } = this.host;
    this.button.addEventListener("click", (event) => {
      if (this.panel) this.close();
      // A click without a place comes from a key or a screen reader.
      else this.open(this.button.getBoundingClientRect(), event.detail === 0);
    }, { signal });
    element.addEventListener("contextmenu", (event) => this.onContextMenu(event), { signal });
    element.addEventListener("keydown", (event) => {
      if (!this.enabled || this.panel) return;
      if (event.key !== "ContextMenu" && !(event.key === "F10" && event.shiftKey)) return;
      event.preventDefault();
      this.open(this.boxOfFocus(), true);
    }, { signal });
    element.addEventListener("pointerdown", (event) => this.onPress(event), { signal });
    for (const type of ["pointerup", "pointercancel"]) {
      window.addEventListener(type, () => { this.press = null; }, { signal, capture: true });
    }
  }

  private onContextMenu(event: MouseEvent): void {
    // With Ctrl and Shift readers get at the browser's own menu.
    if (!this.enabled || (event.ctrlKey && event.shiftKey) || this.isTyping(event)) return;
    event.preventDefault();
    clearTimeout(this.pressTimer);
    if (this.panel?.holds(event.composedPath()[0] as Node)) return;
    // The menu key makes this event as well, with no button and sometimes no place.
    const byKey = event.button !== 2 && event.clientX === 0 && event.clientY === 0;
    this.open(byKey ? this.boxOfFocus() : pointBox(event.clientX, event.clientY), byKey);
  }

  private isTyping(event: Event): boolean {
    return event.composedPath()[0] instanceof HTMLInputElement;
  }

  /** A finger that rests opens the menu where the browser does not say so itself. */
  private onPress(event: PointerEvent): void {
    clearTimeout(this.pressTimer);
    this.press = event;
    if (!this.enabled || event.pointerType !== "touch" || this.panel) return;
    const end = new AbortController();
    const cancel = (): void => {
      clearTimeout(this.pressTimer);
      end.abort();
    };
    this.pressTimer = window.setTimeout(() => {
      end.abort();
      this.open(pointBox(event.clientX, event.clientY), false);
      swallowNextClick();
    }, longPress);
    for (const type of ["pointerup", "pointercancel"]) window.addEventListener(type, cancel, { signal: end.signal });
    window.addEventListener("pointermove", (move) => {
      if (Math.hypot(move.clientX - event.clientX, move.clientY - event.clientY) > slip) cancel();
    }, { signal: end.signal });
  }

  // What follows the pointer lets go of it, as where the browser takes it for a gesture of its own.
  private endPress(): void {
    if (!this.press) return;
    const { pointerId, pointerType, isPrimary } = this.press;
    this.host.drawing.dispatchEvent(new PointerEvent("pointercancel",
      { pointerId, pointerType, isPrimary, bubbles: true, composed: true }));
  }

  private open(beside: Box, focusFirst: boolean): void {
    this.close();
    this.endPress();
    const entries = this.entries.length > 0 ? this.entries : defaultMenu(this.host);
    this.before = focusHolder(this.host.root);
    this.panel = new MenuPanel({
      root: this.host.root,
      dress: (panel) => this.dress(panel),
      choose: (item) => this.choose(item),
      close: () => this.close(),
    }, entries, textsFor(this.host.element)("menu"));
    this.button.setAttribute("aria-expanded", "true");
    this.panel.open(beside, focusFirst);
    this.watch = new AbortController();
    const { signal } = this.watch;
    const outside = (event: Event): void => {
      const target = event.composedPath()[0] as Node;
      // A press goes elsewhere with the focus, a wheel does not.
      if (target !== this.button && !this.panel?.holds(target)) this.close(event.type === "wheel");
    };
    window.addEventListener("pointerdown", outside, { signal, capture: true });
    window.addEventListener("wheel", outside, { signal, capture: true, passive: true });
    window.addEventListener("blur", () => this.closeUntilBack(), { signal });
    window.addEventListener("resize", () => this.close(), { signal });
  }

  private choose(item: MenuItem): void {
    this.close();
    this.host.command(item);
  }

  /** Closes the menu; the focus goes back to where it was, unless the reader has gone elsewhere. */
  private close(restoresFocus = true): void {
    if (!this.panel) return;
    this.watch.abort();
    const hadFocus = this.panel.holds(this.host.root.activeElement);
    this.panel.close();
    this.panel = null;
    this.button.setAttribute("aria-expanded", "false");
    if (restoresFocus && hadFocus) focusOn(this.before);
  }

  // To take the focus now could keep it from where it is going, in the page around a frame.
  private closeUntilBack(): void {
    const { before } = this;
    const hadFocus = this.panel?.holds(this.host.root.activeElement);
    this.close(false);
    if (!hadFocus) return;
    window.addEventListener("focus", () => {
      if (focusHolder(this.host.root) === document.body) focusOn(before);
    }, { once: true, signal: this.stop.signal });
  }

  private dress(node: HTMLElement): void {
    const { look } = this.host.scene();
    node.style.fontFamily = look.fontFamily;
    node.style.colorScheme = look.dark ? "dark" : "light";
  }

  private boxOfFocus(): Box {
    const focused = this.host.root.activeElement ?? this.host.drawing;
    const box = focused.getBoundingClientRect();
    // Under a large box the menu would be far away from it.
    return box.height < 80 ? box : pointBox(box.left + 16, box.top + 16);
  }
}

function focusOn(node: Element | null): void {
  (node as HTMLElement | null)?.focus({ preventScroll: true });
}

function pointBox(x: number, y: number): Box {
  return { left: x, right: x, top: y, bottom: y };
}

/** The click that ends a long press is none. */
function swallowNextClick(): void {
  const swallow = (event: Event): void => {
    event.preventDefault();
    event.stopPropagation();
  };
  const done = new AbortController();
  const { signal } = done;
  window.addEventListener("click", swallow, { capture: true, once: true, signal });
  // It comes with the finger's end, or not at all.
  window.addEventListener("pointerup", () => setTimeout(() => done.abort(), 50), { once: true, signal });
  window.addEventListener("pointercancel", () => done.abort(), { once: true, signal });
}
