// The input as section "S" of a template file, and a form made of it. Behind a line "=" stand settings, KEY=VALUE a
// line.
//
// Whatever a template says, there is a form; what cannot be read is told at a place that exists; and a form in which
// nothing was edited stores nothing, while one in which everything was can be stored or says why not.

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz.h"
#include "template/customizer_control.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

constexpr ExpansionLimits limits{.nesting = 40, .text_bytes = std::size_t{1} << 16};

std::shared_ptr<Dictionary> settings_from(std::string_view lines_of_settings) {
  auto settings = std::make_shared<Dictionary>();
  while (!lines_of_settings.empty() && settings->Count() < Dictionary::capacity) {
    const std::string_view line = lines_of_settings.substr(0, lines_of_settings.find('\n'));
    lines_of_settings.remove_prefix(std::min(line.size() + 1, lines_of_settings.size()));
    const std::size_t equals = std::min(line.find('='), line.size());
    settings->atPut(line.substr(0, equals), line.substr(std::min(equals + 1, line.size())),
                    Dictionary::EmptyValues::Keep);
  }
  return settings;
}

void check_places(const TemplateSession& session, std::string_view file) {
  const auto line_count = static_cast<std::size_t>(std::count(file.begin(), file.end(), '\n') +
                                                   std::count(file.begin(), file.end(), '\r')) +
                          1;
  for (const Diagnostic& diagnostic : session.diagnostics) {
    require(!diagnostic.what.empty(), "a diagnostic says what is wrong");
    require(diagnostic.where.line <= line_count, "a diagnostic stands in the file");
    if (diagnostic.where.line == 0) continue;
    require(diagnostic.where.column >= 1, "columns count from 1");
    require(diagnostic.where.column <= diagnostic.source_line.size() + 1, "a diagnostic stands in its line");
  }
}

// Does to every control what an author can do to it.
void edit_all(const ControlContainer& container) {
  for (const auto& control : container.controls()) {
    if (auto* box = dynamic_cast<TextBox*>(control.get())) box->user_type(box->text() + "7");
    if (auto* box = dynamic_cast<CheckBox*>(control.get())) box->user_click();
    if (auto* box = dynamic_cast<ComboBox*>(control.get())) {
      const int last = static_cast<int>(box->entries().size()) - 1;
      box->user_select(box->list_index() == last ? -1 : last);
    }
    if (const auto* frame = dynamic_cast<Frame*>(control.get())) edit_all(*frame);
  }
}

}  // namespace

void try_input(std::string_view input) {
  constexpr std::string_view divider = "\n=\n";
  const std::size_t file_end = std::min(input.rfind(divider), input.size());
  const auto settings = settings_from(input.substr(std::min(file_end + divider.size(), input.size())));
  const std::string before = listing(*settings);

  FakePlatform host;
  host.files["T.DAT"] = "[S]\n" + std::string(input.substr(0, file_end));
  TemplateSession session(host.platform, limits);
  CustomizerControl form(session);
  form.loadWindowSpec("S", "T.DAT", settings);
  check_places(session, host.files["T.DAT"]);

  form.Accept();
  require(listing(*settings) == before, "what was not edited stays");
  edit_all(form);
  try {
    form.Accept();
  } catch (const AutomationError& error) {
    // A value that its setting does not take, or a dictionary that is full.
    require(error.number() == RunTimeError::InvalidCall || error.number() == RunTimeError::SubscriptOutOfRange,
            "a refusal has its number");
    // A description ends at a byte 0, which a caption may begin with.
    require(!error.description().empty() || input.find('\0') != std::string_view::npos, "a refusal has its reason");
  }
  form.Discard();
  const std::string stored = listing(*settings);
  form.Accept();
  require(listing(*settings) == stored, "what was discarded stays out");
}

}  // namespace plexoras
