#include "device/settings_file.h"

#include <cerrno>
#include <utility>
#include <vector>

#include "device/places.h"
#include "host/plist/builder.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"

namespace tools::device {

using host::files::DeviceRoot;
using host::files::Failure;
using host::files::NewFile;
using host::files::Result;
using host::plist::Builder;
using platform::PropertyList;
using platform::PropertyListView;

namespace {

constexpr std::string_view kUse = "usePrismal";
constexpr std::string_view kBackgrounds = "backgroundImages";

/// `dictionary`, or an empty one in the place of anything else, with `value` under `key`; without
/// the key when it is null.
PropertyListView with(Builder& builder, PropertyListView dictionary, std::string_view key,
                      PropertyListView value) {
  std::vector<Builder::Entry> entries;
  for (const auto& entry : dictionary.entries()) {
    if (entry.key != key) entries.push_back(entry);
  }
  if (value) entries.push_back({builder.keep(key), value});
  return builder.dictionary(entries);
}

/// Null for a dictionary with nothing in it, which needs no key of its own.
PropertyListView unlessEmpty(PropertyListView dictionary) {
  return dictionary.entries().empty() ? PropertyListView() : dictionary;
}

}  // namespace

SettingsFile SettingsFile::defaults() {
  SettingsFile settings;
  settings.list_ = PropertyList::dictionary();
  return settings;
}

Result<SettingsFile> SettingsFile::read(const DeviceRoot& device) {
  SettingsFile settings = defaults();
  for (const std::string_view path : {kSettings, kDefaultSettings}) {
    const bool isUsers = path == kSettings;
    const auto bytes = device.readFile(path, host::plist::kMaxBytes);
    if (!bytes && (!isUsers || bytes.failure().error == ENOENT)) continue;
    if (!bytes) return Failure(bytes.failure().error, std::string(path) + ": " + bytes.reason());
    auto reading = host::plist::read(*bytes);
    if (isUsers) settings.is_binary_ = bytes->starts_with("bplist");
    if (reading.list.isDictionary()) {
      settings.list_ = std::move(reading.list);
      settings.path_ = path;
      return settings;
    }
    if (isUsers) settings.fault_ = reading ? "no dictionary" : std::move(reading.reason);
  }
  return settings;
}

bool SettingsFile::usePrismal() const {
  const auto use = list_.objectForKey(kUse);
  return !use.isNumber() || use.boolValue();
}

void SettingsFile::setUsePrismal(bool use) {
  Builder builder;
  const auto list = builder.adopt(list_);
  list_ = builder.finish(with(builder, list, kUse, builder.boolean(use)));
}

PropertyListView SettingsFile::backgrounds() const {
  return list_.objectForKey(kBackgrounds);
}

void SettingsFile::setBackground(std::string_view style, std::string_view orientation,
                                 std::string_view picture) {
  Builder builder;
  const auto list = builder.adopt(list_);
  const auto path = picture.empty() ? PropertyListView() : builder.string(picture);
  const auto pictures = with(builder, backgrounds().objectForKey(style), orientation, path);
  const auto styles = with(builder, backgrounds(), style, unlessEmpty(pictures));
  list_ = builder.finish(with(builder, list, kBackgrounds, unlessEmpty(styles)));
}

Result<NewFile> SettingsFile::prepare(const DeviceRoot& device) const {
  const std::string bytes =
      is_binary_ ? host::plist::writeBinary(list_) : host::plist::writeXml(list_);
  if (const auto reading = host::plist::read(bytes); !reading) {
    return Failure(EFBIG, std::string(kSettings) + ": " + reading.reason);
  }
  auto file = device.prepareFile(kSettings, bytes, host::files::Durability::kSynced);
  if (!file) return Failure(file.failure().error, std::string(kSettings) + ": " + file.reason());
  return file;
}

}  // namespace tools::device
