#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// Where a control stands in a page: byte offsets.
///
///     <!--dtc PlexorasDTC.DiagramDTC name="Sales" ...      begin
///     -->                                                  text_begin, behind it
///     <plexoras-diagram ...>...</plexoras-diagram>
///     <!--/dtc-->                                          text_end, before it; end, behind it
struct ControlSpan {
  std::size_t begin = 0;
  std::size_t state_end = 0;  ///< of the state: before the "-->" of the opening comment
  std::size_t text_begin = 0;
  std::size_t text_end = 0;
  std::size_t end = 0;
  bool in_comment = false;    ///< its opening comment ends an ordinary one that it stands in
  bool in_paragraph = false;  ///< a <p> is open, which the first block in the control's text would end
};

/// The text of a control that was published without its state, between two ordinary comments: byte offsets.
///
///     <!--published Sales-->                               text_begin, behind it
///     <plexoras-diagram ...>...</plexoras-diagram>
///     <!--/published-->                                    text_end, before it
struct PublishedSpan {
  std::string_view name;  ///< as it stands there, escaped
  std::size_t text_begin = 0;
  std::size_t text_end = 0;
};

/// A mark that cannot be read, and why; or one whose name another has.
struct SpanProblem {
  std::size_t at = 0;
  std::string what;
  bool is_name_taken = false;
};

struct ScannedPage {
  std::vector<ControlSpan> spans;  ///< in page order
  std::vector<PublishedSpan> published;
  std::vector<SpanProblem> problems;
  /// Before the last "</body" tag, else the last "</html" tag, else the end: where a page's content ends.
  std::size_t content_end = 0;
  /// The attribute `lang` of the first <html> tag, when it is a language tag; otherwise empty.
  std::string_view language;
};

inline constexpr std::string_view control_opening = "<!--dtc";
inline constexpr std::string_view control_closing = "<!--/dtc-->";
inline constexpr std::string_view published_opening = "<!--published ";
inline constexpr std::string_view published_closing = "<!--/published-->";

/// Finds the controls in a page, in one pass. What looks like one inside a script, a style sheet, a title, a text
/// area or an attribute is none; inside an ordinary comment it is.
ScannedPage scan_page(std::string_view page);

}  // namespace plexoras
