#include "authoring/delimited_reading.h"

#include <algorithm>
#include <map>
#include <utility>

#include "authoring/cell_kind.h"
#include "host/utf8.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::size_t most_lines = 1000;
constexpr std::size_t most_bytes = 1U << 18U;  // after which no third line is taken

bool ends_line(char c) { return c == '\r' || c == '\n'; }

std::vector<DelimitedLine> split_all(const DelimitedSample& sample, std::string_view delimiter,
                                     std::string_view qualifier) {
  std::vector<DelimitedLine> lines;
  lines.reserve(sample.lines.size());
  for (const std::string_view line : sample.lines) lines.push_back(split(line, delimiter, qualifier));
  return lines;
}

Decided<std::string> guess_qualifier(const DelimitedSample& sample, std::string_view delimiter) {
  std::string broken;
  for (const char* const qualifier : {"\"", "'"}) {
    const auto holds_one = [&](std::string_view line) { return line.find(qualifier) != npos; };
    if (std::none_of(sample.lines.begin(), sample.lines.end(), holds_one)) continue;
    std::size_t opened = 0;
    std::size_t enclosed = 0;
    std::size_t protecting = 0;  // fields with a delimiter inside
    for (const DelimitedLine& line : split_all(sample, delimiter, qualifier)) {
      for (const DelimitedField& field : line.fields) {
        opened += field.is_opened ? 1U : 0U;
        enclosed += field.is_enclosed ? 1U : 0U;
        protecting += field.is_enclosed && field.text.find(delimiter) != npos ? 1U : 0U;
      }
    }
    const bool is_apostrophe = *qualifier == '\'';
    // Words, too, begin and end with apostrophes, so they have to be the rule or to protect something.
    const bool is_used =
        is_apostrophe ? (opened - enclosed) * 10 <= enclosed && (protecting > 0 || enclosed * 2 >= sample.lines.size())
                      : (opened - enclosed) * 2 <= enclosed;
    if (enclosed > 0 && is_used) return {qualifier, "encloses " + counted(enclosed, "field", "fields")};
    if (opened > 0 && broken.empty()) {
      broken = std::string(is_apostrophe ? "single" : "double") + " quotes begin " +
               counted(opened, "field", "fields") + ", but " + (enclosed == 0 ? "end none" : "are not used throughout");
    }
  }
  return {"", broken.empty() ? "no field is enclosed in quotes" : broken};
}

// The share of cells below the first line that show that they were cut in the right places.
double typed_share(const std::vector<DelimitedLine>& lines) {
  std::size_t seen = 0;
  std::size_t cells = 0;
  std::size_t typed = 0;
  for (std::size_t i = lines.size() > 1 ? 1 : 0; i < lines.size() && seen < most_typed_cells; ++i) {
    for (const DelimitedField& field : lines[i].fields) {
      if (++seen > most_typed_cells) break;
      const CellKind kind = field.is_enclosed ? CellKind::Number : kind_of_cell(field.text);
      cells += kind != CellKind::Missing ? 1U : 0U;
      typed += kind == CellKind::Number || kind == CellKind::Date ? 1U : 0U;
    }
  }
  return cells == 0 ? 0 : static_cast<double>(typed) / static_cast<double>(cells);
}

DelimitedReading read_with(const DelimitedSample& sample, std::string_view delimiter,
                           const std::optional<std::string>& qualifier) {
  DelimitedReading reading;
  reading.qualifier = qualifier ? Decided<std::string>{*qualifier, as_given} : guess_qualifier(sample, delimiter);
  reading.lines = split_all(sample, delimiter, reading.qualifier.value);
  reading.delimiter.value = delimiter;
  std::map<std::size_t, std::size_t> lines_by_count;
  for (const DelimitedLine& line : reading.lines) {
    if (line.fields.empty()) continue;
    ++reading.filled;
    ++lines_by_count[line.count()];
  }
  for (const auto& [count, lines] : lines_by_count) {
    if (lines >= reading.agreeing) {
      reading.columns = count;
      reading.agreeing = lines;
    }
  }
  if (reading.columns > 1) reading.typed = typed_share(reading.lines);
  return reading;
}

// How well a delimiter divides the lines; 0 when it does not.
double score(const DelimitedReading& reading) {
  if (reading.columns < 2) return 0;
  const double agreement = static_cast<double>(reading.agreeing) / static_cast<double>(reading.filled);
  // Words have blanks between them; only among numbers they divide.
  if (reading.delimiter.value == " " && reading.typed < 0.3) return 0;
  if (agreement < 0.5 && reading.typed < 0.5) return 0;
  return agreement + reading.typed / 2;
}

std::string why_delimiter(const DelimitedReading& reading, const DelimitedSample& sample) {
  const std::string fields = "gives " + counted(reading.columns, "field", "fields") + " on ";
  if (reading.agreeing < reading.filled) {
    return fields + std::to_string(reading.agreeing) + " of " + (sample.is_all ? "" : "the first ") +
           std::to_string(reading.filled) + " lines";
  }
  if (reading.filled == 1) return fields + "the " + (sample.is_all ? "only" : "first") + " line";
  return fields + "each of " + (sample.is_all ? "" : "the first ") + std::to_string(reading.filled) + " lines";
}

}  // namespace

DelimitedLine split(std::string_view line, std::string_view delimiter, std::string_view qualifier) {
  DelimitedLine result;
  const std::size_t step = std::max<std::size_t>(1, utf8_length(delimiter, 0));
  for (std::size_t position = 0; position < line.size();) {
    DelimitedField field;
    std::size_t behind = position;  // where the search for the delimiter begins
    const bool is_opened = qualifier.size() == 1 && line[position] == qualifier.front();
    const std::size_t closing = is_opened ? line.find(qualifier, position + 1) : npos;
    if (is_opened) behind = closing == npos ? line.size() : closing + 1;
    const std::size_t next = is_opened && closing == npos ? npos : line.find(delimiter, behind);
    const std::size_t end = std::min(next, line.size());
    if (is_opened) {
      const bool is_closed = closing != npos;
      field = {.text = line.substr(position + 1, std::min(closing, end) - position - 1),
               .is_opened = true,
               .is_enclosed = is_closed && line[end - 1] == qualifier.front(),
               .is_doubled = is_closed && line.substr(closing + 1).starts_with(qualifier),
               .is_unclosed = !is_closed};
    } else {
      field.text = line.substr(position, end - position);
    }
    result.fields.push_back(field);
    position = next == npos ? line.size() : next + step;
    result.ends_in_delimiter = next != npos && position >= line.size();
  }
  return result;
}

DelimitedSample sample_of(std::string_view text, bool is_whole) {
  DelimitedSample sample;
  std::size_t number = 0;
  std::size_t bytes = 0;
  while (!text.empty()) {
    const auto end = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), ends_line) - text.begin());
    // A line that is cut off tells little, unless it is the only one.
    if (end == text.size() && !is_whole && number > 0) break;
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(std::min<std::size_t>(text.size(), text.starts_with("\r\n") ? 2 : 1));
    // An empty line at the very end is none.
    if (line.empty() && text.empty() && is_whole) break;
    ++number;
    if (line.empty() && sample.empty_line == 0) sample.empty_line = number;
    bytes += line.size();
    if (number <= 2 || (number <= most_lines && bytes <= most_bytes)) sample.lines.push_back(line);
  }
  sample.is_all = is_whole && number == sample.lines.size();
  return sample;
}

std::string counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

DelimitedReading best_reading(const DelimitedSample& sample, const std::optional<std::string>& delimiter,
                              const std::optional<std::string>& qualifier) {
  if (delimiter) {
    DelimitedReading reading = read_with(sample, *delimiter, qualifier);
    reading.delimiter.reason = as_given;
    return reading;
  }
  // The likelier one comes first, as others stand in numbers and texts ("1,5;2,5"): a later one must be clearly better.
  constexpr double clearly = 0.1;
  DelimitedReading best;
  double best_score = 0;
  for (const char* const candidate : {"\t", ";", "|", ",", " "}) {
    DelimitedReading reading = read_with(sample, candidate, qualifier);
    const double reading_score = score(reading);
    if (reading_score <= best_score + (best_score > 0 ? clearly : 0)) continue;
    best = std::move(reading);
    best_score = reading_score;
  }
  if (best_score > 0) {
    best.delimiter.reason = why_delimiter(best, sample);
    return best;
  }
  best = read_with(sample, ",", qualifier);
  best.delimiter.reason = sample.lines.empty() ? "there are no lines; this is the usual one"
                                               : "nothing divides the lines evenly; this is the usual one";
  return best;
}

}  // namespace plexoras
