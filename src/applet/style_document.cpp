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

// The text piece of the element that `start` has opened; empty where it has none. The end tag is read too.
Piece read_value(CompactXmlReader& xml, const Piece& start) {
  const Piece first = xml.next();
  const Piece end = first.kind == Kind::Text ? xml.next() : first;
  if (end.kind != Kind::EndTag) xml.fail(end.offset, quoted(start.name) + " holds a text and no elements");
  return first.kind == Kind::Text ? first : Piece{Kind::Text, {}, {}, {}, end.offset};
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

    const bool is_empty = piece.kind == Kind::EmptyTag;
    const std::size_t row = find_style_property(piece.name);
    if (row < values.size()) {
      const Piece text = is_empty ? Piece{Kind::Text, {}, {}, {}, piece.offset} : read_value(xml, piece);
      values[row] = value_of_text(xml, style_properties()[row], text);
    } else if (!is_empty) {
      skip_element(xml);
    }
  }
  return values;
}

}  // namespace plexoras
