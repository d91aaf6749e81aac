#include "host/plist/builder.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "host/plist/description.h"
#include "host/plist/values.h"

namespace host::plist {
namespace {

using platform::PropertyList;
using platform::PropertyListView;
using Type = PropertyListView::Type;

TEST(Builder, SortsKeysAndKeepsTheLastOfEach) {
  Builder builder;
  std::vector<Builder::Entry> entries;
  for (std::int64_t i = 0; i < 1000; ++i) {
    entries.push_back({builder.keep(std::to_string(i * 7 % 100)), builder.integer(i)});
  }
  const PropertyList list = builder.finish(builder.dictionary(entries));
  ASSERT_EQ(list.entries().size(), 100U);
  for (std::int64_t i = 900; i < 1000; ++i) {
    EXPECT_EQ(integerOf(list.objectForKey(std::to_string(i * 7 % 100))), i);
  }
  EXPECT_FALSE(list.objectForKey("100"));
  EXPECT_FALSE(list.objectForKey(""));
}

TEST(Builder, ComparesKeysAsBytes) {
  Builder builder;
  const PropertyListView value = builder.boolean(true);
  const Builder::Entry entries[] = {{"\xC3\xA4", value}, {"z", value}, {"Z", value}, {"", value}};
  EXPECT_EQ(describe(builder.dictionary(entries)), "{\"\" = 1; Z = 1; z = 1; \"\xC3\xA4\" = 1; }");
}

TEST(Builder, KeepsAdoptedListsAlive) {
  PropertyList outer;
  {
    Builder inner;
    Builder builder;
    const PropertyListView text =
        builder.adopt(inner.finish(inner.string("a text too long to lie in place of a pointer")));
    outer = builder.finish(builder.array(Items(&text, 1)));
  }
  EXPECT_EQ(outer.items()[0].string(), "a text too long to lie in place of a pointer");
}

TEST(PropertyListView, AnswersForItsOwnTypeAlone) {
  Builder builder;
  const std::byte byte{1};
  struct Case {
    PropertyListView view;
    Type type;
    bool boolean;
    float number;
  };
  const Case kCases[] = {
      {{}, Type::kNone, false, 0},
      {builder.boolean(true), Type::kBoolean, true, 1},
      {builder.boolean(false), Type::kBoolean, false, 0},
      {builder.integer(-2), Type::kInteger, true, -2},
      {builder.integer(0), Type::kInteger, false, 0},
      {builder.integer(16777217), Type::kInteger, true, 16777216},
      {builder.real(0.1), Type::kReal, true, 0.1F},
      {builder.real(0), Type::kReal, false, 0},
      {builder.real(1e300), Type::kReal, true, std::numeric_limits<float>::infinity()},
      {builder.string("1"), Type::kString, false, 0},
      {builder.date({1}), Type::kDate, false, 0},
      {builder.data(Data(&byte, 1)), Type::kData, false, 0},
      {builder.array({}), Type::kArray, false, 0},
      {builder.dictionary({}), Type::kDictionary, false, 0},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(c.view.type(), c.type);
    EXPECT_EQ(c.view.boolValue(), c.boolean);
    EXPECT_EQ(c.view.floatValue(), c.number);
    EXPECT_EQ(c.view.string().has_value(), c.type == Type::kString);
    EXPECT_EQ(booleanOf(c.view).has_value(), c.type == Type::kBoolean);
    EXPECT_EQ(integerOf(c.view).has_value(), c.type == Type::kInteger);
    EXPECT_EQ(realOf(c.view).has_value(), c.type == Type::kReal);
    EXPECT_EQ(dateOf(c.view).has_value(), c.type == Type::kDate);
    EXPECT_EQ(dataOf(c.view).has_value(), c.type == Type::kData);
    EXPECT_TRUE(c.view.items().empty());
    EXPECT_TRUE(c.view.entries().empty());
    EXPECT_FALSE(c.view.objectForKey("key"));
  }
}

TEST(PropertyList, OutlivesWhatItWasTakenFrom) {
  PropertyList part;
  {
    Builder builder;
    const PropertyListView text = builder.string("part");
    const PropertyList whole = builder.finish(builder.array(Items(&text, 1)));
    part = whole.retained(whole.items()[0]);
  }
  EXPECT_EQ(part.string(), "part");
  EXPECT_TRUE(PropertyList::dictionary().isDictionary());
  EXPECT_TRUE(PropertyList::dictionary().entries().empty());
  EXPECT_FALSE(Builder().finish({}));
}

}  // namespace
}  // namespace host::plist
