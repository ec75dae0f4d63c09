#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "template/directive.h"
#include "template/input_stack.h"
#include "template/references.h"

namespace plexoras {

/// A reference as it stands in template text. Its texts are views of that text.
struct OutlineReference {
  enum class Kind {
    Value,      ///< $(NAME)
    Attribute,  ///< $(?NAME)
    Encoded,    ///< $(\NAME)
    Replaced,   ///< $(\NAME,from,to)
    Call,       ///< #(NAME argument)
  };

  Kind kind = Kind::Value;
  std::string_view name;           ///< what is looked up, without "?" and "\"; may hold references itself
  std::string_view argument = {};  ///< of a call
  std::size_t begin = 0;           ///< of its "$" or "#" in the text
  std::size_t depth = 0;           ///< how many references it stands in
  std::size_t parts = 1;           ///< of a replacement, with the name
  bool is_closed = true;           ///< without a ")" it reaches to the end of the text

  bool is_bracketed() const { return name.starts_with('['); }
};

/// The references in `text`, as the engine would meet them: in the order in which they begin, those inside others too.
/// What nests more than `deepest_outline` deep is left out.
std::vector<OutlineReference> references_in(std::string_view text);
inline constexpr std::size_t deepest_outline = 32;
/// Those that a "\" keeps from being references: `#DEFINE` stores them without it, so that they are some in its value.
std::vector<OutlineReference> escaped_references_in(std::string_view text);

/// A text cut in two at its first blank that stands in no reference: the name that a definition or call begins with,
/// and the rest, both trimmed. Without such a blank `found` is false and `first` is all of it.
BlankSplit split_at_open_blank(std::string_view text);

/// The template file and section that a bracketed name ("[NAME]", "[FILE FROM NAME]") asks for; the file is empty where
/// the name does not say.
struct BracketedName {
  std::string_view file;
  std::string_view section;
};
BracketedName parse_bracketed(std::string_view name);

/// One line of a section, as the engine handles it: joined where it goes on, a TAB as five blanks.
struct OutlineLine {
  bool is_directive = false;
  Directive directive;            ///< a text line has none
  std::string text;               ///< a directive stands without the blanks before it
  std::vector<LinePlace> places;  ///< of `text` in the file

  /// What follows the directive's keyword, trimmed.
  std::string_view argument() const;
  /// Where `at`, a place in `text`, stands in the file. The path and section are left to the caller.
  LinePlace place(const char* at) const;
  LinePlace place() const { return place(text.data()); }
};

/// The lines of a section without anything done about them: what is in a template, for those who judge it.
std::vector<OutlineLine> outline(const SourceText& section);

}  // namespace plexoras
