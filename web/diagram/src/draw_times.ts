// Says when an element is drawn: at most once a frame; for the first time when it comes into view or the browser has
// nothing else to do; at once before printing.

import { giveBackTurn, takeTurn } from "./idle_turns.ts";

const nearby = "200px";

export class DrawTimes {
  private readonly element: Element;
  private readonly draw: () => void;
  private isDue = false;
  private isWoken = false;
  private frame = 0;
  private printing = false;
  private unseen = false;
  private view: IntersectionObserver | null = null;

  constructor(element: Element, draw: () => void) {
    this.element = element;
    this.draw = draw;
  }

  /** Whether what is drawn now is for paper. */
  get isPrinting(): boolean {
    return this.printing;
  }

  /** Whether what is drawn now is out of the reader's view. */
  get isUnseen(): boolean {
    return this.unseen;
  }

  /** Begins to watch the element and the page. Where it does already, a drawing that is asked for still comes. */
  start(): void {
    window.addEventListener("beforeprint", this.beforePrint);
    window.addEventListener("afterprint", this.afterPrint);
    if (this.isWoken) return;
    this.stopWaiting();
    this.view = new IntersectionObserver((entries) => {
      if (entries.some((entry) => entry.isIntersecting)) this.wake();
    }, { rootMargin: nearby });
    this.view.observe(this.element);
    takeTurn(this.wakeUnseen);
  }

  stop(): void {
    window.removeEventListener("beforeprint", this.beforePrint);
    window.removeEventListener("afterprint", this.afterPrint);
    this.stopWaiting();
    cancelAnimationFrame(this.frame);
    this.frame = 0;
    this.isDue = this.printing = false;
  }

  /** Asks for a drawing. */
  request(): void {
    this.isDue = true;
    if (this.isWoken && this.frame === 0) this.frame = requestAnimationFrame(() => this.drawNow());
  }

  private drawNow(): void {
    cancelAnimationFrame(this.frame);
    this.frame = 0;
    this.isDue = false;
    this.draw();
  }

  // From now on drawings come in the next frame; one that is due comes at once.
  private wake(): void {
    this.stopWaiting();
    this.isWoken = true;
    if (this.isDue) this.drawNow();
  }

  private readonly wakeUnseen = (): void => {
    this.unseen = true;
    this.wake();
    this.unseen = false;
  };

  private stopWaiting(): void {
    this.view?.disconnect();
    this.view = null;
    giveBackTurn(this.wakeUnseen);
  }

  private readonly beforePrint = (): void => {
    this.printing = true;
    this.isDue = true;
    this.wake();
  };

  private readonly afterPrint = (): void => {
    this.printing = false;
    this.request();
  };
}
