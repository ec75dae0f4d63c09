#include "host/property_bag.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace plexoras {

namespace {

constexpr std::string_view magic = "PXPB";
constexpr std::uint8_t version = 1;

// The letter that says in the byte form how an entry's value is to be read. Objects have none.
struct TypeTag {
  ValueType type;
  char tag;
};

constexpr TypeTag type_tags[] = {
    {ValueType::Nothing, 'N'}, {ValueType::Integer, 'I'}, {ValueType::Long, 'L'},     {ValueType::Double, 'D'},
    {ValueType::Boolean, 'B'}, {ValueType::String, 'S'},  {ValueType::TextList, 'T'},
};

char tag_of(const MemoryPropertyBag::Entry& entry) {
  for (const TypeTag& row : type_tags) {
    if (row.type == entry.value.type()) return row.tag;
  }
  throw AutomationError(RunTimeError::TypeMismatch,
                        "Type mismatch: the object under \"" + entry.key + "\" cannot be kept in a property bag",
                        "PropertyBag");
}

template <class Number>
void append_number(std::string& bytes, Number value) {
  auto bits = static_cast<std::make_unsigned_t<Number>>(value);
  for (std::size_t i = 0; i < sizeof(Number); ++i) {
    bytes += static_cast<char>(bits >> (8 * i) & 0xFF);
  }
}

void append_length(std::string& bytes, std::size_t length) {
  if (length > std::numeric_limits<std::uint32_t>::max()) throw AutomationError(RunTimeError::OutOfStringSpace);
  append_number(bytes, static_cast<std::uint32_t>(length));
}

std::string value_bytes(const Variant& value) {
  std::string bytes;
  switch (value.type()) {
    case ValueType::Integer:
      append_number(bytes, value.to_integer());
      break;
    case ValueType::Long:
      append_number(bytes, value.to_long());
      break;
    case ValueType::Double:
      append_number(bytes, std::bit_cast<std::uint64_t>(value.to_double()));
      break;
    case ValueType::Boolean:
      bytes += value.to_boolean() ? '\1' : '\0';
      break;
    case ValueType::String:
      bytes = value.to_text();
      break;
    case ValueType::TextList:
      append_length(bytes, value.to_text_list().size());
      for (const std::string& text : value.to_text_list()) {
        append_length(bytes, text.size());
        bytes += text;
      }
      break;
    case ValueType::Nothing:
    case ValueType::Object:
      break;
  }
  return bytes;
}

// Takes a byte form apart from front to back; never reads, and never reserves, beyond the bytes that are there.
class Reader {
public:
  explicit Reader(std::string_view bytes, std::size_t start = 0) : bytes_(bytes), start_(start) {}

  bool at_end() const { return position_ == bytes_.size(); }
  std::size_t remaining() const { return bytes_.size() - position_; }

  std::string_view take(std::size_t count, std::string_view what) {
    if (count > remaining()) {
      fail("the bytes end within " + std::string(what) + ": " + std::to_string(count) + " wanted, " +
           std::to_string(remaining()) + " left");
    }
    position_ += count;
    return bytes_.substr(position_ - count, count);
  }

  template <class Number>
  Number number(std::string_view what) {
    std::make_unsigned_t<Number> bits = 0;
    std::size_t shift = 0;
    for (const char byte : take(sizeof(Number), what)) {
      bits = static_cast<decltype(bits)>(bits | decltype(bits){static_cast<unsigned char>(byte)} << shift);
      shift += 8;
    }
    return static_cast<Number>(bits);
  }

  std::string_view sized_text(std::string_view what) { return take(number<std::uint32_t>(what), what); }

  /// A reader of the next `count` bytes alone, which reports positions in the whole.
  Reader part(std::size_t count, std::string_view what) {
    const std::size_t start = start_ + position_;
    return Reader(take(count, what), start);
  }

  [[noreturn]] void fail(const std::string& what, std::size_t bytes_back = 0) const {
    throw AutomationError(RunTimeError::InvalidCall,
                          "Not a property bag: byte " + std::to_string(start_ + position_ - bytes_back) + ": " + what,
                          "PropertyBag");
  }

private:
  std::string_view bytes_;
  std::size_t start_;
  std::size_t position_ = 0;
};

StringList read_text_list(Reader& reader) {
  const auto count = reader.number<std::uint32_t>("the number of texts");
  StringList list;
  for (std::uint32_t i = 0; i < count; ++i) list.emplace_back(reader.sized_text("a text of a list"));
  return list;
}

bool read_boolean(Reader& reader) {
  const auto byte = reader.number<std::uint8_t>("a Boolean");
  if (byte > 1) reader.fail("a Boolean is 0 or 1, not " + std::to_string(byte), 1);
  return byte == 1;
}

Variant read_value(ValueType type, Reader& reader) {
  switch (type) {
    case ValueType::Integer:
      return reader.number<std::int16_t>("an Integer");
    case ValueType::Long:
      return reader.number<std::int32_t>("a Long");
    case ValueType::Double:
      return std::bit_cast<double>(reader.number<std::uint64_t>("a Double"));
    case ValueType::Boolean:
      return read_boolean(reader);
    case ValueType::String:
      return reader.take(reader.remaining(), "a text");
    case ValueType::TextList:
      return read_text_list(reader);
    case ValueType::Nothing:
    case ValueType::Object:
      break;
  }
  return {};
}

ValueType read_type(Reader& reader) {
  const char tag = reader.take(1, "a value type").front();
  for (const TypeTag& row : type_tags) {
    if (row.tag == tag) return row.type;
  }
  reader.fail("unknown value type " + std::to_string(static_cast<unsigned char>(tag)), 1);
}

MemoryPropertyBag::Entry read_entry(Reader& reader) {
  const ValueType type = read_type(reader);
  const auto key_length = reader.number<std::uint32_t>("the length of a key");
  const auto value_length = reader.number<std::uint32_t>("the length of a value");
  std::string key(reader.take(key_length, "a key"));
  Reader value_reader = reader.part(value_length, "a value");
  Variant value = read_value(type, value_reader);
  if (!value_reader.at_end()) {
    value_reader.fail("the value of \"" + key + "\" is " + std::to_string(value_reader.remaining()) +
                      " bytes longer than its type");
  }
  return {std::move(key), std::move(value)};
}

template <class Entries>
auto entry_of(Entries& entries, std::string_view key) {
  return std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.key == key; });
}

unsigned digit_value(std::string_view text, std::size_t index) {
  const char digit = text[index];
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
  throw AutomationError(RunTimeError::InvalidCall,
                        "Not hexadecimal text: character " + std::to_string(index + 1) + " is no hexadecimal digit");
}

}  // namespace

Variant MemoryPropertyBag::read(std::string_view key, const Variant& default_value) {
  const auto entry = entry_of(entries_, key);
  return entry == entries_.end() ? default_value : entry->value;
}

void MemoryPropertyBag::write(std::string_view key, const Variant& value, const Variant& default_value) {
  const auto entry = entry_of(entries_, key);
  const bool kept = default_value.is_nothing() || value != default_value;
  if (entry == entries_.end()) {
    if (kept) entries_.push_back({std::string(key), value});
  } else if (kept) {
    entry->value = value;
  } else {
    entries_.erase(entry);
  }
}

std::vector<std::string> MemoryPropertyBag::keys() const {
  std::vector<std::string> keys;
  keys.reserve(entries_.size());
  for (const Entry& entry : entries_) keys.push_back(entry.key);
  return keys;
}

std::string MemoryPropertyBag::bytes() const {
  std::string bytes(magic);
  bytes += static_cast<char>(version);
  append_length(bytes, entries_.size());
  for (const Entry& entry : entries_) {
    const std::string value = value_bytes(entry.value);
    bytes += tag_of(entry);
    append_length(bytes, entry.key.size());
    append_length(bytes, value.size());
    bytes += entry.key;
    bytes += value;
  }
  return bytes;
}

MemoryPropertyBag MemoryPropertyBag::from_bytes(std::string_view bytes) {
  Reader reader(bytes);
  if (reader.take(magic.size(), "the opening mark") != magic) {
    reader.fail("it opens with \"" + std::string(magic) + "\"", magic.size());
  }
  const auto found_version = reader.number<std::uint8_t>("the version");
  if (found_version != version) reader.fail("unknown version " + std::to_string(found_version), 1);

  const auto count = reader.number<std::uint32_t>("the number of entries");
  MemoryPropertyBag bag;
  std::unordered_set<std::string> known_keys;  // not `entry_of`, which would make many entries quadratic
  for (std::uint32_t i = 0; i < count; ++i) {
    bag.entries_.push_back(read_entry(reader));
    const std::string& key = bag.entries_.back().key;
    if (!known_keys.insert(key).second) reader.fail("the key \"" + key + "\" stands here for the second time");
  }
  if (!reader.at_end()) reader.fail(std::to_string(reader.remaining()) + " bytes follow the last entry");
  return bag;
}

std::string to_hex(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  text.reserve(2 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += digits[byte >> 4];
    text += digits[byte & 0xF];
  }
  return text;
}

std::string from_hex(std::string_view text) {
  if (text.size() % 2 != 0) {
    throw AutomationError(RunTimeError::InvalidCall, "Not hexadecimal text: " + std::to_string(text.size()) +
                                                         " characters, where every byte takes two");
  }
  std::string bytes;
  bytes.reserve(text.size() / 2);
  for (std::size_t i = 0; i < text.size(); i += 2) {
    bytes += static_cast<char>(digit_value(text, i) << 4 | digit_value(text, i + 1));
  }
  return bytes;
}

}  // namespace plexoras
