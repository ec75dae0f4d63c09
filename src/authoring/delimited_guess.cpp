#include "authoring/delimited_guess.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

#include "authoring/cell_kind.h"
#include "authoring/delimited_reading.h"
#include "authoring/encoding_guess.h"
#include "authoring/text_encoding.h"

namespace plexoras {
namespace {

// A whole number of up to nine digits, or -1.
long whole_number(std::string_view cell) {
  if (cell.empty() || cell.size() > 9) return -1;
  long value = 0;
  for (const char c : cell) {
    if (c < '0' || c > '9') return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

bool is_year(long number) { return number >= 1500 && number <= 2200; }

template <class InOrder>
bool are_in_order(const std::vector<long>& numbers, InOrder in_order) {
  return std::adjacent_find(numbers.begin(), numbers.end(), [&](long a, long b) { return !in_order(a, b); }) ==
         numbers.end();
}

bool are_consecutive(const std::vector<long>& numbers) {
  return numbers.size() > 1 && are_in_order(numbers, [](long a, long b) { return a + 1 == b; });
}

bool are_years(const std::vector<long>& numbers) {
  return !numbers.empty() && std::all_of(numbers.begin(), numbers.end(), is_year) &&
         (are_in_order(numbers, std::less<>()) || are_in_order(numbers, std::greater<>()));
}

// Years in order, or 0, 1, 2 ... or 1, 2, 3 ...: numbers that are labels rather than values.
bool are_labels(const std::vector<long>& numbers) {
  return are_years(numbers) ||
         (numbers.size() >= 3 && (numbers[0] == 0 || numbers[0] == 1) && are_consecutive(numbers));
}

// What the cells of a column hold.
struct Column {
  std::size_t numbers = 0;
  std::size_t dates = 0;
  std::size_t texts = 0;
  std::vector<long> whole_numbers;  // -1 for other cells

  CellKind kind() const {
    const std::size_t all = numbers + dates + texts;
    if (all == 0) return CellKind::Missing;
    if (numbers * 5 >= all * 4) return CellKind::Number;
    return dates * 5 >= all * 4 ? CellKind::Date : CellKind::Text;
  }
};

std::vector<Column> columns_of(const DelimitedReading& reading, std::size_t first_line) {
  std::vector<Column> columns(reading.columns);
  std::size_t seen = 0;
  for (std::size_t i = first_line; i < reading.lines.size() && seen < most_typed_cells; ++i) {
    const std::vector<DelimitedField>& fields = reading.lines[i].fields;
    const std::size_t count = std::min({columns.size(), fields.size(), most_typed_cells});
    seen += count;
    for (std::size_t c = 0; c < count; ++c) {
      const CellKind kind = kind_of_cell(fields[c].text);
      columns[c].numbers += kind == CellKind::Number ? 1U : 0U;
      columns[c].dates += kind == CellKind::Date ? 1U : 0U;
      columns[c].texts += kind == CellKind::Text ? 1U : 0U;
      columns[c].whole_numbers.push_back(whole_number(fields[c].text));
    }
  }
  return columns;
}

// Whether the first line leaves out nothing but the cell above a filled column: there, row labels begin below. The
// numbers that it holds must be able to tell columns apart.
bool has_empty_corner(const std::vector<DelimitedField>& first, const std::vector<Column>& columns,
                      std::vector<long> numbers) {
  const auto is_missing = [](const DelimitedField& field) { return kind_of_cell(field.text) == CellKind::Missing; };
  if (columns.size() < 2 || first.size() != columns.size() || !first.front().text.empty()) return false;
  if (columns.front().kind() == CellKind::Missing) return false;
  if (std::any_of(first.begin() + 1, first.end(), is_missing)) return false;
  std::sort(numbers.begin(), numbers.end());
  return (numbers.empty() || numbers.front() >= 0) &&
         std::adjacent_find(numbers.begin(), numbers.end()) == numbers.end();
}

Decided<bool> guess_first_row(const DelimitedReading& reading) {
  if (reading.filled == 0) return {false, "there are no lines"};
  const std::vector<DelimitedField>& first = reading.lines.front().fields;
  if (first.empty()) return {false, "the first line is empty"};
  if (reading.filled == 1) return {false, "there is one line only"};
  if (first.size() + 1 < reading.columns) {
    return {false, "the first line has " + counted(first.size(), "field", "fields") + ", most others have " +
                       std::to_string(reading.columns)};
  }
  const std::vector<Column> columns = columns_of(reading, 1);
  std::size_t labelled = 0;         // columns whose first cell is of another kind than those below
  std::size_t alike = 0;            // columns of numbers or dates from the first cell on
  std::vector<long> first_numbers;  // the first cells of columns of numbers
  std::vector<long> next_numbers;   // and the cells below them
  for (std::size_t c = 0; c < std::min(columns.size(), first.size()); ++c) {
    const CellKind below = columns[c].kind();
    const CellKind kind = kind_of_cell(first[c].text);
    if ((below != CellKind::Number && below != CellKind::Date) || kind == CellKind::Missing) continue;
    if (kind != below) {
      labelled += below == CellKind::Number || kind == CellKind::Text ? 1U : 0U;
      continue;
    }
    ++alike;
    first_numbers.push_back(whole_number(first[c].text));
    if (!columns[c].whole_numbers.empty()) next_numbers.push_back(columns[c].whole_numbers.front());
  }
  if (labelled > 0 && alike == 0) {
    return {true, "labels stand above " + counted(labelled, "column", "columns") + " of numbers or dates"};
  }
  // Counts below years may well be in sequence, too.
  const bool is_sequence =
      are_years(first_numbers) ? !are_years(next_numbers) : are_labels(first_numbers) && !are_labels(next_numbers);
  if (alike > 0 && kind_of_cell(first.front().text) != CellKind::Number && is_sequence) {
    return {true, "numbers in sequence stand above " + counted(alike, "column", "columns") + " of other numbers"};
  }
  if (has_empty_corner(first, columns, first_numbers)) return {true, "only its first cell is empty"};
  if (alike > 0) return {false, "numbers or dates stand in it as in the lines below"};
  return {false, "nothing sets it apart from the lines below"};
}

Decided<bool> guess_first_col(const DelimitedReading& reading, bool first_row, const DelimitedSample& sample) {
  if (reading.columns < 2) return {false, "there is one column only"};
  if (sample.empty_line != 0) {
    return {false, "line " + std::to_string(sample.empty_line) + " is empty, so that its row would have no label"};
  }
  const std::vector<Column> columns = columns_of(reading, first_row ? 1 : 0);
  const auto numbers_beside = std::count_if(columns.begin() + 1, columns.end(),
                                            [](const Column& column) { return column.kind() == CellKind::Number; });
  if (numbers_beside == 0) return {false, "no numbers stand beside it"};
  switch (columns.front().kind()) {
    case CellKind::Text:
      return {true, "texts stand beside numbers"};
    case CellKind::Date:
      return {true, "dates stand beside numbers"};
    case CellKind::Missing:
      return {false, "its cells are empty"};
    case CellKind::Number:
      break;
  }
  if (first_row && kind_of_cell(reading.lines.front().fields.front().text) == CellKind::Missing) {
    return {true, "the first line has a label for every other column"};
  }
  const bool only_one_in_sequence = std::none_of(columns.begin() + 1, columns.end(), [](const Column& column) {
    return are_labels(column.whole_numbers) || are_consecutive(column.whole_numbers);
  });
  if (are_labels(columns.front().whole_numbers) && only_one_in_sequence) {
    return {true, "numbers in sequence stand beside other numbers"};
  }
  return {false, "it holds numbers as the other columns do"};
}

// The text in UTF-8, as far as it means something in `encoding`.
std::string decoded_beginning(std::string_view encoding, std::string_view sample) {
  constexpr std::size_t piece = 4096;
  std::string text;
  try {
    TextDecoder decoder(encoding);
    for (std::size_t at = 0; at < sample.size(); at += piece) text += decoder.decode(sample.substr(at, piece));
  } catch (const AutomationError&) {
    // Whoever imports the text will hear of it; what came before is enough to go by.
  }
  return text;
}

std::string decoded_as_named(std::string_view encoding, std::string_view sample, bool is_whole) {
  TextDecoder decoder(encoding);
  std::string text(decoder.decode(sample));
  if (is_whole) text += decoder.finish();
  return text;
}

// What no delimited text holds in any encoding that can be guessed.
void refuse_what_is_no_text(std::string_view sample, const std::string& encoding, const DelimitedHints& hints) {
  // There, control characters are half of the others.
  if (encoding.starts_with("UTF-16") || encoding.starts_with("UTF-32")) return;
  const std::string why = why_no_text(sample, hints.delimiter.value_or("") + hints.qualifier.value_or(""));
  if (why.empty()) return;
  throw AutomationError(RunTimeError::InvalidCall, "this is no text: " + why + "; save it as CSV", "guess_delimited");
}

// The import's rules for qualifiers are simpler than those of most programs that write them.
std::vector<ImportWarning> qualifier_warnings(const DelimitedReading& reading, bool is_cut) {
  std::vector<ImportWarning> warnings;
  const auto warn_once = [&](bool DelimitedField::*trait, const char* what) {
    for (std::size_t i = 0; i < reading.lines.size(); ++i) {
      const std::vector<DelimitedField>& fields = reading.lines[i].fields;
      if (std::none_of(fields.begin(), fields.end(), [&](const DelimitedField& field) { return field.*trait; })) {
        continue;
      }
      warnings.push_back({i + 1, what});
      return;
    }
  };
  warn_once(&DelimitedField::is_doubled,
            "a doubled qualifier ends the field, and what follows up to the delimiter is dropped; take such qualifiers "
            "out of the data");
  if (!is_cut) {
    warn_once(&DelimitedField::is_unclosed,
              "a qualifier is not closed on this line, and the rest of the line becomes one field; a field cannot hold "
              "a line end");
  }
  return warnings;
}

struct Name {
  std::string_view text, name;
};

// How a delimiter or qualifier is called.
std::string shown(std::string_view text) {
  constexpr Name names[] = {{"\t", "tab"}, {" ", "blank"}, {"\"", "double quote"}, {"'", "single quote"}, {"", "none"}};
  for (const Name& name : names) {
    if (name.text == text) return std::string(name.name);
  }
  return "'" + std::string(text) + "'";
}

}  // namespace

DelimitedGuess guess_delimited(std::string_view sample, bool is_whole, const DelimitedHints& hints) {
  DelimitedGuess guess;
  const auto chose = [&guess](const char* setting, std::string chosen, std::string reason) {
    guess.choices.push_back({setting, std::move(chosen), std::move(reason)});
  };

  std::string decoded;
  std::string_view text = sample;
  if (hints.encoding) {
    guess.encoding = *hints.encoding;
    chose("encoding", guess.encoding, as_given);
    text = decoded = decoded_as_named(guess.encoding, sample, is_whole);
  } else {
    const EncodingGuess encoding = guess_encoding(sample, is_whole);
    refuse_what_is_no_text(sample, encoding.encoding, hints);
    chose("encoding", encoding.encoding, encoding.reason);
    if (!encoding.is_plain_utf8) {
      guess.encoding = encoding.encoding;
      text = decoded = decoded_beginning(guess.encoding, sample);
    }
  }

  const DelimitedSample lines = sample_of(text, is_whole);
  const DelimitedReading reading = best_reading(lines, hints.delimiter, hints.qualifier);
  guess.format.delimiter = reading.delimiter.value;
  chose("delimiter", shown(reading.delimiter.value), reading.delimiter.reason);
  guess.format.qualifier = reading.qualifier.value;
  chose("qualifier", shown(reading.qualifier.value), reading.qualifier.reason);

  guess.warnings = qualifier_warnings(reading, !is_whole && lines.lines.size() == 1);

  const auto label_choice = [&chose](const char* setting, const Decided<bool>& decision) {
    chose(setting, decision.value ? "labels" : "data", decision.reason);
    return decision.value;
  };
  guess.format.first_row =
      label_choice("first row", hints.first_row ? Decided<bool>{*hints.first_row, as_given} : guess_first_row(reading));
  guess.format.first_col =
      label_choice("first column", hints.first_col ? Decided<bool>{*hints.first_col, as_given}
                                                   : guess_first_col(reading, guess.format.first_row, lines));
  return guess;
}

}  // namespace plexoras
