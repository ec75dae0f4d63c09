#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/automation.h"

namespace plexoras {

/// Where a control keeps its state: a keyed store of typed values that the host writes into the page.
///
/// A bag need not keep a value that equals the default given with it; reading then gives the default.
class PropertyBag {
public:
  virtual ~PropertyBag() = default;

  /// The value under `key`, or `default_value` when there is none.
  virtual Variant read(std::string_view key, const Variant& default_value) = 0;
  /// Keeps `value` unless it equals `default_value`. `Nothing` as default keeps every value.
  virtual void write(std::string_view key, const Variant& value, const Variant& default_value) = 0;

  /// The keys held, in the order written; empty when the host's bag cannot tell.
  virtual std::vector<std::string> keys() const { return {}; }
  /// True when the bag gives every text back byte for byte, so that writers need not replace
  /// control characters by words to protect them.
  virtual bool keeps_every_byte() const { return false; }
};

/// A bag in memory, with a self-describing byte form.
///
///     MemoryPropertyBag bag;
///     bag.write("AppletID", "Sales", "");
///     MemoryPropertyBag copy = MemoryPropertyBag::from_bytes(bag.bytes());
class MemoryPropertyBag final : public PropertyBag {
public:
  struct Entry {
    std::string key;
    Variant value;
  };

  Variant read(std::string_view key, const Variant& default_value) override;
  void write(std::string_view key, const Variant& value, const Variant& default_value) override;
  std::vector<std::string> keys() const override;
  bool keeps_every_byte() const override { return true; }

  /// Entries in the order written.
  const std::vector<Entry>& entries() const { return entries_; }

  /// The byte form, described in docs/property-bag.md. Objects cannot be kept (error 13).
  std::string bytes() const;
  /// Reads the byte form back. Error 5 with the position when the bytes are not such a form.
  static MemoryPropertyBag from_bytes(std::string_view bytes);

private:
  std::vector<Entry> entries_;
};

/// `bytes` as upper-case hexadecimal text, two digits a byte.
std::string to_hex(std::string_view bytes);
/// The reverse, taking either case; error 5 when `text` is not an even number of hexadecimal digits.
std::string from_hex(std::string_view text);

}  // namespace plexoras
