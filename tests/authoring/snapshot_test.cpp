#include "authoring/snapshot.h"

#include <gtest/gtest.h>

#include <set>

#include "authoring_fixture.h"

namespace plexoras {
namespace {

TEST(ChartPicture, HasAStampOfItsOwnForWhateverShows) {
  Author author;
  std::set<std::string> stamps;
  const auto stamp_with = [&](std::string_view property, std::string_view value, std::string_view language = {}) {
    LiveControl control = author.make();
    ControlProperties properties(control);
    if (!property.empty()) properties.set(std::string(property), value, ControlProperties::NewKeys::Accept);
    const std::optional<ChartPicture> picture = picture_of(control, language);
    EXPECT_EQ(picture->stamp.size(), 16u);
    return picture->stamp;
  };
  const std::string plain = stamp_with("", "");
  EXPECT_EQ(stamp_with("", ""), plain);
  EXPECT_EQ(stamp_with("FontSize", "12"), plain) << "it has this size anyway";
  EXPECT_EQ(stamp_with("NOTE", "x"), plain) << "it does not show";
  EXPECT_EQ(stamp_with("WIDTH", "50%"), plain) << "a picture has no percents";
  stamps.insert(plain);
  for (const auto& [property, value] : {std::pair("FontSize", "13"),
                                        {"CAPTION", "x"},
                                        {"ALT", "x"},
                                        {"WIDTH", "100"},
                                        {"HEIGHT", "100"},
                                        {"Contents", "<xml><cols/><rows/><data/></>"}}) {
    EXPECT_TRUE(stamps.insert(stamp_with(property, value)).second) << property;
  }
  EXPECT_TRUE(stamps.insert(stamp_with("", "", "de")).second);
}

TEST(ChartPicture, IsWhatTheComponentAnswersAsLongAsItHasAPainter) {
  Author author;
  LiveControl control = author.make();
  const auto image = [&] { return outcome([&] { return control.component()->call("getChartImage").to_text(); }); };
  EXPECT_TRUE(image().starts_with("error 445: ")) << image();
  {
    const ObjectRef painter = paint_with(
        control, [](const ChartPicture& picture) { return picture.settings[2].second + " " + picture.language; }, "de");
    control.control().SetProperty("CAPTION", "Kosten");
    EXPECT_EQ(image(), "Kosten de");
    control.control().SetProperty("Contents", "");
    EXPECT_EQ(image(), "error 5: the chart has no data of its own");
  }
  EXPECT_TRUE(image().starts_with("error 445: ")) << image();
}

TEST(Snapshot, StandsInATemplateWithItsStamp) {
  const std::string_view stamp = "0123456789abcdef";
  const std::string element = snapshot_element("<svg><text id=\"a\">$(A) #(B) $$( --> c</text>\n</svg>", stamp);
  EXPECT_EQ(element,
            "<div data-stamp=\"0123456789abcdef\"><svg><text id=\"a\">&#36;(A) &#35;(B) $&#36;( &#45;-> c</text>\r\n"
            "</svg></div>");
  EXPECT_EQ(stamp_in("<p>" + element), stamp);
  EXPECT_EQ(stamp_in("<p>data-stamp=\"0123456789abcdef\"</p>"), "");
  EXPECT_EQ(stamp_in("<div data-stamp=\"x"), "");
  for (const std::string_view svg :
       {"", "text", "<svg>", "<svg></svg><p>", "<svg><!-- --></svg>", "<svg><script>1</script></svg>"}) {
    EXPECT_TRUE(outcome([&] { return snapshot_element(svg, stamp); }).starts_with("error 5: what was drawn")) << svg;
  }
}

}  // namespace
}  // namespace plexoras
