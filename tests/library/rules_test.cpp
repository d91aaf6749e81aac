// Rule lists: which one a visual style gets, what a rule is to a key, what a style sets.

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "host/plist/reader.h"
#include "styles/style_matching.h"
#include "styles/style_properties.h"
#include "styles/style_table.h"

namespace prismal {
namespace {

platform::PropertyList plist(const std::string& xml) {
  auto reading = host::plist::read(xml);
  EXPECT_TRUE(reading) << reading.reason;
  return reading.list;
}

const KeyIdentity kKey({.name = "A", .displayRowHint = 1});

TEST(RuleVerdict, IsAStyleAFailureOrAMessage) {
  struct Case {
    std::string rule;
    bool applies;
    std::string term;
    std::string message;
  };
  const std::string pair = "PM: Style must be the pair of condition and dictionary - ";
  const Case cases[] = {
      {"<array><string>KeyName=A</string><dict/></array>", true, "", ""},
      {"<array><string>KeyName=B;*</string><dict/></array>", false, "KeyName=B", ""},
      // What is wrong with the value is not told of a rule that doesn't hold.
      {"<array><string>Row=Row2</string><string/></array>", false, "Row=Row2", ""},
      {"<array><string>Row=Row1</string><string/></array>", false, "",
       "PM: Style value must be dictionary."},
      {"<array><integer>1</integer><dict/></array>", false, "",
       "PM: Style condition must be string."},
      {"<array><string>*</string></array>", false, "", pair + "Not count 2"},
      {"<string>*</string>", false, "", pair + "Not Array"},
  };
  for (const Case& c : cases) {
    const auto rule = plist(c.rule);
    const RuleVerdict verdict = PMJudgeRule(rule, kKey, 3);
    EXPECT_EQ(static_cast<bool>(verdict.style), c.applies) << c.rule;
    EXPECT_EQ(verdict.failure ? verdict.failure->term : "", c.term) << c.rule;
    EXPECT_EQ(verdict.message, c.message) << c.rule;
  }
}

TEST(StyleSettings, AreInTheOrderOfTheFormatAndOfTheRightTypes) {
  const auto style = plist(
      "<dict><key>FontName</key><string>F</string><key>EtchOffsetX</key><true/>"
      "<key>TransparentForeground</key><integer>1</integer><key>TextColor</key><integer>7</integer>"
      "<key>BackgroundGradient</key><string>G</string><key>Other</key><string>x</string></dict>");
  std::vector<std::pair<std::string, StylePart>> set;
  for (const auto& setting : styleSettings(style)) {
    set.emplace_back(setting.property, setting.part);
  }
  EXPECT_EQ(set, (std::vector<std::pair<std::string, StylePart>>{
                     {"BackgroundGradient", StylePart::kBackground},
                     {"TransparentForeground", StylePart::kBackground},
                     {"EtchOffsetX", StylePart::kEtchOffsetX},
                     {"FontName", StylePart::kFontName}}));
}

TEST(StyleSettings, LeaveOutAForegroundThatIsNotTransparent) {
  for (const char* value : {"<false/>", "<integer>0</integer>", "<string>1</string>"}) {
    const auto style = plist("<dict><key>TransparentForeground</key>" + std::string(value) +
                             "<key>EtchColor</key><string>E</string></dict>");
    ASSERT_EQ(styleSettings(style).size(), 1U) << value;
    EXPECT_EQ(styleSettings(style)[0].property, "EtchColor");
  }
}

TEST(StyleList, FallsBackFromTabletsToPhones) {
  const std::string phone = "<key>iPhone-Standard</key><array/>";
  const std::string tablet = "<key>iPad-Standard</key><array/>";
  const std::string split = "<key>iPad-Split</key><array/>";
  struct Case {
    std::string theme;
    std::string style;
    std::string list;
    bool found;
  };
  const Case cases[] = {
      {phone + tablet, "iPad-Standard", "iPad-Standard", true},
      {phone, "iPad-Standard", "iPhone-Standard", true},
      {phone + tablet + split, "iPad-Split", "iPad-Standard", true},
      {phone + split, "iPad-Split", "iPhone-Standard", true},
      {tablet, "iPhone-Standard", "iPhone-Standard", false},
      {phone + tablet, "iPad-Alert", "iPad-Alert", false},
  };
  for (const Case& c : cases) {
    const auto styles = plist("<dict>" + c.theme + "</dict>");
    const StyleList list = styleListFor(styles, c.style);
    EXPECT_EQ(list.name, c.list) << c.theme << c.style;
    EXPECT_EQ(static_cast<bool>(list.rules), c.found) << c.theme << c.style;
  }
}

}  // namespace
}  // namespace prismal
