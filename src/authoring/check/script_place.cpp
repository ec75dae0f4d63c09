#include "authoring/check/script_place.h"

#include "host/ascii.h"

namespace plexoras {
namespace {

bool is_of_a_name(char c) {
  return (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z') || (c >= '0' && c <= '9') || c == '-';
}

bool begins_with_script(std::string_view text) {
  constexpr std::string_view name = "script";
  return equal_but_for_case(text.substr(0, name.size()), name) &&
         (text.size() == name.size() || !is_of_a_name(text[name.size()]));
}

}  // namespace

ScriptPlace place_behind_tags(std::string_view text) {
  for (std::size_t end = text.size(); end > 0;) {
    const std::size_t at = text.rfind('<', end - 1);
    if (at == std::string_view::npos) break;
    const bool is_end_tag = text.substr(at + 1).starts_with('/');
    if (begins_with_script(text.substr(at + (is_end_tag ? 2 : 1)))) {
      return is_end_tag ? ScriptPlace::Outside : ScriptPlace::Inside;
    }
    end = at;
  }
  return ScriptPlace::Same;
}

}  // namespace plexoras
