#include "backgrounds/background_filenames.h"

#include <gtest/gtest.h>

#include "host/plist/reader.h"

namespace prismal {
namespace {

platform::PropertyList plist(const std::string& xml) {
  auto reading = host::plist::read(xml);
  EXPECT_TRUE(reading) << reading.reason;
  return reading.list;
}

const char* const kTheme =
    "<dict>"
    "<key>Portrait</key><string>/t/p</string>"
    "<key>Portrait;iPhone-Standard</key><string>/t/ps</string>"
    "<key>Portrait;iPhone-Standard;1</key><string>/t/ps1</string>"
    "<key>Portrait;iPhone-StandardX</key><string>/t/psx</string>"
    "<key>Landscape;iPhone-Standard</key><string>/t/ls</string>"
    "<key>odd</key><string>/t/odd</string>"
    "<key>number</key><integer>7</integer>"
    "</dict>";

TEST(BackgroundFilenames, OfAThemeAloneAreItsTexts) {
  const auto theme = plist(kTheme);
  const BackgroundFilenames expected = {{"Portrait", "/t/p"},
                                        {"Portrait;iPhone-Standard", "/t/ps"},
                                        {"Portrait;iPhone-Standard;1", "/t/ps1"},
                                        {"Portrait;iPhone-StandardX", "/t/psx"},
                                        {"Landscape;iPhone-Standard", "/t/ls"},
                                        {"odd", "/t/odd"}};
  EXPECT_EQ(buildBackgroundFilenames(theme, {}), expected);
}

TEST(BackgroundFilenames, OfTheUserReplaceAllThatBeginAlike) {
  const auto theme = plist(kTheme);
  const auto user = plist(
      "<dict>"
      "<key>iPhone-Standard</key><dict><key>Portrait</key><string>/u/ps</string>"
      "<key>Landscape</key><integer>3</integer></dict>"
      "<key>iPad-Standard</key><string>/u/wrong</string>"
      "</dict>");
  const BackgroundFilenames expected = {{"Portrait", "/t/p"},
                                        {"Portrait;iPhone-Standard", "/u/ps"},
                                        {"Landscape;iPhone-Standard", "/t/ls"},
                                        {"odd", "/t/odd"}};
  EXPECT_EQ(buildBackgroundFilenames(theme, user), expected);
}

TEST(BackgroundFilenames, OfOverlappingChoicesAreAppliedInTheOrderOfTheirKeys) {
  const auto user = plist(
      "<dict>"
      "<key>iPhone-Standard</key><dict><key>Portrait</key><string>/u/long</string></dict>"
      "<key>iPhone</key><dict><key>Portrait</key><string>/u/short</string></dict>"
      "<key></key><dict><key>Portrait;iPhone-S</key><string>/u/first</string></dict>"
      "</dict>");
  const BackgroundFilenames expected = {{"Portrait;iPhone", "/u/short"},
                                        {"Portrait;iPhone-Standard", "/u/long"}};
  EXPECT_EQ(buildBackgroundFilenames({}, user), expected);
}

TEST(BackgroundFilenames, OfSectionsThatAreNoDictionariesAreNone) {
  const auto array = plist("<array><string>a</string></array>");
  EXPECT_TRUE(buildBackgroundFilenames(array, array).empty());
}

}  // namespace
}  // namespace prismal
