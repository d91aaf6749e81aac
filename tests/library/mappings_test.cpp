// The small tables of the theme format: numbers to names and back.

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "backgrounds/double_resolution_path.h"
#include "backgrounds/keyplane_index.h"
#include "backgrounds/layout_variant.h"
#include "backgrounds/orientation.h"
#include "colors/keyplane_gradient.h"
#include "hooks/process_filter.h"
#include "styles/control_state.h"
#include "styles/visual_style.h"

namespace prismal {
namespace {

TEST(VisualStyle, HasANameOrLeavesItToTheDevice) {
  constexpr std::optional<std::string_view> kPhone = "iPhone-Standard";
  constexpr std::optional<std::string_view> kTablet = "iPad-Standard";
  constexpr std::optional<std::string_view> kSplit = "iPad-Split";
  const std::optional<std::string_view> names[] = {
      {},      kPhone,  kPhone,       "iPhone-Alert", {},     {},     kTablet,
      kTablet, kTablet, "iPad-Alert", kTablet,        kSplit, kSplit, {}};
  int style = 0;
  for (const auto& name : names) EXPECT_EQ(visualStyleName(style++), name) << style;
  for (const int unknown : {-1, 257, 1 << 30}) EXPECT_EQ(visualStyleName(unknown), std::nullopt);
}

TEST(ControlState, IsOneOfFiveNumbers) {
  struct Case {
    int state;
    int number;
  };
  constexpr Case kCases[] = {{1, 2}, {2, 3},  {4, 1},  {8, 6},  {12, 6}, {16, 3}, {32, 7}, {36, 7},
                             {0, 3}, {20, 3}, {24, 3}, {40, 3}, {3, 2},  {5, 2},  {6, 2},  {7, 2},
                             {9, 2}, {10, 2}, {13, 2}, {33, 2}, {-1, 2}, {-4, 3}, {-2, 2}};
  for (const Case& c : kCases) EXPECT_EQ(controlStateNumber(c.state), c.number) << c.state;
}

TEST(KeyplaneIndex, FollowsTheNameThenTheFlags) {
  struct Case {
    std::optional<std::string_view> name;
    bool isLetters;
    bool isShift;
    PMKeyplaneIndex index;
  };
  constexpr Case kCases[] = {
      {"iPhone-CAPITAL-Letters-Wide", false, false, PMKeyplaneCapitalLetters},
      {"xsmall-LETTERSx", false, true, PMKeyplaneSmallLetters},
      {"small-letters and capital-letters", true, false, PMKeyplaneCapitalLetters},
      {"numbers-and-punctuation-alternate", true, true, PMKeyplaneNumbersAlternate},
      {"NUMBERS-AND-PUNCTUATION", true, true, PMKeyplaneNumbers},
      {"numbers-and-punctuatio", true, true, PMKeyplaneCapitalLetters},
      {"", true, false, PMKeyplaneSmallLetters},
      {std::nullopt, true, true, PMKeyplaneCapitalLetters},
      {std::nullopt, true, false, PMKeyplaneSmallLetters},
      {std::nullopt, false, true, PMKeyplaneNumbersAlternate},
      {std::nullopt, false, false, PMKeyplaneNumbers},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(keyplaneIndex(c.name, c.isLetters, c.isShift), c.index) << c.name.value_or("(null)");
  }
}

TEST(LayoutVariant, FallsBackInOrder) {
  struct Case {
    std::uint64_t variant;
    std::vector<std::uint64_t> tried;
  };
  const Case cases[] = {
      {2, {2}},
      {2 + 256, {2 + 256, 2}},
      {2 + 512, {2 + 512, 2}},
      {2 + 768, {2 + 768, 2 + 256, 2 + 512, 2}},
      // A negative type has every bit, these two included.
      {~std::uint64_t{0},
       {~std::uint64_t{0}, ~std::uint64_t{512}, ~std::uint64_t{256}, ~std::uint64_t{768}}},
  };
  for (const Case& c : cases) {
    const VariantFallbacks fallbacks(c.variant);
    EXPECT_EQ(std::vector(fallbacks.begin(), fallbacks.end()), c.tried) << c.variant;
  }
}

TEST(Orientation, IsLandscapeForTwoNumbersAlone) {
  for (const int portrait : {1, 2, 0, 5, 6, -1}) EXPECT_EQ(orientationName(portrait), "Portrait");
  for (const int landscape : {3, 4}) EXPECT_EQ(orientationName(landscape), "Landscape");
}

TEST(KeyplaneGradient, TakesTheAlertPairForTwoStyles) {
  for (int style = -1; style <= 14; ++style) {
    const bool isAlert = style == 3 || style == 9;
    EXPECT_EQ(backgroundColorNames(style).start.find("Alert") != std::string_view::npos, isAlert);
    EXPECT_EQ(backgroundColorNames(style).end.find("Alert") != std::string_view::npos, isAlert);
  }
}

TEST(DoubleResolutionPath, StandsBeforeTheExtension) {
  struct Case {
    std::string_view path;
    std::string_view sibling;
  };
  constexpr Case kCases[] = {
      {"/x/bg.png", "/x/bg@2x.png"},
      {"/t/bg", "/t/bg@2x."},
      {"/bg.png", "/bg@2x.png"},
      {"bg.png", "bg@2x.png"},
      {"/a.b/c", "/a.b/c@2x."},
      {"/a.b/c.tar.gz", "/a.b/c.tar@2x.gz"},
      {"/t/.hidden", "/t/.hidden@2x."},
      {"/t/bg.png/", "/t/bg@2x.png"},
      {"/t/bg@2x.png", "/t/bg@2x@2x.png"},
  };
  for (const Case& c : kCases) EXPECT_EQ(doubleResolutionPath(c.path), c.sibling) << c.path;
}

TEST(ProcessFilter, LeavesServicesAlone) {
  constexpr std::string_view kServices[] = {
      "com.apple.syncdefaultsd",
      "com.apple.calaccessd",
      "com.apple.AssistantServices",
      "com.apple.sharingd",
      "com.apple.aosnotifyd",
      "com.apple.assetsd",
      "com.apple.dataaccess.dataaccessd",
      "com.apple.SystemConfiguration",
      "commcentermobilehelper",
      "com.apple.backupd",
      "com.apple.timed",
      "com.apple.atc",
      "com.apple.imagent",
      "com.apple.mediaserverd",
      "com.apple.iapd",
      "com.apple.itunesstored",
      "com.apple.MobileStorageMounter",
      "com.apple.USBDeviceArbitrator",
      "com.apple.aps.framework",
      "com.apple.coreservices.appleid.agent",
      "com.apple.mediastream.mstreamd",
      "com.apple.managedconfiguration.profiled",
  };
  EXPECT_EQ(std::size(kServices), 22U);
  for (const std::string_view service : kServices) {
    EXPECT_EQ(classifyHost(service), HostKind::kLeftAlone) << service;
    const std::string neighbour = std::string(service.substr(0, service.size() - 1)) + "_";
    EXPECT_EQ(classifyHost(neighbour), HostKind::kOrdinary) << neighbour;
  }
}

TEST(ProcessFilter, KnowsItsHosts) {
  struct Case {
    std::optional<std::string_view> identifier;
    HostKind kind;
  };
  constexpr Case kCases[] = {
      {std::nullopt, HostKind::kLeftAlone},
      {"com.apple.Timed", HostKind::kOrdinary},
      {"com.apple.timed ", HostKind::kOrdinary},
      {"com.apple.springboard", HostKind::kSpringBoard},
      {"COM.Apple.SpringBoard", HostKind::kSpringBoard},
      {"com.apple.springboard2", HostKind::kOrdinary},
      {"", HostKind::kOrdinary},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(classifyHost(c.identifier), c.kind) << c.identifier.value_or("(null)");
  }
}

}  // namespace
}  // namespace prismal
