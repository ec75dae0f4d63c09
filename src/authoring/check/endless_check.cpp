#include "authoring/check/endless_check.h"

#include <unordered_map>

namespace plexoras {
namespace {

using DefinitionMade = TemplateWalk::DefinitionMade;

// A reference that is expanded whenever the name it belongs to is.
struct Edge {
  std::string_view target;
  TemplatePlace place;
};
struct Node {
  std::size_t branch;
  std::vector<Edge> edges;
};
using Nodes = std::unordered_map<std::string_view, Node>;

// Encoding leaves nothing to expand, a replacement may take it away, and a "?" macro asks first.
bool may_end(const OutlineReference& reference) {
  using Kind = OutlineReference::Kind;
  return reference.kind == Kind::Encoded || reference.kind == Kind::Replaced || reference.name.starts_with('?') ||
         TemplateName(reference.name).is_computed;
}

std::vector<Edge> edges_of(const DefinitionMade& made) {
  std::vector<Edge> edges;
  const bool is_macro = made.kind == DirectiveKind::Macro;
  // A definition's references are expanded when it is made; escaped ones lose their "\" then and wait. What a reference
  // around them would make of them is not known.
  if (!is_macro && !references_in(made.value).empty()) return edges;
  const std::vector<OutlineReference> references =
      is_macro ? references_in(made.value) : escaped_references_in(made.value);
  for (const OutlineReference& reference : references) {
    const std::size_t length = reference.name.size() + std::string_view("\\$()").size();
    // A value that is nothing but a reference to itself stays that text.
    const bool is_settled = !is_macro && reference.name == made.name.text && made.value.size() == length &&
                            reference.kind == OutlineReference::Kind::Value;
    if (may_end(reference) || is_settled) continue;
    edges.push_back({reference.name, {made.place.section, made.place.line, made.value.data() + reference.begin}});
  }
  if (is_macro && made.value.starts_with('#') && !made.value.starts_with("#(")) {
    const std::string_view called = split_at_open_blank(made.value.substr(1)).first;
    edges.push_back({called, {made.place.section, made.place.line, made.value.data()}});
  }
  return edges;
}

void tell(const Edge& edge, std::string_view from, Findings& findings) {
  findings.add("runaway-reference", edge.place,
               in_quotes(edge.target) + " is made of itself" +
                   (edge.target == from ? "" : ", through " + in_quotes(from)) + ", without end",
               "remove this reference, or give one of the two another name");
}

}  // namespace

void check_endless(const TemplateWalk& walk, Findings& findings) {
  // Definitions that are surely there together: each is the only one of its name, and nothing takes it away.
  Nodes nodes;
  for (const DefinitionMade& made : walk.definitions()) {
    const bool is_one = !made.name.is_computed && walk.definitions_of(made.name.text).size() == 1;
    if (is_one && !walk.may_undefine(made.name.text)) nodes[made.name.text] = {made.branch, edges_of(made)};
  }

  // Depth first, with a list in place of recursion: the names being expanded, and which of their references is next.
  enum class State { Open, Done };
  std::unordered_map<std::string_view, State> states;
  struct Level {
    std::string_view name;
    std::size_t next = 0;
  };
  for (const DefinitionMade& made : walk.definitions()) {
    if (!nodes.contains(made.name.text) || states.contains(made.name.text)) continue;
    std::vector<Level> levels = {{made.name.text}};
    states[made.name.text] = State::Open;
    while (!levels.empty()) {
      Level& level = levels.back();
      const Node& from = nodes.find(level.name)->second;
      if (level.next == from.edges.size()) {
        states[level.name] = State::Done;
        levels.pop_back();
        continue;
      }
      const Edge& edge = from.edges[level.next++];
      const auto target = nodes.find(edge.target);
      if (target == nodes.end() || target->second.branch != from.branch) continue;
      const auto [known, is_new] = states.emplace(edge.target, State::Open);
      if (is_new) {
        levels.push_back({edge.target});
      } else if (known->second == State::Open) {
        tell(edge, level.name, findings);
      }
    }
  }
}

}  // namespace plexoras
