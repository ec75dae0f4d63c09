#include "contents/menu_document.h"

#include <limits>

#include "contents/contents_document.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;

void append_item_tag(std::string& out, std::string_view type, std::string_view param) {
  out.append("<ITEM type=\"").append(type).append("\" param=\"").append(param).append("\">");
}

// The item tag of a built-in command from its value in the command table.
std::string built_in_tag(std::string_view command) {
  if (command.empty()) command = "java:";
  const std::size_t colon = command.find(':');
  std::string tag;
  append_item_tag(tag, command.substr(0, colon), colon == npos ? "" : command.substr(colon + 1));
  return tag;
}

std::string script_tag(std::string_view script) {
  std::string tag;
  append_item_tag(tag, "script", escape_contents(replaced_all(script, "\"", "'")));
  return tag;
}

// `text` with its entities replaced by what they stand for.
std::string unescaped(std::string_view text) {
  const auto entity_at = [](std::string_view rest) -> const ContentsEntity* {
    for (const ContentsEntity& entity : contents_entities) {
      if (entity.character != '\t' && rest.starts_with(entity.written)) return &entity;
    }
    return nullptr;
  };
  std::string plain;
  std::size_t position = 0;
  for (std::size_t hit; (hit = text.find('&', position)) != npos;) {
    plain.append(text, position, hit - position);
    const ContentsEntity* const entity = entity_at(text.substr(hit));
    plain += entity != nullptr ? entity->character : '&';
    position = hit + (entity != nullptr ? entity->written.size() : 1);
  }
  return plain.append(text, position);
}

// What stands in a tag between `start` (as in `type="`) and the next double quote or the tag's end.
std::string_view attribute(std::string_view tag, std::string_view start) {
  const std::size_t found = tag.find(start);
  if (found == npos) return {};
  const std::string_view value = tag.substr(found + start.size());
  return value.substr(0, value.find('"'));
}

// The first command with that value; empty when there is none.
std::string command_key(const Dictionary& commands, std::string_view type, std::string_view param) {
  const std::string value = std::string(type).append(":").append(param);
  for (std::int32_t i = 0; i < commands.Count(); ++i) {
    if (commands.valueAtIndex(i) == value) return commands.keyAtIndex(i);
  }
  return {};
}

// The entry that a start tag and the text behind it stand for, at level 0.
MenuNode node_of(std::string_view tag, std::string_view text, const Dictionary& commands) {
  if (tag == "SEPARATOR") return {.Caption = std::string(separator_caption), .Kind = MenuNode::Separator};
  MenuNode node{.Caption = unescaped(text)};
  if (!tag.starts_with("ITEM")) return node;
  const std::string_view type = attribute(tag, "type=\"");
  const std::string_view param = attribute(tag, "param=\"");
  if (type == "script") {
    node.Param = unescaped(param);
  } else {
    node.Kind = MenuNode::BuiltIn;
    node.Param = command_key(commands, type, param);
  }
  return node;
}

// The list of entries that a document is read into.
class NodeList {
public:
  void add(MenuNode node, std::ptrdiff_t level) {
    if (nodes_.size() == menu_capacity) {
      throw AutomationError(RunTimeError::SubscriptOutOfRange,
                            "The menu document has more than " + std::to_string(menu_capacity) + " entries",
                            "menu document");
    }
    if (level < std::numeric_limits<std::int16_t>::min()) {
      throw AutomationError(RunTimeError::Overflow, "The menu document has too many end tags", "menu document");
    }
    node.Level = static_cast<std::int16_t>(level);
    nodes_.push_back(std::move(node));
  }
  std::vector<MenuNode> take() { return std::move(nodes_); }

private:
  std::vector<MenuNode> nodes_;
};

}  // namespace

std::string write_menu_document(std::span<const MenuNode> nodes, const Dictionary& commands) {
  std::string document;
  const auto close = [&document](int count) {
    for (; count > 0; --count) document += "</>";
  };
  // The tag and caption of an entry are held back until the next one tells whether it is a submenu.
  std::string tag = "<xml>";
  std::string caption;
  int previous = -1;
  for (const MenuNode& node : nodes) {
    // An entry that goes deeper makes the one before it a submenu.
    if (previous >= 0 && node.Level > previous) tag = "<MENU>";
    document.append(tag).append(caption);

    // The entry before it and every level being left are closed.
    close(previous - node.Level + 1);
    previous = node.Level;

    caption = escape_contents(node.Caption);
    if (node.Kind == MenuNode::Script) {
      tag = script_tag(node.Param);
    } else if (node.Kind == MenuNode::Separator) {
      tag = "<SEPARATOR>";
      caption.clear();
    } else {
      tag = built_in_tag(commands.atGet(node.Param));
    }
  }
  document.append(tag).append(caption);
  close(previous + 2);
  return document;
}

std::vector<MenuNode> read_menu_document(std::string_view document, const Dictionary& commands) {
  NodeList nodes;
  std::ptrdiff_t level = -1;
  std::size_t tag_end = 0;
  for (std::size_t start = 0; start < document.size();) {
    // A tag reaches to the next ">", its text to the next "<". A ">" found behind many "<" is looked for once.
    if (tag_end <= start) tag_end = document.find('>', start + 1);
    const std::size_t next = document.find('<', start + 1);
    if (tag_end == npos || next == npos) break;
    const std::string_view tag = document.substr(start + 1, tag_end - start - 1);

    if (tag == "/") {
      --level;
    } else if (level == -1) {
      level = 0;
    } else {
      const std::string_view text = next > tag_end ? document.substr(tag_end + 1, next - tag_end - 1) : "";
      nodes.add(node_of(tag, text, commands), level);
      ++level;
    }
    start = next;
  }
  return nodes.take();
}

}  // namespace plexoras
