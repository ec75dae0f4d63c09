// A chart's data on their way from an author at the page "Contents" to the reader, with the real chart component, the
// template that ships, and a page on disk.

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "applet/contents_reader.h"
#include "applet/diagram_applet.h"
#include "authoring/live_control.h"
#include "authoring/publisher.h"
#include "contents/contents_page.h"
#include "contents/contents_session.h"
#include "contents/edit_xml_form.h"
#include "contents/table_contents.h"
#include "host/headless_platform.h"
#include "host/temporary_directory.h"
#include "template/customizer_control.h"

namespace plexoras {
namespace {

/// An author who opens the page, and answers the dialogs that open from it.
struct ContentsAuthor final : ModalPresenter, MessageBox {
  ContentsAuthor() {
    host.platform().presenter = this;
    host.platform().message_box = this;
    register_diagram_applet(host.components());
    register_template_forms(host.components(), templates);
    register_contents_forms(host.components(), session);
  }

  void run(Form& form) override { std::exchange(answer, nullptr)(form); }
  void show(std::string_view text, std::string_view title) override {
    messages += std::string(title) + "|" + std::string(text);
  }

  /// Edits the chart of the page file `path` as `act` does, applies that and saves the file.
  void edit(const std::string& path, const std::function<void(ContentsAuthor&)>& act) {
    const Page file = Page::read(path);
    LiveControl control(templates, file.controls().at(0).record);
    page.select({ObjectRef(ObjectRef(), &control.control())});
    act(*this);
    page.apply();
    page.SelectedControls.clear();
    Page::Edit edit(file);
    edit.replace_record(0, control.record());
    write_if_changed(path, edit.result());
  }

  template <class Control>
  Control& control(std::string_view name) {
    return dynamic_cast<Control&>(*page.find(name));
  }
  TextBox& box() { return control<TextBox>("txtContents"); }

  /// Presses `button` and answers the dialog that opens.
  template <class Dialog>
  void open(std::string_view button, const std::function<void(Dialog&)>& acts) {
    answer = [&](Form& form) {
      acts(dynamic_cast<Dialog&>(form));
      EXPECT_FALSE(form.is_open());
    };
    EXPECT_TRUE(control<Button>(button).user_click());
    EXPECT_FALSE(answer) << "no dialog has opened";
  }

  void import(const std::string& path) {
    open<ImportDialog>("cmdImportFile", [&](ImportDialog& dialog) {
      dialog.txtFileName.user_type(path);
      dialog.ckFirstCol.set_value(1);
      dialog.cmdImport.user_click();
    });
  }

  void edit_table(const std::function<void(DsTableContentsComponent&)>& acts) {
    open<EditXmlForm>("cmdTable", [&](EditXmlForm& dialog) {
      auto& place = dynamic_cast<FormHost&>(*dialog.find("DsTableContentsComponent"));
      acts(dynamic_cast<DsTableContentsComponent&>(place.hosted()));
    });
  }

  HeadlessPlatform host{{.settings_path = "no such file", .module_directory = default_module_directory(), .seed = 1}};
  TemplateSession templates{host.platform()};
  ContentsSession session{host.platform()};
  Contents page{templates};
  std::function<void(Form&)> answer;
  std::string messages;
};

std::string document_with(std::string_view label) {
  return "<xml><rows><row>" + escape_contents(label) + "</></><cols></><data><value>1</></></xml>";
}

std::string first_label(const std::string& document) {
  const ContentsTable table = read_contents(document);
  return table.rows.at(0).value_or("(none)");
}

// The contents document that a browser finds in the page `html`.
std::string published_contents(const std::string& html) {
  constexpr std::string_view before = "<param name=\"XmlContents\" value=\"";
  const std::size_t begin = html.find(before) + before.size();
  std::size_t bad = 0;
  return unescape_state(html.substr(begin, html.find('"', begin) - begin), &bad).value_or("(unreadable)");
}

TEST(ContentsPageAuthor, ALabelReachesTheReaderAsTheAuthorMeantIt) {
  struct Way {
    const char* name;
    void (*act)(ContentsAuthor& author, const std::string& label, const TemporaryDirectory& folder);
  };
  const Way ways[] = {
      {"typed", [](ContentsAuthor& author, const std::string& label,
                   const TemporaryDirectory&) { author.box().user_type(document_with(label)); }},
      {"imported", [](ContentsAuthor& author, const std::string& label,
                      const TemporaryDirectory& folder) { author.import(folder.write("data.csv", label + ",1\n")); }},
      {"edited in the table",
       [](ContentsAuthor& author, const std::string& label, const TemporaryDirectory&) {
         author.edit_table([&](DsTableContentsComponent& table) {
           table.tbl.user_call("selectCell", {0, 0});
           table.txtRowLabel.user_type(label);
           table.cmdAccept.user_click();
         });
       }},
      {"edited as text",
       [](ContentsAuthor& author, const std::string& label, const TemporaryDirectory&) {
         author.box().user_type(document_with("&lt;"));
         author.box().user_type(replaced_all(author.box().text(), "&amp;lt;", escape_contents(label)));
       }},
  };
  ContentsAuthor author;
  const TemporaryDirectory folder;
  const std::string path = folder.path("page.html");
  const auto expect_read = [&](const std::string& label) {
    const PublishedFile published = Publisher(author.templates).publish_page(path, folder.path("public.html"));
    EXPECT_NE(published.outcome, PublishedFile::Outcome::Failed);
    EXPECT_EQ(first_label(published_contents(folder.read("public.html"))), label);
  };
  for (const std::string label : {"R&D <new>", "&amp;", "&amp;amp;&", "&lt;b&gt;", "'5\" $(NAME) #(HTML ALT)"}) {
    for (const Way& way : ways) {
      SCOPED_TRACE(label + ", " + way.name);
      folder.write("page.html",
                   Page::span_text(LiveControl::make_new(author.templates, "chart", "Sales").record(), "", "\n"));
      author.edit(path, [&](ContentsAuthor&) { way.act(author, label, folder); });
      expect_read(label);

      // What is on disk opens as it was, goes through the table, and is saved as it is.
      author.edit(path, [&](ContentsAuthor&) {
        EXPECT_EQ(first_label(author.box().text()), label);
        author.edit_table([](DsTableContentsComponent& table) { table.cmdAccept.user_click(); });
      });
      const std::string saved = folder.read("page.html");
      author.edit(path, [](ContentsAuthor&) {});
      EXPECT_EQ(folder.read("page.html"), saved);
      expect_read(label);
    }
  }
  EXPECT_EQ(author.messages, "");
}

TEST(ContentsPageAuthor, TheTableGivesItsDocumentWhenItIsAccepted) {
  constexpr std::string_view refused = "|The current content is not a well formatted XML and cannot be edited.";
  const std::string document = document_with("North"), empty = "<xml><cols/><rows/><data/></>";
  const auto accept = [](DsTableContentsComponent& table) {
    table.txtRowTitle.user_type("Region");
    table.cmdAccept.user_click();
  };
  const auto cancel = [](DsTableContentsComponent& table) {
    table.cmdInsertRow.user_click();
    table.cmdCancel.user_click();
  };
  struct Case {
    const char* name;
    std::string before;
    std::function<void(DsTableContentsComponent&)> act;
    std::string after;
    std::string_view messages = {};
  };
  const Case cases[] = {
      {"accepted", document, accept, replaced_all(document, "<rows>", "<rows>Region")},
      {"cancelled", document, cancel, document},
      {"an empty text is an empty table", "", [](DsTableContentsComponent& table) { table.cmdAccept.user_click(); },
       empty},
      {"and stays one", "", cancel, ""},
      {"what is no document", "R&D", cancel, "R&D", refused},
      {"is not replaced by an empty table", "R&D",
       [](DsTableContentsComponent& table) { table.cmdAccept.user_click(); }, "R&D", refused},
      {"but by an edited one", "R&D", accept, "<xml><rows>Region</><cols></><data></></xml>", refused},
  };
  ContentsAuthor author;
  LiveControl control = LiveControl::make_new(author.templates, "chart", "Sales");
  author.page.select({ObjectRef(ObjectRef(), &control.control())});
  for (const Case& c : cases) {
    author.messages.clear();
    author.box().set_text(c.before);
    author.page.Changed = false;
    author.edit_table(c.act);
    EXPECT_EQ(author.box().text(), c.after) << c.name;
    EXPECT_EQ(author.page.Changed, c.before != c.after) << c.name;
    EXPECT_EQ(author.messages, c.messages) << c.name;
  }
  // Nothing of it has reached the chart, until the author says so.
  author.box().user_type(document);
  EXPECT_NE(control.control().get("XmlContents"), Variant(document));
  author.control<Button>("cmdSet").user_click();
  EXPECT_EQ(control.control().get("XmlContents"), Variant(document));
}

}  // namespace
}  // namespace plexoras
