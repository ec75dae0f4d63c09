#pragma once

#include <span>
#include <string>
#include <string_view>

namespace plexoras {

/// The one of `known` that `word` was probably meant to be, or the empty text when none is near. Case counts little.
std::string closest_match(std::string_view word, std::span<const std::string> known);

/// "; did you mean "X"?" for a near match, else the empty text.
std::string did_you_mean(std::string_view word, std::span<const std::string> known);

}  // namespace plexoras
