#include "theme/dictionary_file.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include "backgrounds/double_resolution_path.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

/// A relative path of a picture as it lies in its folder; none when it leads out of it.
std::optional<std::string> pathInFolder(std::string_view path) {
  const std::string inFolder = fs::path(path).lexically_normal().string();
  if (inFolder == ".." || inFolder.starts_with("../")) return std::nullopt;
  return inFolder;
}

}  // namespace

Result<DictionaryFile> readDictionaryFile(const fs::path& file, const std::string& what) {
  auto folder = DeviceRoot::open(file.has_parent_path() ? file.parent_path() : fs::path("."),
                                 DeviceRoot::Creation::kNever);
  if (!folder) return Failure(folder.failure().error, file.string() + ": " + folder.reason());
  const auto bytes = folder->readFile(file.filename().string(), kMaxBytes);
  if (!bytes) return Failure(bytes.failure().error, file.string() + ": " + bytes.reason());
  auto reading = host::plist::read(*bytes);
  if (!reading) return Failure(EINVAL, file.string() + ": " + reading.reason);
  if (!reading.list.isDictionary()) {
    return Failure(EINVAL, file.string() + ": " + what + " is a dictionary, this is not");
  }
  return DictionaryFile{std::move(reading.list), *std::move(folder)};
}

std::string fileOf(platform::PropertyListView list) {
  std::string binary = host::plist::writeBinary(list);
  return binary.size() <= kMaxBytes ? std::move(binary) : host::plist::writeXml(list);
}

bool isDevicePath(std::string_view path) {
  return path.empty() || path.starts_with('/');
}

std::optional<std::string> copyPicture(const DeviceRoot& folder, std::string_view path,
                                       const DeviceRoot& device, std::string_view directory,
                                       std::string& devicePath) {
  const auto inFolder = pathInFolder(path);
  if (!inFolder) return "leads out of the folder";
  devicePath = std::string(directory) + *inFolder;
  const auto copy = [&](const std::string& from, const std::string& to) {
    const auto bytes = folder.readFile(from, kMaxBytes);
    return bytes ? device.writeFile(to, *bytes) : Result<Done>(bytes.failure());
  };
  const auto plain = copy(*inFolder, devicePath);
  const auto sibling =
      copy(prismal::doubleResolutionPath(*inFolder), prismal::doubleResolutionPath(devicePath));
  if (plain || sibling) return std::nullopt;
  return plain.reason();
}

}  // namespace tools::theme
