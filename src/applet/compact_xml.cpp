#include "applet/compact_xml.h"

#include <algorithm>

#include "applet/text_position.h"
#include "contents/contents_document.h"

namespace plexoras {
namespace {

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool begins_name(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || (c & 0x80) != 0;
}

bool continues_name(char c) { return begins_name(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

const ContentsEntity* entity_at_start(std::string_view text) {
  for (const ContentsEntity& entity : contents_entities) {
    if (text.starts_with(entity.written)) return &entity;
  }
  return nullptr;
}

}  // namespace

bool is_line_breaks(std::string_view text) { return text.find_first_not_of("\r\n") == std::string_view::npos; }

std::string unescape_text(std::string_view raw) {
  std::string text;
  text.reserve(raw.size());
  while (true) {
    const std::size_t ampersand = raw.find('&');
    text += raw.substr(0, ampersand);
    if (ampersand == std::string_view::npos) return text;
    raw.remove_prefix(ampersand);
    const ContentsEntity* const entity = entity_at_start(raw);
    text += entity ? entity->character : '&';
    raw.remove_prefix(entity ? entity->written.size() : 1);
  }
}

std::string quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string shown = "\"";
  shown += text.substr(0, longest);
  shown += text.size() > longest ? "...\"" : "\"";
  return shown;
}

CompactXmlReader::Piece CompactXmlReader::next() {
  if (position_ < text_.size()) {
    if (text_[position_] != '<') return read_text();
    return at("</") ? read_end_tag() : read_start_tag();
  }
  if (!open_elements_.empty()) {
    const std::string_view name = open_elements_.back();
    fail(static_cast<std::size_t>(name.data() - text_.data()) - 1,
         "<" + std::string(name.substr(0, 40)) + "> is never closed; close it with \"</>\"");
  }
  if (!root_seen_) fail(position_, "the document holds no element");
  return {Kind::End, {}, {}, {}, position_};
}

CompactXmlReader::Piece CompactXmlReader::read_text() {
  const std::size_t from = position_;
  position_ = std::min(text_.find('<', from), text_.size());
  const std::string_view raw = text_.substr(from, position_ - from);
  if (open_elements_.empty() && !is_line_breaks(raw)) {
    fail(from + raw.find_first_not_of("\r\n"), "text stands outside the document's element");
  }
  check_entities(from, position_);
  return {Kind::Text, raw, {}, {}, from};
}

CompactXmlReader::Piece CompactXmlReader::read_end_tag() {
  const std::size_t from = position_;
  position_ += 2;
  const std::string_view name = read_name();
  if (!at(">")) fail(from, "an end tag must read \"</>\" or \"</name>\"");
  ++position_;
  if (open_elements_.empty()) fail(from, "an end tag closes no element");
  const std::string_view element = open_elements_.back();
  if (!name.empty() && name != element) {
    fail(from, "end tag " + quoted(name) + " stands where " + quoted(element) + " is open");
  }
  open_elements_.pop_back();
  return {Kind::EndTag, text_.substr(from, position_ - from), element, {}, from};
}

CompactXmlReader::Piece CompactXmlReader::read_start_tag() {
  const std::size_t from = position_;
  if (open_elements_.empty() && root_seen_) fail(from, "a second element follows the document's element");
  root_seen_ = true;

  ++position_;
  const std::string_view name = read_name();
  if (name.empty()) fail(from, "\"<\" must begin a tag here; write \"&lt;\" for the character itself");
  skip_blanks();
  const std::size_t attributes_from = position_;
  while (position_ < text_.size() && begins_name(text_[position_])) {
    if (!is_blank(text_[position_ - 1])) fail(position_, "a blank must stand before an attribute");
    read_attribute();
    skip_blanks();
  }
  const std::string_view attributes = text_.substr(attributes_from, position_ - attributes_from);

  const bool is_empty = at("/>");
  if (!is_empty && !at(">")) fail(position_, "tag " + quoted(name) + " must end in \">\" or \"/>\" here");
  position_ += is_empty ? 2 : 1;
  if (!is_empty) open_elements_.push_back(name);
  return {is_empty ? Kind::EmptyTag : Kind::StartTag, text_.substr(from, position_ - from), name, attributes, from};
}

std::string_view CompactXmlReader::read_name() {
  const std::size_t from = position_;
  if (from < text_.size() && !begins_name(text_[from])) return {};
  while (position_ < text_.size() && continues_name(text_[position_])) ++position_;
  return text_.substr(from, position_ - from);
}

void CompactXmlReader::read_attribute() {
  const std::size_t from = position_;
  const std::string_view name = read_name();
  if (!at("=\"") && !at("='")) fail(position_, "attribute " + quoted(name) + " must have a value in quotes");
  const char quote = text_[position_ + 1];
  const std::size_t value_from = position_ + 2;
  const std::size_t value_end = text_.find(quote, value_from);
  if (value_end == std::string_view::npos) fail(from, "the value of attribute " + quoted(name) + " never ends");
  const std::size_t tag_start = text_.substr(value_from, value_end - value_from).find('<');
  if (tag_start != std::string_view::npos) fail(value_from + tag_start, "write \"&lt;\" for \"<\" in an attribute");
  check_entities(value_from, value_end);
  position_ = value_end + 1;
}

void CompactXmlReader::skip_blanks() {
  while (position_ < text_.size() && is_blank(text_[position_])) ++position_;
}

void CompactXmlReader::check_entities(std::size_t from, std::size_t to) const {
  const std::string_view text = text_.substr(from, to - from);
  for (std::size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i + 1)) {
    if (entity_at_start(text.substr(i))) continue;
    std::string problem = "\"&\" begins none of";
    for (const ContentsEntity& entity : contents_entities) problem += " " + std::string(entity.written);
    fail(from + i, problem + "; write \"&amp;\" for the character itself");
  }
}

void CompactXmlReader::fail(std::size_t offset, std::string_view problem) const {
  raise_invalid_text(text_, offset, problem);
}

}  // namespace plexoras
