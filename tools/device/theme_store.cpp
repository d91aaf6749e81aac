#include "device/theme_store.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <span>
#include <utility>

#include "device/places.h"
#include "host/plist/builder.h"
#include "host/plist/description.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"
#include "theme/device_paths.h"
#include "theme/dictionary_file.h"

namespace tools::device {

using host::files::DeviceRoot;
using host::files::Done;
using host::files::Durability;
using host::files::Failure;
using host::files::Result;
using host::plist::Builder;
using platform::PropertyList;
using platform::PropertyListView;

namespace {

constexpr std::string_view kNames = "themes";
constexpr std::string_view kThemeFile = "/theme.plist";

std::string join(std::string_view folder, std::string_view name) {
  return std::string(folder) + std::string(name);
}

Failure at(std::string_view path, const Failure& failure) {
  return Failure(failure.error, std::string(path) + ": " + failure.reason);
}

void add(std::vector<std::string>& names, std::string_view name) {
  if (std::ranges::find(names, name) == names.end()) names.emplace_back(name);
}

/// The bytes of the merged theme file.
Result<std::string> mergedFile(std::span<const theme::Layer> layers, ThemeStore::Notes& leftOut) {
  theme::Merge merged = theme::merge(layers);
  std::ranges::move(merged.leftOut, std::back_inserter(leftOut));
  std::string bytes = theme::fileOf(merged.theme);
  // Each theme may keep within the limits of a list and all of them exceed it.
  if (const auto reading = host::plist::read(bytes); !reading) {
    return Failure(EFBIG, "the installed themes together can't be one: " + reading.reason);
  }
  return bytes;
}

}  // namespace

Result<ThemeStore> ThemeStore::read(const DeviceRoot& device) {
  ThemeStore store(device);
  const auto order = theme::readDictionary(device, kOrder, "the list of installed themes");
  if (!order && order.failure().error == ENOENT) return store;
  if (!order) return at(kOrder, order.failure());
  for (const PropertyListView item : order->objectForKey(kNames).items()) {
    const auto name = item.string();
    if (name && theme::isThemeName(*name)) add(store.names_, *name);
  }
  return store;
}

Result<PropertyList> ThemeStore::theme(std::string_view name) const {
  return read(name, kThemes);
}

Result<PropertyList> ThemeStore::read(std::string_view name, std::string_view folder) const {
  const std::string path = join(folder, name) + std::string(kThemeFile);
  const auto list = theme::readDictionary(device_, path, "a theme");
  if (!list) return at(path, list.failure());
  return theme::withDevicePaths(*list, join(kThemes, name) + "/");
}

Result<ThemeStore::Notes> ThemeStore::install(const theme::ThemeSource& source) {
  const std::string& name = source.name();
  if (!theme::isThemeName(name)) {
    return Failure(EINVAL, host::plist::escapeControls(name) + ": no theme can have this name");
  }
  const std::string folder = join(kStaged, name);
  if (const auto cleared = device_.remove(folder); !cleared) return at(folder, cleared.failure());
  auto missing = source.copyPictures(device_, folder + "/", Durability::kSynced);
  if (!missing) return missing;
  const std::string path = folder + std::string(kThemeFile);
  const auto put = device_.writeFile(path, theme::fileOf(source.list()), Durability::kSynced);
  if (!put) return at(path, put.failure());
  std::erase(names_, name);
  names_.push_back(name);
  add(staged_, name);
  return missing;
}

bool ThemeStore::uninstall(std::string_view name) {
  if (std::erase(names_, name) == 0) return false;
  std::erase(staged_, name);
  return true;
}

void ThemeStore::uninstallAll() {
  while (!names_.empty()) uninstall(std::string(names_.back()));
}

Result<ThemeStore::Notes> ThemeStore::commit() {
  Notes notes;
  if (!device_.exists(kOrder) && device_.exists(kMergedTheme)) {
    notes.push_back(std::string(kMergedTheme) + ": not made by install; it is replaced");
  }
  const auto themes = layers(notes);
  if (!themes) return themes.failure();
  const auto merged = mergedFile(*themes, notes);
  if (!merged) return merged.failure();
  auto order = device_.prepareFile(kOrder, orderFile(), Durability::kSynced);
  if (!order) return at(kOrder, order.failure());
  auto theme = device_.prepareFile(kMergedTheme, *merged, Durability::kSynced);
  if (!theme) return at(kMergedTheme, theme.failure());

  if (const auto moved = moveStaged(); !moved) return moved.failure();
  if (const auto put = order->putInPlace(); !put) return at(kOrder, put.failure());
  if (const auto put = theme->putInPlace(); !put) return at(kMergedTheme, put.failure());
  return notes;
}

Result<bool> ThemeStore::finish() const {
  if (!device_.exists(kOrder)) return false;
  Notes unreadable;
  Notes leftOut;
  const auto themes = layers(unreadable);
  if (!themes) return themes.failure();
  const auto merged = mergedFile(*themes, leftOut);
  if (!merged) return merged.failure();
  // What can't be read now was merged while it could.
  if (!unreadable.empty()) return false;
  const auto found = device_.readFile(kMergedTheme, host::plist::kMaxBytes);
  if (found && *found == *merged) return false;
  const auto put = device_.writeFile(kMergedTheme, *merged, Durability::kSynced);
  if (!put) return at(kMergedTheme, put.failure());
  return true;
}

/// From the lowest up. A theme that can't be read any more is left out, and told; one that has just
/// been staged must not be.
Result<std::vector<theme::Layer>> ThemeStore::layers(Notes& unreadable) const {
  std::vector<theme::Layer> layers;
  for (const std::string& name : names_) {
    const bool isStaged = std::ranges::find(staged_, name) != staged_.end();
    auto list = read(name, isStaged ? kStaged : kThemes);
    if (list) {
      layers.push_back({name, *std::move(list)});
    } else if (isStaged) {
      return list.failure();
    } else {
      unreadable.push_back(name + " is left out: " + list.reason());
    }
  }
  return layers;
}

std::string ThemeStore::orderFile() const {
  Builder builder;
  std::vector<PropertyListView> names;
  for (const std::string& name : names_) names.push_back(builder.string(name));
  const Builder::Entry entries[] = {{kNames, builder.array(names)}};
  return host::plist::writeXml(builder.dictionary(entries));
}

Result<Done> ThemeStore::moveStaged() const {
  for (const std::string& name : staged_) {
    const std::string to = join(kThemes, name);
    const auto moved = device_.moveTree(join(kStaged, name), to);
    if (!moved) return at(to, moved.failure());
  }
  return Done();
}

}  // namespace tools::device
