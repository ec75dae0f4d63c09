// image: the picture of a chart, as its component draws it.

#include "host/atomic_file.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/page_target.h"

namespace plexoras {

int run_image(const ImageOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  host.platform().message_box = &silent;
  const PageTarget target = parse_page_target(options.target);
  const Page page = Page::read(target.page);
  const std::size_t index = find_control(page, target);
  TemplateSession session(host.platform());
  LiveControl control = load_control(session, page, index);
  const std::string name = page.path() + "#" + page.controls()[index].record.name;
  if (control.component() == nullptr) {
    throw AutomationError(RunTimeError::ObjectNotSet, name + ": this control shows no chart, so there is no picture");
  }

  std::string bytes;
  try {
    bytes = control.control().get("getDiagram").to_object()->call("getChartImage").to_text();
  } catch (const AutomationError& error) {
    throw AutomationError(error.number(), name + ": there is no picture: " + error.description());
  }
  if (bytes.empty()) throw AutomationError(RunTimeError::InvalidCall, name + ": the chart's picture is empty");
  if (options.output == "-") {
    console.result(bytes);
    return exit_done;
  }
  defer_interrupts();
  if (!console.options().dry_run) replace_file(options.output, bytes);
  console.say(options.output + ": " + std::to_string(bytes.size()) + " bytes" +
              (console.options().dry_run ? " would be written" : " written"));
  return interrupted() ? exit_interrupted : exit_done;
}

}  // namespace plexoras
