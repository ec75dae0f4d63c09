#include "applet/style_document.h"

#include <algorithm>
#include <cassert>

#include "applet/compact_xml.h"
#include "chart_control/chart_properties.h"
#include "contents/contents_document.h"

namespace plexoras {
namespace {

using Kind = CompactXmlReader::Kind;
using Piece = CompactXmlReader::Piece;

// What the control forwards, but the style document does not hold: the documents themselves.
constexpr std::string_view documents[] = {"XmlStyle", "XmlContents", "CsvContents"};

// What the chart component has beyond the control's properties.
constexpr StyleProperty own_properties[] = {
    {"FormatDateStyle", ValueType::Long},
    {"negativeForeColor", ValueType::String},
};

std::vector<StyleProperty> collect_style_properties() {
  std::vector<StyleProperty> rows;
  for (const ForwardedProperty& row : forwarded_properties()) {
    if (std::ranges::find(documents, row.name) == std::end(documents)) rows.push_back({row.name, row.type});
  }
  rows.insert(rows.end(), std::begin(own_properties), std::end(own_properties));
  return rows;
}

Variant value_of_text(const CompactXmlReader& xml, const StyleProperty& property, const Piece& text) {
  try {
    return Variant(unescape_text(text.raw)).converted_to(property.type);
  } catch (const AutomationError& error) {
    xml.fail(text.offset,
             std::string(property.name) + " (" + std::string(type_name(property.type)) + "): " + error.description());
  }
}

// Passes over the element that `start` has opened, with everything in it.
void skip_element(CompactXmlReader& xml) {
  for (std::size_t depth = 1; depth > 0;) {
    const Kind kind = xml.next().kind;
    if (kind == Kind::StartTag) ++depth;
    if (kind == Kind::EndTag) --depth;
  }
}

// An element that sets a property, and where it stands in the document.
struct Element {
  std::size_t row;
  Variant value;
  std::size_t begin;
  std::size_t end;
};

// The element that `start`, a start tag or an empty one, begins; its end tag is read too.
Element read_element(CompactXmlReader& xml, const Piece& start, std::size_t row) {
  Piece text{Kind::Text, {}, {}, {}, start.offset};
  Piece last = start;
  if (start.kind == Kind::StartTag) {
    const Piece first = xml.next();
    last = first.kind == Kind::Text ? xml.next() : first;
    if (last.kind != Kind::EndTag) xml.fail(last.offset, quoted(start.name) + " holds a text and no elements");
    text = first.kind == Kind::Text ? first : Piece{Kind::Text, {}, {}, {}, last.offset};
  }
  return {row, value_of_text(xml, style_properties()[row], text), start.offset, last.offset + last.raw.size()};
}

// Calls `take` with each element of `document` that sets a property, in their order.
template <class Take>
void read_elements(std::string_view document, Take take) {
  CompactXmlReader xml(document);
  bool in_root = false;
  for (Piece piece = xml.next(); piece.kind != Kind::End; piece = xml.next()) {
    if (piece.kind == Kind::EndTag) continue;
    if (piece.kind == Kind::Text) {
      if (!is_line_breaks(piece.raw)) xml.fail(piece.offset, "text " + quoted(piece.raw) + " stands between elements");
      continue;
    }
    if (!in_root) {
      if (piece.name != "xml") xml.fail(piece.offset, quoted(piece.name) + " stands where <xml> is expected");
      in_root = true;
      continue;
    }

    const std::size_t row = find_style_property(piece.name);
    if (row < style_properties().size()) {
      take(read_element(xml, piece, row));
    } else if (piece.kind == Kind::StartTag) {
      skip_element(xml);
    }
  }
}

// Whether the first element in that of the document has the name of a property.
bool begins_with_property(std::string_view document) {
  CompactXmlReader xml(document);
  const auto next_tag = [&] {
    Piece piece = xml.next();
    while (piece.kind == Kind::Text) piece = xml.next();
    return piece;
  };
  next_tag();
  return find_style_property(next_tag().name) < style_properties().size();
}

}  // namespace

std::span<const StyleProperty> style_properties() {
  static const std::vector<StyleProperty> rows = collect_style_properties();
  return rows;
}

std::size_t find_style_property(std::string_view name) {
  const std::span<const StyleProperty> rows = style_properties();
  return static_cast<std::size_t>(std::ranges::find(rows, name, &StyleProperty::name) - rows.begin());
}

std::string write_style_document(std::span<const Variant> values) {
  const std::span<const StyleProperty> rows = style_properties();
  assert(values.size() == rows.size());
  std::string document = "<xml>\n";
  for (std::size_t i = 0; i < rows.size(); ++i) {
    document.append("<").append(rows[i].name).append(">");
    append_escaped_contents(document, values[i].to_text());
    document += "</>\n";
  }
  return document + "</xml>";
}

std::vector<Variant> read_style_document(std::string_view document, std::vector<Variant> values) {
  read_elements(document, [&](const Element& element) { values[element.row] = element.value; });
  return values;
}

std::string without_repeated_values(std::string_view document, std::vector<Variant> values) {
  std::string kept;
  std::size_t kept_to = 0;
  try {
    if (!begins_with_property(document)) return std::string(document);
    read_elements(document, [&](const Element& element) {
      // Of two elements of one name the later counts, so what is repeated is the value before, whichever that is.
      if (values[element.row] == element.value) {
        constexpr std::string_view line_breaks = "\r\n";
        const std::string_view before = document.substr(kept_to, element.begin - kept_to);
        kept.append(before.substr(0, before.find_last_not_of(line_breaks) + 1));
        kept_to = document.find_first_not_of(line_breaks, element.end);
      }
      values[element.row] = element.value;
    });
  } catch (const AutomationError&) {
    return std::string(document);
  }
  return kept.append(document.substr(kept_to));
}

}  // namespace plexoras
