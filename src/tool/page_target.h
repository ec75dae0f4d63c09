#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/live_control.h"
#include "authoring/page.h"

namespace plexoras {

class Console;

/// "PAGE#NAME" taken apart at its last "#"; the name is empty where there is none.
struct PageTarget {
  std::string page;
  std::string name;
};
PageTarget parse_page_target(std::string_view text);

/// Error 5 for a page that was published without the state of its controls.
void refuse_published(const Page& page);

/// The index of the control that `target` names, or of the only one when it names none. Error 5 with what there is
/// instead.
std::size_t find_control(const Page& page, const PageTarget& target);

/// Loads a control of `page`. What is wrong with its saved state is a `PageError` at its place.
LiveControl load_control(TemplateSession& session, const Page& page, std::size_t index);

/// Shows people what templates had to say. With --json it belongs into the command's object.
void tell(const std::vector<Diagnostic>& diagnostics, Console& console);

/// `diagnostics` as warnings, for work that goes on in spite of them.
std::vector<Diagnostic> as_warnings(std::vector<Diagnostic> diagnostics);

/// What a control saves depends on what its template declares, so that nothing is written while that fails: error 5,
/// unless `diagnostics` is empty.
void refuse_broken_template(const std::vector<Diagnostic>& diagnostics, Console& console);

/// "PROPERTY=VALUE" taken apart at its first "=".
std::pair<std::string, std::string> parse_assignment(std::string_view text);

}  // namespace plexoras
