// How long the property pages take to load a chart and to apply, with the real control, chart component and template.
//
//     pages_benchmark share/DTC [--benchmark_filter=styles/load ...]
//
// Names are PAGE/load, a selection of the control; PAGE/apply, a click on the apply button; and PAGE/make, a page from
// nothing. What a page has written is read back before anything is timed, so the lists of languages and countries are
// made.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "applet/diagram_applet.h"
#include "chart_control/diagram_dtc.h"
#include "host/headless_site.h"
#include "pages/chart_styles_page.h"
#include "pages/format_page.h"
#include "pages/styles_page.h"
#include "pages/table_styles_page.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

// A new chart in a page, and what property pages share.
struct Chart {
  explicit Chart(const std::string& templates_folder) {
    for (const char* name : {"DIAGRAM.DAT", "APPLET.DAT"}) {
      std::ifstream file(templates_folder + "/" + name, std::ios::binary);
      if (!file) throw std::runtime_error("cannot read " + templates_folder + "/" + name);
      host.files[name] = {std::istreambuf_iterator<char>(file), {}};
    }
    register_diagram_applet(host.components);
    site.name = "Sales";
    site.shows_design_view = true;
    control->InitProperties();
  }

  FakePlatform host;
  TemplateSession templates{host.platform};
  HeadlessSite site{host.components};
  std::shared_ptr<DiagramDTC> control = std::make_shared<DiagramDTC>(templates, site);
  PagesSession session{templates};
};

using MakePage = std::function<std::unique_ptr<PropertyPage>(Chart&)>;

// An author's edit has to arrive in the chart: turns a check box and looks at its property.
void check_edits(PropertyPage& page, Chart& chart, const char* box_name, const char* property) {
  const bool before = chart.control->get(property).to_boolean();
  page.select({chart.control});
  auto& box = dynamic_cast<CheckBox&>(*page.find(box_name));
  if (!box.user_click() || !page.Changed) throw std::runtime_error(page.caption + ": the click did nothing");
  page.apply();
  if (chart.control->get(property).to_boolean() == before) {
    throw std::runtime_error(page.caption + ": nothing was applied");
  }
}

void load(benchmark::State& state, PropertyPage& page, Chart& chart) {
  auto* const sizes = dynamic_cast<ListBox*>(page.find("cmbFontSize"));
  for (auto _ : state) {
    page.select({chart.control});
    if (sizes != nullptr) sizes->clear();  // every load adds to it
  }
}

void apply(benchmark::State& state, PropertyPage& page, Chart& chart) {
  page.select({chart.control});
  for (auto _ : state) page.apply();
}

void make(benchmark::State& state, const MakePage& make_page, Chart& chart) {
  for (auto _ : state) benchmark::DoNotOptimize(make_page(chart));
}

void run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) throw std::runtime_error("usage: pages_benchmark TEMPLATES_FOLDER [--benchmark_...]");
#ifdef __clang__
  benchmark::AddCustomContext("compiler", "clang " __clang_version__);
#else
  benchmark::AddCustomContext("compiler", "g++ " __VERSION__);
#endif
  Chart chart(argv[1]);

  struct Row {
    const char* name;
    MakePage make_page;
    const char* box;
    const char* property;
    std::unique_ptr<PropertyPage> page = {};
  };
  Row rows[] = {
      {"styles", [](Chart& c) { return std::make_unique<Styles>(c.session); }, "chkHasBorder", "HasBorder"},
      {"chart styles", [](Chart&) { return std::make_unique<ChartStyles>(); }, "cbHasStatistics", "HasStatistics"},
      {"table styles", [](Chart&) { return std::make_unique<TableStyles>(); }, "cbEqualRows", "EqualRows"},
      {"format", [](Chart& c) { return std::make_unique<Format>(c.host); }, "chkUseDefaultLocale",
       "FormatUseDefaultLocale"},
  };
  const auto add = [](const std::string& name, auto timed) {
    benchmark::RegisterBenchmark(name.c_str(), timed)->Unit(benchmark::kMicrosecond);
  };
  for (Row& row : rows) {
    row.page = row.make_page(chart);
    check_edits(*row.page, chart, row.box, row.property);
    const std::string name = row.name;
    add(name + "/load", [&](benchmark::State& state) { load(state, *row.page, chart); });
    add(name + "/apply", [&](benchmark::State& state) { apply(state, *row.page, chart); });
    add(name + "/make", [&](benchmark::State& state) { make(state, row.make_page, chart); });
  }
  benchmark::RunSpecifiedBenchmarks();
}

}  // namespace
}  // namespace plexoras

int main(int argc, char** argv) {
  try {
    plexoras::run(argc, argv);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "pages_benchmark: " << error.what() << "\n";
    return EXIT_FAILURE;
  }
}
