#include "tool/json_text.h"

#include <nlohmann/json.hpp>

namespace plexoras {
namespace {

nlohmann::json place_json(const std::string& path, std::size_t line, std::size_t column) {
  nlohmann::json place;
  place["file"] = path;
  place["line"] = line;
  place["column"] = column;
  return place;
}

template <class Row>
nlohmann::json array_of(std::span<const Row> rows) {
  nlohmann::json array = nlohmann::json::array();
  for (const Row& row : rows) array.push_back(to_json(row));
  return array;
}

nlohmann::json problem_json(const char* severity, std::string_view message) {
  const nlohmann::json problem{{"severity", severity}, {"message", message}};
  return {{"version", json_version}, {"problems", nlohmann::json::array({problem})}};
}

}  // namespace

nlohmann::json to_json(const Diagnostic& diagnostic) {
  nlohmann::json object = place_json(diagnostic.where.path, diagnostic.where.line, diagnostic.where.column);
  object["severity"] = diagnostic.severity == Diagnostic::Severity::Error ? "error" : "warning";
  object["number"] = static_cast<int>(diagnostic.number);
  object["message"] = diagnostic.what;
  object["section"] = diagnostic.where.section;
  object["notes"] = nlohmann::json::array();
  for (const Diagnostic::Note& note : diagnostic.notes) {
    nlohmann::json entry = place_json(note.where.path, note.where.line, note.where.column);
    entry["message"] = note.text;
    object["notes"].push_back(std::move(entry));
  }
  return object;
}

nlohmann::json to_json(const PageProblem& problem) {
  nlohmann::json object = place_json(problem.path, problem.place.line, problem.place.column);
  object["severity"] = problem.is_warning ? "warning" : "error";
  object["message"] = problem.what;
  return object;
}

nlohmann::json to_json(const Finding& finding) {
  nlohmann::json object = place_json(finding.path, finding.line, finding.column);
  object["version"] = json_version;
  object["severity"] = severity_word(finding.rule->severity);
  object["rule"] = finding.rule->name;
  object["message"] = finding.what;
  object["mend"] = finding.mend;
  return object;
}

nlohmann::json to_json(std::span<const Diagnostic> diagnostics) { return array_of(diagnostics); }
nlohmann::json to_json(std::span<const PageProblem> problems) { return array_of(problems); }

nlohmann::json failure_json(std::span<const PageProblem> problems) {
  return {{"version", json_version}, {"problems", to_json(problems)}};
}

nlohmann::json failure_json(std::string_view message) { return problem_json("error", message); }
nlohmann::json warning_json(std::string_view message) { return problem_json("warning", message); }

std::string json_line(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace plexoras
