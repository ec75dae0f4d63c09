#include "chart_control/events_page.h"

#include <gtest/gtest.h>

#include "chart_control/template_dtc.h"
#include "chart_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

constexpr std::string_view template_text =
    "[PROPERTY]\n#DEFINE TITLE T\n#DEFINE ONPICK x\n#DEFINE ONPICK ''\n#DEFINE ONFAIL old()\n"
    "[CONSTANT]\n#DEFINE EVENTHANDLER_my-ready ONREADY\n#DEFINE EVENTHANDLER_my-pick ONPICK\n"
    "#DEFINE EVENTHANDLER_my-fail ONFAIL\n#DEFINE EVENTDETAIL_my-pick 'row: what was picked'\n";

/// The page in an authoring environment, with a control of either kind to select.
struct EventsFixture : ChartFixture {
  EventsFixture() : ChartFixture(View::Design, template_text) {
    host.files["TEMPLATE.DAT"] = template_text;
    initialised();
    notice->InitProperties();
    site.changed_properties.clear();
  }

  ObjectRef selected(bool is_chart) { return is_chart ? ObjectRef(ObjectRef(), &chart) : ObjectRef(notice); }
  /// What an author sees: the events, the script and the words about it.
  std::string shown() {
    std::string text;
    for (const std::string& entry : page.lstEvents.entries()) text += entry + ", ";
    return text + "[" + page.txtScript.text() + "] " + page.lblDetail.caption;
  }
  void write(int event, std::string_view script) {
    page.lstEvents.user_select(event);
    EXPECT_TRUE(page.txtScript.user_type(script));
  }

  std::shared_ptr<TemplateDTC> notice = std::make_shared<TemplateDTC>(session, site);
  Events page{session};
};

TEST(EventsPage, EditsTheScriptsOfEitherControl) {
  for (const bool is_chart : {true, false}) {
    EventsFixture f;
    const DesignTimeControl& control = is_chart ? static_cast<DesignTimeControl&>(f.chart) : *f.notice;
    EXPECT_EQ(f.page.caption, "Events");
    f.page.select({f.selected(is_chart)});
    EXPECT_EQ(f.shown(), "my-ready, my-pick, my-fail (script), [] ");
    f.page.lstEvents.user_select(2);
    EXPECT_EQ(f.page.txtScript.text(), "old()");
    f.page.lstEvents.user_select(1);
    EXPECT_FALSE(f.page.Changed) << "looking is no edit";

    f.write(1, "a;\r\n// b");
    EXPECT_EQ(f.shown(),
              "my-ready, my-pick (script), my-fail (script), [a;\r\n// b] event.detail: row: what was picked");
    f.write(0, "r()");
    EXPECT_TRUE(f.page.Changed);
    EXPECT_EQ(listing(*control.CustomProperties()), "TITLE=T;ONPICK=;ONFAIL=old();");
    f.page.apply();
    EXPECT_FALSE(f.page.Changed);
    EXPECT_EQ(listing(*control.CustomProperties()),
              "TITLE=T;ONPICK=a;\r\n// b;ONFAIL=old();ONREADY=r();EVENTS=my-ready my-pick my-fail;");
    EXPECT_EQ(f.announced(), "CustomProperties ");

    // Only what was edited is stored, and who else has stored a script meanwhile is not forgotten.
    f.page.lstEvents.user_select(1);
    f.selected(is_chart)->call_with("SetProperty", {"ONREADY", ""});
    f.write(1, "");
    f.page.apply();
    EXPECT_EQ(control.GetProperty("ONREADY") + control.GetProperty("ONPICK") + control.GetProperty("EVENTS"),
              "my-fail");
    f.page.select({f.selected(is_chart)});
    EXPECT_EQ(f.page.lstEvents.text(), "my-pick") << "the event stays selected";
    f.write(2, "");
    f.page.apply();
    EXPECT_EQ(control.GetProperty("EVENTS"), "");
  }
}

// A control whose dictionary takes no script under "ONPICK".
class Refusing final : public AutomationObject {
public:
  Variant get(std::string_view member) override {
    if (member == "templateFile") return "TEMPLATE.DAT";
    return member == "constSpecSection" ? Variant("CONSTANT") : Variant(ObjectRef(ObjectRef(), this));
  }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Refusing"); }
  Variant call(std::string_view member, Arguments arguments) override {
    if (member == "FireCustomPropertyChange") log += "fire ";
    if (member != "atPut" && member != "atGet") return {};
    const std::string key = arguments[0].to_text();
    if (key == unreadable) throw AutomationError(RunTimeError::InvalidCall, "no " + key);
    if (member == "atGet") return stored.atGet(key);
    if (refuses && key == "ONPICK") throw AutomationError(RunTimeError::InvalidCall, "no " + key);
    stored.atPut(key, arguments[1].to_text());
    log += key + " ";
    return {};
  }

  bool refuses = true;
  std::string unreadable;
  Dictionary stored;
  std::string log;
};

TEST(EventsPage, KeepsWhatTheControlRefused) {
  EventsFixture f;
  const auto control = std::make_shared<Refusing>();
  f.page.select({control});
  for (const int event : {2, 1, 0}) f.write(event, "x");
  EXPECT_EQ(outcome([&] { return f.page.apply(), ""; }), "error 5: no ONPICK");
  EXPECT_EQ(control->log, "ONREADY fire ");
  EXPECT_TRUE(f.page.Changed);
  control->refuses = false;
  f.page.apply();
  EXPECT_EQ(control->log, "ONREADY fire ONPICK ONFAIL EVENTS fire ");
}

TEST(EventsPage, KeepsTheListOfAControlThatFailsMidway) {
  EventsFixture f;
  const auto control = std::make_shared<Refusing>();
  for (const std::string_view key : {"ONREADY", "ONFAIL"}) control->stored.atPut(key, "x");
  control->stored.atPut("EVENTS", "my-ready my-fail");
  control->unreadable = "ONFAIL";
  EXPECT_EQ(brief_outcome([&] { return f.page.select({control}), ""; }), "error 5");
  control->unreadable.clear();
  f.page.apply();
  EXPECT_EQ(control->stored.atGet("EVENTS"), "my-ready my-fail");
}

TEST(EventsPage, SharesAScriptBetweenEventsOfOneKey) {
  EventsFixture f;
  f.host.files["TEMPLATE.DAT"] = "[CONSTANT]\n#DEFINE EVENTHANDLER_a ON\n#DEFINE EVENTHANDLER_b ON\n";
  TemplateSession fresh(f.host.platform);
  TemplateDTC control(fresh, f.site);
  f.page.select({f.selected(true)});
  Events page(fresh);
  page.select({ObjectRef(ObjectRef(), &control)});
  page.lstEvents.user_select(0);
  page.txtScript.user_type("first");
  page.lstEvents.user_select(1);
  EXPECT_EQ(page.txtScript.text(), "first");
  page.txtScript.user_type("last");
  EXPECT_EQ(page.lstEvents.entries(), (StringList{"a (script)", "b (script)"}));
  page.apply();
  EXPECT_EQ(listing(*control.CustomProperties()), "ON=last;EVENTS=a b;");
}

TEST(EventsPage, SaysThatThereAreNoEvents) {
  EventsFixture f;
  f.page.select({f.selected(true)});
  f.host.files["TEMPLATE.DAT"] = "[CONSTANT]\n#DEFINE EVENT_x 1\n";
  TemplateSession fresh(f.host.platform);
  TemplateDTC plain(fresh, f.site);
  plain.SetProperty("EVENTS", "its own");
  Events page(fresh);
  page.select({ObjectRef(ObjectRef(), &plain)});
  EXPECT_TRUE(page.lstEvents.entries().empty());
  EXPECT_EQ(page.lblDetail.caption, "The template of this control has no events.");
  EXPECT_FALSE(page.txtScript.user_type("x"));
  page.apply();
  EXPECT_EQ(plain.GetProperty("EVENTS"), "its own");
  EXPECT_EQ(f.announced(), "CustomProperties ");

  EXPECT_EQ(brief_outcome([&] { return f.page.select({}), ""; }), "error 91");
  EXPECT_EQ(f.shown(), "[] ") << "nothing of the control before is left";
}

}  // namespace
}  // namespace plexoras
