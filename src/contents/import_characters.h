#pragma once

#include <array>
#include <cstring>
#include <string>
#include <string_view>

namespace plexoras {

/// What each byte means to the import, and how it is written in a document.
class ImportCharacters {
public:
  /// Bits; a byte with none of them is just text.
  enum Meaning : unsigned char { Text = 0, LineEnd = 1, Qualifier = 2, Delimiter = 4, Escaped = 8 };

  /// Of the delimiter and the qualifier only those of one byte are found here.
  ImportCharacters(std::string_view delimiter, std::string_view qualifier);

  unsigned char meaning(char byte) const { return meanings_[static_cast<unsigned char>(byte)]; }
  bool is(Meaning meaning, char byte) const { return (this->meaning(byte) & meaning) != 0; }

  /// Writes `byte` as it stands in a document. Up to 7 bytes may be touched.
  char* write(char* pen, char byte) const {
    const WrittenForm& form = forms_[static_cast<unsigned char>(byte)];
    std::memcpy(pen, form.bytes, sizeof form.bytes);
    return pen + form.size;
  }

private:
  struct WrittenForm {
    char bytes[7] = {};
    unsigned char size = 1;
  };
  std::array<unsigned char, 256> meanings_ = {};
  std::array<WrittenForm, 256> forms_ = {};
};

}  // namespace plexoras
