#include "convert/json_reader.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "convert/form.h"
#include "host/plist/description.h"
#include "host/plist/limits.h"
#include "host/plist/values.h"

namespace tools::convert {
namespace {

using namespace std::string_view_literals;
using platform::PropertyListView;

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

TEST(JsonReader, GivesEveryTypeItsValue) {
  const auto reading = readJson(
      "\xEF\xBB\xBF{\"array\": [], \"data\": {\"$data\": \"AAH/\"}, \"date\":"
      " {\"$date\": \"2013-09-18T00:00:00Z\"}, \"dictionary\": {}, \"false\": false,"
      " \"int\": -9223372036854775808, \"real\": 3.0, \"tenth\": 1e-1, \"text\": \"\\u00e9\\n\"}");
  ASSERT_TRUE(reading) << reading.reason;
  EXPECT_EQ(host::plist::describe(reading.list),
            "{array = (); data = <0001ff>; date = 2013-09-18 00:00:00 +0000; dictionary = {}; "
            "false = 0; int = -9223372036854775808; real = 3; tenth = 0.1; text = \"\xC3\xA9\\n\"; "
            "}");
  EXPECT_EQ(reading.list.objectForKey("real").type(), PropertyListView::Type::kReal);
  EXPECT_EQ(reading.list.objectForKey("int").type(), PropertyListView::Type::kInteger);
}

TEST(JsonReader, TakesNotationForADictionaryOnlyWhereItIsEscapedOrNotAlone) {
  struct Case {
    std::string_view json;
    std::string_view description;
  };
  constexpr Case kCases[] = {
      {R"({"$data": ""})", "<>"},
      {R"({"$$data": 1})", "{$data = 1; }"},
      {R"({"$$$date": 1})", "{$$date = 1; }"},
      {R"({"$data": "", "x": 1})", "{$data = \"\"; x = 1; }"},
      {R"({"$$data": 1, "x": 1})", "{$$data = 1; x = 1; }"},
      {R"({"$Data": 1})", "{$Data = 1; }"},
      {R"({"data": 1})", "{data = 1; }"},
      {R"({"$$": 1})", "{$$ = 1; }"},
  };
  for (const auto& [json, description] : kCases) {
    const auto reading = readJson(json);
    ASSERT_TRUE(reading) << json << ": " << reading.reason;
    EXPECT_EQ(host::plist::describe(reading.list), description) << json;
  }
}

TEST(JsonReader, RefusesWithThePlaceOfTheToken) {
  struct Case {
    std::string json;
    std::string reason;  // its beginning
  };
  const Case cases[] = {
      {"", "line 1, column 1: syntax error"},
      {"{\n  \"a\": nul\n}", "line 2, column 11: syntax error"},
      {"[1] 2", "line 1, column 5: syntax error"},
      {"[1,\n  null]", "line 2, column 3: a property list has no null"},
      {"{\"a\": 1,\n \"b\": 2, \"a\": 3}", "line 2, column 10: a second member named \"a\""},
      {"{\"\xC3\xA9\": [1,2],\"\xC3\xA9\":3}",
       "line 1, column 13: a second member named \"\xC3\xA9\""},
      {"{\"\\u001b\": 1, \"\\u001b\": 1}", "line 1, column 15: a second member named \"\\u001b\""},
      {"[0, 9223372036854775808]", "line 1, column 5: an integer beyond 64 bits"},
      {"[0,-9223372036854775809]", "line 1, column 4: an integer beyond 64 bits"},
      {"[99999999999999999999]", "line 1, column 2: an integer beyond 64 bits"},
      {"[1, 1e400]", "line 1, column 5: a number beyond the range of a double"},
      {"[1, 1e-400]", "line 1, column 5: a number beyond the range of a double"},
      {"[ {\"$data\": \"AAA\"}]", "line 1, column 3: expected base64"},
      {"[{\"$data\": 7}]", "line 1, column 2: expected base64"},
      {"{\"$date\": \"yesterday\"}", "line 1, column 1: expected a date like"},
      {"\"\xFF\"", "line 1, column 2: syntax error"},
      {"\"\\ud800\"", "line 1, column 8: syntax error"},
      {"[\"\xC2\x9B\n", "line 1, column 4: syntax error"},
      {repeated("[", host::plist::kMaxDepth + 1),
       "line 1, column 513: nested deeper than 512 levels"},
      {repeated("[", host::plist::kMaxDepth) + "{\"a\": 1}", "line 1, column 513: nested deeper"},
  };
  for (const Case& c : cases) {
    const auto reading = readJson(c.json);
    ASSERT_FALSE(reading) << c.json;
    EXPECT_EQ(reading.reason.substr(0, c.reason.size()), c.reason);
    EXPECT_EQ(reading.reason, host::plist::escapeControls(reading.reason));
  }
}

TEST(JsonReader, TakesAsMuchAsOtherFormsHold) {
  // Data at the deepest level is one object more in JSON.
  const std::string deep = repeated("[", host::plist::kMaxDepth) + R"({"$data": "AA=="})" +
                           repeated("]", host::plist::kMaxDepth);
  const std::string full = "[" + repeated("{\"$data\":\"\"},", host::plist::kMaxValues - 2) + "1]";
  for (const auto& json : {deep, full}) {
    const auto reading = readJson(json);
    ASSERT_TRUE(reading) << reading.reason;
    for (const auto form : {Form::kXml, Form::kBinary, Form::kJson}) {
      EXPECT_EQ(writeForm(reading.list, form).reason, "");
    }
  }
  EXPECT_FALSE(readJson("[" + repeated("1,", host::plist::kMaxValues - 1) + "1]"));
  EXPECT_EQ(readJson(std::string(host::plist::kMaxBytes + 1, ' ')).reason, "longer than 64 MiB");
}

}  // namespace
}  // namespace tools::convert
