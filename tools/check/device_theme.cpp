#include "check/device_theme.h"

#include <charconv>
#include <string>
#include <vector>

#include "backgrounds/background_filenames.h"
#include "backgrounds/background_lookup.h"
#include "backgrounds/dictation_background.h"
#include "backgrounds/orientation.h"
#include "device/places.h"
#include "host/files/result.h"
#include "host/images/encode.h"
#include "host/plist/builder.h"
#include "host/runtime/object.h"
#include "host/views/image.h"
#include "styles/style_table.h"
#include "styles/visual_style.h"
#include "theme/dictionary_file.h"
#include "theme/theme_source.h"

namespace tools::check {

using host::files::DeviceRoot;
using host::plist::Builder;
using platform::PropertyListView;
using Entries = std::vector<Builder::Entry>;

namespace {

constexpr std::string_view kTellingPictures = "/telling/";

void require(const host::files::Result<host::files::Done>& written) {
  if (!written) throw std::runtime_error("the private device: " + written.reason());
}

void write(const DeviceRoot& device, PropertyListView root) {
  require(device.writeFile(tools::device::kMergedTheme, theme::fileOf(root)));
}

std::optional<std::size_t> numberOf(platform::UIImage handle) {
  const auto* const image = host::runtime::as<host::views::ImageObject>(handle);
  if (!image || !image->bitmap()) return std::nullopt;
  const std::string_view path = image->bitmap()->path;
  std::size_t number = 0;
  std::from_chars(path.data() + kTellingPictures.size(), path.data() + path.size(), number);
  return number;
}

/// `list` without what the library would skip; itself when it is none.
PropertyListView soundRules(Builder& builder, PropertyListView list) {
  if (!list.isArray()) return list;
  std::vector<PropertyListView> rules;
  for (const PropertyListView rule : list.items()) {
    if (isSound(rule)) rules.push_back(rule);
  }
  return builder.array(rules);
}

}  // namespace

void readTellingTheme(const Theme& theme, std::span<const Picture> pictures,
                      const DeviceRoot& device) {
  Builder builder;
  Entries lists;
  for (const auto& entry : theme.section(kStyles).entries()) {
    lists.push_back({entry.key, builder.string(entry.key)});
  }
  const std::string dot = host::images::encodePng(host::images::solid(1, 1, 0, 0, 0, 255));
  Entries images;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const std::string path = std::string(kTellingPictures) + std::to_string(i);
    images.push_back({builder.keep(pictures[i].key), builder.string(path)});
    if (!pictures[i].device_path.empty()) require(device.writeFile(path, dot));
  }
  const Entries sections = {{kStyles, builder.dictionary(lists)},
                            {kImages, builder.dictionary(images)}};
  write(device, builder.dictionary(sections));
  // Each is read once a process, whatever the file says later.
  prismal::PMGetStyles("");
  prismal::PMGetBackgroundImageFilenames();
}

std::optional<std::size_t> pictureBehind(platform::UIKBTree keyplane) {
  return numberOf(prismal::PMGetKeyboardBackgroundImage(
      keyplane, prismal::orientationName(prismal::keyboardOrientation()),
      prismal::PMGetVisualStyleName(keyplane), prismal::PMGetKeyplaneIndex(keyplane)));
}

std::optional<std::size_t> pictureWhileDictating() {
  return numberOf(prismal::PMGetiPhoneDictationBG());
}

void putTheme(const Theme& theme, std::span<const Picture> pictures, const DeviceRoot& device) {
  Builder builder;
  Entries sections;
  for (const std::string_view name : {kColors, kGradients}) {
    if (const auto section = theme.section(name)) sections.push_back({name, section});
  }
  Entries lists;
  for (const auto& entry : theme.section(kStyles).entries()) {
    lists.push_back({entry.key, soundRules(builder, entry.value)});
  }
  sections.push_back({kStyles, builder.dictionary(lists)});
  Entries images;
  for (const Picture& picture : pictures) {
    if (picture.sizes.empty()) continue;
    images.push_back({builder.keep(picture.key), builder.string(picture.device_path)});
  }
  sections.push_back({kImages, builder.dictionary(images)});
  write(device, builder.dictionary(sections));
}

bool isSound(PropertyListView rule) {
  const auto items = rule.items();
  return items.size() == 2 && items[0].isString() && items[1].isDictionary();
}

}  // namespace tools::check
