#include "host/plist/description.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "host/plist/builder.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "samples.h"

namespace host::plist {
namespace {

using namespace std::string_view_literals;
using platform::PropertyListView;

TEST(Description, WritesRealsAsTheShortestText) {
  struct Case {
    double value;
    std::string_view text;
  };
  constexpr Case kCases[] = {
      {7, "7"},
      {-7, "-7"},
      {0, "0"},
      {-0.0, "-0"},
      {0.1, "0.1"},
      {1.5, "1.5"},
      {100, "100"},
      {120.25, "120.25"},
      {1.0 / 3, "0.3333333333333333"},
      {0.0001, "0.0001"},
      {0.00012, "0.00012"},
      {0.00001, "1e-05"},
      {0.000015, "1.5e-05"},
      {1e16, "10000000000000000"},
      {12345678901234568.0, "12345678901234568"},
      {1e17, "1e+17"},
      {1e20, "1e+20"},
      {-2.5e-7, "-2.5e-07"},
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {5e-324, "5e-324"},
  };
  Builder builder;
  for (const Case& c : kCases) EXPECT_EQ(describe(builder.real(c.value)), c.text);
}

TEST(Description, EscapesControlCharactersAlone) {
  struct Case {
    std::string_view text;
    std::string_view line;
  };
  constexpr Case kCases[] = {
      {"", ""},
      {"/x y.png \"q\" \\n", "/x y.png \"q\" \\n"},
      {"a\nb\rc\td", "a\\nb\\rc\\td"},
      {"\0\x1B[0m\x1F"sv, "\\u0000\\u001b[0m\\u001f"},
      {"\x7F\xC2\x80\xC2\x9F", "\\u007f\\u0080\\u009f"},
      {"~\xC2\xA0\xE2\x80\xA8\xF0\x9F\x98\x80", "~\xC2\xA0\xE2\x80\xA8\xF0\x9F\x98\x80"},
      {"a\x9B\xE2\x82", "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
  };
  Builder builder;
  for (const Case& c : kCases) {
    EXPECT_EQ(escapeControls(c.text), c.line);
    EXPECT_EQ(describe(builder.string(c.text)), c.line);
  }
}

TEST(Description, WritesCollectionsOnOneLine) {
  struct Case {
    std::string_view xml;
    std::string_view line;
  };
  constexpr Case kCases[] = {
      {"<array><string>A</string><string>#00FF00</string></array>", "(A, \"#00FF00\")"},
      {"<dict><key>Row</key><array/><key>Portrait</key><string>/x y.png</string></dict>",
       "{Portrait = \"/x y.png\"; Row = (); }"},
      {"<array><array/><dict/><array><dict><key>a b</key><dict/></dict></array></array>",
       "((), {}, ({\"a b\" = {}; }))"},
      {"<array><true/><false/><integer>-1</integer><real>0.5</real><data>ChsAAA==</data>"
       "<date>2013-09-18T00:00:00Z</date></array>",
       "(1, 0, -1, 0.5, <0a1b0000>, 2013-09-18 00:00:00 +0000)"},
      {"<array><string>AZaz09._/$:-</string></array>", "(AZaz09._/$:-)"},
      {"<array><string/><string>a,b</string><string>\xC3\xA4</string></array>",
       "(\"\", \"a,b\", \"\xC3\xA4\")"},
      {"<array><string>\"\\\n\xC2\x85</string></array>", "(\"\\\"\\\\\\n\\u0085\")"},
      {"<dict><key>b</key><true/><key>B</key><true/><key>\xC3\xA4</key><true/></dict>",
       "{B = 1; b = 1; \"\xC3\xA4\" = 1; }"},
  };
  for (const Case& c : kCases) {
    const Reading reading = readXml(c.xml);
    EXPECT_EQ(describe(reading.list), c.line) << reading.reason;
  }
  EXPECT_EQ(describe(PropertyListView()), "(null)");
}

TEST(Description, IsCutOffBehindTheBound) {
  const std::string longest(kMaxDescribedBytes, 'a');
  struct Case {
    const char* name;
    std::string text;
    std::string line;
  };
  const Case cases[] = {
      {"as long as may be", longest, longest},
      {"a byte longer", longest + "b", longest + "..."},
      {"much longer", longest + longest, longest + "..."},
      {"between characters", longest.substr(1) + "\xF0\x9F\x98\x80", longest.substr(1) + "..."},
  };
  for (const Case& c : cases) {
    Builder builder;
    EXPECT_EQ(describe(builder.string(c.text)), c.line) << c.name;
    EXPECT_EQ(inOneLine(c.text, kMaxDescribedBytes), c.line) << c.name;
  }
}

TEST(Description, OfWhateverIsInItIsCutOffBehindTheBound) {
  Builder builder;
  const auto text = builder.string(std::string(3'000'000, 'a'));
  const auto controls = builder.string(std::string(3'000'000, '\x01'));
  const auto wide = builder.string(samples::repeated("\xF0\x9F\x98\x80", 1'000'000));
  const auto data = builder.data(std::vector<std::byte>(3'000'000));
  const std::vector<PropertyListView> many(500'000, builder.boolean(true));
  const Builder::Entry entry{builder.keep(std::string(3'000'000, 'k')), text};
  for (const PropertyListView item :
       {text, controls, wide, data, builder.array(many), builder.dictionary({&entry, 1})}) {
    const std::string line = describe(builder.array({&item, 1}));
    EXPECT_LE(line.size(), kMaxDescribedBytes + 3);
    EXPECT_GE(line.size(), kMaxDescribedBytes);
    EXPECT_TRUE(line.starts_with('(') && line.ends_with("..."));
  }
}

TEST(Description, TakesTheDeepestList) {
  const Reading reading =
      readXml(samples::repeated("<array>", kMaxDepth) + samples::repeated("</array>", kMaxDepth));
  EXPECT_EQ(describe(reading.list), std::string(kMaxDepth, '(') + std::string(kMaxDepth, ')'));
}

}  // namespace
}  // namespace host::plist
