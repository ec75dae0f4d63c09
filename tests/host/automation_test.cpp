#include "host/automation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "outcome.h"

namespace plexoras {
namespace {

class Nobody : public AutomationObject {
public:
  Variant get(std::string_view member) override { no_such_member(member, "Nobody"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Nobody"); }
  Variant call(std::string_view member, Arguments) override { no_such_member(member, "Nobody"); }
};

TEST(Variant, ConvertsNumbersAndTexts) {
  struct Case {
    Variant value;
    const char *as_integer, *as_long, *as_double, *as_boolean, *as_text;
  };
  const double infinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {{}, "0", "0", "0", "False", ""},
      {true, "-1", "-1", "-1", "True", "True"},
      {std::int16_t{-7}, "-7", "-7", "-7", "True", "-7"},
      {70000, "error 6", "70000", "70000", "True", "70000"},
      {0.5, "0", "0", "0.5", "True", "0.5"},
      {1.5, "2", "2", "1.5", "True", "1.5"},
      {-2.5, "-2", "-2", "-2.5", "True", "-2.5"},
      {32767.4, "32767", "32767", "32767.4", "True", "32767.4"},
      {32767.5, "error 6", "32768", "32767.5", "True", "32767.5"},
      {-32768.5, "-32768", "-32768", "-32768.5", "True", "-32768.5"},
      {3e9, "error 6", "error 6", "3000000000", "True", "3000000000"},
      {infinity, "error 6", "error 6", "inf", "True", "inf"},
      {std::nan(""), "error 6", "error 6", "nan", "True", "nan"},
      {-0.0, "0", "0", "0", "False", "0"},
      {100000.0, "error 6", "100000", "100000", "True", "100000"},
      {0.1 + 0.2, "0", "0", "0.30000000000000004", "True", "0.30000000000000004"},
      {1e15, "error 6", "error 6", "1e+15", "True", "1e+15"},
      {0.00001, "0", "0", "0.00001", "True", "0.00001"},
      {2.5e-6, "0", "0", "2.5e-06", "True", "2.5e-06"},
      {" 42\t", "42", "42", "42", "True", " 42\t"},
      {"+2.5", "2", "2", "2.5", "True", "+2.5"},
      {"-.5e1", "-5", "-5", "-5", "True", "-.5e1"},
      {"0", "0", "0", "0", "False", "0"},
      {"1e-999", "0", "0", "0", "False", "1e-999"},
      {"0.001e-99999999999999999999", "0", "0", "0", "False", "0.001e-99999999999999999999"},
      {"-1e999", "error 6", "error 6", "error 6", "error 6", "-1e999"},
      {"100e+306", "error 6", "error 6", "1e+308", "True", "100e+306"},
      {"tRUE ", "error 13", "error 13", "error 13", "True", "tRUE "},
      {"False", "error 13", "error 13", "error 13", "False", "False"},
      {"", "error 13", "error 13", "error 13", "error 13", ""},
      {"12 3", "error 13", "error 13", "error 13", "error 13", "12 3"},
      {"1,5", "error 13", "error 13", "error 13", "error 13", "1,5"},
      {"+-1", "error 13", "error 13", "error 13", "error 13", "+-1"},
      {"1e", "error 13", "error 13", "error 13", "error 13", "1e"},
      {"inf", "error 13", "error 13", "error 13", "error 13", "inf"},
      {StringList{"1"}, "error 13", "error 13", "error 13", "error 13", "error 13"},
      {ObjectRef(), "error 13", "error 13", "error 13", "error 13", "error 13"},
  };
  for (const Case& c : cases) {
    const std::string name = std::string(type_name(c.value.type())) + " " + c.as_text;
    EXPECT_EQ(brief_outcome([&] { return std::to_string(c.value.to_integer()); }), c.as_integer) << name;
    EXPECT_EQ(brief_outcome([&] { return std::to_string(c.value.to_long()); }), c.as_long) << name;
    EXPECT_EQ(brief_outcome([&] { return Variant(c.value.to_double()).to_text(); }), c.as_double) << name;
    EXPECT_EQ(brief_outcome([&] { return Variant(c.value.to_boolean()).to_text(); }), c.as_boolean) << name;
    EXPECT_EQ(brief_outcome([&] { return c.value.to_text(); }), c.as_text) << name;
  }
}

TEST(Variant, ConvertsToEveryTypeOrSaysWhyNot) {
  const Variant text("12");
  EXPECT_EQ(text.converted_to(ValueType::Integer), Variant(std::int16_t{12}));
  EXPECT_EQ(text.converted_to(ValueType::Long), Variant(12));
  EXPECT_EQ(text.converted_to(ValueType::Double), Variant(12.0));
  EXPECT_EQ(text.converted_to(ValueType::Boolean), Variant(true));
  EXPECT_EQ(Variant(12).converted_to(ValueType::String), text);
  EXPECT_EQ(Variant(StringList{"a"}).converted_to(ValueType::TextList).to_text_list(), StringList{"a"});

  const auto converted = [](const Variant& value, ValueType type) {
    return outcome([&] { return value.converted_to(type).to_text(); });
  };
  EXPECT_EQ(converted(text, ValueType::TextList), "error 13: Type mismatch: String cannot be read as TextList");
  EXPECT_EQ(converted(text, ValueType::Nothing), "error 13: Type mismatch: String cannot be read as Nothing");
  EXPECT_EQ(converted(text, ValueType::Object), "error 91: Object variable not set");
  EXPECT_EQ(converted("twelve", ValueType::Long), "error 13: Type mismatch: \"twelve\" is not a number");
  EXPECT_EQ(outcome([] { return Variant(ObjectRef()).to_object() ? "object" : "null"; }),
            "error 91: Object variable not set");
}

TEST(NumberOfText, ReadsLikeAVariantAndNeverFails) {
  struct Case {
    std::string_view text;
    std::optional<double> number;
  };
  const Case cases[] = {{" +2.50\t", 2.5},  {"-1e3", -1000.0},     {"1e-999", 0.0},      {"1e999", std::nullopt},
                        {"", std::nullopt}, {"1,5", std::nullopt}, {"inf", std::nullopt}};
  for (const Case& c : cases) EXPECT_EQ(number_of_text(c.text), c.number) << c.text;
}

TEST(Variant, EqualsOnlyInTheSameType) {
  EXPECT_NE(Variant(1), Variant(std::int16_t{1}));
  EXPECT_NE(Variant("1"), Variant(1));
}

TEST(AutomationObject, RefusesUnknownMembersByName) {
  Nobody nobody;
  try {
    nobody.call_with("Refresh", {1, "two"});
    FAIL();
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), RunTimeError::NoSuchMember);
    EXPECT_EQ(error.description(), "Object doesn't support this property or method: \"Refresh\"");
    EXPECT_EQ(error.source(), "Nobody");
  }
  EXPECT_EQ(outcome([&] { return nobody.call_by_id(-552).to_text(); }),
            "error 438: Object doesn't support this property or method: dispatch identifier -552");
}

}  // namespace
}  // namespace plexoras
