#include "host/pending_settings.h"

#include <algorithm>

namespace plexoras {

std::vector<PendingSettings::Setting>::iterator PendingSettings::find(std::string_view section, std::string_view key) {
  return std::ranges::find_if(pending_, [&](const Setting& s) { return s.section == section && s.key == key; });
}

std::string PendingSettings::read(std::string_view section, std::string_view key, std::string_view default_value) {
  const auto found = find(section, key);
  return found == pending_.end() ? settings_.read(section, key, default_value) : found->value;
}

void PendingSettings::write(std::string_view section, std::string_view key, std::string_view value) {
  if (const auto found = find(section, key); found != pending_.end()) pending_.erase(found);
  // Two defaults tell a setting that is missing from one that is empty.
  const bool is_there = settings_.read(section, key, "") == value && settings_.read(section, key, "x") == value;
  if (!is_there) pending_.push_back({std::string(section), std::string(key), std::string(value)});
}

void PendingSettings::flush() {
  while (!pending_.empty()) {
    const Setting& next = pending_.front();
    settings_.write(next.section, next.key, next.value);
    pending_.erase(pending_.begin());
  }
}

}  // namespace plexoras
