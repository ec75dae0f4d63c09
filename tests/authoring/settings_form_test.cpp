// Settings of templates, from their lines in a template file to the reader, by way of the form that an author fills in.

#include <gtest/gtest.h>

#include "authoring_fixture.h"
#include "chart_control/custom_page.h"
#include "host/headless_platform.h"
#include "template/customizer_control.h"

namespace plexoras {
namespace {

/// The page "Custom" in front of an author.
struct SettingsForm {
  SettingsForm(TemplateSession& session, ComponentRegistry& components, LiveControl& control) {
    register_template_forms(components, session);
    page = std::make_unique<Custom>(components);
    page->select({ObjectRef(ObjectRef(), &control.control())});
  }

  template <class Control>
  Control& control(std::string_view name) {
    return dynamic_cast<Control&>(*page->find(name));
  }

  std::unique_ptr<Custom> page;
};

TEST(SettingsForm, ASettingTakesItsLinesInTheTemplateAlone) {
  Author author(
      "[PROPERTY]\n#DEFINE LIMIT 10\n"
      "[ADVANCED_SPEC]\n#DEFINE LIMIT_SPEC 'Rows:|integer|1..500'\n"
      "[TEMPLATE]\n<my-list rows=\"$(LIMIT)\">\n");
  LiveControl control = author.make();
  const auto stored = [&] {
    for (const auto& [key, value] : control.record().state) {
      if (key == "LIMIT") return value;
    }
    return std::string("(default)");
  };
  EXPECT_EQ(ControlProperties(control).get("LIMIT"), "10");
  EXPECT_EQ(stored(), "(default)");

  SettingsForm form(author.session, author.host.components, control);
  EXPECT_TRUE(form.control<TextBox>("LIMIT").user_type("20"));
  form.page->apply();
  EXPECT_EQ(ControlProperties(control).get("LIMIT"), "20");
  EXPECT_EQ(stored(), "20");
  EXPECT_NE(control.control().GetRuntimeText().find("<my-list rows=\"20\">"), std::string::npos);
}

/// A control made with the template files that ship.
struct Shipped {
  explicit Shipped(std::string_view type) : control(made(type)) {}

  LiveControl made(std::string_view type) {
    register_diagram_applet(host.components());
    return LiveControl::make_new(session, type, "Own");
  }

  HeadlessPlatform host{{.settings_path = "no such file", .module_directory = default_module_directory(), .seed = 1}};
  TemplateSession session{host.platform()};
  LiveControl control;
};

void collect_settings(const ControlContainer& container, std::vector<std::string>& names) {
  for (const auto& control : container.controls()) {
    if (const auto* frame = dynamic_cast<Frame*>(control.get())) collect_settings(*frame, names);
    const bool holds_value = control->kind() != "Frame" && control->kind() != "Label";
    if (holds_value) names.push_back(control->name());
  }
}

TEST(SettingsForm, TheShippedFormsHoldDeclaredSettings) {
  for (const std::string_view type : {"chart", "template"}) {
    Shipped shipped(type);
    SettingsForm form(shipped.session, shipped.host.components(), shipped.control);
    std::vector<std::string> names;
    collect_settings(form.control<FormHost>("customizer").hosted(), names);
    EXPECT_GE(names.size(), 6u) << type;
    for (const std::string& name : names) {
      EXPECT_TRUE(shipped.control.control().CustomProperties()->includes(name, Dictionary::EmptyValues::Keep)) << name;
    }
    for (const Diagnostic& diagnostic : shipped.session.diagnostics) ADD_FAILURE() << to_text(diagnostic);
  }
}

TEST(SettingsForm, ANoticeBecomesAFigure) {
  Shipped shipped("template");
  SettingsForm form(shipped.session, shipped.host.components(), shipped.control);
  EXPECT_FALSE(form.control<TextBox>("IMAGE").user_type("too early"));
  form.control<ComboBox>("KIND").set_text("Figure");
  EXPECT_FALSE(form.control<TextBox>("TEXT").is_usable());
  EXPECT_TRUE(form.control<TextBox>("IMAGE").user_type("a.png"));
  EXPECT_TRUE(form.control<TextBox>("CAPTION").user_type("Profit & \"loss\""));
  form.page->apply();
  const std::string text = shipped.control.control().GetRuntimeText();
  EXPECT_NE(text.find("<img src=\"a.png\""), std::string::npos) << text;
  EXPECT_NE(text.find("Profit &amp; &quot;loss&quot;</figcaption>"), std::string::npos) << text;
}

}  // namespace
}  // namespace plexoras
