// What several themes are as one.

#include "theme/merge.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/plist/description.h"
#include "host/plist/reader.h"
#include "theme/device_paths.h"

namespace tools::theme {
namespace {

platform::PropertyList theme(const std::string& sections) {
  auto reading = host::plist::readXml("<dict>" + sections + "</dict>");
  EXPECT_TRUE(reading) << sections << ": " << reading.reason;
  return reading.list;
}

std::string s(const std::string& text) {
  return "<string>" + text + "</string>";
}
std::string k(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key>" + value;
}
std::string array(const std::string& items) {
  return "<array>" + items + "</array>";
}
std::string dict(const std::string& entries) {
  return "<dict>" + entries + "</dict>";
}

struct Case {
  const char* what;
  std::vector<std::string> layers;  // called A, B, ... from the lowest up
  std::string section;
  std::string merged;  // as a log line shows it
  std::vector<std::string> leftOut = {};
};

const Case kCases[] = {
    {"the first definition of a colour counts, so the topmost theme's come first",
     {k("CustomColor", array(s("a1") + s("a2"))), k("CustomColor", array(s("b")))},
     "CustomColor",
     "(b, a1, a2)"},
    {"the last gradient of a name counts",
     {k("CustomLinearGradient", array(s("a"))),
      k("CustomLinearGradient", array(s("b1") + s("b2")))},
     "CustomLinearGradient",
     "(a, b1, b2)"},
    {"the last rule counts, style by style",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))) + k("iPhone-Alert", array(s("c"))))),
      k("Styles", dict(k("iPhone-Standard", array(s("b")))))},
     "Styles",
     "{iPhone-Alert = (c); iPhone-Standard = (a, b); }"},
    {"a picture replaces the one under its key",
     {k("BackgroundImages", dict(k("Portrait", s("/a")) + k("Landscape", s("/c")))),
      k("BackgroundImages", dict(k("Portrait", s("/b"))))},
     "BackgroundImages",
     "{Landscape = /c; Portrait = /b; }"},
    {"a picture for more goes before those for less that lie below",
     {k("BackgroundImages",
        dict(k("Portrait;iPhone-Standard", s("/a")) + k("Portrait;iPhone-Standard;2;770", s("/b")) +
             k("PortraitX", s("/c")) + k("Landscape;iPhone-Standard", s("/d")))),
      k("BackgroundImages", dict(k("Portrait", s("/e"))))},
     "BackgroundImages",
     R"({"Landscape;iPhone-Standard" = /d; Portrait = /e; PortraitX = /c; })"},
    {"a picture for less leaves those for more",
     {k("BackgroundImages", dict(k("Portrait", s("/a")) + k("Portrait;iPad-Split;1", s("/b")))),
      k("BackgroundImages", dict(k("Portrait;iPad-Split", s("/c"))))},
     "BackgroundImages",
     R"({Portrait = /a; "Portrait;iPad-Split" = /c; })"},
    {"nothing more general stands in for the dictation panel's",
     {k("BackgroundImages", dict(k("Portrait;iPhone-Dictation", s("/a")))),
      k("BackgroundImages", dict(k("Portrait", s("/b"))))},
     "BackgroundImages",
     R"({Portrait = /b; "Portrait;iPhone-Dictation" = /a; })"},
    {"variants with fewer bits are more general",
     {k("BackgroundImages",
        dict(k("P;S;1;770", s("/a")) + k("P;S;1;514", s("/b")) + k("P;S;1;2", s("/c")) +
             k("P;S;2;770", s("/d")) + k("P;S;1;768", s("/e")))),
      k("BackgroundImages", dict(k("P;S;1;258", s("/f")) + k("P;S;1;00", s("/g"))))},
     "BackgroundImages",
     R"({"P;S;1;00" = /g; "P;S;1;2" = /c; "P;S;1;258" = /f; "P;S;1;514" = /b; "P;S;1;768" = /e; )"
     R"("P;S;2;770" = /d; })"},
    {"a picture that is no string is for nothing",
     {k("BackgroundImages", dict(k("Portrait;iPad-Split", s("/a")))),
      k("BackgroundImages", dict(k("Portrait", "<true/>")))},
     "BackgroundImages",
     R"({"Portrait;iPad-Split" = /a; })",
     {"B: BackgroundImages: Portrait must be a string; it is left out"}},
    {"no theme", {}, "CustomColor", "()"},
    {"a section that nobody has is there, and empty", {""}, "Styles", "{}"},
    {"other keys are nobody's", {k("Author", s("me"))}, "Author", "(null)"},
    {"one entry that is none doesn't matter",
     {k("CustomColor", array("<true/>")), k("CustomColor", array(s("b")))},
     "CustomColor",
     "(b, 1)"},

    {"phone rules dress a tablet also beside a theme that has rules for it",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))))),
      k("Styles", dict(k("iPad-Standard", array(s("b"))))),
      k("Styles", dict(k("iPhone-Standard", array(s("c")))))},
     "Styles",
     "{iPad-Standard = (a, b, c); iPhone-Standard = (a, c); }"},
    {"a tablet's empty list says that it has none",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))) + k("iPad-Standard", array(""))))},
     "Styles",
     "{iPad-Standard = (); iPhone-Standard = (a); }"},
    {"alerts have nothing to fall back to",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))))),
      k("Styles", dict(k("iPad-Alert", array(s("b")))))},
     "Styles",
     "{iPad-Alert = (b); iPhone-Standard = (a); }"},

    {"colours that are no array cost the others nothing",
     {k("CustomColor", array(s("a"))), k("CustomColor", s("b"))},
     "CustomColor",
     "(a)",
     {"B: CustomColor must be an array; it is left out"}},
    {"gradients that are no array",
     {k("CustomLinearGradient", dict("")), k("CustomLinearGradient", array(s("b")))},
     "CustomLinearGradient",
     "(b)",
     {"A: CustomLinearGradient must be an array; it is left out"}},
    {"styles that are no dictionary",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))))), k("Styles", array(""))},
     "Styles",
     "{iPhone-Standard = (a); }",
     {"B: Styles must be a dictionary; it is left out"}},
    {"a list of rules that is no array; it falls back no more than alone",
     {k("Styles", dict(k("iPhone-Standard", array(s("a"))) + k("iPad-Standard", s("x"))))},
     "Styles",
     "{iPad-Standard = (); iPhone-Standard = (a); }",
     {"A: Styles: iPad-Standard must be an array; it is left out"}},
    {"pictures that are no dictionary",
     {k("BackgroundImages", dict(k("Portrait", s("/a")))), k("BackgroundImages", s("/b"))},
     "BackgroundImages",
     "{Portrait = /a; }",
     {"B: BackgroundImages must be a dictionary; it is left out"}},
    {"a picture that is no string leaves the one below",
     {k("BackgroundImages", dict(k("Portrait", s("/a")))),
      k("BackgroundImages", dict(k("Portrait", "<true/>")))},
     "BackgroundImages",
     "{Portrait = /a; }",
     {"B: BackgroundImages: Portrait must be a string; it is left out"}},
};

TEST(MergeTest, TheTopmostThemeWins) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    std::vector<Layer> layers;
    for (const std::string& sections : c.layers) {
      layers.push_back({std::string(1, static_cast<char>('A' + layers.size())), theme(sections)});
    }
    const Merge merged = merge(layers);
    layers.clear();  // the merge keeps what it needs
    EXPECT_EQ(host::plist::describe(merged.theme.objectForKey(c.section)), c.merged);
    EXPECT_EQ(merged.leftOut, c.leftOut);
  }
}

TEST(DevicePathsTest, RelativePathsAreThoseOfTheDevice) {
  const auto written =
      theme(k("BackgroundImages",
              dict(k("a", s("p.png")) + k("b", s("x/./y//z.png")) + k("c", s("/d/e.png")) +
                   k("d", s("../f.png")) + k("e", s("x/../g.png")) + k("f", "<true/>"))));
  EXPECT_EQ(
      host::plist::describe(withDevicePaths(written, "/T/N/").objectForKey("BackgroundImages")),
      "{a = /T/N/p.png; b = /T/N/x/y/z.png; c = /d/e.png; d = ../f.png; e = /T/N/g.png; "
      "f = 1; }");
  const auto wrong = theme(k("BackgroundImages", s("p.png")));
  EXPECT_EQ(host::plist::describe(withDevicePaths(wrong, "/T/N/")), "{BackgroundImages = p.png; }");
}

}  // namespace
}  // namespace tools::theme
