// Reads the contents document (docs/contents-document.md).
import type { Piece } from "./compact_xml.ts";
import { CompactXmlReader, isLineBreaks, unescapeText } from "./compact_xml.ts";
import type { Contents } from "./contents.ts";
import { quoted } from "./setting_error.ts";

/** The data of a document; a `SettingError` with line and column for one that cannot be read. */
export function readContents(document: string): Contents {
  return new ContentsReader(document).read();
}

// One reading of a document, from the first character to the last.
class ContentsReader {
  private readonly xml: CompactXmlReader;
  private readonly contents: Contents =
    { rowTitle: "", columnTitle: "", valueTitle: "", rows: [], columns: [], values: [] };

  constructor(document: string) {
    this.xml = new CompactXmlReader(document);
  }

  read(): Contents {
    this.expectStart("xml", this.nextTag());
    const first = this.nextTag();
    if (first.kind === "empty" && first.name === "cols") {
      this.readListsOfEmptyDocument();
    } else {
      this.readLists(first);
    }
    const end = this.nextTag();
    if (end.kind !== "end") throw this.unexpected(end, "the end of \"xml\"");
    this.nextTag();
    return this.contents;
  }

  // The empty document has its lists in an order of its own.
  private readListsOfEmptyDocument(): void {
    for (const list of ["rows", "data"]) {
      const tag = this.nextTag();
      if (tag.kind !== "empty") throw this.unexpected(tag, `<${list}/>`);
      this.expectStart(list, tag);
    }
  }

  private readLists(rows: Piece): void {
    this.expectStart("rows", rows);
    if (rows.kind === "start") {
      this.contents.rowTitle = this.readTexts("row", this.contents.rows, null);
    }
    const columns = this.nextTag();
    this.expectStart("cols", columns);
    if (columns.kind === "start") this.contents.columnTitle = this.readTexts("col", this.contents.columns, "");

    const values = this.nextTag();
    this.expectStart("data", values);
    if (values.kind === "start") this.contents.valueTitle = this.readTexts("value", this.contents.values, "");
    if (this.contents.rows.length === 0 && this.contents.values.length > 0) {
      throw this.xml.error(values.offset, "there are values, but no rows that could hold them");
    }
  }

  /** Reads the elements of a list, an empty one as `empty`, and gives the list's title. */
  private readTexts<Text>(element: string, texts: (string | Text)[], empty: string | Text): string {
    let title = "";
    let piece = this.xml.next();
    if (piece.kind === "text") {
      if (!isLineBreaks(piece.raw)) title = unescapeText(piece.raw);
      piece = this.xml.next();
    }
    for (; piece.kind !== "end"; piece = this.nextTag()) {
      this.expectStart(element, piece);
      texts.push(piece.kind === "empty" ? empty : this.readElementText(piece));
    }
    return title;
  }

  // The text of the element that `start` has opened, up to its end tag.
  private readElementText(start: Piece): string {
    let piece = this.xml.next();
    let text = "";
    if (piece.kind === "text") {
      text = unescapeText(piece.raw);
      piece = this.xml.next();
    }
    if (piece.kind !== "end") throw this.unexpected(piece, `the end of ${quoted(start.name)}`);
    return text;
  }

  // The next piece that is not a line break between tags.
  private nextTag(): Piece {
    const piece = this.xml.next();
    if (piece.kind !== "text") return piece;
    if (!isLineBreaks(piece.raw)) {
      throw this.xml.error(piece.offset, `text ${quoted(piece.raw)} stands between elements`);
    }
    return this.xml.next();
  }

  private expectStart(element: string, piece: Piece): void {
    const isStart = piece.kind === "start" || piece.kind === "empty";
    if (!isStart || piece.name !== element) throw this.unexpected(piece, `<${element}>`);
    if (piece.attributes !== "") throw this.xml.error(piece.offset, `${quoted(element)} takes no attributes`);
  }

  private unexpected(piece: Piece, expected: string): Error {
    const found = piece.kind === "finish" ? "the document ends" : `${quoted(piece.raw)} stands`;
    return this.xml.error(piece.offset, `${found} where ${expected} is expected`);
  }
}
