#include "serve/user_settings.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "backgrounds/double_resolution_path.h"
#include "device/places.h"
#include "device/settings_file.h"
#include "host/files/darwin_notify.h"
#include "theme/settings_source.h"

namespace tools::serve {

namespace fs = std::filesystem;
using device::SettingsFile;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20U;

DeviceRoot rootAt(const fs::path& folder) {
  auto root = DeviceRoot::open(folder, DeviceRoot::Creation::kIfMissing);
  if (!root) throw std::system_error(root.failure().error, std::generic_category());
  return *std::move(root);
}

}  // namespace

UserSettings::UserSettings(const fs::path& folder) : path_(folder), root_(rootAt(folder)) {}

template <class Edit>
Result<Done> UserSettings::change(const Edit& edit) {
  auto settings = SettingsFile::read(root_);
  if (!settings) return settings.failure();
  if (auto edited = edit(*settings); !edited) return edited;
  auto file = settings->prepare(root_);
  if (!file) return file.failure();
  if (auto put = file->putInPlace(); !put) return put;
  ++generation_;
  return Done();
}

Result<Done> UserSettings::setUse(bool use) {
  const std::scoped_lock lock(mutex_);
  return change([use](SettingsFile& settings) -> Result<Done> {
    settings.setUsePrismal(use);
    return Done();
  });
}

Result<Done> UserSettings::setPicture(const std::string& style, const std::string& orientation,
                                      const std::string& name, const std::string& picture,
                                      const std::string& sibling) {
  const std::scoped_lock lock(mutex_);
  return change([&](SettingsFile& settings) -> Result<Done> {
    // A keyboard keeps what it has read of a path: what is new has a new one.
    const std::string path = "chosen-" + std::to_string(++pictures_) + ".png";
    const std::string folder = std::string(device::kPreferences) + "/";
    if (auto put = root_.writeFile(folder + path, picture); !put) return put;
    if (!sibling.empty()) {
      auto put = root_.writeFile(folder + prismal::doubleResolutionPath(path), sibling);
      if (!put) return put;
    }
    settings.setBackground(style, orientation, path);
    names_[style][orientation] = name;
    return Done();
  });
}

Result<Done> UserSettings::removePicture(const std::string& style, const std::string& orientation) {
  const std::scoped_lock lock(mutex_);
  return change([&](SettingsFile& settings) -> Result<Done> {
    settings.setBackground(style, orientation, "");
    if (names_.contains(style)) names_[style].erase(orientation);
    return Done();
  });
}

Result<Done> UserSettings::takeFrom(const DeviceRoot& device) {
  const auto theirs = SettingsFile::read(device);
  if (!theirs) return theirs.failure();
  if (auto set = setUse(theirs->usePrismal()); !set) return set;
  for (const auto& [style, orientations] : theirs->backgrounds().entries()) {
    for (const auto& [orientation, value] : orientations.entries()) {
      const std::string path(value.string().value_or(""));
      const auto picture = device.readFile(path, kMostBytes);
      if (!picture) continue;
      const auto sibling = device.readFile(prismal::doubleResolutionPath(path), kMostBytes);
      auto set = setPicture(std::string(style), std::string(orientation),
                            fs::path(path).filename().string(), *picture,
                            sibling ? *sibling : std::string());
      if (!set) return set;
    }
  }
  return Done();
}

std::string UserSettings::file() const {
  const std::scoped_lock lock(mutex_);
  return generation_ == 0 ? "" : path_.string() + std::string(device::kSettings);
}

std::string UserSettings::unusualFile() const {
  const Json chosen = json();
  const bool isUsual =
      chosen["usePrismal"] == true && std::ranges::all_of(chosen["pictures"], &Json::empty);
  return isUsual ? "" : file();
}

Result<Done> UserSettings::putOn(const DeviceRoot& device) const {
  const std::string path = file();
  if (path.empty()) return Done();
  const auto put = theme::putSettingsOn(device, path);
  if (!put) return put.failure();
  if (!host::files::postNotification(device, device::kReloadSettings)) return Failure(EIO);
  return Done();
}

Json UserSettings::json() const {
  const std::scoped_lock lock(mutex_);
  const auto settings = SettingsFile::read(root_);
  return {{"usePrismal", !settings || settings->usePrismal()}, {"pictures", names_}};
}

std::uint64_t UserSettings::generation() const {
  const std::scoped_lock lock(mutex_);
  return generation_;
}

}  // namespace tools::serve
