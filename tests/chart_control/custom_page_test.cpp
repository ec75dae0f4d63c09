#include "chart_control/custom_page.h"

#include <gtest/gtest.h>

#include "chart_control/about_box.h"
#include "chart_control/template_dtc.h"
#include "chart_fixture.h"
#include "host/outcome.h"
#include "template/customizer_control.h"

namespace plexoras {
namespace {

constexpr std::string_view template_text =
    "[PROPERTY]\n#DEFINE TITLE old\n#DEFINE LIMIT 5\n"
    "[ADVANCED_SPEC]\n#DEFINE TITLE_SPEC 'Title:|text'\n#DEFINE LIMIT_SPEC 'Limit:|integer|1..9'\n"
    "[.VERSION]\n#DEFINE .VERSION 1.2\n"
    "[.LICENCE]\n#DEFINE _YEAR 2026\n#DEFINE .LICENCE Free since $(_YEAR)\n#DEFINE .ADDRESS Quay 1\n";

/// The page in an authoring environment, with a control of either kind to select.
struct CustomFixture : ChartFixture {
  CustomFixture() : ChartFixture(View::Design, template_text) {
    host.files["TEMPLATE.DAT"] = template_text;
    register_template_forms(host.components, session);
    initialised();
    notice->InitProperties();
    site.changed_properties.clear();
  }

  ObjectRef selected(bool is_chart) { return is_chart ? ObjectRef(ObjectRef(), &chart) : ObjectRef(notice); }
  TextBox& box(Custom& page, std::string_view name) { return dynamic_cast<TextBox&>(*page.find(name)); }

  std::shared_ptr<TemplateDTC> notice = std::make_shared<TemplateDTC>(session, site);
};

TEST(CustomPage, EditsTheCustomPropertiesOfEitherControl) {
  for (const bool is_chart : {true, false}) {
    CustomFixture f;
    const DesignTimeControl& control = is_chart ? static_cast<DesignTimeControl&>(f.chart) : *f.notice;
    Custom page(f.host.components);
    EXPECT_EQ(page.caption, "Custom");
    page.select({f.selected(is_chart)});
    EXPECT_FALSE(page.Changed);
    EXPECT_EQ(f.box(page, "TITLE").text(), "old");

    EXPECT_TRUE(f.box(page, "TITLE").user_type("new"));
    EXPECT_TRUE(page.Changed);
    EXPECT_EQ(control.GetProperty("TITLE"), "old");
    page.apply();
    EXPECT_FALSE(page.Changed);
    EXPECT_EQ(listing(*control.CustomProperties()), "TITLE=new;LIMIT=5;");
    EXPECT_EQ(f.announced(), "CustomProperties ");
  }
}

TEST(CustomPage, AppliesNothingThatASettingDoesNotTake) {
  CustomFixture f;
  Custom page(f.host.components);
  page.select({f.selected(true)});
  f.box(page, "TITLE").user_type("new");
  f.box(page, "LIMIT").user_type("10");
  EXPECT_EQ(outcome([&] { return page.apply(), ""; }), "error 5: Limit takes a whole number from 1 to 9, not \"10\"");
  EXPECT_TRUE(page.Changed);
  EXPECT_EQ(f.chart.GetProperty("TITLE"), "old");
  EXPECT_EQ(f.announced(), "") << "nothing has changed";
}

TEST(CustomPage, AnnouncesWhatWasStoredBeforeARefusal) {
  CustomFixture f;
  Custom page(f.host.components);
  page.select({f.selected(false)});
  f.box(page, "TITLE").user_type("new");
  f.box(page, "LIMIT").user_type("9");
  // LIMIT is a new key by now, and there is no room for it.
  Dictionary& properties = *f.notice->CustomProperties();
  properties.removeKey("LIMIT");
  for (int i = 1; i < Dictionary::capacity; ++i) properties.atPut("K" + std::to_string(i), "v");
  EXPECT_EQ(brief_outcome([&] { return page.apply(), ""; }), "error 9");
  EXPECT_EQ(properties.atGet("TITLE"), "new");
  EXPECT_EQ(f.announced(), "CustomProperties ");
  EXPECT_TRUE(page.Changed);
}

TEST(CustomPage, WritesToTheDictionaryThatTheControlHasByThen) {
  CustomFixture f;
  Custom page(f.host.components);
  page.select({f.selected(false)});
  f.box(page, "TITLE").user_type("new");
  MemoryPropertyBag undone;
  f.notice->ReadProperties(undone);
  page.apply();
  EXPECT_EQ(f.notice->GetProperty("TITLE"), "new");
}

TEST(CustomPage, GivesOneControlsEditsToNoOther) {
  struct Broken final : AutomationObject {
    Variant get(std::string_view member) override {
      if (member == failing) throw AutomationError(RunTimeError::InvalidCall);
      return control->get(member);
    }
    void put(std::string_view member, const Variant& value) override { control->put(member, value); }
    Variant call(std::string_view member, Arguments arguments) override { return control->call(member, arguments); }
    std::string failing;
    std::shared_ptr<TemplateDTC> control;
  };
  for (const std::string failing : {"advancedSpecSection", "templateFile", "CustomProperties"}) {
    CustomFixture f;
    Custom page(f.host.components);
    page.select({f.selected(true)});
    f.box(page, "TITLE").user_type("the chart's");
    const auto broken = std::make_shared<Broken>();
    broken->control = f.notice;
    broken->failing = failing;
    EXPECT_EQ(brief_outcome([&] { return page.select({broken}), ""; }), "error 5") << failing;
    EXPECT_EQ(page.find("TITLE"), nullptr);
    broken->failing.clear();
    page.apply();
    EXPECT_EQ(f.notice->GetProperty("TITLE"), "old") << failing;
  }
}

TEST(CustomPage, MayGoBeforeItsForm) {
  CustomFixture f;
  const ObjectRef form = f.host.components.create(CustomizerControl::identifier);
  f.host.components.add(std::string(CustomizerControl::identifier), [&form] { return form; });
  ObjectRef host;
  {
    Custom page(f.host.components);
    page.select({f.selected(false)});
    f.box(page, "TITLE").user_type("new");
    host = form->get("host").to_object();
  }
  EXPECT_TRUE(form_of(form)->controls().empty());
  EXPECT_EQ(outcome([&] { return form->call("Accept").to_text(); }), "");
  EXPECT_EQ(brief_outcome([&] { return host->call("RaiseChangedEvent").to_text(); }), "error 91");
  EXPECT_EQ(f.notice->GetProperty("TITLE"), "old");
}

TEST(CustomPage, AnEmptySpecIsAnEmptyForm) {
  CustomFixture f;
  f.host.files["TEMPLATE.DAT"] = "[ADVANCED_SPEC]\n";
  TemplateSession fresh(f.host.platform);
  register_template_forms(f.host.components, fresh);
  Custom page(f.host.components);
  page.select({f.selected(false)});
  EXPECT_TRUE(dynamic_cast<FormHost&>(*page.find("customizer")).hosted().controls().empty());
  page.apply();
  EXPECT_EQ(f.announced(), "CustomProperties ");

  EXPECT_EQ(brief_outcome([&] { return page.select({}), ""; }), "error 91");
}

TEST(AboutBox, ShowsTheProductsConstants) {
  CustomFixture f;
  f.host.files["PLAIN.DAT"] = "[TEMPLATE]\nx\n";
  f.host.files["APPLET.DAT"] = "[.COMPANY]\n#DEFINE .COMPANY Plexoras\n";
  const auto shown = [&](std::string_view template_file) {
    const AboutBox box(f.session, template_file);
    std::string text;
    for (const auto& control : box.controls()) text += control->name() + " " + control->caption + "\n";
    return text;
  };
  EXPECT_EQ(shown("DIAGRAM.DAT"),
            "lblKey0 VERSION\nlblValue0 1.2\nlblKey1 LICENCE\nlblValue1 Free since 2026\n"
            "lblKey2 ADDRESS\nlblValue2 Quay 1\ncmdOK OK\n");
  for (const std::string_view file : {"PLAIN.DAT", "MISSING.DAT"}) {
    EXPECT_EQ(shown(file), "lblKey0 COMPANY\nlblValue0 Plexoras\ncmdOK OK\n") << file;
  }

  struct Author final : ModalPresenter {
    void run(Form& form) override {
      EXPECT_TRUE(form.is_open());
      dynamic_cast<Button&>(*form.find("cmdOK")).user_click();
      EXPECT_FALSE(form.is_open());
      ++opened;
    }
    int opened = 0;
  } author;
  f.host.platform.presenter = &author;
  AboutBox box(f.session, "DIAGRAM.DAT");
  box.ShowModal(f.host.platform);
  EXPECT_EQ(author.opened, 1);
}

}  // namespace
}  // namespace plexoras
