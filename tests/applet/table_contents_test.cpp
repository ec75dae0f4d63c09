// The table editor with the component that ships, played as an author does: open, select, type, confirm, cancel.

#include "contents/table_contents.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "applet/contents_reader.h"
#include "applet/diagram_applet.h"
#include "refusal.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

constexpr std::string_view sales =
    "<xml><rows>Region<row>North</><row>South</></><cols>Quarter<col>Q1</><col>Q2</></>"
    "<data>Sales<value>1.10</><value>n/a</><value>3</></></xml>";

// The shipped component with a log of what is put and called.
class LoggedComponent final : public AutomationObject {
public:
  explicit LoggedComponent(std::string& log) : log_(log) {}

  Variant get(std::string_view member) override { return applet_.get(member); }
  void put(std::string_view member, const Variant& value) override {
    log_ += std::string(member) + "=" + value.to_text() + "; ";
    applet_.put(member, value);
  }
  Variant call(std::string_view member, Arguments arguments) override {
    if (!member.starts_with("get") && member != "setEventSink") {
      log_ += member;
      for (const Variant& argument : arguments) {
        log_ += " " + (argument.type() == ValueType::Object ? "list" : argument.to_text());
      }
      log_ += "; ";
    }
    return applet_.call(member, arguments);
  }

private:
  DiagramApplet applet_;
  std::string& log_;
};

// What hears of the editor's events.
class EventLog final : public AutomationObject {
public:
  explicit EventLog(std::string& log) : log_(log) {}

  Variant get(std::string_view member) override { no_such_member(member, "EventLog"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "EventLog"); }
  Variant call(std::string_view event, Arguments) override { return log_ += std::string(event) + "; ", Variant(); }

private:
  std::string& log_;
};

struct Editing {
  Editing() {
    host.components.add("Plexoras.DiagramApplet", [this] { return std::make_shared<LoggedComponent>(log); });
    form = std::make_shared<DsTableContentsComponent>(host.platform);
    form->host = std::make_shared<EventLog>(log);
  }
  explicit Editing(std::string_view document) : Editing() {
    form->LoadDocument(document);
    log.clear();
  }
  void select(int row, int column) { EXPECT_TRUE(form->tbl.user_call("selectCell", {row, column})); }
  // "value|row label|column label" as the boxes show them.
  std::string shown() const {
    return form->txtValue.text() + "|" + form->txtRowLabel.text() + "|" + form->txtColLabel.text();
  }

  FakePlatform host;
  std::string log;
  std::shared_ptr<DsTableContentsComponent> form;
};

TEST(TableEditor, ShowsTheComponentAsAnEditableGrid) {
  Editing editing;
  EXPECT_EQ(editing.log,
            "HasPopupMenu=False; HasLegend=False; IsTransposed=False; IsEditable=True; showColLabels=True; "
            "showRowLabels=True; DiagramType=9; ");
  EXPECT_EQ(editing.form->find("tbl"), &editing.form->tbl);
  EXPECT_EQ(editing.form->GetDocument(), "<xml><cols/><rows/><data/></>");

  FakePlatform without_components;
  EXPECT_EQ(refusal([&] { DsTableContentsComponent{without_components.platform}; }).substr(0, 4), "429 ");
}

TEST(TableEditor, StoresWhatTheAuthorDoesStepByStep) {
  Editing editing(sales);
  DsTableContentsComponent& form = *editing.form;
  EXPECT_EQ(form.txtRowTitle.text() + form.txtColTitle.text() + form.txtValTitle.text(), "RegionQuarterSales");

  struct Step {
    const char* name;
    void (*act)(Editing& editing);
    std::string_view shown;
    std::string log;
  };
  const Step steps[] = {
      {"nothing is selected, so typing stores nothing",
       [](Editing& e) {
         e.form->txtValue.user_type("9");
         e.form->txtRowLabel.user_type("r");
         e.form->txtColLabel.user_type("c");
       },
       "9|r|c", ""},
      {"nor does it stay when the data come anew", [](Editing& e) { e.form->LoadDocument(sales); }, "||",
       "XmlContents=" + std::string(sales) + "; "},
      {"a cell is shown, and nothing stored", [](Editing& e) { e.select(0, 0); }, "1.1|North|Q1", "selectCell 0 0; "},
      {"one without a number", [](Editing& e) { e.select(0, 1); }, "|North|Q2", "selectCell 0 1; "},
      {"one that its row lacks", [](Editing& e) { e.select(1, 1); }, "|South|Q2", "selectCell 1 1; "},
      {"a number", [](Editing& e) { e.form->txtValue.user_type("2.50"); }, "2.50|South|Q2", "setCellValue 1 1 2.5; "},
      {"no number", [](Editing& e) { e.form->txtValue.user_type("2.50 EUR"); }, "2.50 EUR|South|Q2",
       "setCellValue 1 1 0; "},
      {"a row's label", [](Editing& e) { e.form->txtRowLabel.user_type("S&W"); }, "2.50 EUR|S&W|Q2",
       "setRowLabel 1 S&W; "},
      {"a column's label", [](Editing& e) { e.form->txtColLabel.user_type(""); }, "2.50 EUR|S&W|", "setColLabel 1 ; "},
      {"a new row takes the selected one's place", [](Editing& e) { e.form->cmdInsertRow.user_click(); }, "0|New Row|",
       "newValueList; insertRow 1 New Row list; "},
      {"a new column too", [](Editing& e) { e.form->cmdInsertCol.user_click(); }, "0|New Row|New Col",
       "newValueList; insertCol 1 New Col list; "},
      {"a column goes, and the next is shown", [](Editing& e) { e.form->cmdDeleteCol.user_click(); }, "0|New Row|",
       "deleteCol 1; "},
      {"a row alone", [](Editing& e) { e.select(2, -1); }, "|S&W|", "selectCell 2 -1; "},
      {"the last row goes, and the one before is shown", [](Editing& e) { e.form->cmdDeleteRow.user_click(); },
       "|New Row|", "deleteRow 2; "},
      {"a title is not stored yet", [](Editing& e) { e.form->txtValTitle.user_type("Costs"); }, "|New Row|", ""},
      {"until the author accepts", [](Editing& e) { e.form->cmdAccept.user_click(); }, "|New Row|",
       "colTitle=Quarter; rowTitle=Region; valueTitle=Costs; Accept; "},
      {"cancelling tells of it alone", [](Editing& e) { e.form->cmdCancel.user_click(); }, "|New Row|", "Cancel; "},
      {"other data: nothing is selected", [](Editing& e) { e.form->LoadDocument(sales); }, "||",
       "XmlContents=" + std::string(sales) + "; "},
  };
  std::string accepted;
  for (const Step& step : steps) {
    editing.log.clear();
    step.act(editing);
    EXPECT_EQ(editing.shown(), step.shown) << step.name;
    EXPECT_EQ(editing.log, step.log) << step.name;
    if (editing.log.ends_with("Accept; ")) accepted = form.GetDocument();
  }
  EXPECT_EQ(accepted,
            "<xml><rows>Region<row>North</><row>New Row</></><cols>Quarter<col>Q1</><col></></>"
            "<data>Costs<value>1.10</><value>n/a</><value>0</><value>0</></></xml>");
}

TEST(TableEditor, InsertsWithoutASelection) {
  Editing editing;
  DsTableContentsComponent& form = *editing.form;
  form.cmdDeleteRow.user_click();
  form.cmdDeleteCol.user_click();
  form.cmdInsertRow.user_click();
  form.cmdInsertRow.user_click();
  form.cmdInsertCol.user_click();
  EXPECT_EQ(form.GetDocument(),
            "<xml><rows><row>New Row</><row>New Row</></><cols><col>New Col</></>"
            "<data><value>0</><value>0</></></xml>");
  EXPECT_EQ(editing.shown(), "||");
}

TEST(TableEditor, RefusesOtherTextAndKeepsItsTable) {
  Editing editing(sales);
  EXPECT_TRUE(editing.form->IsWellFormed(sales));
  for (const std::string_view text : {"", "<xml>", "a,b"}) {
    EXPECT_FALSE(editing.form->IsWellFormed(text));
    EXPECT_EQ(refusal([&] { editing.form->LoadDocument(text); }).substr(0, 2), "5 ");
    EXPECT_EQ(editing.form->GetDocument(), sales);
  }
}

std::string with_crlf(std::string text) {
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, "\r");
  return text;
}

// A document with a value of `size` bytes.
std::string document_of(std::size_t size,
                        std::string_view before = "<xml>\n<rows><row/></><cols></><data><value>1</><value>") {
  constexpr std::string_view after = "</></></xml>";
  return std::string(before) + std::string(size - before.size() - after.size(), 'x') + std::string(after);
}

TEST(TableEditor, GivesShortDocumentsCrLfAndLongOnesAsTheyCome) {
  for (const std::size_t size : {31'999u, 32'000u}) {
    const std::string document = document_of(size);
    ASSERT_EQ(document.size(), size);
    Editing editing(document);
    EXPECT_EQ(editing.form->GetDocument(), size < 32'000 ? with_crlf(document) : document);
  }
  // An edited long document is one for text boxes.
  Editing editing(document_of(40'000));
  editing.select(0, 0);
  editing.form->cmdInsertRow.user_click();
  const std::string edited = editing.form->GetDocument();
  EXPECT_TRUE(
      edited.starts_with("<xml>\r\n<rows>\r\n<row>New Row</>\r\n<row/>\r\n</>\r\n<cols>\r\n</>\r\n<data>\r\n"
                         "<value>0</><value>0</>\r\n<value>1</><value>xxx"))
      << edited.substr(0, 200);
  EXPECT_EQ(read_contents(edited).rows.size(), 2u);
}

TEST(TableEditor, ATripWithoutAnEditChangesNothing) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t bound) { return random() % bound; };
  const auto random_text = [&] {
    constexpr std::string_view texts[] = {"",          "1.10", "n/a",  " 7",     "-0", "1e3",
                                          "a<b & 'c'", "\t",   "x\ny", "x\r\ny", "x\r"};
    return std::string(texts[below(std::size(texts))]);
  };
  for (int run = 0; run < 300; ++run) {
    ContentsTable table{random_text(), random_text(), random_text(), {}, {}, {}};
    for (std::size_t i = below(4); i > 0; --i) {
      table.rows.push_back(below(2) == 0 ? std::nullopt : std::optional(random_text()));
    }
    for (std::size_t i = below(4); i > 0; --i) table.columns.push_back(random_text());
    if (run % 50 == 0) table.rows.resize(6000);  // a long document
    for (std::size_t i = table.rows.empty() ? 0 : below(10); i > 0; --i) table.values.push_back(random_text());
    const std::string document = write_contents(table);

    Editing editing(document);
    const int rows = editing.form->tbl.component().get("rowCount").to_long();
    const int columns = editing.form->tbl.component().get("colCount").to_long();
    for (int row = -1; row < std::min(rows, 4); ++row) {
      for (int column = -1; column < columns; ++column) editing.select(row, column);
    }
    editing.form->cmdAccept.user_click();
    ASSERT_EQ(editing.form->GetDocument(), document.size() < 32'000 ? with_crlf(document) : document);
  }
}

}  // namespace
}  // namespace plexoras
