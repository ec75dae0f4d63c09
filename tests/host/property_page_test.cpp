#include "host/property_page.h"

#include <gtest/gtest.h>

#include <map>

namespace plexoras {
namespace {

class Chart : public AutomationObject {
public:
  std::map<std::string, Variant, std::less<>> values;
  bool read_only = false;
  Variant get(std::string_view member) override { return values[std::string(member)]; }
  void put(std::string_view member, const Variant& value) override {
    if (read_only) no_such_member(member, "Chart");
    values[std::string(member)] = value;
  }
  Variant call(std::string_view member, Arguments) override { no_such_member(member, "Chart"); }
};

class BorderPage : public PropertyPage {
public:
  CheckBox& chkHasBorder = add<CheckBox>("chkHasBorder", "Border");
  BorderPage() {
    chkHasBorder.on_click = [this] { Changed = true; };
  }
  void SelectionChanged() override { chkHasBorder.set_value(selected_control().get("HasBorder").to_integer() & 1); }
  void ApplyChanges() override { selected_control().put("HasBorder", chkHasBorder.value() == 1); }
};

TEST(PropertyPage, TracksEditsBetweenLoadAndApply) {
  const auto first = std::make_shared<Chart>();
  const auto second = std::make_shared<Chart>();
  first->values["HasBorder"] = true;
  BorderPage page;

  page.select({first, second});
  EXPECT_EQ(page.chkHasBorder.value(), 1);
  EXPECT_FALSE(page.Changed) << "loading is no edit";

  page.chkHasBorder.user_click();
  EXPECT_TRUE(page.Changed);
  first->read_only = true;
  EXPECT_THROW(page.apply(), AutomationError);
  EXPECT_TRUE(page.Changed) << "nothing was applied";

  first->read_only = false;
  page.apply();
  EXPECT_FALSE(page.Changed);
  EXPECT_EQ(first->values["HasBorder"], Variant(false));
  EXPECT_TRUE(second->values.empty()) << "only the first control is written";

  EXPECT_THROW(page.select({}), AutomationError);
}

}  // namespace
}  // namespace plexoras
