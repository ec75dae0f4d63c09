#include "authoring/data_table.h"

#include <algorithm>
#include <array>

#include "applet/contents_reader.h"

namespace plexoras {
namespace {

// Text between tags. A template expands what it emits, so a reference must not begin in it.
void append_text(std::string& html, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool before_parenthesis = i + 1 < text.size() && text[i + 1] == '(';
    switch (text[i]) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '$':
        html += before_parenthesis ? "&#36;" : "$";
        break;
      case '#':
        html += before_parenthesis ? "&#35;" : "#";
        break;
      default:
        html += text[i];
    }
  }
}

void append_cell(std::string& html, std::string_view tag, std::string_view text) {
  html += '<';
  html += tag;
  html += '>';
  append_text(html, text);
  html += "</";
  html += tag.substr(0, tag.find(' '));
  html += '>';
}

// The cells of a table with its labels, as they stand or with rows and columns in each other's place.
class Cells {
public:
  Cells(const ContentsTable& table, bool transposed)
      : table_(table), transposed_(transposed), stored_columns_(table.column_count()) {}

  std::size_t rows() const { return transposed_ ? stored_columns_ : table_.rows.size(); }
  std::size_t columns() const { return transposed_ ? table_.rows.size() : stored_columns_; }
  bool has_row_labels() const { return transposed_ ? !table_.columns.empty() : any_row_label(); }
  bool has_column_labels() const { return transposed_ ? any_row_label() : !table_.columns.empty(); }
  std::string_view row_label(std::size_t row) const { return transposed_ ? stored_column(row) : stored_row(row); }
  std::string_view column_label(std::size_t column) const {
    return transposed_ ? stored_row(column) : stored_column(column);
  }
  std::string_view corner() const { return transposed_ ? table_.column_title : table_.row_title; }

  std::string_view value(std::size_t row, std::size_t column) const {
    if (transposed_) std::swap(row, column);
    const std::size_t index = row * stored_columns_ + column;
    return index < table_.values.size() ? std::string_view(table_.values[index]) : std::string_view();
  }

private:
  bool any_row_label() const {
    return std::ranges::any_of(table_.rows, [](const auto& label) { return label.has_value(); });
  }
  std::string_view stored_row(std::size_t row) const {
    return table_.rows[row] ? std::string_view(*table_.rows[row]) : std::string_view();
  }
  std::string_view stored_column(std::size_t column) const {
    return column < table_.columns.size() ? std::string_view(table_.columns[column]) : std::string_view();
  }

  const ContentsTable& table_;
  bool transposed_;
  std::size_t stored_columns_;
};

// Has a chart of the current locale write its values in another one for a while.
class InLanguage {
public:
  InLanguage(ObjectRef chart, std::string_view language) : chart_(std::move(chart)) {
    if (chart_->get("FormatUseDefaultLocale").to_text() != "True") return;
    for (std::size_t i = 0; i < names.size(); ++i) kept_[i] = chart_->get(names[i]).to_text();
    changed_ = true;
    const std::size_t code_end = std::min(language.find('-'), language.size());
    chart_->put("FormatUseDefaultLocale", "False");
    chart_->put("FormatVariant", "");
    chart_->put("FormatLanguage", code_end == 0 ? std::string("en") : std::string(language.substr(0, code_end)));
    chart_->put("FormatCountry", country_of(language));
  }
  InLanguage(const InLanguage&) = delete;
  InLanguage& operator=(const InLanguage&) = delete;
  ~InLanguage() {
    if (!changed_) return;
    ignoring_errors([&] {
      for (std::size_t i = 0; i < names.size(); ++i) chart_->put(names[i], kept_[i]);
    });
  }

private:
  static constexpr std::array<std::string_view, 4> names{"FormatUseDefaultLocale", "FormatLanguage", "FormatCountry",
                                                         "FormatVariant"};

  // The two letters or three digits behind a "-": "DE" of "de-DE" and of "de-Latn-DE".
  static std::string country_of(std::string_view language) {
    if (language.empty()) return "US";
    for (std::size_t dash = language.find('-'); dash != std::string_view::npos; dash = language.find('-', dash + 1)) {
      const std::string_view part = language.substr(dash + 1, language.find('-', dash + 1) - dash - 1);
      if (part.size() == 2 || (part.size() == 3 && part[0] >= '0' && part[0] <= '9')) return std::string(part);
    }
    return "";
  }

  const ObjectRef chart_;
  std::array<std::string, 4> kept_;
  bool changed_ = false;
};

std::string table_head(const Cells& cells) {
  std::string html = "<thead><tr>";
  if (cells.has_row_labels()) append_cell(html, cells.corner().empty() ? "td" : "th scope=\"col\"", cells.corner());
  for (std::size_t column = 0; column < cells.columns(); ++column) {
    append_cell(html, "th scope=\"col\"", cells.column_label(column));
  }
  return html + "</tr></thead>\r\n";
}

}  // namespace

std::string data_table(LiveControl& control, std::string_view caption, std::string_view language) {
  const ObjectRef chart = control.component();
  if (chart == nullptr || control.control().GetProperty("Contents").empty()) return {};
  const ContentsTable table = read_contents(chart->get("XmlContents").to_text());
  const Cells cells(table, chart->get("IsTransposed").to_boolean());
  if (cells.rows() == 0 || cells.columns() == 0) return {};

  const InLanguage in_language(chart, language);
  std::string html = "<table>\r\n";
  append_cell(html, "caption", caption);
  html += "\r\n";
  if (cells.has_column_labels()) html += table_head(cells);
  html += "<tbody>\r\n";
  for (std::size_t row = 0; row < cells.rows(); ++row) {
    html += "<tr>";
    if (cells.has_row_labels()) append_cell(html, "th scope=\"row\"", cells.row_label(row));
    for (std::size_t column = 0; column < cells.columns(); ++column) {
      const std::string value(cells.value(row, column));
      append_cell(html, "td", value.empty() ? value : chart->call_with("formatSample", {value}).to_text());
    }
    html += "</tr>\r\n";
  }
  return html + "</tbody>\r\n</table>";
}

}  // namespace plexoras
