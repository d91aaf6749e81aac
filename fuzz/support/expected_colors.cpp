#include "support/expected_colors.h"

#include <algorithm>

#include "colors/color_string.h"
#include "device/places.h"
#include "host/plist/reader.h"
#include "host/system/process.h"
#include "host/views/color.h"
#include "platform/keyboard.h"
#include "support/require.h"

namespace fuzz {

using platform::PropertyList;
namespace device = tools::device;

namespace {

/// The dictionary in a file of the device, read past the host's records.
PropertyList dictionaryAt(std::string_view path) {
  constexpr std::size_t kMostBytes = 1 << 20;
  const auto bytes = host::system::process().root().readFile(path, kMostBytes);
  if (!bytes) return {};
  auto reading = host::plist::read(*bytes);
  return reading.list.isDictionary() ? reading.list : PropertyList();
}

bool contains(const nlohmann::ordered_json& reads, std::string_view path) {
  return std::ranges::find(reads, path) != reads.end();
}

}  // namespace

void ExpectedColors::follow(const nlohmann::ordered_json& reads, bool makesColors) {
  if (contains(reads, device::kMergedTheme)) readTheme(makesColors);
  if (contains(reads, device::kSettings)) readSettings();
}

void ExpectedColors::readTheme(bool makesColors) {
  const PropertyList theme = dictionaryAt(device::kMergedTheme);
  const auto section = theme.objectForKey("CustomColor");
  if (!section) return;
  colors_.clear();
  for (const auto element : section.items()) {
    const auto items = element.items();
    if (!makesColors || items.size() != 2 || !items[0].isString() || !items[1].isString()) continue;
    const auto color = prismal::parseColorString(*items[1].string());
    if (!color) continue;
    colors_.emplace(*items[0].string(), std::array{color->red / 255.0, color->green / 255.0,
                                                   color->blue / 255.0, color->alpha / 255.0});
  }
}

void ExpectedColors::readSettings() {
  PropertyList settings = dictionaryAt(device::kSettings);
  if (!settings) settings = dictionaryAt(device::kDefaultSettings);
  const auto use = settings.objectForKey("usePrismal");
  enabled_ = use.isNumber() ? use.boolValue() : true;
}

void ExpectedColors::require() const {
  if (!enabled_) return;
  for (const auto& [name, components] : colors_) {
    const auto* const color =
        host::runtime::as<host::views::ColorObject>(platform::UIKBGetNamedColor(name));
    fuzz::require(color && color->components == components, "the last theme's colours hold", name);
  }
}

}  // namespace fuzz
