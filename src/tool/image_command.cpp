// image: the picture of a chart, as its component draws it: the one that ships, as published pages show it.

#include <filesystem>

#include "authoring/snapshot.h"
#include "host/atomic_file.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/node_renderer.h"
#include "tool/page_target.h"

namespace plexoras {
namespace {

std::string picture_bytes(TemplateSession& session, LiveControl& control, const std::string& language) {
  const auto draw = [&](const ChartPicture& picture) { return NodeRenderer::installed(session).draw(picture); };
  const ObjectRef painter = paint_with(control, draw, language);
  return control.control().get("getDiagram").to_object()->call("getChartImage").to_text();
}

// A file that says it is something else than it is helps nobody.
void check_name(const std::string& output, std::string_view bytes) {
  const std::filesystem::path path(output);
  if (!bytes.starts_with("<svg") || !path.has_extension() || path.extension() == ".svg") return;
  throw AutomationError(RunTimeError::InvalidCall, output + ": the picture is SVG; name the file " +
                                                       std::filesystem::path(path).replace_extension(".svg").string());
}

}  // namespace

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
    bytes = picture_bytes(session, control, page.language());
  } catch (const AutomationError& error) {
    throw AutomationError(error.number(), name + ": there is no picture: " + error.description());
  }
  if (bytes.empty()) throw AutomationError(RunTimeError::InvalidCall, name + ": the chart's picture is empty");
  if (options.output == "-") {
    console.result(bytes);
    return exit_done;
  }
  check_name(options.output, bytes);
  defer_interrupts();
  if (!console.options().dry_run) replace_file(options.output, bytes);
  console.say(options.output + ": " + std::to_string(bytes.size()) + " bytes" +
              (console.options().dry_run ? " would be written" : " written"));
  return interrupted() ? exit_interrupted : exit_done;
}

}  // namespace plexoras
