#include "template/dictionary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <utility>

#include "engine_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

using Empty = Dictionary::EmptyValues;

// A bag of texts that, as the interface allows, keeps nothing that equals its default.
class TextBag final : public PropertyBag {
public:
  Variant read(std::string_view key, const Variant& default_value) override {
    const auto found = texts.find(key);
    return found == texts.end() ? default_value : Variant(found->second);
  }
  void write(std::string_view key, const Variant& value, const Variant& default_value) override {
    log += std::string(key) + "=" + value.to_text() + " unless " + default_value.to_text() + ";";
    if (value != default_value) texts[std::string(key)] = value.to_text();
  }
  std::map<std::string, std::string, std::less<>> texts;
  std::string log;
};

Dictionary filled(std::int32_t count) {
  Dictionary d;
  for (std::int32_t i = 0; i < count; ++i) d.atPut("key" + std::to_string(i), std::to_string(i));
  return d;
}

TEST(Dictionary, KeepsTheOrderInWhichEntriesWereAdded) {
  Dictionary d;
  d.atPut("B", "1");
  d.atPut("A", "2");
  d.atPut("C", "3");
  d.atPut("B", "4");
  d.removeKey("b");
  EXPECT_EQ(listing(d), "B=4;A=2;C=3;");
  d.removeKey("A");
  d.putAtIndex(1, "5");
  EXPECT_EQ(listing(d), "B=4;C=5;");
  d.atPut("A", "6");
  d.removeAtIndex(0);
  EXPECT_EQ(listing(d), "C=5;A=6;");
  EXPECT_EQ(d.GetKeys(), (StringList{"C", "A"}));
  EXPECT_EQ(d.atGet("A"), "6");
  EXPECT_EQ(d.atGet("a"), "");
  EXPECT_EQ(d.Dump(), "C=5\nA=6\n");
}

TEST(Dictionary, StoresNoNewEmptyValueUnlessAsked) {
  Dictionary d;
  d.atPut("A", "");
  EXPECT_EQ(d.Count(), 0);
  d.atPut("A", "", Empty::Keep);
  d.atPut("B", "x");
  d.atPut("B", "");
  EXPECT_EQ(listing(d), "A=;B=;");
  EXPECT_FALSE(d.includes("B"));
  EXPECT_TRUE(d.includes("B", Empty::Keep));
  EXPECT_FALSE(d.includes("C", Empty::Keep));

  Dictionary copy;
  copy.put_all(d);
  EXPECT_EQ(copy.Count(), 0);
  copy.atPut("B", "y");
  copy.put_all(d);
  EXPECT_EQ(listing(copy), "B=;");
}

TEST(Dictionary, HasSlots0To128) {
  struct Case {
    std::int32_t index;
    const char *entry, *after_put, *after_removal;
  };
  const Case cases[] = {
      {-1, "error 9", "error 9", "error 9"},          {0, "key0 0", "key0=x;key1=1;", "key1=1;"},
      {1, "key1 1", "key0=0;key1=x;", "key0=0;"},     {2, " ", "key0=0;key1=1;", "key0=0;key1=1;"},
      {128, " ", "key0=0;key1=1;", "key0=0;key1=1;"}, {129, "error 9", "error 9", "error 9"},
  };
  for (const Case& c : cases) {
    Dictionary d = filled(2);
    EXPECT_EQ(brief_outcome([&] { return d.keyAtIndex(c.index) + " " + d.valueAtIndex(c.index); }), c.entry) << c.index;
    EXPECT_EQ(brief_outcome([&] { return d.putAtIndex(c.index, "x"), listing(d); }), c.after_put) << c.index;
    d = filled(2);
    EXPECT_EQ(brief_outcome([&] { return d.removeAtIndex(c.index), listing(d); }), c.after_removal) << c.index;
  }
}

TEST(Dictionary, HasRoomFor129Entries) {
  Dictionary d = filled(129);
  EXPECT_EQ(outcome([&] { return d.atPut("more", "x"), std::string("stored"); }),
            "error 9: \"more\" is one entry too many; there is room for 129");
  d.atPut("none", "");  // not stored, so not too many
  d.atPut("key128", "last");
  EXPECT_EQ(d.valueAtIndex(128), "last");
  d.removeKey("key0");
  d.atPut("more", "x");
  EXPECT_EQ(d.Count(), 129);
  EXPECT_EQ(d.keyAtIndex(0) + d.keyAtIndex(128), "key1more");
}

// The search compares digests of the keys first, which must never decide that two keys are equal.
TEST(Dictionary, FindsKeysThatLookAlike) {
  std::vector<std::string> keys = {"", std::string(1, '\0'), std::string(2, '\0'), "a", "A"};
  for (char c = 'a'; c < 'z'; ++c) keys.push_back("a long key, " + std::string(1, c) + " in the middle");
  std::mt19937 random(1);
  Dictionary d;
  std::vector<std::pair<std::string, std::string>> expected;
  for (int step = 0; step < 20000; ++step) {
    const std::string& key = keys[random() % keys.size()];
    const auto found =
        std::find_if(expected.begin(), expected.end(), [&](const auto& entry) { return entry.first == key; });
    ASSERT_EQ(d.atGet(key), found == expected.end() ? "" : found->second);
    if (random() % 2 == 0) {
      d.removeKey(key);
      if (found != expected.end()) expected.erase(found);
    } else {
      const std::string value = std::to_string(step);
      d.atPut(key, value);
      found == expected.end() ? void(expected.emplace_back(key, value)) : void(found->second = value);
    }
  }
  std::string text;
  for (const auto& [key, value] : expected) text += key + "=" + value + ";";
  EXPECT_EQ(listing(d), text);
}

TEST(Dictionary, WritesSeparatorsIntoATextBagAsWords) {
  struct Case {
    const char* name;
    std::string_view value, word;
  };
  const Case cases[] = {
      {"no separator", "x", "x"},
      {"each separator", "x\002y\003z\004", "x<row>y<col>z<value>"},
      {"repeated ones", "\002\002", "<row><row>"},
      {"other control characters", "\001\005\t\r\n", "\001\005\t\r\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(encode_separators(c.value), c.word) << c.name;
    EXPECT_EQ(decode_separators(c.word), c.value) << c.name;
  }

  Dictionary defaults;
  defaults.atPut("A", "1");
  Dictionary d;
  d.atPut("A", "1");
  d.atPut("B", "a\002b");
  d.atPut("C", "");
  d.atPut("D", "", Empty::Keep);
  TextBag bag;
  d.writeTo(bag, defaults);
  EXPECT_EQ(bag.log, "A=1 unless 1;B=a<row>b unless ;D= unless ;");

  Dictionary read;
  for (const char* key : {"B", "A", "E"}) read.atPut(key, "own");
  read.readFrom(bag);
  EXPECT_EQ(listing(read), "B=a\002b;A=own;E=own;");
}

TEST(Dictionary, PutsValuesIntoABagOfBytesAsTheyAre) {
  Dictionary d;
  d.atPut("A", "\002 is written <row>");
  MemoryPropertyBag bag;
  d.writeTo(bag, {});
  EXPECT_EQ(bag.read("A", ""), Variant("\002 is written <row>"));
  d.atPut("A", "changed");
  d.readFrom(bag);
  EXPECT_EQ(listing(d), "A=\002 is written <row>;");
}

TEST(Dictionary, IsReachedByMemberName) {
  Dictionary d;
  AutomationObject& object = d;
  object.call_with("atPut", {"A", "1"});
  object.call_with("atPut", {"B", ""});
  object.call_with("atPut", {"C", "", true});
  object.call_with("atPut", {"D", std::int16_t{4}});
  EXPECT_EQ(listing(d), "A=1;C=;D=4;");
  EXPECT_EQ(object.get("Count"), Variant(std::int32_t{3}));
  EXPECT_EQ(object.call("Count"), Variant(std::int32_t{3}));
  EXPECT_EQ(object.call_with("keyAtIndex", {1}), Variant("C"));
  EXPECT_EQ(object.call_with("valueAtIndex", {2}), Variant("4"));
  EXPECT_EQ(object.call_with("includes", {"C"}), Variant(false));
  EXPECT_EQ(object.call_with("includes", {"C", true}), Variant(true));
  EXPECT_EQ(object.call_with("atGet", {"A"}), Variant("1"));
  EXPECT_EQ(object.call("GetKeys"), Variant(StringList{"A", "C", "D"}));
  object.call_with("putAtIndex", {0, "x"});
  object.call_with("removeAtIndex", {1});
  object.call_with("removeKey", {"D"});
  EXPECT_EQ(listing(d), "A=x;");

  const auto call = [&](std::string_view member, std::initializer_list<Variant> arguments) {
    return brief_outcome([&] { return object.call_with(member, arguments).to_text(); });
  };
  EXPECT_EQ(call("atput", {"A", "1"}), "error 438");
  EXPECT_EQ(call("atPut", {"A"}), "error 5");
  EXPECT_EQ(call("atGet", {"A", "B"}), "error 5");
  EXPECT_EQ(call("keyAtIndex", {"x"}), "error 13");
  EXPECT_EQ(brief_outcome([&] { return object.put("Count", 1), std::string(); }), "error 438");
}

TEST(ReplacedAll, GoesFromLeftToRight) {
  struct Case {
    std::string_view text, from, to, result;
  };
  const Case cases[] = {
      {"banana", "a", "b", "bbnbnb"}, {"aaa", "aa", "b", "ba"}, {"aba", "a", "aa", "aabaa"},
      {"banana", "an", "", "ba"},     {"abc", "", "x", "abc"},  {"", "a", "x", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(replaced_all(c.text, c.from, c.to), c.result) << c.text << " " << c.from;
}

}  // namespace
}  // namespace plexoras
