#include "convert/json_writer.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>

#include "convert/form.h"
#include "host/plist/builder.h"

namespace tools::convert {
namespace {

using namespace std::string_view_literals;
using host::plist::Builder;

TEST(JsonWriter, WritesValuesAsAnAuthorWould) {
  Builder builder;
  struct Case {
    platform::PropertyListView value;
    std::string json;
  };
  const Builder::Entry data[] = {{"$data", builder.integer(1)}};
  const Builder::Entry escaped[] = {{"$$date", builder.integer(1)}};
  const Builder::Entry beside[] = {{"$data", builder.integer(1)}, {"a", builder.integer(2)}};
  const Case cases[] = {
      {builder.real(3), "3.0"},
      {builder.real(-0.0), "-0.0"},
      {builder.real(0.1), "0.1"},
      {builder.real(1e300), "1e+300"},
      {builder.real(5e-324), "5e-324"},
      {builder.integer(std::numeric_limits<std::int64_t>::max()), "9223372036854775807"},
      {builder.boolean(true), "true"},
      {builder.string("\"\\\n\t\x1B\0\x7F\xC2\x85 \xE2\x82\xAC/\xF0\x9F\x98\x80"sv),
       "\"\\\"\\\\\\n\\t\\u001b\\u0000\\u007f\\u0085 \xE2\x82\xAC/\xF0\x9F\x98\x80\""},
      {builder.array({}), "[]"},
      {builder.dictionary({}), "{}"},
      {builder.dictionary(data), "{\"$$data\": 1}"},
      {builder.dictionary(escaped), "{\"$$$date\": 1}"},
      {builder.dictionary(beside), "{\"$data\": 1, \"a\": 2}"},
      {builder.data({}), "{\"$data\": \"\"}"},
      {builder.date({0.5}), "{\"$date\": \"1970-01-01T00:00:00.5Z\"}"},
  };
  for (const Case& c : cases) {
    // One level down, where what is short stays on a line.
    EXPECT_EQ(writeJson(builder.array(host::plist::Items(&c.value, 1))),
              "[\n  " + c.json + "\n]\n");
  }
}

TEST(JsonWriter, BreaksWhatIsLong) {
  const auto reading = readAnyForm(
      "<dict><key>CustomColor</key><array><array><string>A</string><string>#FF0000FF</string>"
      "</array></array><key>Long</key><array><string>"
      "123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890"
      "</string><array/></array></dict>");
  ASSERT_TRUE(reading) << reading.reason;
  EXPECT_EQ(
      writeJson(reading.list),
      "{\n"
      "  \"CustomColor\": [[\"A\", \"#FF0000FF\"]],\n"
      "  \"Long\": [\n"
      "    \"123456789012345678901234567890123456789012345678901234567890123456789012345678901"
      "234567890\",\n"
      "    []\n"
      "  ]\n"
      "}\n");
}

}  // namespace
}  // namespace tools::convert
