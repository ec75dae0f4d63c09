#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine_fixture.h"
#include "literal_engine.h"

namespace plexoras {
namespace {

// What both engines are given, in parts that can be left out one by one.
struct Input {
  std::vector<std::string> variables;       // "NAME=value"
  std::vector<std::string> contents;        // given to `SetContents`; section S0 of T.DAT is read when empty
  std::vector<std::string> template_lines;  // of T.DAT, each with its line end
  std::vector<std::string> other_lines;     // of O.DAT
  std::vector<std::string> names;           // looked for after the run
};

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += part;
  return text;
}

std::string visible(std::string_view text) {
  const std::string shown = replaced_all(replaced_all(text, "\r\n", "~\n"), "\r", "\\r");
  return replaced_all(replaced_all(shown, "\t", "\\t"), "\n", "\n    ");
}

std::string describe(const Input& input) {
  const auto list = [](const char* title, const std::vector<std::string>& parts, const char* separator) {
    std::string text = std::string("\n  ") + title + ":\n    ";
    for (const std::string& part : parts) text += visible(part) + separator;
    return text;
  };
  return "\"~\" is CR LF" + list("variables", input.variables, "\n    ") + list("contents", input.contents, "") +
         list("T.DAT", input.template_lines, "") + list("O.DAT", input.other_lines, "") +
         list("names", input.names, "\n    ") + "\n";
}

// Stops again twice, then runs on; writes down where it halted.
struct Halts {
  bool answer(std::string_view line) {
    log += "halt at " + visible(line) + "\n";
    return ++count % 3 != 0;
  }
  int count = 0;
  std::string log;
};

// Drives either engine through one request and tells all that can be seen of it.
template <class Section, class List>
std::string observe(Section& section, const Input& input, List list) {
  for (const std::string& variable : input.variables) {
    const std::size_t equals = variable.find('=');
    section.Define(variable.substr(0, equals), variable.substr(equals + 1));
  }
  section.Read("T.DAT", "S0");
  if (!input.contents.empty()) section.SetContents(joined(input.contents));
  std::string text = "result:\n    " + visible(section.GetContents()) + "\nvariables:\n" + list(section);
  for (const std::string& name : input.names) {
    text += "find " + visible(name) + ": ";
    try {
      text += visible(section.Find(name)) + (section.isAbsent(name) ? " (absent)" : "");
    } catch (const AutomationError&) {
      text += "error";
    } catch (const LiteralSection::Failure&) {
      text += "error";
    }
    text += "\n";
  }
  return text;
}

std::string messages_and_halts(const std::vector<std::string>& messages, const Halts& halts) {
  std::string text;
  for (const std::string& message : messages) text += "message " + visible(message) + "<end>\n";
  return text + halts.log;
}

std::string entry(const std::string& name, const std::string& value) {
  return "    " + visible(name) + "=" + visible(value) + "\n";
}

// Nothing when the input runs away.
std::optional<std::string> literal_outcome(const Input& input) {
  LiteralWorld world;
  Halts halts;
  world.files = {{"/library/T.DAT", joined(input.template_lines)}, {"O.DAT", joined(input.other_lines)}};
  world.module_directory = "/library/";
  world.today = "21.11.2026";
  world.halt = [&](const std::string& line) { return halts.answer(line); };
  LiteralSection section(world);
  try {
    const std::string seen = observe(section, input, [](LiteralSection& from) {
      std::string text;
      for (const auto& [name, value] : from.GetVariables()) text += entry(name, value);
      return text;
    });
    return seen + messages_and_halts(world.messages, halts);
  } catch (const LiteralSection::Runaway&) {
    return std::nullopt;
  }
}

std::string engine_outcome(const Input& input) {
  FakePlatform host;
  Halts halts;
  host.files = {{"/library/T.DAT", joined(input.template_lines)}, {"O.DAT", joined(input.other_lines)}};
  host.platform.halt = [&](const HaltRequest& request) { return halts.answer(request.current_line); };
  TemplateSession session(host.platform, {.nesting = 256, .text_bytes = std::size_t{1} << 21});
  IniSection section(session);
  const std::string seen = observe(section, input, [](IniSection& from) {
    std::string text;
    const auto variables = from.GetVariables();
    for (std::int32_t i = 0; i < variables->Count(); ++i) {
      text += entry(variables->keyAtIndex(i), variables->valueAtIndex(i));
    }
    return text;
  });
  return seen + messages_and_halts(host.messages, halts);
}

bool differ(const Input& input) {
  const std::optional<std::string> expected = literal_outcome(input);
  return expected && engine_outcome(input) != *expected;
}

// Leaves out parts, then characters of parts, for as long as the engines still differ.
Input shrunk(Input input) {
  for (bool changed = true; changed;) {
    changed = false;
    const auto keep_if_it_differs = [&](std::vector<std::string>& parts, auto change) {
      const std::vector<std::string> before = parts;
      change();
      if (differ(input)) return changed = true;
      parts = before;
      return false;
    };
    for (auto* parts : {&input.names, &input.variables, &input.contents, &input.template_lines, &input.other_lines}) {
      for (std::size_t i = parts->size(); i-- > 0;) {
        keep_if_it_differs(*parts, [&] { parts->erase(parts->begin() + static_cast<std::ptrdiff_t>(i)); });
      }
      for (std::size_t i = 0; i < parts->size(); ++i) {
        const std::size_t first = parts == &input.variables ? (*parts)[i].find('=') + 1 : 0;
        for (std::size_t at = (*parts)[i].size(); at-- > first;) {
          if ((*parts)[i][at] == '\n') continue;
          keep_if_it_differs(*parts, [&] { (*parts)[i].erase(at, 1); });
        }
      }
    }
  }
  return input;
}

// Random templates in which everything that templates can do stands close together.
//
// In an alternative, "@X" is a text made by rule X; "3*" before it gives it three times its chance. Where rules have
// nested deep enough, the first alternative is taken.
struct Rule {
  char name;
  std::vector<std::string> alternatives;
};

const Rule grammar[] = {
    // Text, its pieces, references and calls.
    {'T', {"@W", "2*@P", "3*@P@P", "3*@P@P@P", "@P@P@P@P"}},
    {'P',
     {"@W", "4*@W", "@S", "\\$(@N)", "\\#(@N)", "$(_NAME)", "$(_VALUE)", "$($(_NAME))", "3*$(@N)", "5*$(@R)", "$(?@N)",
      "4*#(@C)", "$(@R", "#(@C"}},
    {'W', {"x", "a", "banana", "b c", "1", "\xE4", "<p>", " ", "  ", ",", ", ", "-", "a,b", ""}},
    {'S', {"\t", "\\", "(", ")", "\"", "'", "#", "$", "[", "]", "FROM ", "\r", "\n", ";", "()", "\\\\"}},
    {'R',
     {"@N", "4*@N", " @N  ", "2*?@N", "\\@N", "\\@B", "\\@N,@T,@T", "\\@N,a,b", "\\@N,a,", "\\@N,,x", "\\@N,a,aa,z",
      "\\@N,$(@N),@N", "\\$(@N)", "@B", "@T", "$(@R)", "? ", "?$(@N)", "?@B"}},
    {'C',
     {"@N @N", "5*@N @N", "@N  @B", "2*@N @T", "@B @T", "%LENGTH @T", "2*%INC @I", "%DEC  @I", "%TODAY", "%NONE 1", "",
      " M A", "(A b", "XYZ 1 2", "\\A x"}},
    {'I', {"41", "-1", "+0", "007"}},
    // Lines. Some fail.
    {'L',
     {"@T", "6*@T", "3*#DEFINE @V", "3*#MACRO @V", "#MACRO @M <@T$(_NAME)>", "#MACRO @M <@T$(_VALUE)>", "#UNDEF @N",
      "2*#INCLUDE @Q", "#INCLUDE @Q FROM T.DAT", "#INCLUDE @Q FROM O.DAT", "4*#@C", "@O", "@F"}},
    {'M', {"M", "N", "?O", "?P"}},
    {'O',
     {"#", "#XYZ 1", "#DEFINEX 1", "# A", "#(M A)", "", "   ", "#INCLUDE S1 FROM NO.DAT", ";c", "#UNDEF @T", "#HALT",
      "#HALT VB", "  #HALTING", "#ENDIF", "#INCLUDE  $(E)S3"}},
    {'F',
     {"@T", "4*@T", "#DEFINE A", "#DEFINE A '", "#%INC x", "#ELSE", "$([)", "#IFINSIDE A", "#IFEQUAL A", "$(\\@N,a)"}},
    {'D',
     {"#IFDEF @E", "#IFUNDEF @E", "#IFUNDEF $(A)@E", "#IFINSIDE @E (x,a,b c)", "#IFINSIDE @E (x, a)",
      "#IFINSIDE @E x,,1", "#IFINSIDE @E ()", "#IFINSIDE @E ($(A),$(B))", "#IFINSIDE @E @T", "#IFEQUAL @E $(@N)",
      "#IFEQUAL @E @W", "#IFNEQUAL@E x", "#IFNEQUAL @E $(B)"}},
    {'E', {"@N", "7*@N", "@B", "\\A"}},
};

class Generator {
public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  Input input() {
    Input made;
    for (std::size_t i = 0; i < names.size(); ++i) {
      first_name_ = i + 1;
      if (chance(45)) made.variables.push_back(names[i] + "=" + (chance(10) ? "" : make('T', 2)));
    }
    first_name_ = 0;
    if (chance(15)) made.variables.push_back("C=x\r\n" + make('L', 2) + "\r\n" + make('T', 1));
    if (chance(25)) append_lines(made.contents, 12);
    if (!made.contents.empty() && chance(40)) made.contents.push_back(make('L', 2));
    for (std::size_t i = 0; i < sections; ++i) append_section(made.template_lines, i);
    if (chance(20)) append_section(made.template_lines, 1);
    for (std::size_t i = 1; i < sections; i += 2) append_section(made.other_lines, i);
    for (int i = 0; i < 3; ++i) made.names.push_back(make(chance(50) ? 'N' : 'B', 1));
    return made;
  }

private:
  static constexpr std::size_t sections = 5;
  const std::vector<std::string> names = {"A", "B", "?O", "C", "M", "D", "N", "?P", "E", "S2", "F", "S3", "S4"};

  std::size_t below(std::size_t bound) { return random_() % bound; }
  bool chance(unsigned percent) { return random_() % 100 < percent; }
  std::string pick(const std::vector<std::string>& from) { return from[below(from.size())]; }
  // Mostly from `first` on: values refer to names further down the list, and sections to later ones, or hardly any
  // template would settle.
  std::size_t index(std::size_t first, std::size_t size) {
    return chance(3) || first >= size ? below(size) : first + below(size - first);
  }

  std::string make(char rule, int depth) {
    if (rule == 'N') {
      if (chance(6)) return pick({"_NAME", "_VALUE", "NONE", "", "A B", "\\A", "%INC"});
      return first_name_ >= names.size() && chance(90) ? "NONE" : names[index(first_name_, names.size())];
    }
    if (rule == 'Q') {
      return chance(3) ? pick({"", "S9", " S2"}) : "S" + std::to_string(index(first_section_, sections));
    }
    if (rule == 'B') {
      const std::string section = make('Q', depth);
      if (chance(3)) return pick({"[", "[]", "[" + section + "x", "[NO.DAT FROM A]", "[FROM " + section + "]"});
      return chance(70) ? "[" + section + "]" : "[" + pick({"O.DAT", "T.DAT"}) + " FROM  " + section + " ]";
    }
    if (rule == 'V') {  // a name and its value
      const std::size_t i = below(names.size());
      const std::size_t outer = std::exchange(first_name_, i + 1);
      const std::string value = make('T', depth);
      first_name_ = outer;
      return names[i] + " " + (chance(75) ? "x" + value : pick({"'", "\""}) + value + pick({"'", "\"", "x"}));
    }
    const Rule* found = grammar;
    while (found->name != rule) ++found;
    return filled_in(depth > 0 ? weighted(found->alternatives) : found->alternatives[0], depth - 1);
  }

  std::string weighted(const std::vector<std::string>& alternatives) {
    const auto weight = [](const std::string& text) {
      return text.size() > 1 && text[1] == '*' ? static_cast<std::size_t>(text[0] - '0') : 1;
    };
    std::size_t total = 0;
    for (const std::string& text : alternatives) total += weight(text);
    std::size_t left = below(total);
    std::size_t i = 0;
    for (; left >= weight(alternatives[i]); ++i) left -= weight(alternatives[i]);
    return alternatives[i].substr(weight(alternatives[i]) > 1 ? 2 : 0);
  }

  std::string filled_in(const std::string& alternative, int depth) {
    std::string made;
    for (std::size_t i = 0; i < alternative.size(); ++i) {
      alternative[i] == '@' ? made += make(alternative[++i], depth) : made += alternative[i];
    }
    return made;
  }

  void append_line(std::vector<std::string>& to, std::string made) {
    if (chance(8)) made = pick({" ", "   ", "\t"}) + made;
    if (chance(7)) made += pick({"\\", "\\\\", "\t\\", " \\"});
    to.push_back(made + (in_file_ && chance(5) ? pick({"\r", "\n"}) : "\r\n"));
  }

  void append_lines(std::vector<std::string>& to, std::size_t most) {
    for (std::size_t count = below(most); count > 0; --count) {
      if (!chance(18)) {
        append_line(to, make('L', 4));
        continue;
      }
      append_line(to, make('D', 3));
      append_lines(to, 4);
      if (chance(50)) append_line(to, chance(90) ? "#ELSE" : "  #ELSEWHERE");
      append_lines(to, 3);
      if (chance(95)) append_line(to, chance(90) ? "#ENDIF" : "\t#ENDIFS");
    }
  }

  void append_section(std::vector<std::string>& to, std::size_t number) {
    in_file_ = true;
    first_section_ = number + 1;
    to.push_back("[S" + std::to_string(number) + (chance(98) ? "]\r\n" : "] \r\n"));
    if (number > 0 && chance(60)) append_line(to, "#DEFINE S" + std::to_string(number) + " " + make('T', 2));
    append_lines(to, number == 0 ? 14 : 6);
  }

  std::mt19937 random_;
  std::size_t first_name_ = 0;
  std::size_t first_section_ = 1;
  bool in_file_ = false;
};

TEST(TemplateEngine, GivesWhatTheLiteralEngineGives) {
  const char* const wanted = std::getenv("PLEXORAS_EQUIVALENCE_CASES");
  const std::uint32_t cases = wanted != nullptr ? static_cast<std::uint32_t>(std::stoul(wanted)) : 4000;
  std::uint32_t settled = 0;
  std::uint32_t failed = 0;
  for (std::uint32_t seed = 1; seed <= cases; ++seed) {
    const Input input = Generator(seed).input();
    const std::optional<std::string> expected = literal_outcome(input);
    const std::string seen = engine_outcome(input);
    if (!expected) continue;
    ++settled;
    if (expected->find("\nmessage ") != std::string::npos) ++failed;
    if (seen == *expected) continue;
    const Input smallest = shrunk(input);
    FAIL() << "seed " << seed << ", " << describe(smallest) << "\nexpected " << *literal_outcome(smallest) << "\nseen "
           << engine_outcome(smallest);
  }
  RecordProperty("settled", static_cast<int>(settled));
  RecordProperty("failed", static_cast<int>(failed));
  // Otherwise the templates no longer reach what they are made to reach.
  EXPECT_GT(settled, cases * 7 / 10);
  EXPECT_GT(failed, cases / 10);
  EXPECT_LT(failed, cases / 2);
}

}  // namespace
}  // namespace plexoras
