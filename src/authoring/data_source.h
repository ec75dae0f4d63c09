#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "authoring/delimited_guess.h"
#include "chart_control/design_time_control.h"
#include "contents/delimited_import.h"
#include "host/platform.h"

namespace plexoras {

/// How delimited data become a contents document.
struct ImportSettings {
  DelimitedFormat format = {};
  std::string encoding = {};  ///< turned into UTF-8 from this one; empty: the bytes as they are
};

/// What is asked of an import: the settings that are named, and what is done about the others.
struct ImportRequest {
  DelimitedHints named = {};
  bool guess = false;  ///< the others are guessed; else they are those of `ImportSettings`
};
/// The request for just these settings.
ImportRequest request_for(const ImportSettings& settings);

/// Bytes that are read once, from the first to the last.
struct DataBytes {
  std::string name;  ///< for messages
  std::function<void(const std::function<void(std::string_view)>& take)> read;
};

/// The bytes of the file at `path`. `files` outlives them.
DataBytes file_bytes(FileSystem& files, const std::string& path);

/// What was made of delimited data.
struct ImportedData {
  TextPieces document;
  ImportSettings settings;  ///< those that were used
  std::vector<ImportWarning> warnings = {};
};

/// Makes a contents document of `bytes`, reading them once and holding little more than the document.
///
/// `tell` hears of a guess before the rest is read. Bytes that stay as they are pass whatever they are, with a warning
/// when their first MiB is no text or no UTF-8. Every error, also that of too little memory, has a description that
/// begins with "Cannot Import File: " and goes on with the place as far as it is known, "data.csv:3: what is wrong".
ImportedData import_data(const DataBytes& bytes, const ImportRequest& request,
                         const std::function<void(const DelimitedGuess&)>& tell = {});

/// A delimiter or a qualifier from the word that people write for it ("comma", "tab", "doublequote", "none"); any
/// other text stands for itself.
std::string delimiter_from_word(std::string_view text);
std::string qualifier_from_word(std::string_view text);

/// A setting that is not the default one: {"delimiter", "tab"}, {"first-row", ""}.
struct NamedSetting {
  std::string_view name;
  std::string value;
};
/// All of them; together they say everything about `settings`.
std::vector<NamedSetting> named_settings(const ImportSettings& settings);

/// Where a chart's data come from, as its page remembers it.
struct DataSource {
  std::string path;  ///< with "/"; relative to the page's folder, or absolute
  ImportSettings settings = {};
};

/// The custom properties that hold a data source. Any chart takes them; defaults are left out.
///
/// | property | holds |
/// |---|---|
/// | DATASOURCE | the path; without it there is no source |
/// | DATADELIMITER, DATAQUALIFIER | a word as above, or the text itself |
/// | DATALABELS | "first-row", "first-col" or both with a blank between them |
/// | DATAENCODING | the encoding |
inline constexpr std::string_view data_source_keys[] = {"DATASOURCE", "DATADELIMITER", "DATAQUALIFIER", "DATALABELS",
                                                        "DATAENCODING"};

/// The source that `control` remembers, or nothing. Error 5, naming the property, when it cannot be understood.
std::optional<DataSource> remembered_source(const DesignTimeControl& control);
/// Makes `control` remember `source`, or none, in place of what it remembered.
void remember_source(DesignTimeControl& control, const std::optional<DataSource>& source);

/// Whether data can be read from `file` again: a pipe gives its data once.
bool can_be_read_again(const std::string& file);
/// How `page` remembers `file`: by the way from the page's folder, or absolutely where no such way leads to it.
std::string path_to_remember(const std::string& page, const std::string& file);
/// The file that `source`, remembered by `page`, stands for.
std::string path_of_source(const std::string& page, const std::string& source);

}  // namespace plexoras
