// The words of texts on paper. Lines break between them; in one that is too long they break anywhere.

/** Longer words than this could make a table too wide to be read; in ems. Those that are long have as much room. */
export const longestLine = 14;
const mostLetters = 24;
// East Asian letters are about an em wide.
const wideLetters = new RegExp(`[\\u2e80-\\ud7ff\\uf900-\\uff60]{${longestLine + 1}}`);

/** The words of a text; `isLine`: its lines, for a text in a column of numbers. */
export function wordsOf(text: string, isLine = false): string[] {
  return text.split(isLine ? "\n" : /[ \t\n\u200b]+/);
}

export function isLongWord(word: string): boolean {
  return word.length > mostLetters || wideLetters.test(word);
}

export function hasLongWord(text: string, isLine = false): boolean {
  return text.length > longestLine && wordsOf(text, isLine).some(isLongWord);
}
