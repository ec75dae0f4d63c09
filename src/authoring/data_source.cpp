#include "authoring/data_source.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "authoring/encoding_guess.h"
#include "authoring/text_encoding.h"
#include "host/headless_platform.h"

namespace fs = std::filesystem;

namespace plexoras {
namespace {

struct SettingWord {
  std::string_view word;
  std::string_view text;
};

// The first word for a text is the one that is written; the last delimiter is what many type for a tab.
constexpr SettingWord delimiter_words[] = {{"comma", ","}, {"semicolon", ";"}, {"tab", "\t"},
                                           {"blank", " "}, {"pipe", "|"},      {"\\t", "\t"}};
constexpr SettingWord qualifier_words[] = {{"doublequote", "\""}, {"singlequote", "'"}, {"none", ""}};

std::string text_of(std::string_view word, std::span<const SettingWord> words) {
  for (const SettingWord& row : words) {
    if (row.word == word) return std::string(row.text);
  }
  return std::string(word);
}

std::string word_for(std::string_view text, std::span<const SettingWord> words) {
  for (const SettingWord& row : words) {
    if (row.text == text) return std::string(row.word);
  }
  return std::string(text);
}

constexpr std::string_view border = "Cannot Import File: ";

// `what` with its place: "name: what", or "name:3: this line is empty" for "Line 3 is empty", so that an editor can go
// there.
std::string with_place(const std::string& name, std::string_view what) {
  constexpr std::string_view line = "Line ";
  const std::size_t digits_end = what.starts_with(line) ? what.find_first_not_of("0123456789", line.size()) : 0;
  if (digits_end <= line.size() || digits_end == std::string_view::npos) return name + ": " + std::string(what);
  const std::string number(what.substr(line.size(), digits_end - line.size()));
  return name + ":" + number + ": this line" + std::string(what.substr(digits_end));
}

// Runs `step`; what it raises comes out as a failed import of `name`. Empty: the error names the file itself.
template <class Step>
auto importing(const std::string& name, Step step) {
  try {
    return step();
  } catch (const AutomationError& error) {
    const std::string what = error.description();
    if (what.starts_with(border)) throw;
    const std::string placed = name.empty() ? what : with_place(name, what);
    throw AutomationError(error.number(), std::string(border) + placed, "import_data");
  } catch (const std::bad_alloc&) {
    throw AutomationError(
        RunTimeError::OutOfStringSpace,
        std::string(border) + (name.empty() ? "" : name + ": ") + "out of memory: the document does not fit into it",
        "import_data");
  }
}

// Sees whether bytes that pass as they are can be what a page takes them for.
class BytesWatch {
public:
  // Hands the next bytes to `import`.
  void pass(std::string_view piece, DelimitedImport& import) {
    beginning_ += piece.substr(0, most_beginning - beginning_.size());
    if (utf8_ != nullptr) {
      try {
        utf8_->decode(piece);
      } catch (const EncodingError& error) {
        // A character may begin in the piece before, but on the same line.
        const std::size_t at = std::max(error.offset(), passed_) - passed_;
        import.add(piece.substr(0, at));
        found_on(import.line());
        piece.remove_prefix(at);
      }
    }
    passed_ += piece.size();
    if (passed_ >= most_watched) utf8_.reset();
    import.add(piece);
  }

  // What is to be said of all that has passed; the more telling warning is the only one.
  std::vector<ImportWarning> finish(const DelimitedImport& import) {
    try {
      if (utf8_ != nullptr) utf8_->finish();
    } catch (const EncodingError&) {
      found_on(import.line());
    }
    if (const ByteOrderMark* const mark = mark_of(beginning_)) {
      const std::string encoding = mark->encoding;
      return {{1, "the bytes are taken as they are, and they begin with the mark of " + encoding +
                      "; give --encoding " + encoding + " or --guess"}};
    }
    if (const std::string why = why_no_text(beginning_); !why.empty()) {
      return {{0, "this is no text: " + why + "; save it as CSV"}};
    }
    if (line_ == 0) return {};
    return {{line_, "the bytes are taken as they are, and these are no UTF-8; give --encoding or --guess"}};
  }

private:
  static constexpr std::size_t most_beginning = 4096;
  static constexpr std::size_t most_watched = 1 << 20;  // all of a large file would cost more than it is worth

  void found_on(std::size_t line) {
    line_ = line;
    utf8_.reset();
  }

  std::unique_ptr<TextDecoder> utf8_ = std::make_unique<TextDecoder>("UTF-8");  // null when nothing is left to see
  std::string beginning_;
  std::size_t passed_ = 0;
  std::size_t line_ = 0;  // of the first bytes that are no UTF-8
};

// One import on its way: decides on the settings as soon as enough bytes are there to guess from.
class Importer {
public:
  Importer(const std::string& name, const ImportRequest& request,
           const std::function<void(const DelimitedGuess&)>& tell)
      : name_(name), request_(request), tell_(tell) {
    if (request.guess) return;
    const DelimitedHints& named = request.named;
    ImportSettings settings;
    settings.format.delimiter = named.delimiter.value_or(settings.format.delimiter);
    settings.format.qualifier = named.qualifier.value_or(settings.format.qualifier);
    settings.format.first_row = named.first_row.value_or(false);
    settings.format.first_col = named.first_col.value_or(false);
    settings.encoding = named.encoding.value_or("");
    begin(settings);
  }

  void add(std::string_view piece) {
    if (import_ == nullptr) {
      const std::size_t room = sample_size - sample_.size();
      sample_ += piece.substr(0, room);
      if (sample_.size() < sample_size) return;
      begin_with_guess(false);
      piece.remove_prefix(room);
    }
    importing(name_, [&] {
      if (decoder_ != nullptr) {
        import_->add(decoder_->decode(piece));
      } else {
        watch_.pass(piece, *import_);
      }
    });
  }

  ImportedData finish() {
    if (import_ == nullptr) begin_with_guess(true);
    return importing(name_, [&]() -> ImportedData {
      if (decoder_ != nullptr) {
        import_->add(decoder_->finish());
      } else {
        const std::vector<ImportWarning> seen = watch_.finish(*import_);
        warnings_.insert(warnings_.end(), seen.begin(), seen.end());
      }
      return {import_->finish(), settings_, std::move(warnings_)};
    });
  }

private:
  static constexpr std::size_t sample_size = 1 << 20;

  void begin(const ImportSettings& settings) {
    settings_ = settings;
    const std::string& qualifier = settings.format.qualifier;
    if (qualifier.size() > 1) {
      warnings_.push_back({0, "no field can begin with the qualifier \"" + qualifier +
                                  "\": one byte is compared; give one byte, doublequote, singlequote or none"});
    }
    importing("", [&] {
      if (!settings.encoding.empty()) decoder_ = std::make_unique<TextDecoder>(settings.encoding);
      import_ = std::make_unique<DelimitedImport>(settings.format);
    });
  }

  void begin_with_guess(bool is_whole) {
    const DelimitedGuess guess = importing(name_, [&] { return guess_delimited(sample_, is_whole, request_.named); });
    if (tell_) tell_(guess);
    warnings_ = guess.warnings;
    begin({guess.format, guess.encoding});
    add(std::exchange(sample_, {}));
  }

  const std::string& name_;
  const ImportRequest& request_;
  const std::function<void(const DelimitedGuess&)>& tell_;
  std::string sample_;
  ImportSettings settings_;
  std::vector<ImportWarning> warnings_;
  BytesWatch watch_;  // where there is no decoder
  std::unique_ptr<TextDecoder> decoder_;
  std::unique_ptr<DelimitedImport> import_;
};

constexpr std::string_view label_words[] = {"first-row", "first-col"};

[[noreturn]] void refuse(std::string_view key, std::string_view expected, std::string_view value) {
  throw AutomationError(RunTimeError::InvalidCall, std::string(key) + " takes " + std::string(expected) + ", not \"" +
                                                       std::string(value.substr(0, 60)) + "\"");
}

void read_labels(std::string_view value, DelimitedFormat& format) {
  std::string_view rest = value;
  while (!rest.empty()) {
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    if (word == label_words[0]) {
      format.first_row = true;
    } else if (word == label_words[1]) {
      format.first_col = true;
    } else if (!word.empty()) {
      refuse("DATALABELS", "first-row, first-col or both with a blank between them", value);
    }
  }
}

}  // namespace

DataBytes file_bytes(FileSystem& files, const std::string& path) {
  return {files.shown(path), [&files, path](const auto& take) { files.read_pieces(path, take); }};
}

ImportRequest request_for(const ImportSettings& settings) {
  const DelimitedFormat& format = settings.format;
  return {{.encoding = settings.encoding.empty() ? std::nullopt : std::optional(settings.encoding),
           .delimiter = format.delimiter,
           .qualifier = format.qualifier,
           .first_row = format.first_row,
           .first_col = format.first_col}};
}

ImportedData import_data(const DataBytes& bytes, const ImportRequest& request,
                         const std::function<void(const DelimitedGuess&)>& tell) {
  Importer importer(bytes.name, request, tell);
  importing("", [&] { bytes.read([&](std::string_view piece) { importer.add(piece); }); });
  return importer.finish();
}

std::string delimiter_from_word(std::string_view text) { return text_of(text, delimiter_words); }
std::string qualifier_from_word(std::string_view text) { return text_of(text, qualifier_words); }

std::vector<NamedSetting> named_settings(const ImportSettings& settings) {
  const DelimitedFormat defaults;
  const DelimitedFormat& format = settings.format;
  std::vector<NamedSetting> named;
  const auto add = [&](bool is_named, std::string_view name, std::string value) {
    if (is_named) named.push_back({name, std::move(value)});
  };
  add(format.delimiter != defaults.delimiter, "delimiter", word_for(format.delimiter, delimiter_words));
  add(format.qualifier != defaults.qualifier, "qualifier", word_for(format.qualifier, qualifier_words));
  add(format.first_row, label_words[0], "");
  add(format.first_col, label_words[1], "");
  add(!settings.encoding.empty(), "encoding", settings.encoding);
  return named;
}

std::optional<DataSource> remembered_source(const DesignTimeControl& control) {
  DataSource source{control.GetProperty("DATASOURCE")};
  if (source.path.empty()) return std::nullopt;
  DelimitedFormat& format = source.settings.format;
  const std::string delimiter = control.GetProperty("DATADELIMITER");
  if (!delimiter.empty()) format.delimiter = delimiter_from_word(delimiter);
  format.qualifier = qualifier_from_word(control.GetProperty("DATAQUALIFIER"));
  read_labels(control.GetProperty("DATALABELS"), format);
  source.settings.encoding = control.GetProperty("DATAENCODING");
  try {
    if (!source.settings.encoding.empty()) TextDecoder known(source.settings.encoding);
  } catch (const AutomationError& error) {
    throw AutomationError(error.number(), "DATAENCODING: " + error.description());
  }
  return source;
}

void remember_source(DesignTimeControl& control, const std::optional<DataSource>& source) {
  for (const std::string_view key : data_source_keys) control.SetProperty(key, "");
  if (source) {
    control.SetProperty("DATASOURCE", source->path);
    std::string labels;
    for (const NamedSetting& setting : named_settings(source->settings)) {
      if (setting.name == "delimiter") control.SetProperty("DATADELIMITER", setting.value);
      if (setting.name == "qualifier") control.SetProperty("DATAQUALIFIER", setting.value);
      if (setting.name == "encoding") control.SetProperty("DATAENCODING", setting.value);
      if (setting.value.empty()) labels.append(labels.empty() ? "" : " ").append(setting.name);
    }
    control.SetProperty("DATALABELS", labels);
  }
  control.FireCustomPropertyChange();
}

bool can_be_read_again(const std::string& file) {
  std::error_code unknown;
  const fs::file_status status = fs::status(found_path(file), unknown);
  return !fs::exists(status) || fs::is_regular_file(status);
}

namespace {

// The folder that `page` lies in: the one of the file itself, where `page` is a link to it.
fs::path folder_of(const fs::path& page) {
  constexpr int most_links = 40;  // as the system has it
  fs::path file = page;
  std::error_code error;
  for (int links = 0; links < most_links && fs::is_symlink(file, error); ++links) {
    const fs::path target = fs::read_symlink(file, error);
    if (error) break;
    file = file.parent_path() / target;
  }
  return file.parent_path();
}

}  // namespace

std::string path_to_remember(const std::string& page, const std::string& file) {
  std::error_code error;
  const fs::path target = fs::absolute(found_path(file), error);
  const fs::path folder = fs::absolute(folder_of(page), error);
  const auto leads_there = [&](const fs::path& way) {
    std::error_code missing;
    return way.is_relative() && !way.empty() && fs::equivalent(folder / way, target, missing);
  };
  // The way as it is written; where a link makes it lead elsewhere, the way without links.
  const fs::path written = target.lexically_normal().lexically_relative(folder.lexically_normal());
  if (leads_there(written)) return written.generic_string();
  const fs::path real = (fs::weakly_canonical(target.parent_path(), error) / target.filename())
                            .lexically_relative(fs::weakly_canonical(folder, error));
  if (leads_there(real)) return real.generic_string();
  return target.lexically_normal().generic_string();
}

std::string path_of_source(const std::string& page, const std::string& source) {
  const fs::path folder = folder_of(page);
  const fs::path as_given = folder / source;
  std::error_code unknown;
  return (fs::exists(as_given, unknown) ? as_given : folder / native_path(source)).string();
}

}  // namespace plexoras
