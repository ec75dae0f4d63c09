// The template engine beside ctemplate, in memory, and the growth of its time with its work.
//
//     benchmarks/run.py build/release/bin --workloads FOLDER
//     template_benchmark FOLDER [--benchmark_filter=fragment ...]
//
// FOLDER holds the workloads that run.py makes. Each engine's text is compared with the one that run.py expects before
// anything is timed. Names are WORKLOAD/TOOL, and linear/WHAT/COUNT.

#include <benchmark/benchmark.h>
#include <ctemplate/template.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "template/engine_fixture.h"
#include "template/ini_section.h"

namespace plexoras {
namespace {

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path + "; make it with run.py BIN_DIR --workloads FOLDER");
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t from = 0, end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
    lines.push_back(text.substr(from, end - from));
  }
  return lines;
}

void check(const char* what, const std::string& text, const std::string& expected) {
  if (text != expected) throw std::runtime_error(std::string(what) + ": the text is not the one expected");
}

// What run.py made, in memory. The templates of both engines end their lines in CR LF, and so does what is expected.
struct Workloads {
  explicit Workloads(const std::string& folder)
      : fragment_expected(read_file(folder + "/fragment.expected")),
        section(read_file(folder + "/section.text")),
        section_expected(read_file(folder + "/section.expected")),
        calls(read_file(folder + "/calls.text")),
        calls_expected(read_file(folder + "/calls.expected")),
        arguments(lines_of(read_file(folder + "/arguments.txt"))) {
    host.files["fragment.dat"] = read_file(folder + "/fragment.dat");
    host.files["small.dat"] = "[SMALL]\r\n<p>A small section</p>\r\n";
    for (const char* name : {"fragment", "section", "calls"}) {
      ctemplate::StringToTemplateCache(name, read_file(folder + "/" + name + ".tpl"), ctemplate::DO_NOT_STRIP);
    }
    for (const std::string& line : lines_of(read_file(folder + "/variables.txt"))) {
      const std::size_t equals = line.find('=');
      variables.emplace_back(line.substr(0, equals), line.substr(equals + 1));
    }
  }

  FakePlatform host;
  std::string fragment_expected;
  std::string section;
  std::string section_expected;
  std::string calls;
  std::string calls_expected;
  std::vector<std::string> arguments;
  std::vector<std::pair<std::string, std::string>> variables;
};

void define(const Workloads& work, IniSection& section) {
  for (const auto& [name, value] : work.variables) section.Define(name, value);
}

void define(const Workloads& work, ctemplate::TemplateDictionary& dictionary) {
  for (const auto& [name, value] : work.variables) dictionary.SetValue(name, value);
}

// A round as a page has it: bind the variables, fetch the template, make the text, let everything go.

void fragment_with_engine(benchmark::State& state, const Workloads& work) {
  TemplateSession session(work.host.platform);
  const auto round = [&](const auto& use) {
    IniSection section(session);
    define(work, section);
    section.Read("fragment.dat", "FRAGMENT");
    use(section.GetContents());
  };
  round([&](const std::string& text) { check("fragment", text, work.fragment_expected); });
  for (auto _ : state) round([](const std::string& text) { benchmark::DoNotOptimize(text.data()); });
}

void fragment_with_ctemplate(benchmark::State& state, const Workloads& work) {
  const auto round = [&](const auto& use) {
    ctemplate::TemplateDictionary dictionary("fragment");
    define(work, dictionary);
    std::string text;
    ctemplate::ExpandTemplate("fragment", ctemplate::DO_NOT_STRIP, &dictionary, &text);
    use(text);
  };
  round([&](const std::string& text) { check("fragment", text, work.fragment_expected); });
  for (auto _ : state) round([](const std::string& text) { benchmark::DoNotOptimize(text.data()); });
}

// A large text in which little happens: the first run of an object, which has to get memory for its result, and later
// ones. Only the runs are timed.

void section_first_with_engine(benchmark::State& state, const Workloads& work) {
  TemplateSession session(work.host.platform);
  for (auto _ : state) {
    state.PauseTiming();
    {
      IniSection section(session);
      define(work, section);
      section.SetContents(work.section);
      state.ResumeTiming();
      section.Preprocess();
      state.PauseTiming();
      check("section", section.GetContents(), work.section_expected);
    }
    state.ResumeTiming();
  }
}

void section_first_with_ctemplate(benchmark::State& state, const Workloads& work) {
  ctemplate::TemplateDictionary dictionary("section");
  define(work, dictionary);
  for (auto _ : state) {
    state.PauseTiming();
    {
      std::string text;
      state.ResumeTiming();
      ctemplate::ExpandTemplate("section", ctemplate::DO_NOT_STRIP, &dictionary, &text);
      state.PauseTiming();
      check("section", text, work.section_expected);
    }
    state.ResumeTiming();
  }
}

void section_again_with_engine(benchmark::State& state, const Workloads& work) {
  TemplateSession session(work.host.platform);
  IniSection section(session);
  define(work, section);
  section.SetContents(work.section);
  check("section", section.GetContents(), work.section_expected);
  for (auto _ : state) {
    section.Preprocess();
    benchmark::ClobberMemory();
  }
  check("section", section.GetContents(), work.section_expected);
}

void section_again_with_ctemplate(benchmark::State& state, const Workloads& work) {
  ctemplate::TemplateDictionary dictionary("section");
  define(work, dictionary);
  std::string text;
  ctemplate::ExpandTemplate("section", ctemplate::DO_NOT_STRIP, &dictionary, &text);
  check("section", text, work.section_expected);
  for (auto _ : state) {
    text.clear();
    ctemplate::ExpandTemplate("section", ctemplate::DO_NOT_STRIP, &dictionary, &text);
    benchmark::ClobberMemory();
  }
}

// Calls. What comes nearest in ctemplate is a part of a template that is repeated with a dictionary for each time.

void calls_with_engine(benchmark::State& state, const Workloads& work) {
  TemplateSession session(work.host.platform);
  IniSection section(session);
  section.SetContents(work.calls);
  check("calls", section.GetContents(), work.calls_expected);
  for (auto _ : state) section.Preprocess();
}

void calls_with_ctemplate(benchmark::State& state, const Workloads& work) {
  std::string text;
  const auto round = [&] {
    ctemplate::TemplateDictionary dictionary("calls");
    for (const std::string& argument : work.arguments) {
      dictionary.AddSectionDictionary("CALL")->SetValue("ARGUMENT", argument);
    }
    text.clear();
    ctemplate::ExpandTemplate("calls", ctemplate::DO_NOT_STRIP, &dictionary, &text);
  };
  round();
  check("calls", text, work.calls_expected);
  for (auto _ : state) round();
}

// Texts of `count` of one thing each. Twice as many should take twice the time.
struct Growth {
  const char* what;
  std::string (*text)(std::size_t count);
  std::size_t (*expected_size)(std::size_t count);
};

const Growth growths[] = {
    {"call lines", [](std::size_t count) { return "#MACRO BOLD <b>$(_NAME)</b>\r\n" + repeated("#BOLD x\r\n", count); },
     [](std::size_t count) { return 10 * count; }},
    {"references in a line", [](std::size_t count) { return repeated("$(X) ", count) + "\r\n"; },
     [](std::size_t count) { return 6 * count + 2; }},
    {"lines continued into one", [](std::size_t count) { return repeated("text\\\r\n", count) + "end\r\n"; },
     [](std::size_t count) { return 4 * count + 5; }},
    {"parentheses nested in one reference",
     [](std::size_t count) { return "$(" + repeated("(", count) + repeated(")", count) + ")\r\n"; },
     [](std::size_t) { return std::size_t{2}; }},
    {"inclusions of a small section",
     [](std::size_t count) { return repeated("#INCLUDE SMALL FROM small.dat\r\n", count); },
     [](std::size_t count) { return 24 * count; }},
};

void grow(benchmark::State& state, const Workloads& work, const Growth& growth) {
  const auto count = static_cast<std::size_t>(state.range(0));
  TemplateSession session(work.host.platform);
  IniSection section(session);
  section.Define("X", "value");
  section.SetContents(growth.text(count));
  if (section.GetContents().size() != growth.expected_size(count)) {
    throw std::runtime_error(std::string(growth.what) + ": the text is not as long as expected");
  }
  for (auto _ : state) section.Preprocess();
}

std::string compiler() {
#if defined(__clang__)
  return "clang " __clang_version__;
#else
  return "g++ " __VERSION__;
#endif
}

void run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) throw std::runtime_error("usage: template_benchmark FOLDER [--benchmark_...]");
  const Workloads work(argv[1]);

  using Timed = void (*)(benchmark::State&, const Workloads&);
  const std::pair<const char*, Timed> beside_each_other[] = {
      {"fragment/engine", fragment_with_engine},
      {"fragment/ctemplate", fragment_with_ctemplate},
      {"section first/engine", section_first_with_engine},
      {"section first/ctemplate", section_first_with_ctemplate},
      {"section again/engine", section_again_with_engine},
      {"section again/ctemplate", section_again_with_ctemplate},
      {"calls/engine", calls_with_engine},
      {"calls/ctemplate", calls_with_ctemplate},
  };
  for (const auto& [name, timed] : beside_each_other) {
    benchmark::RegisterBenchmark(name, timed, std::cref(work))->Unit(benchmark::kMillisecond);
  }
  for (const Growth& growth : growths) {
    benchmark::RegisterBenchmark((std::string("linear/") + growth.what).c_str(), grow, std::cref(work),
                                 std::cref(growth))
        ->Arg(100'000)
        ->Arg(200'000)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::AddCustomContext("compiler", compiler());
  benchmark::RunSpecifiedBenchmarks();
}

}  // namespace
}  // namespace plexoras

int main(int argc, char** argv) {
  try {
    plexoras::run(argc, argv);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "template_benchmark: " << error.what() << "\n";
    return EXIT_FAILURE;
  }
}
