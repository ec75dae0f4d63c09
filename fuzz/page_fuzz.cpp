// The input as a page, and as a value of a control's state.
//
// An edit without changes gives the page's bytes; controls written anew read as they did, and publishing twice gives
// the same page. A value survives escaping, and no escaped value can end its quotes or the comment.

#include <optional>
#include <string>
#include <string_view>

#include "authoring/page.h"
#include "fuzz.h"

namespace plexoras {
namespace {

std::string published(const Page& page) {
  Page::Edit edit(page);
  for (std::size_t i = 0; i < page.controls().size(); ++i) {
    edit.replace_record(i, page.controls()[i].record);
    edit.replace_text(i, "<p>for readers</p>\r\n");
  }
  return edit.result();
}

void try_page(std::string_view input) {
  std::optional<Page> page;
  try {
    page = Page::parse("page", std::string(input));
  } catch (const PageError& error) {
    require(!error.problems().empty(), "a page that is refused has a problem");
    return;
  }
  require(Page::Edit(*page).result() == input, "an edit without changes keeps every byte");

  const std::string once = published(*page);
  const Page again = Page::parse("page", once);
  require(again.controls().size() == page->controls().size(), "publishing keeps the controls");
  for (std::size_t i = 0; i < again.controls().size(); ++i) {
    require(again.controls()[i].record == page->controls()[i].record, "publishing keeps the state");
  }
  require(published(again) == once, "publishing twice gives the same page");
}

void try_value(std::string_view input) {
  for (const std::string_view line_break : {"\n", "\r\n"}) {
    const std::string escaped = escape_state(input, line_break);
    std::size_t bad = 0;
    require(unescape_state(escaped, &bad) == input, "a value comes back");
    require(escaped.find_first_of("\"<>") == std::string::npos, "a value cannot end its quotes");
    require(escaped.find("--") == std::string::npos, "a value cannot end the comment");
  }
  require(unescape_listing(escape_listing(input)) == input, "a value in a listing comes back");
}

}  // namespace

void try_input(std::string_view input) {
  try_page(input);
  try_value(input);
}

}  // namespace plexoras
