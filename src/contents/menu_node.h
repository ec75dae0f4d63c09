#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace plexoras {

/// One entry of a popup menu. A menu is the list of its entries from top to bottom: an entry that is followed by
/// deeper ones is a submenu.
struct MenuNode {
  enum : std::int16_t { Script = 0, Separator = 1, BuiltIn = 2 };

  std::string Caption = {};    ///< what the menu shows; "--" for a separator
  std::string Param = {};      ///< a script item's script, a built-in item's key in the command table, else unused
  std::int16_t Level = 0;      ///< depth in the menu; 0 is the top level
  std::int16_t Kind = Script;  ///< Script, Separator or BuiltIn

  friend bool operator==(const MenuNode&, const MenuNode&) = default;
};

/// How many entries a menu holds at most.
inline constexpr std::size_t menu_capacity = 256;

/// The caption of every separator.
inline constexpr std::string_view separator_caption = "--";

}  // namespace plexoras
