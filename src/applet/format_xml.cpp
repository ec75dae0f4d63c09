#include "applet/format_xml.h"

#include <array>

#include "applet/compact_xml.h"

namespace plexoras {
namespace {

using Kind = CompactXmlReader::Kind;
using Piece = CompactXmlReader::Piece;

struct AttributeEntity {
  char character;
  std::string_view written;
};

constexpr AttributeEntity attribute_entities[] = {
    {'&', "&amp;"}, {'<', "&lt;"},   {'>', "&gt;"},   {'"', "&quot;"}, {'\'', "&#39;"},
    {'\t', "&#9;"}, {'\r', "&#13;"}, {'\n', "&#10;"}, {'$', "&#36;"},  {'#', "&#35;"},
};

constexpr std::array<std::string_view, 256> written_forms = [] {
  std::array<std::string_view, 256> forms{};
  for (const AttributeEntity& entity : attribute_entities) {
    forms[static_cast<unsigned char>(entity.character)] = entity.written;
  }
  return forms;
}();

// Line breaks that stand between two tags count for nothing, except as the whole text of an element.
std::string without_line_breaks_between_elements(std::string_view xml) {
  std::string compact;
  compact.reserve(xml.size());
  CompactXmlReader reader(xml);
  Kind before = Kind::End;
  for (Piece piece = reader.next(); piece.kind != Kind::End;) {
    const Piece following = reader.next();
    const bool is_whole_text = before == Kind::StartTag && following.kind == Kind::EndTag;
    if (piece.kind != Kind::Text || is_whole_text || !is_line_breaks(piece.raw)) compact += piece.raw;
    before = piece.kind;
    piece = following;
  }
  return compact;
}

}  // namespace

std::string format_xml(std::string_view xml, FormatFor use) {
  if (xml.empty()) return {};
  std::string compact = without_line_breaks_between_elements(xml);
  return use == FormatFor::Attribute ? escape_for_attribute(compact) : compact;
}

std::string escape_for_attribute(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 2);
  std::size_t plain_from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view written = written_forms[static_cast<unsigned char>(text[i])];
    if (written.empty()) continue;
    const bool may_begin_reference = text[i] == '$' || text[i] == '#';
    if (may_begin_reference && i + 1 < text.size() && text[i + 1] != '(') continue;
    escaped.append(text, plain_from, i - plain_from);
    escaped += written;
    plain_from = i + 1;
  }
  escaped.append(text, plain_from);
  return escaped;
}

}  // namespace plexoras
