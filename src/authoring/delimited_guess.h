#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contents/delimited_import.h"

namespace plexoras {

/// What is already known of a delimited text; the rest is to be guessed.
struct DelimitedHints {
  std::optional<std::string> encoding = {};
  std::optional<std::string> delimiter = {};
  std::optional<std::string> qualifier = {};
  std::optional<bool> first_row = {};
  std::optional<bool> first_col = {};
};

/// What an import does as it is asked to, but hardly as it is meant.
struct ImportWarning {
  std::size_t line;  ///< from 1; 0: it is about the whole
  std::string what;
};

/// How a delimited text is best read, and why.
struct DelimitedGuess {
  /// One setting and what spoke for it: {"delimiter", "';'", "gives 4 fields on each of 120 lines"}.
  struct Choice {
    std::string setting;
    std::string chosen;
    std::string reason;
  };

  DelimitedFormat format;
  std::string encoding;         ///< empty when the bytes can be taken as they are: UTF-8 without a mark
  std::vector<Choice> choices;  ///< in the order encoding, delimiter, qualifier, first row, first column
  std::vector<ImportWarning> warnings;
};

/// Looks at the beginning of a text, or all of it, and chooses settings; what `hints` name is not guessed.
///
/// `sample` is the text's first bytes, in the encoding that it came in; `is_whole` says that there are no more. Any
/// text, the empty one too, gives a usable format. Without a named encoding, error 5 for what is no text; with one,
/// errors as with `TextDecoder`.
DelimitedGuess guess_delimited(std::string_view sample, bool is_whole, const DelimitedHints& hints = {});

}  // namespace plexoras
