#include <gtest/gtest.h>

#include <stdexcept>

#include "chart_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

using View = ChartFixture::View;

constexpr std::string_view properties = "[PROPERTY]\n#DEFINE TITLE Chart\n#DEFINE APPLETID shadowed\n";

// Stops at once and shows what is bound by then.
const std::string show_variables = std::string(properties) + "[TEMPLATE]\n#HALT\ntext\n";

constexpr std::string_view complete_comment =
    "<!-- Setting Properties; Reading Template; Setting Width; Setting Height; Defining ID; Formatting XmlStyle; "
    "Formatting XmlContents; Defining Selection; Getting HTML; -->";

struct RuntimeFixture : ChartFixture {
  explicit RuntimeFixture(View view = View::Design, std::string_view template_text = show_variables)
      : ChartFixture(view, template_text) {
    host.platform.halt = [this](const HaltRequest& request) {
      bound = listing(dynamic_cast<Dictionary&>(*request.variables));
      return false;
    };
    initialised();
    chart.put("XmlStyle", "<s/>");
    chart.SetProperty("Contents", "<c/>");
    forget();
  }

  std::string bound;  ///< "NAME=value;" in the order bound
};

TEST(DiagramRuntimeText, BindsItsVariablesInOrder) {
  RuntimeFixture f;
  f.site.width_in_twips = 480 * 15;
  f.site.height_in_twips = 20 * 15;
  f.chart.put("ColSelection", "0");
  f.chart.put("RowSelection", "12");
  EXPECT_EQ(f.chart.GetRuntimeText(), std::string(complete_comment) + "text\r\n");
  // Custom properties come first and keep their places, even where the control's own value wins.
  EXPECT_EQ(f.bound,
            "TITLE=Chart;APPLETID=Sales;Contents=F(<c/>);WIDTH=480;HEIGHT=20;Visible=True;XmlStyle=F(<s/>);"
            "COLSELECTION=0;ROWSELECTION=12;");
  EXPECT_EQ(f.chart.call("GetRuntimeText"), Variant(f.chart.GetRuntimeText()));

  f.forget();
  f.chart.GetRuntimeText();
  EXPECT_EQ(f.log.take(),
            "get XmlStyle\ncall FormatXml True <s/>\ncall FormatXml True <c/>\nget ColSelection\nget RowSelection\n");
}

TEST(DiagramRuntimeText, MeasuresTheControlInPixels) {
  struct Case {
    std::string_view width, height;
    std::int32_t width_in_twips, height_in_twips;
    std::string_view bound;
  };
  // With 15 twips a pixel no size lies halfway, so the nearest sizes on both sides stand here.
  const Case cases[] = {{"100%", "", 7200, 7, "WIDTH=100%;HEIGHT=0;"},
                        {"", "50%", 8, 15, "HEIGHT=50%;WIDTH=1;"},
                        {"300", "200", 15, 15, "WIDTH=300;HEIGHT=200;"},
                        {"", "", 22, 23, "WIDTH=1;HEIGHT=2;"}};
  for (const Case& c : cases) {
    RuntimeFixture f(View::None);
    for (const std::string_view key : {"TITLE", "APPLETID", "Contents"}) f.chart.CustomProperties()->removeKey(key);
    f.chart.SetProperty("WIDTH", c.width);
    f.chart.SetProperty("HEIGHT", c.height);
    f.site.width_in_twips = c.width_in_twips;
    f.site.height_in_twips = c.height_in_twips;
    f.chart.GetRuntimeText();
    EXPECT_EQ(f.bound, std::string(c.bound) + "APPLETID=Sales;XmlStyle=F(<s/>);Contents=F();");
  }
}

// A site whose screen has an even number of twips a pixel.
class EvenSite final : public ControlSite {
public:
  EvenSite(HeadlessSite& site, std::int32_t twips) : site_(site), twips_(twips) {}
  std::string extender_name() override { return site_.extender_name(); }
  void set_extender_name(std::string_view name) override { site_.set_extender_name(name); }
  bool extender_visible() override { return site_.extender_visible(); }
  std::string ambient_display_name() override { return site_.ambient_display_name(); }
  bool user_mode() override { return site_.user_mode(); }
  bool has_design_view() override { return site_.has_design_view(); }
  ObjectRef add_child(std::string_view c, std::string_view name) override { return site_.add_child(c, name); }
  void remove_child(std::string_view name) override { site_.remove_child(name); }
  void show_child(std::string_view name, bool visible) override { site_.show_child(name, visible); }
  std::int32_t width() override { return twips_; }
  std::int32_t height() override { return twips_ + 20; }
  std::int32_t twips_per_pixel_x() override { return 20; }
  std::int32_t twips_per_pixel_y() override { return 8; }
  std::int32_t window_handle() override { return 0; }
  void property_changed(std::string_view) override {}

private:
  HeadlessSite& site_;
  std::int32_t twips_;
};

TEST(DiagramRuntimeText, RoundsHalfPixelsToEven) {
  struct Case {
    std::int32_t twips;
    std::string_view text;
  };
  const Case cases[] = {{10, "0x4\r\n"}, {30, "2x6\r\n"}, {50, "2x9\r\n"}, {16, "1x4\r\n"}, {32, "2x6\r\n"}};
  for (const Case& c : cases) {
    ChartFixture f(View::Design, "[TEMPLATE]\n$(WIDTH)x$(HEIGHT)\n");
    EvenSite site(f.site, c.twips);
    DiagramDTC chart(f.session, site);
    chart.InitProperties();
    EXPECT_EQ(chart.GetRuntimeHTML(), c.text) << c.twips;
  }
}

TEST(DiagramRuntimeText, TellsVisibilityInADesignViewOnly) {
  struct Case {
    View view;
    std::optional<bool> visible;
    std::string_view text;
  };
  const Case cases[] = {{View::Design, true, "True\r\n"},
                        {View::Design, false, "False\r\n"},
                        {View::Design, std::nullopt, "True\r\n"},
                        {View::None, true, "none\r\n"}};
  for (const Case& c : cases) {
    RuntimeFixture f(c.view, "[TEMPLATE]\n#IFDEF Visible\n$(Visible)\n#ELSE\nnone\n#ENDIF\n");
    f.site.visible = c.visible;
    EXPECT_EQ(f.chart.GetRuntimeHTML(), c.text);
  }
}

TEST(DiagramRuntimeText, HandsTheWholeStateToTheBareVariant) {
  RuntimeFixture f;
  EXPECT_EQ(f.chart.GetRuntimeHTML(), "text\r\n");
  EXPECT_EQ(f.bound, "TITLE=Chart;APPLETID=Sales;Contents=F(<c/>);WIDTH=0;HEIGHT=0;CUSTOMDAT=" +
                         f.chart.GetPropertiesBytes() + ";Visible=True;XmlStyle=F(<s/>);");
  EXPECT_EQ(f.chart.call("GetRuntimeHTMLOnErrorReport"), Variant("text\r\n"));
}

TEST(DiagramRuntimeText, TellsHowFarItGotBeforeAnError) {
  struct Case {
    std::string_view failing, progress;
  };
  const std::string up_to_style =
      "<!-- Setting Properties; Reading Template; Setting Width; Setting Height; Defining ID; Formatting XmlStyle; ";
  const Case cases[] = {{"FormatXml", up_to_style},
                        {"XmlStyle", up_to_style},
                        {"ColSelection", complete_comment.substr(0, complete_comment.find("Getting HTML"))},
                        {"RowSelection", complete_comment.substr(0, complete_comment.find("Getting HTML"))}};
  for (const Case& c : cases) {
    RuntimeFixture f;
    f.log.failing = {std::string(c.failing)};
    const std::string what = std::string(c.failing) + " fails";
    EXPECT_EQ(f.chart.GetRuntimeText(), std::string(c.progress) + "; Error(5):" + what + "\r\nSource: FakeComponent");
    EXPECT_EQ(f.chart.call("GetRuntimeTextOnErrorResume").to_text(), "");
    for (const std::string_view member :
         {"GetRuntimeTextOnErrorReport", "GetRuntimeHTML", "GetRuntimeHTMLOnErrorReport"}) {
      EXPECT_EQ(outcome([&] { return f.chart.call(member).to_text(); }), "error 5: " + what) << member;
    }
    f.log.failing.clear();
    EXPECT_EQ(f.chart.GetRuntimeText(), std::string(complete_comment) + "text\r\n");
    EXPECT_EQ(f.chart.GetRuntimeTextOnErrorResume(), f.chart.GetRuntimeText());
    EXPECT_EQ(f.chart.GetRuntimeTextOnErrorReport(), f.chart.GetRuntimeText());
  }
}

// One that refuses the contents alone, and not as components should.
class OddComponent final : public AutomationObject {
public:
  Variant get(std::string_view) override { return std::int16_t{-1}; }
  void put(std::string_view, const Variant&) override {}
  Variant call(std::string_view, Arguments arguments) override {
    if (arguments.size() == 2 && arguments[1].to_text() == "<c/>") throw std::runtime_error("no idea");
    return {};
  }
  Variant call_by_id(std::int32_t) override { return {}; }
};

TEST(DiagramRuntimeText, TurnsEveryFailureIntoText) {
  ChartFixture f(View::None, properties);
  EXPECT_TRUE(f.chart.GetRuntimeText().ends_with(
      "Defining ID; Formatting XmlStyle; ; Error(91):the control has no chart component; call InitObject first\r\n"
      "Source: PlexorasDTC.DiagramDTC"));
  EXPECT_EQ(f.chart.GetRuntimeTextOnErrorResume(), "");

  f.host.components.add(std::string(chart_component::identifier), [] { return std::make_shared<OddComponent>(); });
  f.chart.InitProperties();
  f.chart.SetProperty("Contents", "<c/>");
  EXPECT_TRUE(f.chart.GetRuntimeText().ends_with("Formatting XmlContents; ; Error(5):no idea\r\nSource: "));
}

TEST(DiagramRuntimeText, GoesOnWithoutATemplate) {
  RuntimeFixture f;
  f.host.files.clear();
  TemplateSession session(f.host.platform);
  DiagramDTC chart(session, f.site);
  chart.InitObject();
  EXPECT_EQ(chart.GetRuntimeText(), std::string(complete_comment) + "<!-- ERROR: NO TEMPLATE FILE DIAGRAM.DAT-->\r\n");

  RuntimeFixture sectionless(View::Design, properties);
  EXPECT_EQ(sectionless.chart.GetRuntimeText(), complete_comment);
}

}  // namespace
}  // namespace plexoras
