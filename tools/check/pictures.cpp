#include "check/pictures.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "backgrounds/double_resolution_path.h"
#include "check/picture_likeness.h"
#include "check/words.h"
#include "host/images/decode.h"
#include "host/images/limits.h"
#include "render/workers.h"
#include "theme/dictionary_file.h"
#include "theme/picture_copies.h"

namespace tools::check {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using platform::PropertyListEntry;

namespace {

constexpr std::string_view kDirectory = "/var/mobile/Library/Prismal/Themes/Theme/";

using SharedPicture = std::shared_ptr<const host::images::Bitmap>;

/// What a file of the theme's folder is.
struct File {
  bool exists = false;
  std::string reason;  ///< why it is no picture
  SharedPicture picture;
  bool isOutside = false;

  PixelCount size() const { return {picture->width, picture->height}; }
};

/// A picture and its sibling.
struct Pair {
  File plain;
  File sibling;
  bool differs = false;  ///< there are both, and they show different things
};
using Pairs = std::map<std::string, Pair>;

std::string placeOf(std::string_view path) {
  return std::string(kDirectory).append(path);
}

/// `spentPixels` are those of the pictures that were read before, on any thread.
File readPicture(const std::string& path, const Copies& copies, const DeviceRoot& device,
                 std::atomic<std::uint64_t>& spentPixels) {
  using host::images::kMaxPixelsTogether;
  if (const auto& failure = copies.at(path)) {
    return {failure->error != ENOENT, failure->reason, {}, failure->error == EXDEV};
  }
  const auto bytes = device.readFile(placeOf(path), host::images::kMaxFileBytes);
  if (!bytes) return {true, bytes.reason(), {}};
  const std::uint64_t left = kMaxPixelsTogether - std::min(kMaxPixelsTogether, spentPixels.load());
  auto decoded = host::images::decode(*bytes, left);
  spentPixels += decoded.pixels;
  if (!decoded) return {true, decoded.reason, {}};
  return {true, "", std::make_shared<const host::images::Bitmap>(*std::move(decoded.bitmap))};
}

Pair readPair(const std::string& path, const Copies& copies, const DeviceRoot& device,
              std::atomic<std::uint64_t>& spentPixels) {
  const auto read = [&](const std::string& name) {
    return readPicture(name, copies, device, spentPixels);
  };
  Pair pair{read(path), read(prismal::doubleResolutionPath(path))};
  pair.differs = pair.plain.picture && pair.sibling.picture &&
                 showsOther(*pair.plain.picture, *pair.sibling.picture);
  // A board's pictures are large, and most are alike.
  for (File* file : {&pair.plain, &pair.sibling}) {
    if (!file->picture || (pair.differs && file == &pair.sibling)) continue;
    auto sides = std::make_shared<host::images::Bitmap>();
    sides->width = file->picture->width;
    sides->height = file->picture->height;
    file->picture = std::move(sides);
  }
  return pair;
}

/// The same file under all the ways to write its path.
std::string normal(std::string_view path) {
  return fs::path(path).lexically_normal().string();
}

bool leadsOut(std::string_view path) {
  const std::string plain = normal(path);
  return plain == ".." || plain.starts_with("../");
}

/// Whether a device path climbs above the device's root on its way.
bool climbsOut(std::string_view path) {
  int depth = 0;
  for (const fs::path& part : fs::path(path).relative_path()) {
    if (part == ".." && --depth < 0) return true;
    if (part != ".." && part != "." && !part.empty()) ++depth;
  }
  return false;
}

/// Every file that the theme names and its sibling, as `copies` has them, read on all processors.
Pairs readAll(const Theme& theme, const Copies& copies, const DeviceRoot& device) {
  Pairs pairs;
  for (const PropertyListEntry& entry : theme.section(kImages).entries()) {
    const std::string_view path = entry.value.string().value_or("");
    if (!theme::isDevicePath(path) && !leadsOut(path)) pairs.try_emplace(normal(path));
  }
  std::vector<Pairs::value_type*> order;
  for (auto& pair : pairs) order.push_back(&pair);
  std::atomic<std::uint64_t> spentPixels = 0;
  render::inParallel(
      order.size(),
      [&](std::size_t i, host::drawing::Fonts&) {
        order[i]->second = readPair(order[i]->first, copies, device, spentPixels);
      },
      [](std::size_t) {});
  return pairs;
}

void tellBroken(Theme& theme, const Place& place, std::string_view path, const File& file) {
  if (file.isOutside) {
    theme.findings.add("image-outside"_rule, place, inQuotes(path) + " is " + file.reason);
  } else {
    theme.findings.add("image-broken"_rule, place,
                       inQuotes(path) + " is no picture: " + file.reason);
  }
}

std::string inPixels(PixelCount size) {
  return std::to_string(size.width) + " by " + std::to_string(size.height);
}

void tellMissing(Theme& theme, const Place& place, const std::string& path, const Pair& pair) {
  const std::string sibling = inQuotes(prismal::doubleResolutionPath(path));
  theme.findings.add("image-missing"_rule, place,
                     pair.sibling.exists ? "there is " + sibling + ", but no " + inQuotes(path) +
                                               " for screens of one pixel a point"
                                         : "the theme has no " + inQuotes(path));
}

void checkSibling(Theme& theme, const Place& place, const std::string& path, const Pair& pair,
                  bool isAskedFor) {
  const std::string name = inQuotes(prismal::doubleResolutionPath(path));
  if (!pair.sibling.exists) {
    if (!isAskedFor) return;
    return theme.findings.add(
        "missing-sibling"_rule, place,
        "there is no " + name + "; on screens of two pixels a point the picture is blurred");
  }
  if (!pair.sibling.picture) return;
  const PixelCount size = pair.plain.size();
  const PixelCount twice = {2 * size.width, 2 * size.height};
  if (pair.sibling.size() == twice) return;
  theme.findings.add("sibling-size"_rule, place,
                     name + " has " + inPixels(pair.sibling.size()) + " pixels, twice " +
                         inQuotes(path) + " is " + inPixels(twice));
}

/// Tells what is wrong with the files of `picture` in the theme's folder, and notes what they hold.
void checkFiles(Theme& theme, Picture& picture, const Pairs& pairs, bool isAskedFor) {
  const std::string path = normal(picture.path);
  const Pair& pair = pairs.at(path);
  const auto isBroken = [](const File& file) { return file.exists && !file.picture; };
  if (!pair.plain.exists) {
    tellMissing(theme, picture.place, path, pair);
  } else if (isBroken(pair.plain)) {
    tellBroken(theme, picture.place, path, pair.plain);
  } else {
    checkSibling(theme, picture.place, path, pair, isAskedFor);
  }
  if (isBroken(pair.sibling)) {
    tellBroken(theme, picture.place, prismal::doubleResolutionPath(path), pair.sibling);
  }
  for (const File* file : {&pair.plain, &pair.sibling}) {
    if (file->picture) picture.sizes.push_back(file->size());
  }
  // Of two shapes the wrong one has been told.
  if (pair.plain.picture && picture.sizes.size() > 1) picture.sizes.pop_back();
  if (pair.differs) picture.other_sibling = pair.sibling.picture;
}

/// A path of the device. Nobody can look there from here.
void checkDevicePath(Theme& theme, Picture& picture) {
  if (picture.path.empty()) {
    return theme.findings.add("image-missing"_rule, picture.place, "the path is empty");
  }
  if (climbsOut(picture.path)) {
    return theme.findings.add("image-outside"_rule, picture.place,
                              inQuotes(picture.path) + " climbs above the device's root");
  }
  picture.device_path = picture.path;
  if (!theme.source.isFolder()) return;
  theme.findings.add("image-on-device"_rule, picture.place,
                     inQuotes(picture.path) + " is a path of the device, not of this folder");
}

bool isNumber(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether `key` is a known one with numbers behind it that no board has.
bool hasForeignNumbers(std::string_view key, const Boards& boards) {
  for (auto end = key.rfind(';'); end != key.npos && isNumber(key.substr(end + 1));
       end = key.rfind(';')) {
    key = key.substr(0, end);
    if (boards.imageKeys().contains(key)) return true;
  }
  return false;
}

/// `key` with its fields in another order; none when no board asks for any.
std::optional<std::string_view> inOrder(std::string_view key, const Boards& boards) {
  constexpr std::size_t kMost = 4;
  std::vector<std::string_view> fields;
  for (std::size_t start = 0; start <= key.size() && fields.size() <= kMost;) {
    const auto end = std::min(key.find(';', start), key.size());
    fields.push_back(key.substr(start, end - start));
    start = end + 1;
  }
  if (fields.size() > kMost) return std::nullopt;
  std::ranges::sort(fields);
  do {
    std::string other;
    for (const std::string_view field : fields)
      other.append(other.empty() ? "" : ";").append(field);
    const auto found = boards.imageKeys().find(other);
    if (found != boards.imageKeys().end()) return *found;
  } while (std::ranges::next_permutation(fields).found);
  return std::nullopt;
}

std::optional<std::string_view> keyMeantBy(Theme& theme, std::string_view key,
                                           const Boards& boards) {
  if (const auto other = inOrder(key, boards)) return other;
  const std::vector<std::string_view> known(boards.imageKeys().begin(), boards.imageKeys().end());
  return theme.suggestions.nearest(key, known);
}

/// Of a key that no board asks for.
void tellUnknownKey(Theme& theme, const PropertyListEntry& entry, const Boards& boards) {
  const bool isNear = hasForeignNumbers(entry.key, boards);
  const Rule& rule = isNear ? "image-never-shown"_rule : "unknown-image-key"_rule;
  std::string message = "no board asks for " + inQuotes(entry.key);
  if (!isNear) {
    const auto meant = keyMeantBy(theme, entry.key, boards);
    if (meant) theme.doubtfulImages.emplace(*meant);
    message += asQuestion(meant);
  }
  theme.findings.add(rule, theme.source.atKey(entryOf(std::string(kImages), entry.key), entry),
                     message);
}

Picture checkEntry(Theme& theme, const PropertyListEntry& entry, const Pairs& pairs,
                   bool isAskedFor) {
  const Place place = theme.source.at(entryOf(std::string(kImages), entry.key), entry.value);
  Picture picture{
      std::string(entry.key), place, std::string(entry.value.string().value_or("")), {}, {}, {}};
  if (!entry.value.isString()) {
    theme.findings.add("image-value"_rule, place,
                       std::string(typeOf(entry.value)) + " in place of a path");
  } else if (theme::isDevicePath(picture.path)) {
    checkDevicePath(theme, picture);
  } else if (leadsOut(picture.path)) {
    theme.findings.add("image-outside"_rule, place,
                       inQuotes(picture.path) + " leads out of the theme's folder");
  } else {
    checkFiles(theme, picture, pairs, isAskedFor);
  }
  return picture;
}

/// The keys of a section that is there by another name.
void noteLostKeys(Theme& theme, const Boards& boards) {
  if (!theme.lost.contains(kImages)) return;
  for (const auto& section : theme.source.list().entries()) {
    if (section.key == kImages) continue;
    for (const auto& entry : section.value.entries()) {
      if (boards.imageKeys().contains(entry.key)) theme.doubtfulImages.emplace(entry.key);
    }
  }
}

}  // namespace

Copies copyPictures(const Source& source, const DeviceRoot& device) {
  theme::PictureCopies files(source.folder(), device, kDirectory, host::files::Durability::kNone);
  Copies copies;
  for (const PropertyListEntry& entry : source.list().objectForKey(kImages).entries()) {
    const std::string_view written = entry.value.string().value_or("");
    if (theme::isDevicePath(written) || leadsOut(written)) continue;
    const std::string path = normal(written);
    for (const std::string& name : {path, prismal::doubleResolutionPath(path)}) {
      const auto missing = files.copyFile(name);
      copies.insert_or_assign(name, missing ? *missing : missing.failure());
    }
  }
  return copies;
}

std::vector<Picture> checkPictures(Theme& theme, const Boards& boards, const Copies& copies,
                                   const DeviceRoot& device) {
  noteLostKeys(theme, boards);
  const Pairs pairs = readAll(theme, copies, device);
  std::vector<Picture> pictures;
  for (const PropertyListEntry& entry : theme.section(kImages).entries()) {
    const bool isAskedFor = boards.imageKeys().contains(entry.key);
    if (!isAskedFor) tellUnknownKey(theme, entry, boards);
    Picture picture = checkEntry(theme, entry, pairs, isAskedFor);
    if (!isAskedFor) continue;
    if (picture.sizes.empty()) {
      theme.doubtfulImages.insert(picture.key);
    } else {
      picture.device_path = placeOf(normal(picture.path));
    }
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

}  // namespace tools::check
