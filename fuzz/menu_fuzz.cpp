// The input as a menu document, against the plain version of reader and writer; its entries come back from the document
// that is written of them, but for what a menu document cannot keep.

#include <string>
#include <string_view>
#include <vector>

#include "contents/literal_menu.h"
#include "contents/menu_document.h"
#include "fuzz.h"

namespace plexoras {
namespace {

std::optional<std::vector<MenuNode>> read(std::string_view document, const Dictionary& commands) {
  try {
    return read_menu_document(document, commands);
  } catch (const AutomationError& error) {
    require(error.number() == RunTimeError::SubscriptOutOfRange || error.number() == RunTimeError::Overflow,
            "a refusal is error 9 or 6");
    return std::nullopt;
  }
}

// Whether every level follows from the one before it, so that the document holds all of them.
bool is_tree(const std::vector<MenuNode>& nodes) {
  int previous = -1;
  for (const MenuNode& node : nodes) {
    if (node.Level < 0 || node.Level > previous + 1) return false;
    previous = node.Level;
  }
  return true;
}

}  // namespace

void try_input(std::string_view input) {
  const Dictionary commands = sample_commands();
  const auto nodes = read(input, commands);
  require(nodes == LiteralMenu::read(std::string(input), commands), "the plain version reads the same");
  if (!nodes) return;
  const std::string document = write_menu_document(*nodes, commands);
  require(document == LiteralMenu::write(*nodes, commands), "the plain version writes the same");
  if (!is_tree(*nodes)) return;

  const auto again = read(document, commands);
  require(again.has_value() && again->size() == nodes->size(), "every entry comes back");
  for (std::size_t i = 0; i < nodes->size(); ++i) {
    require((*again)[i].Level == (*nodes)[i].Level, "levels come back");
    if ((*nodes)[i].Kind == MenuNode::Separator) continue;  // as a submenu it has no caption
    require((*again)[i].Caption == LiteralMenu::unescaped(LiteralMenu::escaped((*nodes)[i].Caption, false)),
            "captions come back");
  }
}

}  // namespace plexoras
