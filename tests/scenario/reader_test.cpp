#include "scenario/reader.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/plist/description.h"
#include "reading.h"

namespace tools::scenario {
namespace {

const auto kAsItIs = [](std::string_view text) { return std::string(text); };

TEST(Reader, ReadsEveryScenarioOfTheTests) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PRISMAL_TEST_SCENARIOS)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    EXPECT_EQ(faultOf(text), "") << entry.path();
    ++count;
  }
  EXPECT_GE(count, 5U);
}

TEST(Reader, RefusesWhatIsNoScenario) {
  constexpr Refusal kRows[] = {
      {R"({"steps": []})", R"([])", "expected an object, found an array"},
      {R"({"steps": []})", R"({})", "/steps: missing"},
      {R"({"steps": []})", R"({"steps": {}})", "/steps: expected an array, found an object"},
      {R"({"steps": []})", R"({"steps": [1]})", "/steps/0: expected an object, found the number 1"},
      {R"({"title": "", "steps": []})", R"({"title": null, "steps": []})",
       "/title: expected a string, found null"},
      {R"({"title": "", "steps": []})", R"({"Title": "", "steps": []})", "/Title: unknown member"},
      {R"({"steps": []})", R"({"steps": [], "~a/b": 1})", "/~0a~1b: unknown member"},
      {R"({"steps": []})", R"({"steps": [], "\n\u001b": 1})", R"(/\u000a\u001b: unknown member)"},
      {R"({"host": {}, "steps": []})", R"({"host": [], "steps": []})",
       "/host: expected an object, found an array"},
      {R"({"files": {}, "steps": []})", R"({"files": [], "steps": []})",
       "/files: expected an object, found an array"},
      {R"({"steps": [{"do": "load"}, {"do": "cacheEnabled"}]})",
       R"({"steps": [{"do": "load"}, {"do": "load"}]})", R"(/steps/1: a second "load")"},
  };
  expectRefusals(kRows, kAsItIs);
}

TEST(Reader, SaysWhereTextIsNoJson) {
  struct Case {
    std::string_view text;
    std::string_view start;
  };
  constexpr Case kCases[] = {
      {"", "line 1, column 1: syntax error"},
      {"{\"steps\": []", "line 1, column 13: syntax error"},
      {"{\n  \"steps\": [,]\n}", "line 2, column 13: syntax error"},
      {"{\"steps\": []} x", "line 1, column 15: syntax error"},
      {"{\"title\": \"\xFF\"}", "line 1, column 12: syntax error"},
      {"{\"a\": 1e999}", "line 1, column 11: a number beyond the range of a double"},
  };
  for (const auto& [text, start] : kCases) {
    EXPECT_TRUE(faultOf(text).starts_with(start)) << text << " -> " << faultOf(text);
    EXPECT_EQ(faultOf(text), host::plist::escapeControls(faultOf(text)));
  }
}

TEST(Reader, RefusesASecondMemberOfOneName) {
  constexpr Refusal kRows[] = {
      {R"({"steps": []})", R"({"steps": [], "steps": []})", "/steps: a second member of this name"},
      {R"({"files": {"/a": {"text": ""}, "/b": {"text": ""}}, "steps": []})",
       R"({"files": {"/a": {"text": ""}, "/a": {"text": ""}}, "steps": []})",
       "/files/~1a: a second member of this name"},
  };
  expectRefusals(kRows, kAsItIs);
}

TEST(Reader, BoundsDepthAndSize) {
  // The root, files, the file and its form are four levels.
  const auto nested = [](std::size_t arrays) {
    return withFile(R"({"plist": )" + std::string(arrays, '[') + std::string(arrays, ']') + "}");
  };
  EXPECT_EQ(faultOf(nested(997)), "");
  EXPECT_TRUE(faultOf(nested(998)).ends_with("/0: nested deeper than 1000 levels"));
  EXPECT_TRUE(faultOf(nested(1'000'000)).ends_with("/0: nested deeper than 1000 levels"));
  EXPECT_EQ(faultOf(std::string((64U << 20U) + 1, ' ')), "larger than 64 MiB");
}

}  // namespace
}  // namespace tools::scenario
