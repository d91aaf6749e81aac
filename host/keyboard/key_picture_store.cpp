#include "host/keyboard/key_picture_store.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace host::keyboard {

namespace {

/// A group of a tablet's board with every key in every state has a third of it.
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

bool isPlain(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') ||
         std::string_view("-._@").find(character) != std::string_view::npos;
}

/// Whether a file may bear the name: one that the shell's "*" finds.
bool isPlainName(std::string_view name) {
  return !name.empty() && name[0] != '.' && name.size() <= 200 &&
         std::ranges::all_of(name, isPlain);
}

std::string pathOf(std::string_view group) {
  return std::string(KeyPictureStore::kDirectory)
      .append("/")
      .append(group)
      .append(KeyPictureStore::kSuffix);
}

/// The group whose file stands at `path` below the cache directory; empty for any other file.
std::string_view groupOf(std::string_view path) {
  path.remove_prefix(KeyPictureStore::kDirectory.size() + 1);
  if (!path.ends_with(KeyPictureStore::kSuffix)) return {};
  path.remove_suffix(KeyPictureStore::kSuffix.size());
  return isPlainName(path) ? path : std::string_view();
}

}  // namespace

KeyPictureGroup KeyPictureStore::read(std::string_view name) const {
  if (!root_ || !isPlainName(name)) return {};
  const auto bytes = root_->readFile(pathOf(name), kMostBytes);
  if (!bytes) return {};
  return decodeGroup(*bytes).value_or(KeyPictureGroup());
}

KeyPictureGroup& KeyPictureStore::open(std::string_view name, std::string_view stamp) {
  auto found = memory_.find(name);
  if (found == memory_.end()) found = memory_.emplace(name, read(name)).first;
  KeyPictureGroup& group = found->second;
  if (group.stamp != stamp) group = {std::string(stamp), {}};
  return group;
}

void KeyPictureStore::write(std::string_view name) const {
  const auto found = memory_.find(name);
  if (found == memory_.end() || !root_ || !isPlainName(name)) return;
  const std::string bytes = encodeGroup(found->second);
  if (bytes.size() > kMostBytes) return;
  static_cast<void>(root_->writeFile(pathOf(name), bytes));
}

std::vector<std::string> KeyPictureStore::fileGroups() const {
  std::vector<std::string> names;
  if (!root_) return names;
  const auto paths = root_->list(kDirectory);
  if (!paths) return names;
  for (const std::string& path : *paths) {
    if (const auto name = groupOf(path); !name.empty()) names.emplace_back(name);
  }
  return names;
}

std::vector<std::string> KeyPictureStore::groups() const {
  const std::vector<std::string> inFiles = fileGroups();
  std::set<std::string> names(inFiles.begin(), inFiles.end());
  for (const auto& [name, group] : memory_) names.insert(name);
  return {names.begin(), names.end()};
}

void KeyPictureStore::remove(std::string_view name) {
  if (const auto found = memory_.find(name); found != memory_.end()) memory_.erase(found);
  if (root_ && isPlainName(name)) static_cast<void>(root_->remove(pathOf(name)));
}

void KeyPictureStore::purge() {
  std::erase_if(memory_, [](const auto& group) { return group.second.pictures.empty(); });
  for (const std::string& name : fileGroups()) {
    if (read(name).pictures.empty()) static_cast<void>(root_->remove(pathOf(name)));
  }
}

}  // namespace host::keyboard
