// The templates that ship, as the checker finds them, and each of their lines broken.
#include <gtest/gtest.h>

#include <algorithm>

#include "checked_files.h"

namespace plexoras {
namespace {

constexpr std::string_view shipped[] = {"APPLET.DAT", "DIAGRAM.DAT", "TEMPLATE.DAT"};

struct ShippedFiles : CheckedFiles {
  ShippedFiles() {
    for (const std::string_view name : shipped) {
      host.files[std::string(name)] = source_file("share/DTC/" + std::string(name));
    }
  }
  std::vector<Finding> check_all() { return check({shipped, shipped + std::size(shipped)}); }
};

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> all;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    all.push_back(text.substr(at, end - at));
    at = end;
  }
  return all;
}

std::string joined(const std::vector<std::string>& all) {
  std::string text;
  for (const std::string& line : all) text += line;
  return text;
}

bool begins_with_any(std::string_view line, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return line.starts_with(word); });
}

// The outermost condition around each line, as line numbers; 0 where there is none.
struct Extent {
  std::size_t first = 0;
  std::size_t last = 0;
};
std::vector<Extent> conditions_around(const std::vector<std::string>& all) {
  std::vector<Extent> extents(all.size());
  std::size_t depth = 0;
  std::size_t first = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (begins_with_any(all[i], {"#IF"}) && depth++ == 0) first = i;
    if (begins_with_any(all[i], {"#ENDIF"}) && --depth == 0) {
      for (std::size_t inside = first; inside <= i; ++inside) extents[inside] = {first + 1, i + 1};
    }
  }
  return extents;
}

TEST(Check, FindsNothingInTheTemplatesThatShip) { EXPECT_EQ(places(ShippedFiles().check_all()), ""); }

// Each directive of the templates that ship is misspelled, doubled and dropped in turn. A misspelled one is told at its
// place. A broken condition is told in the outermost condition that it belongs to, for nothing says which of its lines
// is the missing one's. A definition or inclusion that is doubled means the same, and one that is dropped is told where
// its name is missed, if anything in the templates misses it.
TEST(Check, FindsEachBrokenDirectiveOfTheTemplatesThatShip) {
  ShippedFiles files;
  std::size_t dropped_definitions = 0;
  std::size_t missed = 0;
  for (const std::string_view name : shipped) {
    const std::string original = files.host.files[std::string(name)];
    const std::vector<std::string> all = lines_of(original);
    const std::vector<Extent> extents = conditions_around(all);
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (!all[i].starts_with('#')) continue;
      const std::string where = std::string(name) + ":" + std::to_string(i + 1) + ": " + all[i];
      const auto check_with = [&](const std::vector<std::string>& changed) {
        files.host.files[std::string(name)] = joined(changed);
        std::vector<Finding> findings = files.check_all();
        files.host.files[std::string(name)] = original;
        return findings;
      };
      const bool is_condition = begins_with_any(all[i], {"#IF", "#ENDIF"});
      const bool is_else = all[i].starts_with("#ELSE");
      const auto is_told_inside = [&](const std::vector<Finding>& findings, std::size_t added) {
        return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
          const bool is_about_conditions = finding.rule->name == "unclosed-conditional" ||
                                           finding.rule->name == "stray-endif" || finding.rule->name == "stray-else" ||
                                           finding.rule->name == "second-else";
          return is_about_conditions && finding.path == name && finding.line >= extents[i].first &&
                 finding.line <= extents[i].last + added;
        });
      };

      std::vector<std::string> changed = all;
      changed[i].erase(2, 1);
      const std::vector<Finding> misspelled = check_with(changed);
      EXPECT_TRUE(std::any_of(misspelled.begin(), misspelled.end(), [&](const Finding& finding) {
        return finding.rule->name == "misspelled-directive" && finding.line == i + 1 && finding.column == 1;
      })) << where;

      changed = all;
      changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(i), all[i]);
      const std::vector<Finding> doubled = check_with(changed);
      if (is_condition || is_else) {
        EXPECT_TRUE(is_told_inside(doubled, 1)) << where;
      } else {
        EXPECT_EQ(places(doubled), "") << where;
      }

      changed = all;
      changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(i));
      const std::vector<Finding> dropped = check_with(changed);
      if (is_condition) {
        EXPECT_TRUE(is_told_inside(dropped, 0)) << where;
      }
      if (is_else) {
        EXPECT_EQ(places(dropped), "") << where;
      }
      if (is_condition || is_else) continue;
      ++dropped_definitions;
      missed += dropped.empty() ? 0 : 1;
      // What is told of a dropped line names what it defined or brought; of an entry of a form, its key.
      const std::string_view argument = trimmed(std::string_view(all[i]).substr(all[i].find(' ') + 1));
      std::string defined(argument.substr(0, argument.find_first_of(" \r\n")));
      if (defined.ends_with("_SPEC")) defined.resize(defined.size() - 5);
      for (const Finding& finding : dropped) {
        // Without the start tag of their element, scripts are told, too.
        if (finding.rule->name == "unescaped-text" && all[i].find("<script") != std::string::npos) continue;
        EXPECT_NE((finding.what + finding.source_line).find(defined), std::string::npos) << where << to_text(finding);
      }
    }
  }
  RecordProperty("dropped_definitions", static_cast<int>(dropped_definitions));
  RecordProperty("told_of_them", static_cast<int>(missed));
  EXPECT_GE(missed, 20U) << "of " << dropped_definitions;
}

}  // namespace
}  // namespace plexoras
