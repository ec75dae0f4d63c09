// The table editor with large tables, driven as an author does: through the form, with the component that ships.
//
//     table_benchmark [--benchmark_filter=load ...]
//
// Names are WHAT/ROWS/COLUMNS. The tables are a square, one column, and one row; those of twice as many cells show how
// the time grows.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "applet/diagram_applet.h"
#include "contents/contents_document.h"
#include "contents/table_contents.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

constexpr std::int32_t edited_cells = 1000;
constexpr std::int32_t insertions = 100;

std::string document_of(std::int64_t rows, std::int64_t columns) {
  ContentsWriter writer;
  writer.set_row_title("Place");
  writer.set_column_title("Year");
  for (std::int64_t column = 0; column < columns; ++column) writer.add_column(std::to_string(1900 + column));
  for (std::int64_t row = 0; row < rows; ++row) {
    writer.add_row("Place " + std::to_string(row));
    for (std::int64_t column = 0; column < columns; ++column) {
      writer.add_value(std::to_string(row * columns + column) + ".50");
    }
  }
  return writer.text();
}

// An editor that has loaded the table which a benchmark asks for.
class Editing {
public:
  explicit Editing(const benchmark::State& state)
      : rows(static_cast<std::int32_t>(state.range(0))),
        columns(static_cast<std::int32_t>(state.range(1))),
        document_(document_of(rows, columns)) {
    register_diagram_applet(host_.components);
    form_ = std::make_unique<DsTableContentsComponent>(host_.platform);
    load();
  }

  DsTableContentsComponent& form() { return *form_; }
  // What opening the editor on a document takes, and a first look at the table.
  void load() {
    if (!form_->IsWellFormed(document_)) std::abort();
    form_->LoadDocument(document_);
  }
  // The author selects a cell, which the boxes then show.
  void select(std::int32_t row, std::int32_t column) {
    if (!form_->tbl.user_call("selectCell", {row, column})) std::abort();
  }

  const std::int32_t rows, columns;

private:
  std::string document_;
  FakePlatform host_;
  std::unique_ptr<DsTableContentsComponent> form_;
};

void load(benchmark::State& state) {
  Editing editing(state);
  for (auto _ : state) editing.load();
}

// Cells all over the table, each given another number.
void select_and_edit(benchmark::State& state) {
  Editing editing(state);
  std::int64_t round = 0;
  for (auto _ : state) {
    ++round;
    const std::int64_t cells = std::int64_t{editing.rows} * editing.columns;
    for (std::int64_t i = 0; i < edited_cells; ++i) {
      const std::int64_t cell = i * 7919 % cells;
      editing.select(static_cast<std::int32_t>(cell / editing.columns),
                     static_cast<std::int32_t>(cell % editing.columns));
      editing.form().txtValue.user_type(std::to_string(i) + "." + std::to_string(round % 2 + 1));
    }
  }
}

// Puts rows (or columns) in before the middle, one after the other, and takes them out again.
void insert_and_delete(benchmark::State& state, Button& (*insert)(DsTableContentsComponent&),
                       Button& (*take_out)(DsTableContentsComponent&)) {
  Editing editing(state);
  editing.select(editing.rows / 2, editing.columns / 2);
  for (auto _ : state) {
    for (int i = 0; i < insertions; ++i) insert(editing.form()).user_click();
    for (int i = 0; i < insertions; ++i) take_out(editing.form()).user_click();
  }
}

void insert_and_delete_rows(benchmark::State& state) {
  insert_and_delete(
      state, [](DsTableContentsComponent& form) -> Button& { return form.cmdInsertRow; },
      [](DsTableContentsComponent& form) -> Button& { return form.cmdDeleteRow; });
}

void insert_and_delete_columns(benchmark::State& state) {
  insert_and_delete(
      state, [](DsTableContentsComponent& form) -> Button& { return form.cmdInsertCol; },
      [](DsTableContentsComponent& form) -> Button& { return form.cmdDeleteCol; });
}

// What hears of the editor's events, and takes the table's document when the author accepts it.
class Acceptance final : public AutomationObject {
public:
  Acceptance(DsTableContentsComponent& form, std::string& document) : form_(form), document_(document) {}

  Variant get(std::string_view member) override { no_such_member(member, "Acceptance"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Acceptance"); }
  Variant call(std::string_view event, Arguments) override {
    if (event == "Accept") document_ = form_.GetDocument();
    return {};
  }

private:
  DsTableContentsComponent& form_;
  std::string& document_;
};

// The document of an edited table: accepting writes the titles and fetches it.
void get_document(benchmark::State& state) {
  Editing editing(state);
  editing.select(0, 0);
  editing.form().txtValue.user_type("-1");
  std::string document;
  editing.form().host = std::make_shared<Acceptance>(editing.form(), document);
  for (auto _ : state) editing.form().cmdAccept.user_click();
  if (document.find("<value>-1</>") == std::string::npos) state.SkipWithError("the document lacks the edit");
}

void table_sizes(benchmark::internal::Benchmark* each) {
  each->Unit(benchmark::kMillisecond);
  each->Args({1000, 100})->Args({100'000, 1})->Args({1, 100'000});
  each->Args({2000, 100})->Args({200'000, 1})->Args({1, 200'000});
}

BENCHMARK(load)->Apply(table_sizes);
BENCHMARK(select_and_edit)->Apply(table_sizes);
BENCHMARK(insert_and_delete_rows)->Apply(table_sizes);
BENCHMARK(insert_and_delete_columns)->Apply(table_sizes);
BENCHMARK(get_document)->Apply(table_sizes);

}  // namespace
}  // namespace plexoras

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
#if defined(__clang__)
  benchmark::AddCustomContext("compiler", "clang " __clang_version__);
#else
  benchmark::AddCustomContext("compiler", "g++ " __VERSION__);
#endif
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}
