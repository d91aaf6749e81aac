#include "device.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "hooks/class_references.h"
#include "hooks/hook_table.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "host/keyboard/boards/display_type.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/plist/builder.h"
#include "host/plist/writer.h"
#include "host/system/process.h"
#include "sample_theme.h"
#include "settings/settings_store.h"
#include "settings/theme_data.h"

namespace bench {

using host::files::DeviceRoot;
using host::keyboard::TreeObject;
using platform::PropertyList;
using platform::PropertyListEntry;

namespace {

constexpr std::string_view kPicture = "/behind.png";

std::string themeFile() {
  host::plist::Builder builder;
  const std::array<PropertyListEntry, 1> styles = {
      {{"iPhone-Standard", builder.adopt(ruleList(kDeviceRules))}}};
  const std::array<PropertyListEntry, 1> images = {
      {{"Portrait;iPhone-Standard", builder.string(kPicture)}}};
  const std::array<PropertyListEntry, 4> sections = {{
      {"BackgroundImages", builder.dictionary(images)},
      {"CustomColor", builder.adopt(colorSection(kDeviceRules + 1))},
      {"CustomLinearGradient", builder.adopt(gradientSection(kDeviceRules))},
      {"Styles", builder.dictionary(styles)},
  }};
  return host::plist::writeBinary(builder.finish(builder.dictionary(sections)));
}

DeviceRoot openDevice() {
  static const host::files::TemporaryDirectory directory;
  auto root = DeviceRoot::open(directory.path(), DeviceRoot::Creation::kNever);
  if (!root ||
      !root->writeFile("/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist",
                       themeFile()) ||
      !root->writeFile(kPicture,
                       host::images::encodePng(host::images::solid(2, 2, 1, 2, 3, 255)))) {
    std::abort();
  }
  return *std::move(root);
}

platform::Retained<platform::UIKBTree> tree(void (*fill)(TreeObject&)) {
  auto made = host::runtime::makeRetained<platform::UIKBTree, TreeObject>();
  fill(*host::runtime::as<TreeObject>(made.get()));
  return made;
}

}  // namespace

void startDevice() {
  host::system::startProcess(openDevice(), "com.example.notes");
  host::keyboard::defineKeyboardClasses({}, {});
  prismal::lookUpKeyboardCacheClass();
  prismal::lookUpOtherClasses();
  prismal::installHooks();
  prismal::PMInitializeSettings();
  prismal::PMGetThemeData();
}

platform::UIKBTree sampleKey() {
  static const auto key = tree([](TreeObject& object) {
    object.name = "Latin-Small-Letter-Q";
    object.displayRowHint = 1;
  });
  return key.get();
}

platform::UIKBTree sampleKeyplane() {
  static const auto keyplane = tree([](TreeObject& object) {
    object.visualStyle = 1;
    object.type = 2;
    object.isLetters = true;
  });
  return keyplane.get();
}

}  // namespace bench
