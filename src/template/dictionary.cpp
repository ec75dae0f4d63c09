#include "template/dictionary.h"

#include <cstring>

namespace plexoras {
namespace {

constexpr std::size_t npos = static_cast<std::size_t>(-1);
const std::string empty_text;

// The first and last bytes of a key, as a number: reads overlap in the middle, or meet.
template <class Word>
std::uint64_t ends_of(std::string_view key) {
  Word head = 0;
  Word tail = 0;
  std::memcpy(&head, key.data(), sizeof head);
  std::memcpy(&tail, key.data() + key.size() - sizeof tail, sizeof tail);
  return head * 0x9E3779B97F4A7C15ULL ^ tail * 0xC2B2AE3D27D4EB4FULL;
}

// Where in the index the search for a key begins: its length and both ends tell most keys apart.
std::size_t bucket_of(std::string_view key) {
  std::uint64_t mixed = 0;
  if (key.size() >= 8) {
    mixed = ends_of<std::uint64_t>(key);
  } else if (key.size() >= 4) {
    mixed = ends_of<std::uint32_t>(key);
  } else if (key.size() >= 2) {
    mixed = ends_of<std::uint16_t>(key);
  } else if (!key.empty()) {
    mixed = static_cast<unsigned char>(key.front());
  }
  mixed = (mixed ^ key.size()) * 0x9E3779B97F4A7C15ULL;
  return mixed >> 56;
}

[[noreturn]] void bad_subscript(std::string what) {
  throw AutomationError(RunTimeError::SubscriptOutOfRange, std::move(what), "Dictionary");
}

// An optional flag argument: whether empty values count.
Dictionary::EmptyValues empty_values(Arguments flag) {
  return !flag.empty() && flag[0].to_boolean() ? Dictionary::EmptyValues::Keep : Dictionary::EmptyValues::Drop;
}

struct Separator {
  std::string_view character;
  std::string_view word;
};
constexpr Separator separators[] = {{"\x02", "<row>"}, {"\x03", "<col>"}, {"\x04", "<value>"}};

}  // namespace

std::size_t Dictionary::find(std::string_view key) const {
  for (std::size_t bucket = bucket_of(key); index_[bucket] != 0; bucket = (bucket + 1) % index_.size()) {
    const std::size_t slot = index_[bucket] - std::size_t{1};
    if (entries_[slot].key == key) return slot;
  }
  return npos;
}

// Enters the last slot into the index.
void Dictionary::index_last() {
  std::size_t bucket = bucket_of(entries_.back().key);
  while (index_[bucket] != 0) bucket = (bucket + 1) % index_.size();
  index_[bucket] = static_cast<std::uint8_t>(entries_.size());
}

Dictionary::Entry* Dictionary::slot(std::int32_t index) {
  if (index < 0 || index >= capacity) bad_subscript("no slot " + std::to_string(index) + "; slots are 0 to 128");
  return index < Count() ? &entries_[static_cast<std::size_t>(index)] : nullptr;
}

const std::string& Dictionary::keyAtIndex(std::int32_t index) const {
  const Entry* entry = const_cast<Dictionary*>(this)->slot(index);
  return entry != nullptr ? entry->key : empty_text;
}

const std::string& Dictionary::valueAtIndex(std::int32_t index) const {
  const Entry* entry = const_cast<Dictionary*>(this)->slot(index);
  return entry != nullptr ? entry->value : empty_text;
}

void Dictionary::putAtIndex(std::int32_t index, std::string_view value) {
  if (Entry* entry = slot(index)) entry->value = value;
}

std::int32_t Dictionary::slot_of(std::string_view key) const {
  const std::size_t index = find(key);
  return index == npos ? -1 : static_cast<std::int32_t>(index);
}

bool Dictionary::includes(std::string_view key, EmptyValues empty) const {
  const std::size_t index = find(key);
  return index != npos && (empty == EmptyValues::Keep || !entries_[index].value.empty());
}

const std::string& Dictionary::atGet(std::string_view key) const {
  const std::size_t index = find(key);
  return index != npos ? entries_[index].value : empty_text;
}

void Dictionary::atPut(std::string_view key, std::string_view value, EmptyValues empty) {
  const std::size_t index = find(key);
  if (index != npos) {
    entries_[index].value = value;
    return;
  }
  if (value.empty() && empty == EmptyValues::Drop) return;
  if (Count() == capacity) bad_subscript("\"" + std::string(key) + "\" is one entry too many; there is room for 129");
  entries_.push_back({std::string(key), std::string(value)});
  index_last();
}

void Dictionary::removeKey(std::string_view key) {
  const std::size_t index = find(key);
  if (index != npos) removeAtIndex(static_cast<std::int32_t>(index));
}

void Dictionary::removeAtIndex(std::int32_t index) {
  if (slot(index) == nullptr) return;
  std::vector<Entry> kept = std::move(entries_);
  kept.erase(kept.begin() + index);
  entries_.clear();
  index_ = {};
  for (Entry& entry : kept) {
    entries_.push_back(std::move(entry));
    index_last();
  }
}

StringList Dictionary::GetKeys() const {
  StringList keys;
  keys.reserve(entries_.size());
  for (const Entry& entry : entries_) keys.push_back(entry.key);
  return keys;
}

void Dictionary::put_all(const Dictionary& other) {
  if (!entries_.empty()) {
    for (const Entry& entry : other.entries_) atPut(entry.key, entry.value);
    return;
  }
  // An empty store has nothing to search.
  entries_.reserve(other.entries_.size() + 8);
  for (const Entry& entry : other.entries_) {
    if (entry.value.empty()) continue;
    entries_.push_back(entry);
    index_last();
  }
}

void Dictionary::writeTo(PropertyBag& bag, const Dictionary& defaults) const {
  const bool verbatim = bag.keeps_every_byte();
  for (const Entry& entry : entries_) {
    bag.write(entry.key, verbatim ? entry.value : encode_separators(entry.value), defaults.atGet(entry.key));
  }
}

void Dictionary::readFrom(PropertyBag& bag) {
  const bool verbatim = bag.keeps_every_byte();
  for (Entry& entry : entries_) {
    std::string stored = bag.read(entry.key, entry.value).to_text();
    entry.value = verbatim ? std::move(stored) : decode_separators(stored);
  }
}

std::string Dictionary::Dump() const {
  std::string text;
  for (const Entry& entry : entries_) text += entry.key + "=" + entry.value + "\n";
  return text;
}

namespace {

using Row = Member<Dictionary>;

const Row members[] = {
    {.name = "Count",
     .get = [](Dictionary& d) { return Variant(d.Count()); },
     .call = [](Dictionary& d, Arguments) { return Variant(d.Count()); }},
    {.name = "keyAtIndex",
     .call = [](Dictionary& d, Arguments a) { return Variant(d.keyAtIndex(a[0].to_long())); },
     .arguments = 1},
    {.name = "valueAtIndex",
     .call = [](Dictionary& d, Arguments a) { return Variant(d.valueAtIndex(a[0].to_long())); },
     .arguments = 1},
    {.name = "putAtIndex",
     .call = [](Dictionary& d, Arguments a) { return d.putAtIndex(a[0].to_long(), a[1].to_text()), Variant(); },
     .arguments = 2},
    {.name = "includes",
     .call = [](Dictionary& d, Arguments a) { return Variant(d.includes(a[0].to_text(), empty_values(a.subspan(1)))); },
     .arguments = 1,
     .optional_arguments = 1},
    {.name = "atGet",
     .call = [](Dictionary& d, Arguments a) { return Variant(d.atGet(a[0].to_text())); },
     .arguments = 1},
    {.name = "atPut",
     .call = [](Dictionary& d,
                Arguments a) { return d.atPut(a[0].to_text(), a[1].to_text(), empty_values(a.subspan(2))), Variant(); },
     .arguments = 2,
     .optional_arguments = 1},
    {.name = "removeKey",
     .call = [](Dictionary& d, Arguments a) { return d.removeKey(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "removeAtIndex",
     .call = [](Dictionary& d, Arguments a) { return d.removeAtIndex(a[0].to_long()), Variant(); },
     .arguments = 1},
    {.name = "GetKeys", .call = [](Dictionary& d, Arguments) { return Variant(d.GetKeys()); }, .optional_arguments = 1},
};

}  // namespace

Variant Dictionary::get(std::string_view member) { return get_member(*this, members, member, "Dictionary"); }

void Dictionary::put(std::string_view member, const Variant& value) {
  put_member(*this, members, member, value, "Dictionary");
}

Variant Dictionary::call(std::string_view member, Arguments arguments) {
  return call_member(*this, members, member, arguments, "Dictionary");
}

std::string replaced_all(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  if (from.empty()) return std::string(text);
  std::size_t position = 0;
  for (std::size_t hit; (hit = text.find(from, position)) != std::string_view::npos; position = hit + from.size()) {
    result.append(text, position, hit - position).append(to);
  }
  return result.append(text, position);
}

Dictionary copy_of(AutomationObject& values) {
  Dictionary copy;
  const Variant keys = values.call("GetKeys");
  for (const std::string& key : keys.to_text_list()) {
    copy.atPut(key, values.call_with("atGet", {key}).to_text(), Dictionary::EmptyValues::Keep);
  }
  return copy;
}

std::string encode_separators(std::string_view value) {
  std::string text(value);
  for (const Separator& separator : separators) text = replaced_all(text, separator.character, separator.word);
  return text;
}

std::string decode_separators(std::string_view value) {
  std::string text(value);
  for (const Separator& separator : separators) text = replaced_all(text, separator.word, separator.character);
  return text;
}

}  // namespace plexoras
