#include "contents/import_characters.h"

#include "contents/contents_document.h"

namespace plexoras {

ImportCharacters::ImportCharacters(std::string_view delimiter, std::string_view qualifier) {
  for (std::size_t byte = 0; byte < forms_.size(); ++byte) forms_[byte].bytes[0] = static_cast<char>(byte);
  const auto mark = [this](char byte, Meaning meaning) {
    unsigned char& bits = meanings_[static_cast<unsigned char>(byte)];
    bits = static_cast<unsigned char>(bits | meaning);
  };
  for (const ContentsEntity& entity : contents_entities) {
    WrittenForm& form = forms_[static_cast<unsigned char>(entity.character)];
    form.size = static_cast<unsigned char>(entity.written.copy(form.bytes, sizeof form.bytes));
    mark(entity.character, Escaped);
  }
  mark('\r', LineEnd);
  mark('\n', LineEnd);
  if (delimiter.size() == 1) mark(delimiter[0], Delimiter);
  if (qualifier.size() == 1) mark(qualifier[0], Qualifier);
}

}  // namespace plexoras
