#include "host/property_bag.h"

#include <gtest/gtest.h>

#include "outcome.h"

namespace plexoras {
namespace {

std::string listing(const MemoryPropertyBag& bag) {
  std::string text;
  for (const MemoryPropertyBag::Entry& entry : bag.entries()) {
    text += entry.key + ":" + std::string(type_name(entry.value.type())) + ":" + entry.value.to_text() + ";";
  }
  return text;
}

MemoryPropertyBag bag_of_every_type() {
  MemoryPropertyBag bag;
  bag.write("nothing", {}, {});
  bag.write("integer", std::int16_t{-2}, {});
  bag.write("long", -70000, {});
  bag.write("double", -0.1, {});
  bag.write("boolean", true, {});
  bag.write(std::string_view("te\0xt", 5), std::string("\0\r\n\xFF", 4), {});
  bag.write("list", StringList{"", "a\tb", "c"}, {});
  bag.write("", "", {});
  return bag;
}

TEST(MemoryPropertyBag, KeepsWhatDiffersFromItsDefault) {
  MemoryPropertyBag bag;
  bag.write("AppletID", "Sales", "");
  bag.write("XmlStyle", "", {});
  bag.write("RowSelection", std::int16_t{-1}, std::int16_t{-1});
  bag.write("ColSelection", std::int16_t{3}, std::int16_t{-1});
  EXPECT_EQ(listing(bag), "AppletID:String:Sales;XmlStyle:String:;ColSelection:Integer:3;");

  bag.write("AppletID", "Costs", "");
  bag.write("ColSelection", std::int16_t{-1}, std::int16_t{-1});
  EXPECT_EQ(listing(bag), "AppletID:String:Costs;XmlStyle:String:;");
  EXPECT_EQ(bag.keys(), (StringList{"AppletID", "XmlStyle"}));
  EXPECT_EQ(bag.read("AppletID", "none"), Variant("Costs"));
  EXPECT_EQ(bag.read("ColSelection", std::int16_t{-1}), Variant(std::int16_t{-1}));
}

TEST(MemoryPropertyBag, SurvivesItsByteForm) {
  const MemoryPropertyBag bag = bag_of_every_type();
  const MemoryPropertyBag copy = MemoryPropertyBag::from_bytes(from_hex(to_hex(bag.bytes())));
  ASSERT_EQ(copy.keys(), bag.keys());
  for (std::size_t i = 0; i < bag.entries().size(); ++i) {
    EXPECT_EQ(copy.entries()[i].value, bag.entries()[i].value) << bag.entries()[i].key;
  }
  MemoryPropertyBag with_object;
  with_object.write("chart", ObjectRef(), {});
  EXPECT_EQ(outcome([&] { return with_object.bytes(); }),
            "error 13: Type mismatch: the object under \"chart\" cannot be kept in a property bag");
}

TEST(MemoryPropertyBag, WritesTheDocumentedBytes) {
  MemoryPropertyBag bag;
  bag.write("AppletID", "Sales", "");
  bag.write("RowSelection", std::int16_t{3}, std::int16_t{-1});
  bag.write("Fonts", StringList{"Arial"}, {});
  EXPECT_EQ(to_hex(bag.bytes()),
            "505850420103000000"
            "5308000000050000004170706C6574494453616C6573"
            "490C00000002000000526F7753656C656374696F6E0300"
            "54050000000D000000466F6E74730100000005000000417269616C");
}

TEST(MemoryPropertyBag, RefusesWhatIsNoByteForm) {
  struct Case {
    const char *name, *hex, *error;
  };
  const Case cases[] = {
      {"nothing", "", "byte 0: the bytes end within the opening mark: 4 wanted, 0 left"},
      {"another format", "504B03040100000000", "byte 0: it opens with \"PXPB\""},
      {"a later version", "505850420200000000", "byte 4: unknown version 2"},
      {"a missing entry", "505850420101000000", "byte 9: the bytes end within a value type: 1 wanted, 0 left"},
      {"an unknown type", "505850420101000000580000000000000000", "byte 9: unknown value type 88"},
      {"a key past the end", "50585042010100000053FFFFFFFF0000000041",
       "byte 18: the bytes end within a key: 4294967295 wanted, 1 left"},
      {"a short integer", "505850420101000000490000000001000000AA",
       "byte 18: the bytes end within an Integer: 2 wanted, 1 left"},
      {"a long boolean", "50585042010100000042000000000200000000AA",
       "byte 19: the value of \"\" is 1 bytes longer than its type"},
      {"a third truth", "50585042010100000042000000000100000002", "byte 18: a Boolean is 0 or 1, not 2"},
      {"more texts than bytes", "505850420101000000540000000004000000FFFFFFFF",
       "byte 22: the bytes end within a text of a list: 4 wanted, 0 left"},
      {"a key twice",
       "5058504201020000004E000000000000000"
       "04E0000000000000000",
       "byte 27: the key \"\" stands here for the second time"},
      {"something behind", "50585042010000000000", "byte 9: 1 bytes follow the last entry"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(outcome([&] { return listing(MemoryPropertyBag::from_bytes(from_hex(c.hex))); }),
              std::string("error 5: Not a property bag: ") + c.error)
        << c.name;
  }

  const std::string bytes = bag_of_every_type().bytes();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(MemoryPropertyBag::from_bytes(bytes.substr(0, length)), AutomationError) << length;
  }
}

TEST(Hex, IsReadInEitherCaseAndStrictly) {
  EXPECT_EQ(to_hex(std::string_view("\0\n\xFF", 3)), "000AFF");
  EXPECT_EQ(from_hex("0aFf"), "\n\xFF");
  EXPECT_EQ(outcome([] { return from_hex("ABC"); }),
            "error 5: Not hexadecimal text: 3 characters, where every byte takes two");
  EXPECT_EQ(outcome([] { return from_hex("0A0x"); }),
            "error 5: Not hexadecimal text: character 4 is no hexadecimal digit");
}

}  // namespace
}  // namespace plexoras
