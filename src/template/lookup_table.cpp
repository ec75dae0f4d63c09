#include "template/lookup_table.h"

#include <algorithm>

namespace plexoras {

std::shared_ptr<Dictionary> lookup_table(const Dictionary& constants, std::string_view name) {
  auto table = std::make_shared<Dictionary>();
  for (std::int32_t i = 0; i < constants.Count(); ++i) {
    const std::string_view key = constants.keyAtIndex(i);
    if (!key.starts_with(name)) continue;
    // Kept: the character behind the table's name is passed over whatever it is.
    table->atPut(key.substr(std::min(name.size() + 1, key.size())), constants.valueAtIndex(i));
  }
  return table;
}

}  // namespace plexoras
