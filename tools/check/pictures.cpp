#include "check/pictures.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>

#include "backgrounds/double_resolution_path.h"
#include "check/did_you_mean.h"
#include "check/words.h"
#include "host/images/decode.h"
#include "host/images/limits.h"
#include "render/workers.h"
#include "theme/dictionary_file.h"
#include "theme/picture_copies.h"

namespace tools::check {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Failure;
using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

constexpr std::string_view kDirectory = "/var/mobile/Library/Prismal/Themes/Theme/";

/// What a file of the theme's folder is.
struct File {
  bool exists = false;
  std::string reason;  ///< why it is no picture
  PixelCount size;
  bool isOutside = false;
};
using Files = std::map<std::string, File>;

std::string placeOf(std::string_view path) {
  return std::string(kDirectory).append(path);
}

/// `spentPixels` are those of the pictures that were read before, on any thread.
File readPicture(const Copies::value_type& copied, const DeviceRoot& device,
                 std::atomic<std::uint64_t>& spentPixels) {
  using host::images::kMaxPixelsTogether;
  const auto& [path, failure] = copied;
  if (failure) return {failure->error != ENOENT, failure->reason, {}, failure->error == EXDEV};
  const auto bytes = device.readFile(placeOf(path), host::images::kMaxFileBytes);
  if (!bytes) return {true, bytes.reason(), {}};
  const std::uint64_t left = kMaxPixelsTogether - std::min(kMaxPixelsTogether, spentPixels.load());
  const auto decoded = host::images::decode(*bytes, left);
  spentPixels += decoded.pixels;
  if (!decoded) return {true, decoded.reason, {}};
  return {true, "", {decoded.bitmap->width, decoded.bitmap->height}};
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

/// Every copy, read on all processors.
Files readAll(const Copies& copies, const DeviceRoot& device) {
  Files files;
  std::vector<std::pair<const Copies::value_type*, File*>> order;
  for (const auto& copied : copies) order.emplace_back(&copied, &files[copied.first]);
  std::atomic<std::uint64_t> spentPixels = 0;
  render::inParallel(
      order.size(),
      [&](std::size_t i, host::drawing::Fonts&) {
        *order[i].second = readPicture(*order[i].first, device, spentPixels);
      },
      [](std::size_t) {});
  return files;
}

void tellBroken(Theme& theme, const Place& place, std::string_view path, const File& file) {
  if (file.isOutside) {
    theme.findings.add("image-outside"_rule, place, inQuotes(path) + " is " + file.reason);
  } else {
    theme.findings.add("image-broken"_rule, place,
                       inQuotes(path) + " is no picture: " + file.reason);
  }
}

/// The sizes of the picture at `path` of the theme's folder, all that is wrong with it told.
std::vector<PixelCount> checkFiles(Theme& theme, const Place& place, const std::string& path,
                                   const Files& files, bool isAskedFor) {
  const std::string siblingPath = prismal::doubleResolutionPath(path);
  const File& plain = files.at(path);
  const File& sibling = files.at(siblingPath);
  if (!plain.exists) {
    theme.findings.add("image-missing"_rule, place,
                       sibling.exists ? "there is " + inQuotes(siblingPath) + ", but no " +
                                            inQuotes(path) + " for screens of one pixel a point"
                                      : "the theme has no " + inQuotes(path));
  } else if (!plain.reason.empty()) {
    tellBroken(theme, place, path, plain);
  } else if (!sibling.exists && isAskedFor) {
    theme.findings.add("missing-sibling"_rule, place,
                       "there is no " + inQuotes(siblingPath) +
                           "; on screens of two pixels a point " + "the picture is blurred");
  }
  if (sibling.exists && !sibling.reason.empty()) tellBroken(theme, place, siblingPath, sibling);
  std::vector<PixelCount> sizes;
  for (const File* file : {&plain, &sibling}) {
    if (file->exists && file->reason.empty()) sizes.push_back(file->size);
  }
  return sizes;
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

/// Of a key that no board asks for.
void tellUnknownKey(Theme& theme, const PropertyListEntry& entry, const Boards& boards) {
  const bool isNear = hasForeignNumbers(entry.key, boards);
  const Rule& rule = isNear ? "image-never-shown"_rule : "unknown-image-key"_rule;
  std::string message = "no board asks for " + inQuotes(entry.key);
  if (!isNear && !theme.findings.isFull(rule)) {
    const std::vector<std::string_view> known(boards.imageKeys().begin(), boards.imageKeys().end());
    message += didYouMean(entry.key, known);
  }
  theme.findings.add(rule, theme.source.atKey(entryOf(std::string(kImages), entry.key), entry),
                     message);
}

Picture checkEntry(Theme& theme, const PropertyListEntry& entry, const Files& files,
                   bool isAskedFor) {
  const Place place = theme.source.at(entryOf(std::string(kImages), entry.key), entry.value);
  Picture picture{
      std::string(entry.key), place, std::string(entry.value.string().value_or("")), {}, {}};
  if (!entry.value.isString()) {
    theme.findings.add("image-value"_rule, place,
                       std::string(typeOf(entry.value)) + " in place of a path");
  } else if (theme::isDevicePath(picture.path)) {
    checkDevicePath(theme, picture);
  } else if (leadsOut(picture.path)) {
    theme.findings.add("image-outside"_rule, place,
                       inQuotes(picture.path) + " leads out of the theme's folder");
  } else {
    picture.sizes = checkFiles(theme, place, normal(picture.path), files, isAskedFor);
  }
  return picture;
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
  const PropertyListView section = theme.section(kImages);
  const Files files = readAll(copies, device);
  std::vector<Picture> pictures;
  for (const PropertyListEntry& entry : section.entries()) {
    const bool isAskedFor = boards.imageKeys().contains(entry.key);
    if (!isAskedFor) tellUnknownKey(theme, entry, boards);
    Picture picture = checkEntry(theme, entry, files, isAskedFor);
    if (!isAskedFor) continue;
    if (!picture.sizes.empty()) picture.device_path = placeOf(normal(picture.path));
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

}  // namespace tools::check
