#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/automation.h"
#include "host/property_bag.h"

namespace plexoras {

/// A small ordered store of texts by name: template variables, custom properties, lookup tables.
///
/// Entries stay in the order in which they were added; removing one closes the gap. Keys are compared byte
/// for byte. There is room for 129 entries; one more is error 9. A new key with an empty value is not
/// stored unless the caller asks for it, and an absent key reads as the empty text:
///
///     Dictionary colours;
///     colours.atPut("sky", "blue");
///     colours.atPut("void", "");   // not stored
///     colours.atGet("sea");        // ""
///
/// Indices are zero-based slots. Slots 0 to 128 exist: an unused one reads as empty texts, and an index
/// outside them is error 9. References returned hold until the next change of the dictionary.
class Dictionary final : public AutomationObject {
public:
  static constexpr std::int32_t capacity = 129;

  enum class EmptyValues { Drop, Keep };

  std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
  const std::string& keyAtIndex(std::int32_t index) const;
  const std::string& valueAtIndex(std::int32_t index) const;
  /// Replaces the value in a used slot; an unused slot has none to replace and stays unused.
  void putAtIndex(std::int32_t index, std::string_view value);

  /// The slot of `key`, -1 when it is not stored.
  std::int32_t slot_of(std::string_view key) const;
  /// Whether `key` is stored; with `EmptyValues::Drop` a key whose value is empty does not count.
  bool includes(std::string_view key, EmptyValues empty = EmptyValues::Drop) const;
  const std::string& atGet(std::string_view key) const;
  /// Stores `value` under `key`. A stored key takes any value, the empty one too.
  void atPut(std::string_view key, std::string_view value, EmptyValues empty = EmptyValues::Drop);
  void removeKey(std::string_view key);
  void removeAtIndex(std::int32_t index);
  StringList GetKeys() const;

  /// Stores every entry of `other` here, in slot order, as `atPut` does.
  void put_all(const Dictionary& other);

  /// Writes every value to `bag` under its own key, with `defaults`' value for that key as its default.
  ///
  /// The row, column and value separators of chart data (characters 2, 3 and 4) go into a text bag as
  /// "<row>", "<col>" and "<value>". A bag that keeps every byte gets the values as they are, so that a text
  /// which holds those words itself comes back unchanged.
  void writeTo(PropertyBag& bag, const Dictionary& defaults) const;
  /// Reads every key that is here from `bag`, with its present value as default: the reverse of `writeTo`.
  void readFrom(PropertyBag& bag);

  /// One line an entry, "KEY=VALUE", for people.
  std::string Dump() const;

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments) override;

private:
  struct Entry {
    std::string key;
    std::string value;
  };

  std::size_t find(std::string_view key) const;
  void index_last();
  Entry* slot(std::int32_t index);

  std::vector<Entry> entries_;
  // Slots plus one by their keys, for a search that meets its key at once; 0 is no slot. Never more than half full.
  std::array<std::uint8_t, 256> index_ = {};
};

/// A dictionary of its own with what `values` holds, an object that has the members `GetKeys()` and `atGet(key)`.
Dictionary copy_of(AutomationObject& values);

/// Replaces characters 2, 3 and 4 by the words that a text bag holds for them, and back.
std::string encode_separators(std::string_view value);
std::string decode_separators(std::string_view value);

/// `text` with every occurrence of `from` replaced by `to`, left to right; an empty `from` occurs nowhere.
std::string replaced_all(std::string_view text, std::string_view from, std::string_view to);

}  // namespace plexoras
