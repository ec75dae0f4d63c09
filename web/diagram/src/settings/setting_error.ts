// What is wrong with a setting, and where.

/** A setting cannot be read. */
export class SettingError extends Error {
  /** The setting's name, `XmlStyle`; empty until whoever knows it says so. */
  setting: string;

  constructor(message: string, setting = "") {
    super(message);
    this.name = "SettingError";
    this.setting = setting;
  }
}

/** How many bytes a text has in UTF-8. */
function byteLength(text: string): number {
  return new TextEncoder().encode(text).length;
}

/**
 * The error for the character at `offset` of `text`: "line:column: problem". Both count from 1, columns in bytes of
 * UTF-8; CR LF, CR and LF each end a line.
 */
export function textError(text: string, offset: number, problem: string): SettingError {
  const lines = text.slice(0, offset).split(/\r\n|\r|\n/);
  // A CR that stands before the offset and its LF behind it end one line, after both.
  if (text[offset - 1] === "\r" && text[offset] === "\n") {
    lines.pop();
    lines.push(`${lines.pop() ?? ""}\r`);
  }
  const line = lines[lines.length - 1] ?? "";
  return new SettingError(`${lines.length}:${byteLength(line) + 1}: ${problem}`);
}

/** `text` in quotes for a message, cut where it is longer than 40 bytes. */
export function quoted(text: string): string {
  const longest = 40;
  if (byteLength(text) <= longest) return `"${text}"`;
  let shown = "";
  let size = 0;
  for (const character of text) {
    size += byteLength(character);
    if (size > longest) break;
    shown += character;
  }
  return `"${shown}..."`;
}
