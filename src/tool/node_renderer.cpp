#include "tool/node_renderer.h"

#include <nlohmann/json.hpp>

#include "template/template_session.h"

namespace plexoras {
namespace {

constexpr std::string_view program_name = "plexoras-render.mjs";
constexpr std::chrono::seconds most_for_a_chart(60);

std::string request_for(const ChartPicture& picture) {
  nlohmann::json settings = nlohmann::json::object();
  for (const auto& [name, text] : picture.settings) settings[name] = text;
  const nlohmann::json request{
      {"settings", settings},
      {"width", picture.width},
      {"height", picture.height},
      {"prefix", "p" + picture.stamp + "-"},
      {"languages", nlohmann::json::array({picture.language.empty() ? "en-US" : picture.language})},
  };
  return request.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

NodeRenderer NodeRenderer::installed(TemplateSession& session) {
  const std::string path = session.files.LocateTemplateFile(program_name);
  // A file of that name that happens to lie in the present folder is not ours to run.
  if (path.empty() || path == program_name) {
    throw AutomationError(RunTimeError::FileNotFound,
                          std::string(program_name) + ", which draws, is not installed with the template files",
                          "NodeRenderer");
  }
  return NodeRenderer(path);
}

void NodeRenderer::start() {
  if (node_ != nullptr) return;
  try {
    node_ = std::make_unique<LineProcess>(std::vector<std::string>{"node", program_});
  } catch (const AutomationError& error) {
    const bool missing = error.number() == RunTimeError::FileNotFound;
    throw AutomationError(error.number(),
                          missing ? "there is no program \"node\"; install Node 18 or later" : error.description(),
                          "NodeRenderer");
  }
}

std::string NodeRenderer::draw(const ChartPicture& picture) {
  start();
  std::string line;
  try {
    line = node_->ask(request_for(picture), most_for_a_chart);
  } catch (const AutomationError& error) {
    node_.reset();
    throw AutomationError(error.number(),
                          error.description() + "; \"node " + program_ + "\" shows why, when the fault is its own",
                          "NodeRenderer");
  }
  const nlohmann::json answer = nlohmann::json::parse(line, nullptr, false);
  const auto text = [&](const char* member) {
    return answer.is_object() && answer.contains(member) && answer[member].is_string()
               ? answer[member].get<std::string>()
               : std::string();
  };
  if (std::string svg = text("svg"); !svg.empty()) return svg;
  const std::string problem = text("error");
  throw AutomationError(RunTimeError::InvalidCall, problem.empty() ? "the program answers no picture" : problem,
                        "NodeRenderer");
}

}  // namespace plexoras
