// Work for when the browser has nothing else to do, shared by all elements of a page: several turns go into one such
// time, since the browser lays out and paints the page between two of them.

// Less than a tenth of a second, so that a reader who acts in between does not notice.
const most = 50;
// Browsers without idle callbacks wait a moment instead.
const moment = 200;

const turns = new Set<() => void>();

/** Calls `turn` once, when the browser is idle, unless it is given back before. */
export function takeTurn(turn: () => void): void {
  if (turns.size === 0) wait();
  turns.add(turn);
}

/** `turn` is not called any more. */
export function giveBackTurn(turn: () => void): void {
  turns.delete(turn);
}

function wait(): void {
  if (typeof requestIdleCallback === "function") requestIdleCallback(work);
  else window.setTimeout(work, moment);
}

function work(): void {
  const start = performance.now();
  try {
    for (const turn of turns) {
      turns.delete(turn);
      turn();
      if (performance.now() - start > most) break;
    }
  } finally {
    if (turns.size > 0) wait();
  }
}
