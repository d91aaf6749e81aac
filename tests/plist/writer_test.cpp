#include "host/plist/writer.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>

#include "host/plist/builder.h"
#include "host/plist/description.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/values.h"
#include "samples.h"

namespace host::plist {
namespace {

using namespace std::string_view_literals;
using platform::PropertyList;
using platform::PropertyListView;

/// Whether both hold the same, type by type.
void expectSame(PropertyListView left, PropertyListView right) {
  ASSERT_EQ(left.type(), right.type());
  ASSERT_EQ(left.items().size(), right.items().size());
  ASSERT_EQ(left.entries().size(), right.entries().size());
  for (std::size_t i = 0; i < left.items().size(); ++i) {
    expectSame(left.items()[i], right.items()[i]);
  }
  for (std::size_t i = 0; i < left.entries().size(); ++i) {
    EXPECT_EQ(left.entries()[i].key, right.entries()[i].key);
    expectSame(left.entries()[i].value, right.entries()[i].value);
  }
  EXPECT_EQ(left.string(), right.string());
  EXPECT_EQ(describe(left), describe(right));
}

TEST(Writer, WritesXmlAsPeopleReadIt) {
  const Reading reading = readXml(
      "<dict><key>&lt;b></key><array><true/><real>7</real><array/><string>a&#13;&amp;\n</string></"
      "array>"
      "<key>a</key><dict/></dict>");
  ASSERT_TRUE(reading) << reading.reason;
  EXPECT_EQ(writeXml(reading.list),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>&lt;b&gt;</key>\n"
            "\t<array>\n"
            "\t\t<true/>\n"
            "\t\t<real>7</real>\n"
            "\t\t<array/>\n"
            "\t\t<string>a&#13;&amp;\n</string>\n"
            "\t</array>\n"
            "\t<key>a</key>\n"
            "\t<dict/>\n"
            "</dict>\n"
            "</plist>\n");
}

TEST(Writer, GivesBackEverythingInBothForms) {
  const Reading sample = readXml(samples::kEverything);
  ASSERT_TRUE(sample) << sample.reason;
  for (const std::string& bytes : {writeXml(sample.list), writeBinary(sample.list)}) {
    const Reading again = read(bytes);
    ASSERT_TRUE(again) << again.reason;
    expectSame(sample.list, again.list);
  }
}

TEST(Writer, KeepsNumbersAndDatesExactly) {
  Builder builder;
  const PropertyListView values[] = {builder.integer(0),
                                     builder.integer(-1),
                                     builder.integer(0xFFFF),
                                     builder.integer(0x10000),
                                     builder.integer(std::numeric_limits<std::int64_t>::max()),
                                     builder.integer(std::numeric_limits<std::int64_t>::min()),
                                     builder.real(0.1),
                                     builder.real(-0.0),
                                     builder.real(5e-324),
                                     builder.real(1.0 / 3),
                                     builder.real(std::numeric_limits<double>::max()),
                                     builder.date({-62135596800}),
                                     builder.date({253402300799}),
                                     builder.date({1379462400})};
  const PropertyList list = builder.finish(builder.array(values));
  for (const std::string& bytes : {writeXml(list), writeBinary(list)}) {
    const Reading again = read(bytes);
    ASSERT_TRUE(again) << again.reason;
    expectSame(list, again.list);
  }
}

TEST(Writer, ReplacesWhatAFormCannotHold) {
  Builder builder;
  const PropertyListView items[] = {builder.string("a\0\x1F\xEF\xBF\xBF z"sv),
                                    builder.string("\xFFz"), builder.date({0.75})};
  const PropertyList list = builder.finish(builder.array(items));
  const Reading xml = read(writeXml(list));
  ASSERT_TRUE(xml) << xml.reason;
  EXPECT_EQ(xml.list.items()[0].string(), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD z");
  EXPECT_EQ(dateOf(xml.list.items()[2])->seconds, 0);
  const Reading binary = read(writeBinary(list));
  ASSERT_TRUE(binary) << binary.reason;
  EXPECT_EQ(binary.list.items()[0].string(), items[0].string());
  EXPECT_EQ(binary.list.items()[1].string(), "\xEF\xBF\xBDz");
  EXPECT_EQ(dateOf(binary.list.items()[2])->seconds, 0.75);
}

TEST(Writer, SharesTextsAndValuesInTheBinaryForm) {
  Builder builder;
  const PropertyListView inner = builder.array({});
  const Builder::Entry entries[] = {{"text", builder.string("text")}, {"a", inner}, {"b", inner}};
  const PropertyList list = builder.finish(builder.dictionary(entries));
  const std::string bytes = writeBinary(list);
  EXPECT_EQ(bytes.find("text"), bytes.rfind("text"));
  const Reading again = read(bytes);
  ASSERT_TRUE(again) << again.reason;
  EXPECT_EQ(again.list.objectForKey("a").get(), again.list.objectForKey("b").get());
}

TEST(Writer, TakesManyObjectsAndTheDeepestList) {
  Builder builder;
  std::vector<PropertyListView> numbers;
  for (std::int64_t i = 0; i < 70'000; ++i) numbers.push_back(builder.integer(i));
  PropertyListView root = builder.array(numbers);
  for (std::size_t depth = 1; depth < kMaxDepth; ++depth) root = builder.array(Items(&root, 1));
  const PropertyList list = builder.finish(root);
  for (const std::string& bytes : {writeXml(list), writeBinary(list)}) {
    const Reading again = read(bytes);
    ASSERT_TRUE(again) << again.reason;
    EXPECT_EQ(describe(again.list), describe(list));
  }
}

TEST(Writer, WritesNothingForNull) {
  EXPECT_EQ(writeXml({}), "");
  EXPECT_EQ(writeBinary({}), "");
}

}  // namespace
}  // namespace host::plist
