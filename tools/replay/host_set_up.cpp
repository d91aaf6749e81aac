#include "replay/host_set_up.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/keyboard/cache.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/named_colors.h"
#include "host/keyboard/tree.h"
#include "host/runtime/class_table.h"
#include "host/system/device.h"
#include "host/views/color.h"

namespace tools::replay {

using host::keyboard::keyboard;
using platform::Object;

namespace {

void applyDevice(const scenario::Host& given) {
  host::system::Device device = host::system::device();
  if (given.screenScale) device.screenScale = *given.screenScale;
  if (given.systemVersion) device.systemVersion = *given.systemVersion;
  if (given.userInterfaceIdiom) device.interfaceIdiom = *given.userInterfaceIdiom;
  host::system::setDevice(std::move(device));
}

Object layoutObject(const scenario::Nullable<scenario::Layout>& layout) {
  if (!layout) return {};
  if (*layout == scenario::Layout::kStar) return keyboard().layout.get();
  // It would say yes to being asked for a dictation key, which only a UIKeyboardLayoutStar may be.
  static const auto other = [] {
    auto made = host::runtime::makeRetained<Object, host::keyboard::LayoutObject>(
        host::runtime::defineClass("UIKeyboardLayoutOther"));
    host::runtime::as<host::keyboard::LayoutObject>(made.get())->showsDictationKey = true;
    return made;
  }();
  return other.get();
}

void applyKeyboard(const scenario::Host& given, ViewMaker& views) {
  auto& target = keyboard();
  if (given.sharedKeyboard) target.isShared = *given.sharedKeyboard;
  if (given.orientation) target.inputObject().orientation = *given.orientation;
  if (given.layout) target.inputObject().layout.set(layoutObject(*given.layout));
  if (given.dictationKey) target.layoutObject().showsDictationKey = *given.dictationKey;
  if (given.internationalKey) target.requiresInternationalKey = *given.internationalKey;
  if (given.backgroundView) {
    const auto& view = *given.backgroundView;
    target.layoutObject().backgroundView.set(view ? views.make(*view).get() : Object());
  }
  if (given.dictationView) target.dictationView = views.makeDictationView(*given.dictationView);
}

void applyCache(const scenario::KeyboardCache& given) {
  auto& cache = host::keyboard::sharedCache();
  if (!given.store) return cache.store.set({});
  cache.store.set(
      host::runtime::makeRetained<Object, host::keyboard::CacheStoreObject>(given.groups).get());
}

void applyLook(const scenario::Host& given) {
  if (given.systemColors) {
    host::keyboard::NamedColors colors;
    for (const auto& [name, color] : *given.systemColors) {
      colors.insert_or_assign(name, std::array{color.red / 255.0, color.green / 255.0,
                                               color.blue / 255.0, color.alpha / 255.0});
    }
    host::keyboard::setSystemColors(std::move(colors));
  }
  if (const auto& names = given.systemGradients) {
    host::keyboard::setSystemGradients(host::keyboard::Names(names->begin(), names->end()));
  }
  if (const auto& names = given.rejectedColors) {
    host::keyboard::setRejectedColors({names->begin(), names->end()});
  }
  if (given.colorCreation) host::views::setColorCreation(*given.colorCreation);
  if (const auto& names = given.displayTypeNames) {
    host::keyboard::setDisplayTypeNames(std::map<int, std::string>(names->begin(), names->end()));
  }
}

}  // namespace

void applyHost(const scenario::Host& given, ViewMaker& views) {
  applyDevice(given);
  applyKeyboard(given, views);
  if (given.keyboardCache) applyCache(*given.keyboardCache);
  applyLook(given);
}

}  // namespace tools::replay
