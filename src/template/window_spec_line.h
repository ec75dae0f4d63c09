#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "template/dictionary.h"
#include "template/window_spec.h"

namespace plexoras {

/// What a definition in a window-spec is, by its name.
struct WindowSpecName {
  enum class Role {
    Entry,     ///< KEY_SPEC, NAME_MESSAGESPEC, NAME_DIVIDERSPEC
    Comment,   ///< KEY_COMMENT, words about the entry KEY
    Helper,    ///< the author's own; so are all names that begin with "_"
    Misnamed,  ///< ends like an entry's name, but is none
  };
  Role role = Role::Helper;
  std::string_view key = {};  ///< of an entry or a comment; part of the name
  WindowSpecEntry::Kind kind = WindowSpecEntry::Kind::Setting;
};
WindowSpecName parse_window_spec_name(std::string_view name);

// What is wrong with names that lead nowhere.
std::string names_no_entry(std::string_view name);
std::string comments_on_no_entry(std::string_view key);
std::string depends_on_no_setting(std::string_view key);

/// What is wrong with a line of text.
inline constexpr std::string_view text_in_window_spec = "a line of text means nothing in a window-spec";

/// A piece of a window-spec line that cannot be read: where in the line's value it begins, and why.
struct WindowSpecFault {
  std::size_t offset = 0;
  std::string what;
  bool lacks_table = false;  ///< it asks for a lookup table that the constants do not have
};

/// Reads the value of one entry into `entry`, whose kind and names are set. `constants` are the definitions of section
/// "CONSTANT". Raises `WindowSpecFault`. `condition_at` becomes the offset of the entry's condition, if it has one.
void read_window_spec_line(std::string_view value, const Dictionary& constants, WindowSpecEntry& entry,
                           std::size_t& condition_at);

}  // namespace plexoras
