#pragma once

#include <string_view>

namespace plexoras {

/// What a line that begins with "#" asks for. A line that is none of the directives calls a macro or a built-in
/// function.
enum class DirectiveKind {
  Halt,
  Include,
  Define,
  Macro,
  Undefine,
  IfInside,
  IfEqual,
  IfNotEqual,
  IfDefined,
  IfUndefined,
  Else,
  EndIf,
  Call,
};

/// Whether the directive begins a condition, which an "#ENDIF" ends.
constexpr bool opens_condition(DirectiveKind kind) {
  return kind == DirectiveKind::IfInside || kind == DirectiveKind::IfEqual || kind == DirectiveKind::IfNotEqual ||
         kind == DirectiveKind::IfDefined || kind == DirectiveKind::IfUndefined;
}

/// A line's directive and the beginning by which it was recognised; what follows is its argument.
struct Directive {
  DirectiveKind kind = DirectiveKind::Call;
  std::string_view keyword = {};  ///< as "#IFDEF " or "#ENDIF"; of a call, "#"
};

}  // namespace plexoras
