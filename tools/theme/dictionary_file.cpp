#include "theme/dictionary_file.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include "backgrounds/double_resolution_path.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"
#include "text_file.h"
#include "theme/folder_file.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Durability;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

Result<platform::PropertyList> dictionaryIn(const Result<std::string>& bytes,
                                            const std::string& what) {
  if (!bytes) return bytes.failure();
  auto reading = host::plist::read(*bytes);
  if (!reading) return Failure(EINVAL, std::move(reading.reason));
  if (!reading.list.isDictionary()) return Failure(EINVAL, what + " is a dictionary, this is not");
  return std::move(reading.list);
}

}  // namespace

Result<platform::PropertyList> readDictionary(const DeviceRoot& root, std::string_view path,
                                              const std::string& what) {
  return dictionaryIn(root.readFile(path, kMaxBytes), what);
}

Result<DictionaryFile> readDictionaryFile(const fs::path& file, const std::string& what) {
  auto folder = DeviceRoot::open(file.has_parent_path() ? file.parent_path() : fs::path("."),
                                 DeviceRoot::Creation::kNever);
  if (!folder) return Failure(folder.failure().error, file.string() + ": " + folder.reason());
  auto list = dictionaryIn(readRegularFile(file.string()), what);
  if (!list) return Failure(list.failure().error, file.string() + ": " + list.reason());
  return DictionaryFile{*std::move(list), *std::move(folder)};
}

std::string fileOf(platform::PropertyListView list) {
  std::string binary = host::plist::writeBinary(list);
  return binary.size() <= kMaxBytes ? std::move(binary) : host::plist::writeXml(list);
}

bool isDevicePath(std::string_view path) {
  return path.empty() || path.starts_with('/');
}

std::optional<std::string> pathInFolder(std::string_view path) {
  const std::string inFolder = fs::path(path).lexically_normal().string();
  if (inFolder == ".." || inFolder.starts_with("../")) return std::nullopt;
  return inFolder;
}

Result<std::optional<std::string>> copyPicture(const DeviceRoot& folder, const std::string& path,
                                               const DeviceRoot& device, std::string_view directory,
                                               Durability durability) {
  std::optional<std::string> missing;
  bool isThere = false;
  for (const std::string& name : {path, prismal::doubleResolutionPath(path)}) {
    const auto bytes = readInFolder(folder, name, kMaxBytes);
    isThere = isThere || bytes;
    if (!bytes && !missing) missing = bytes.reason();
    if (!bytes) continue;
    const std::string target = std::string(directory) + name;
    const auto written = device.writeFile(target, *bytes, durability);
    if (!written) return Failure(written.failure().error, target + ": " + written.reason());
  }
  if (isThere) missing.reset();
  return missing;
}

}  // namespace tools::theme
