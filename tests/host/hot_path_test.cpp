// What the keyboard asks again and again allocates nothing once it has been asked before.

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>

#include "allocation_count.h"
#include "backgrounds/background_lookup.h"
#include "hooks/class_references.h"
#include "hooks/hook_table.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/system/process.h"
#include "platform/keyboard.h"
#include "settings/theme_data.h"
#include "styles/condition.h"
#include "styles/style_matching.h"
#include "styles/style_table.h"

namespace prismal {
namespace {

constexpr const char* kTheme = R"(<dict>
  <key>CustomColor</key>
  <array><array><string>A colour with a long name</string><string>#FF0000FF</string></array></array>
  <key>CustomLinearGradient</key>
  <array><array><string>A gradient with a long name</string><string>A</string></array></array>
  <key>Styles</key><dict><key>iPhone-Standard</key><array>
    <array><string>KeyName=another key with a long name,B,C</string><dict/></array>
    <array><string>Row=Row1;DisplayType=No-Such-Type-Of-Any-Key</string><dict/></array>
    <array><string>ControlState=1,2,6,7</string><dict/></array>
  </array></dict>
  <key>BackgroundImages</key>
  <dict><key>Portrait;iPhone-Standard</key><string>/p.png</string></dict>
</dict>)";

/// A host with the hooks installed and the theme loaded, as after the first key.
class HotPath : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    static host::files::TemporaryDirectory directory;
    auto root =
        host::files::DeviceRoot::open(directory.path(), host::files::DeviceRoot::Creation::kNever);
    ASSERT_TRUE(root->writeFile(
        "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist", kTheme));
    ASSERT_TRUE(root->writeFile("/p.png",
                                host::images::encodePng(host::images::solid(2, 2, 1, 2, 3, 255))));
    host::system::startProcess(*std::move(root), "com.example.notes");
    host::keyboard::defineKeyboardClasses({}, {});
    lookUpKeyboardCacheClass();
    lookUpOtherClasses();
    installHooks();
    PMGetThemeData();
  }

  /// How many allocations the second of two calls makes.
  template <class Call>
  static std::size_t secondTime(Call call) {
    call();
    const std::size_t before = tests::allocationCount();
    call();
    return tests::allocationCount() - before;
  }

  platform::Retained<platform::UIKBTree> keyplane_ =
      host::runtime::makeRetained<platform::UIKBTree, host::keyboard::TreeObject>();
  platform::NSAutoreleasePool pool_;
};

TEST_F(HotPath, CountsAllocations) {
  EXPECT_EQ(secondTime([] { delete new std::string(100, 'x'); }), 2U);
}

TEST_F(HotPath, OfNamedColorsIsFree) {
  EXPECT_TRUE(platform::UIKBGetNamedColor("A colour with a long name"));
  EXPECT_EQ(secondTime([] { platform::UIKBGetNamedColor("A colour with a long name"); }), 0U);
  EXPECT_EQ(secondTime([] { platform::UIKBGetNamedColor("A name that nobody has defined"); }), 0U);
}

TEST_F(HotPath, OfNamedGradientsIsFree) {
  EXPECT_TRUE(host::keyboard::askNamedGradient("A gradient with a long name"));
  EXPECT_EQ(secondTime([] { host::keyboard::askNamedGradient("A gradient with a long name"); }),
            0U);
}

TEST_F(HotPath, OfRulesThatDoNotHoldIsFree) {
  const auto rules = PMGetStyles("iPhone-Standard");
  ASSERT_EQ(rules.items().size(), 3U);
  const auto key = [&] {
    return KeyIdentity({.name = "A key that no rule names", .displayRowHint = 1});
  };
  EXPECT_EQ(secondTime([&] { PMGetMatchingStyles(rules, key(), 3); }), 0U);
  EXPECT_EQ(PMGetMatchingStyles(rules, key(), 1).size(), 1U);
}

TEST_F(HotPath, OfRepeatedBackgroundsIsFree) {
  platform::UIImage image;
  const auto request = [&] {
    image = PMGetKeyboardBackgroundImage(keyplane_.get(), "Portrait", "iPhone-Standard",
                                         PMKeyplaneSmallLetters);
  };
  EXPECT_EQ(secondTime(request), 0U);
  EXPECT_TRUE(image);
  const auto miss = [&] {
    image = PMGetKeyboardBackgroundImage(keyplane_.get(), "Landscape", "iPad-Standard",
                                         PMKeyplaneNumbersAlternate);
  };
  EXPECT_EQ(secondTime(miss), 0U);
  EXPECT_FALSE(image);
}

}  // namespace
}  // namespace prismal
