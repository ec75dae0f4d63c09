#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/page_scanner.h"
#include "authoring/page_text.h"

namespace plexoras {

/// What is wrong with a page, and where.
struct PageProblem {
  std::string path;
  TextPlace place;
  std::string what;
  bool is_name_taken = false;  ///< by another control of the page, and otherwise all is well
  bool is_warning = false;     ///< the work was done all the same
};

/// What there is to say of a page that is `is_published` and lacks the state that is asked for.
inline constexpr std::string_view published_without_state =
    "this page was published without the state of its controls; work on the page that it was made from";

/// "path:line:col: error: what", or "warning: what".
std::string to_text(const PageProblem& problem);

/// A page that cannot be worked on. `what()` is every problem, a line each.
class PageError : public std::runtime_error {
public:
  explicit PageError(std::vector<PageProblem> problems);
  const std::vector<PageProblem>& problems() const { return problems_; }

private:
  std::vector<PageProblem> problems_;
};

/// The saved form of a control: what stands in its comment.
struct ControlRecord {
  std::string identifier;  ///< which control: "PlexorasDTC.DiagramDTC"
  std::string name;
  std::int32_t width = 480;  ///< in pixels
  std::int32_t height = 320;
  bool visible = true;
  std::vector<std::pair<std::string, std::string>> state;  ///< keys and values in the order written

  friend bool operator==(const ControlRecord&, const ControlRecord&) = default;
};

/// A page on disk and the controls in it. See docs/pages.md for the form.
///
///     Page page = Page::read("index.html");
///     Page::Edit edit(page);
///     edit.replace_text(0, text);
///     page.write_if_changed(edit.result());
///
/// Bytes outside the controls are kept as they are.
class Page {
public:
  struct Control {
    ControlRecord record;
    ControlSpan span;
    TextPlace place;
  };

  /// Raises `PageError` when the file cannot be read or a control in it cannot; all problems are told at once.
  static Page read(const std::string& path);
  /// The same of text in memory; `path` is for messages.
  static Page parse(std::string path, std::string bytes);

  const std::string& path() const { return path_; }
  const std::string& bytes() const { return bytes_; }
  const std::vector<Control>& controls() const { return controls_; }
  /// The index of the control `name`, or nothing.
  std::optional<std::size_t> find(std::string_view name) const;
  /// The line break that the page uses.
  std::string_view line_break() const { return line_break_of(bytes_); }
  /// The language that the page says it is in, "de" or "pt-BR": the `lang` of its <html> tag; empty when it says none.
  const std::string& language() const { return language_; }
  /// Where content ends: before the end tag of the body.
  std::size_t content_end() const { return content_end_; }

  /// The text that readers get of control `index`, as it was put.
  std::string text(std::size_t index) const;
  /// Whether controls of this page have left their text alone, see `Edit::replace_control`.
  bool is_published() const { return !published_.empty(); }
  /// The text that a page published without states has of the control `name`, or nothing.
  std::optional<std::string> published_text(std::string_view name) const;

  /// The control as it stands in a page, with an empty text.
  static std::string span_text(const ControlRecord& record, std::string_view text, std::string_view line_break);

  /// Changes to be made to a page, all at once.
  class Edit {
  public:
    explicit Edit(const Page& page) : page_(page) {}
    /// Replaces the text that readers get of control `index`. Error 5 when the text holds a control's mark.
    void replace_text(std::size_t index, std::string_view text);
    /// Replaces control `index`, state and all, by the text that readers get. Where it came from, two short comments
    /// say, for `published_text`. Errors as above.
    void replace_control(std::size_t index, std::string_view text);
    /// Replaces the state of control `index`.
    void replace_record(std::size_t index, const ControlRecord& record);
    /// Puts `bytes` at `offset`.
    void insert(std::size_t offset, std::string bytes);
    std::string result() const;

  private:
    struct Change {
      std::size_t begin;
      std::size_t end;
      std::string bytes;
    };
    const Page& page_;
    std::vector<Change> changes_;
  };

private:
  std::string path_;
  std::string bytes_;
  struct Text {
    std::size_t begin;
    std::size_t end;
  };
  std::vector<Control> controls_;
  std::map<std::string, std::size_t, std::less<>> indices_;  // of the controls, by name
  std::map<std::string, Text, std::less<>> published_;       // by the name as it stands in the page
  std::size_t content_end_ = 0;
  std::string language_;
};

/// The warning that there is no control on `page` to work on, for it `is_published`; nothing for any other page.
std::optional<PageProblem> warning_of_no_states(const Page& page);

/// Writes `bytes` to `path` unless the file holds just these; true when it was written. Files are replaced whole.
bool write_if_changed(const std::string& path, std::string_view bytes);

}  // namespace plexoras
