#pragma once

#include <string_view>

namespace plexoras {

/// Where text of a page stands as far as its script elements go; of a text that is to stand somewhere, where it leaves
/// what follows it.
enum class ScriptPlace {
  Same,     ///< wherever the text before it is
  Outside,  ///< in no script element
  Inside,
  Either,  ///< a condition decides
};

/// Behind a text that stands at `before` and leaves what follows at `behind`.
inline ScriptPlace then(ScriptPlace before, ScriptPlace behind) {
  return behind == ScriptPlace::Same ? before : behind;
}
/// Behind a condition of two branches.
inline ScriptPlace either(ScriptPlace one, ScriptPlace other) { return one == other ? one : ScriptPlace::Either; }

/// What the last start or end tag of a script element in `text` leaves behind.
ScriptPlace place_behind_tags(std::string_view text);

}  // namespace plexoras
