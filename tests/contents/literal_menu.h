#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "contents/menu_node.h"
#include "template/dictionary.h"

namespace plexoras {

/// The menu document once more, character by character with positions from 1, as slow and plain as can be: what the
/// library's reader and writer are held against.
class LiteralMenu {
public:
  static std::string escaped(const std::string& text, bool script) {
    std::string out;
    for (const char c : text) {
      switch (c) {
        case '\'':
          out += "&apos;";
          break;
        case '"':
          out += script ? "&apos;" : "&quot;";
          break;
        case '&':
          out += "&amp;";
          break;
        case '<':
          out += "&lt;";
          break;
        case '>':
          out += "&gt;";
          break;
        case '\t':
          out += "&tab;";
          break;
        default:
          out += c;
      }
    }
    return out;
  }

  static std::string unescaped(std::string text) {
    std::string out;
    while (!text.empty()) {
      if (left(text, 6) == "&apos;") {
        out += "'", text = mid(text, 7);
      } else if (left(text, 6) == "&quot;") {
        out += "\"", text = mid(text, 7);
      } else if (left(text, 5) == "&amp;") {
        out += "&", text = mid(text, 6);
      } else if (left(text, 4) == "&gt;") {
        out += ">", text = mid(text, 5);
      } else if (left(text, 4) == "&lt;") {
        out += "<", text = mid(text, 5);
      } else {
        out += text[0], text = mid(text, 2);
      }
    }
    return out;
  }

  static std::string write(const std::vector<MenuNode>& nodes, const Dictionary& commands) {
    std::string T = "<xml>", C, out;
    int P = -1;
    for (const MenuNode& node : nodes) {
      if (P >= 0 && node.Level > P) T = "<MENU>";
      out += T + C;
      for (int l = node.Level; l <= P; ++l) out += "</>";
      P = node.Level;
      C = escaped(node.Caption, false);
      if (node.Kind == 0) T = "<ITEM type=\"script\" param=\"" + escaped(node.Param, true) + "\">";
      if (node.Kind == 1) T = "<SEPARATOR>", C = "";
      if (node.Kind == 2) {
        const std::string v = commands.atGet(node.Param);
        const std::size_t colon = instr(1, v, ":") == 0 ? v.size() + 1 : instr(1, v, ":");
        T = v.empty() ? "<ITEM type=\"java\" param=\"\">"
                      : "<ITEM type=\"" + left(v, colon - 1) + "\" param=\"" + mid(v, colon + 1) + "\">";
      }
    }
    out += T + C;
    for (int l = P; l >= -1; --l) out += "</>";
    return out;
  }

  /// Nothing when there are more entries than a menu holds or a level is no 16-bit number.
  static std::optional<std::vector<MenuNode>> read(const std::string& text, const Dictionary& commands) {
    std::vector<MenuNode> nodes;
    std::size_t p = 1;
    long L = -1;
    while (p < text.size()) {
      const std::size_t end = instr(p + 1, text, ">");
      if (end == 0) break;
      const std::string tag = mid(text, p + 1, end - p - 1);
      const std::size_t n = instr(p + 1, text, "<");
      if (n == 0) break;
      if (tag == "/") {
        L = L - 1;
      } else if (L == -1) {
        L = 0;
      } else {
        if (nodes.size() == 256 || L < -32768) return std::nullopt;
        MenuNode node;
        node.Level = static_cast<std::int16_t>(L);
        L = L + 1;
        if (tag == "SEPARATOR") {
          node.Kind = 1;
          node.Caption = "--";
        } else {
          if (n > end) node.Caption = unescaped(mid(text, end + 1, n - end - 1));
          if (left(tag, 4) == "ITEM") {
            const std::string type = quoted(tag, "type=\""), param = quoted(tag, "param=\"");
            if (type == "script") {
              node.Param = unescaped(param);
            } else {
              node.Kind = 2;
              for (int i = commands.Count() - 1; i >= 0; --i) {
                if (commands.valueAtIndex(i) == type + ":" + param) node.Param = commands.keyAtIndex(i);
              }
            }
          }
        }
        nodes.push_back(node);
      }
      p = n;
    }
    return nodes;
  }

private:
  static std::string left(const std::string& text, std::size_t count) { return text.substr(0, count); }
  static std::string mid(const std::string& text, std::size_t from, std::size_t count = std::string::npos) {
    return from > text.size() ? "" : text.substr(from - 1, count);
  }
  static std::size_t instr(std::size_t from, const std::string& text, const std::string& what) {
    return text.find(what, from - 1) + 1;  // "not found" plus 1 is 0
  }
  static std::string quoted(const std::string& tag, const std::string& start) {
    const std::size_t at = instr(1, tag, start);
    if (at == 0) return "";
    const std::string rest = mid(tag, at + start.size());
    const std::size_t quote = instr(1, rest, "\"");
    return quote == 0 ? rest : left(rest, quote - 1);
  }
};

/// Commands for tests: one value twice, one that is "java:", one without a colon, one with two.
inline Dictionary sample_commands() {
  Dictionary commands;
  commands.atPut("Print", "java:print");
  commands.atPut("Print again", "java:print");
  commands.atPut("Nothing", "java:");
  commands.atPut("Bare", "bare");
  commands.atPut("Link", "url:http://x/");
  return commands;
}

}  // namespace plexoras
