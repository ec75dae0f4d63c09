#include "template/template_outline.h"

#include <algorithm>

#include "template/preprocessor.h"

namespace plexoras {
namespace {

using Kind = OutlineReference::Kind;

// Fills in what stands between the parentheses of a reference.
void read_inside(OutlineReference& reference, char mark, std::string_view inside) {
  if (mark == '#') {
    const BlankSplit call = split_at_open_blank(inside);
    reference.kind = Kind::Call;
    reference.name = trimmed(call.first);
    reference.argument = call.rest;
    return;
  }
  std::string_view name = trimmed(inside);
  if (name.starts_with('?')) {
    reference.kind = Kind::Attribute;
    name = trimmed(name.substr(1));
  }
  if (name.starts_with('\\')) {
    const std::size_t comma = name.find(',');
    reference.kind = comma == std::string_view::npos ? Kind::Encoded : Kind::Replaced;
    reference.parts = 1 + static_cast<std::size_t>(std::count(name.begin(), name.end(), ','));
    name = name.substr(1, comma == std::string_view::npos ? comma : comma - 1);
  }
  reference.name = name;
}

// Those references that a "\" stands before, or those others.
std::vector<OutlineReference> find_references(std::string_view text, bool wants_escaped) {
  std::vector<OutlineReference> found;
  if (next_reference(text, 0) == std::string_view::npos) return found;

  // An open "(", and the reference that it belongs to, if any.
  constexpr std::size_t none = std::string_view::npos;
  struct Open {
    std::size_t begin;
    std::size_t reference;
  };
  std::vector<Open> open;
  std::size_t depth = 0;
  const auto close = [&](std::size_t end, bool is_closed) {
    const Open last = open.back();
    open.pop_back();
    if (last.reference == none) return;
    --depth;
    OutlineReference& reference = found[last.reference];
    reference.is_closed = is_closed;
    if (reference.depth >= deepest_outline) return;
    read_inside(reference, text[reference.begin], text.substr(last.begin, end - last.begin));
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ')' && !open.empty()) {
      close(at, true);
    } else if (text[at] == '(') {
      const bool begins_one =
          at > 0 && (text[at - 1] == '$' || text[at - 1] == '#') && is_escaped(text, at - 1) == wants_escaped;
      open.push_back({at + 1, begins_one ? found.size() : none});
      if (begins_one) found.push_back({.name = {}, .begin = at - 1, .depth = depth++});
    }
  }
  while (!open.empty()) close(text.size(), false);
  std::erase_if(found, [](const OutlineReference& reference) { return reference.depth >= deepest_outline; });
  return found;
}

}  // namespace

std::vector<OutlineReference> references_in(std::string_view text) { return find_references(text, false); }
std::vector<OutlineReference> escaped_references_in(std::string_view text) { return find_references(text, true); }

BlankSplit split_at_open_blank(std::string_view text) {
  std::size_t depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool in_reference = depth > 0;
    if (text[at] == ' ' && !in_reference) return {trimmed(text.substr(0, at)), trimmed(text.substr(at + 1)), true};
    const bool begins_one =
        text[at] == '(' && at > 0 && (text[at - 1] == '$' || text[at - 1] == '#') && !is_escaped(text, at - 1);
    if (begins_one || (in_reference && text[at] == '(')) {
      ++depth;
    } else if (in_reference && text[at] == ')') {
      --depth;
    }
  }
  return {text, {}, false};
}

BracketedName parse_bracketed(std::string_view name) {
  if (name.size() < 2) return {};
  const std::string_view inside = name.substr(1, name.size() - 2);
  const FromSplit from = split_at_from(inside);
  return from.found ? BracketedName{from.before, from.after} : BracketedName{{}, inside};
}

std::string_view OutlineLine::argument() const {
  return trimmed(std::string_view(text).substr(directive.keyword.size()));
}

LinePlace OutlineLine::place(const char* at) const {
  const auto offset = static_cast<std::size_t>(at - text.data());
  LinePlace place = *(std::upper_bound(places.begin() + 1, places.end(), offset,
                                       [](std::size_t wanted, const LinePlace& p) { return wanted < p.offset; }) -
                      1);
  place.column += offset - place.offset;
  place.offset = offset;
  return place;
}

std::vector<OutlineLine> outline(const SourceText& section) {
  std::vector<OutlineLine> lines;
  InputStack input(section);
  while (input.next()) {
    OutlineLine line;
    const std::string_view whole = input.line();
    const std::size_t indent = std::min(whole.find_first_not_of(' '), whole.size());
    line.is_directive = whole.substr(indent).starts_with('#');
    line.text = line.is_directive ? whole.substr(indent) : whole;
    line.places = input.places();
    if (line.is_directive) {
      const Directive directive = Preprocessor::directive_of(line.text);
      // The keyword is one of the language's own, but a call's is the line's.
      line.directive = {directive.kind, directive.kind == DirectiveKind::Call ? "#" : directive.keyword};
      // The blanks in front are gone from the text.
      const auto present = std::upper_bound(line.places.begin() + 1, line.places.end(), indent,
                                            [](std::size_t at, const LinePlace& p) { return at < p.offset; }) -
                           1;
      line.places.erase(line.places.begin(), present);
      for (LinePlace& place : line.places) {
        if (place.offset < indent) {
          place.column += indent - place.offset;
          place.offset = indent;
        }
        place.offset -= indent;
      }
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace plexoras
