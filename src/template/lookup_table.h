#pragma once

#include <memory>
#include <string_view>

#include "template/dictionary.h"

namespace plexoras {

/// The lookup table `name` among the definitions of a section "CONSTANT": list text and code of every entry whose key
/// begins with `name`, in order.
///
///     #DEFINE PIESTYLE_Flat 0
///     #DEFINE PIESTYLE_3D 1
///
/// The table "PIESTYLE" has the entries Flat = 0 and 3D = 1. Empty when there is no such table.
std::shared_ptr<Dictionary> lookup_table(const Dictionary& constants, std::string_view name);

}  // namespace plexoras
