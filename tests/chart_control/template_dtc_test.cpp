#include "chart_control/template_dtc.h"

#include <gtest/gtest.h>

#include "host/headless_site.h"
#include "host/outcome.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

/// A template control on a page, with its template file in memory.
struct Notice {
  explicit Notice(std::string_view template_text = {}) {
    host.files["TEMPLATE.DAT"] = template_text;
    site.name = "Hint";
    site.width_in_twips = 100 * HeadlessSite::twips_per_pixel + 7;  // half a pixel less a bit
    site.height_in_twips = 50 * HeadlessSite::twips_per_pixel + 8;
  }

  FakePlatform host;
  TemplateSession session{host.platform};
  HeadlessSite site{host.components};
  TemplateDTC control{session, site};
};

constexpr std::string_view shown = "[TEMPLATE]\n$(APPLETID) $(WIDTH)x$(HEIGHT) $(TITLE)\n";

TEST(TemplateDTC, WritesWhatItsTemplateMakes) {
  struct Case {
    const char* name;
    std::string properties;
    std::string_view text;
  };
  const Case cases[] = {
      {"the size is measured", "#DEFINE TITLE x\n", "Hint 100x51 x\r\n"},
      {"unless a property sets it", "#DEFINE WIDTH 50%\n", "Hint 50%x51 \r\n"},
      {"a template that fails gives nothing", "#DEFINE TITLE '$(\\A,b)'\n", ""},
  };
  for (const Case& c : cases) {
    Notice notice("[PROPERTY]\n" + c.properties + std::string(shown));
    notice.control.InitProperties();
    if (c.text.empty()) notice.control.SetProperty("TITLE", "$(\\A,b)");
    EXPECT_EQ(notice.control.GetRuntimeText(), c.text) << c.name;
    EXPECT_EQ(notice.control.call("GetRuntimeText", {}), Variant(c.text)) << c.name;
  }

  Notice lost;
  lost.host.files.clear();
  lost.control.InitProperties();
  EXPECT_EQ(lost.control.GetRuntimeText(), "<!-- ERROR: NO TEMPLATE FILE TEMPLATE.DAT-->\r\n");
  EXPECT_EQ(lost.control.GetPropertyKeys(), StringList{});
}

TEST(TemplateDTC, NamesItselfWhereTheHostDoesNot) {
  Notice notice;
  notice.site.name = "";
  notice.control.InitProperties();
  EXPECT_EQ(notice.site.name, "Plexora500");
  notice.site.name = "";
  notice.site.display_name = "Shown";
  EXPECT_EQ(notice.control.get("appletId"), Variant("Shown"));
}

TEST(TemplateDTC, KeepsItsStateInABag) {
  const std::string file = "[PROPERTY]\n#DEFINE TITLE Note\n#DEFINE KIND x\n#DEFINE KIND ''\n";
  Notice notice(file);
  notice.control.InitProperties();
  notice.control.SetProperty("KIND", "a\x02<row>");
  notice.control.appletId();
  MemoryPropertyBag bag;
  notice.control.WriteProperties(bag);
  EXPECT_EQ(bag.keys(), (StringList{"AppletID", "KIND"})) << "a default is not kept";
  bag.write("LATER", "kept", "");

  Notice loaded(file);
  loaded.site.name = "";
  loaded.control.ReadProperties(bag);
  EXPECT_EQ(loaded.control.appletId(), "Hint");
  EXPECT_EQ(listing(*loaded.control.CustomProperties()), "TITLE=Note;KIND=a\x02<row>;LATER=kept;");
}

TEST(TemplateDTC, AnswersByName) {
  Notice notice("[PROPERTY]\n#DEFINE TITLE Note\n");
  notice.control.InitProperties();
  TemplateDTC& control = notice.control;
  EXPECT_EQ(control.get("templateFile"), Variant("TEMPLATE.DAT"));
  EXPECT_EQ(control.get("advancedSpecSection"), Variant("ADVANCED_SPEC"));
  EXPECT_EQ(control.get("constSpecSection"), Variant("CONSTANT"));
  EXPECT_EQ(control.call_with("GetProperty", {"TITLE"}), Variant("Note"));
  EXPECT_EQ(control.call("GetPropertyKeys", {}), Variant(StringList{"TITLE"}));
  notice.site.changed_properties.clear();
  const ObjectRef before = control.get("CustomProperties").to_object();
  control.put("CustomProperties", Variant(ObjectRef(std::make_shared<Dictionary>())));
  EXPECT_EQ(control.get("CustomProperties").to_object(), before) << "assigning only notifies";
  control.put("appletId", "Other");
  EXPECT_EQ(notice.site.changed_properties, (std::vector<std::string>{"CustomProperties", "AppletID"}));
  EXPECT_EQ(brief_outcome([&] { return control.get("DiagramType").to_text(); }), "error 438");
}

}  // namespace
}  // namespace plexoras
