// The compact dialect of XML in which a chart's contents, style and menu are written:
//
//     <xml><ITEM type="script" param="f()">Open &amp; close</><SEPARATOR></></xml>
//
// An element ends in "</>" or in an end tag that carries its name, or is empty: "<row/>". Text and attribute values
// know six entities and no numeric references; a ">" or a quote may stand in text as it is. There is one root element,
// with nothing but line breaks outside it.
import { quoted, textError } from "./setting_error.ts";

/** A piece of a document. */
export interface Piece {
  /** "start" is `<name ...>`, "empty" `<name .../>`, "end" `</>`, "text" a run up to the next tag, never empty. */
  readonly kind: "start" | "empty" | "end" | "text" | "finish";
  /** As it stands in the document. */
  readonly raw: string;
  /** Of a tag: its element's name. */
  readonly name: string;
  /** Of a start tag or an empty one: what follows the name and a blank. */
  readonly attributes: string;
  /** Of the first character of `raw`. */
  readonly offset: number;
}

const entities: Readonly<Record<string, string>> = {
  "&apos;": "'", "&quot;": "\"", "&amp;": "&", "&lt;": "<", "&gt;": ">", "&tab;": "\t",
};
const entityNames = Object.keys(entities).join(" ");
const wrongEntity = /&(?!(?:apos|quot|amp|lt|gt|tab);)/;

// Each is tried at one place of the document.
const namePattern = /[A-Za-z_:\u0080-\uffff][\w:.\u0080-\uffff-]*/y;
const blanksPattern = /[ \t\r\n]*/y;
const nameStart = /[A-Za-z_:\u0080-\uffff]/;

/** Whether a text is line breaks alone. Between elements such text means nothing. */
export function isLineBreaks(text: string): boolean {
  return /^[\r\n]*$/.test(text);
}

/** The text behind a piece's `raw`: `a&lt;b` becomes `a<b`. */
export function unescapeText(raw: string): string {
  return raw.includes("&") ? raw.replace(/&\w+;/g, (written) => entities[written] ?? written) : raw;
}

/**
 * Reads a document piece by piece, and checks its form as it goes. It keeps no tree and does not recurse: any depth of
 * nesting is fine.
 */
export class CompactXmlReader {
  private readonly text: string;
  private position = 0;
  private rootSeen = false;
  private readonly open: { readonly name: string; readonly offset: number }[] = [];

  constructor(text: string) {
    this.text = text;
  }

  /** The next piece; a `SettingError` where the document is not well formed. */
  next(): Piece {
    if (this.position < this.text.length) {
      if (this.text[this.position] !== "<") return this.readText();
      return this.at("</") ? this.readEndTag() : this.readStartTag();
    }
    const innermost = this.open[this.open.length - 1];
    if (innermost) {
      throw this.error(innermost.offset, `<${innermost.name.slice(0, 40)}> is never closed; close it with "</>"`);
    }
    if (!this.rootSeen) throw this.error(this.position, "the document holds no element");
    return { kind: "finish", raw: "", name: "", attributes: "", offset: this.position };
  }

  /** The error for the character at `offset`. */
  error(offset: number, problem: string): Error {
    return textError(this.text, offset, problem);
  }

  private readText(): Piece {
    const from = this.position;
    const end = this.text.indexOf("<", from);
    this.position = end < 0 ? this.text.length : end;
    const raw = this.text.slice(from, this.position);
    if (this.open.length === 0 && !isLineBreaks(raw)) {
      throw this.error(from + raw.search(/[^\r\n]/), "text stands outside the document's element");
    }
    this.checkEntities(from, raw);
    return { kind: "text", raw, name: "", attributes: "", offset: from };
  }

  private readEndTag(): Piece {
    const from = this.position;
    this.position += 2;
    const name = this.take(namePattern);
    if (!this.at(">")) throw this.error(from, "an end tag must read \"</>\" or \"</name>\"");
    this.position += 1;
    const element = this.open.pop();
    if (!element) throw this.error(from, "an end tag closes no element");
    if (name !== "" && name !== element.name) {
      throw this.error(from, `end tag ${quoted(name)} stands where ${quoted(element.name)} is open`);
    }
    return { kind: "end", raw: this.text.slice(from, this.position), name: element.name, attributes: "", offset: from };
  }

  private readStartTag(): Piece {
    const from = this.position;
    if (this.open.length === 0 && this.rootSeen) {
      throw this.error(from, "a second element follows the document's element");
    }
    this.rootSeen = true;

    this.position += 1;
    const name = this.take(namePattern);
    if (name === "") throw this.error(from, "\"<\" must begin a tag here; write \"&lt;\" for the character itself");
    const attributes = this.readAttributes();

    const isEmpty = this.at("/>");
    if (!isEmpty && !this.at(">")) {
      throw this.error(this.position, `tag ${quoted(name)} must end in ">" or "/>" here`);
    }
    this.position += isEmpty ? 2 : 1;
    if (!isEmpty) this.open.push({ name, offset: from });
    const raw = this.text.slice(from, this.position);
    return { kind: isEmpty ? "empty" : "start", raw, name, attributes, offset: from };
  }

  private readAttributes(): string {
    this.take(blanksPattern);
    const from = this.position;
    while (nameStart.test(this.text.charAt(this.position))) {
      if (!/[ \t\r\n]/.test(this.text.charAt(this.position - 1))) {
        throw this.error(this.position, "a blank must stand before an attribute");
      }
      this.readAttribute();
      this.take(blanksPattern);
    }
    return this.text.slice(from, this.position);
  }

  private readAttribute(): void {
    const from = this.position;
    const name = this.take(namePattern);
    if (!this.at("=\"") && !this.at("='")) {
      throw this.error(this.position, `attribute ${quoted(name)} must have a value in quotes`);
    }
    const valueFrom = this.position + 2;
    const valueEnd = this.text.indexOf(this.text.charAt(this.position + 1), valueFrom);
    if (valueEnd < 0) throw this.error(from, `the value of attribute ${quoted(name)} never ends`);
    const value = this.text.slice(valueFrom, valueEnd);
    const tag = value.indexOf("<");
    if (tag >= 0) throw this.error(valueFrom + tag, "write \"&lt;\" for \"<\" in an attribute");
    this.checkEntities(valueFrom, value);
    this.position = valueEnd + 1;
  }

  private checkEntities(from: number, raw: string): void {
    const wrong = raw.search(wrongEntity);
    if (wrong < 0) return;
    throw this.error(from + wrong,
      `"&" begins none of ${entityNames}; write "&amp;" for the character itself`);
  }

  /** Takes what the pattern, a sticky one, finds here: perhaps nothing. */
  private take(pattern: RegExp): string {
    pattern.lastIndex = this.position;
    const found = pattern.exec(this.text)?.[0] ?? "";
    this.position += found.length;
    return found;
  }

  private at(expected: string): boolean {
    return this.text.startsWith(expected, this.position);
  }
}
