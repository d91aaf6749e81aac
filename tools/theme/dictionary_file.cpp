#include "theme/dictionary_file.h"

#include <cerrno>
#include <utility>

#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"
#include "text_file.h"
#include "theme/folder_file.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Failure;
using host::files::Result;

namespace {

Result<platform::PropertyList> dictionaryIn(const Result<std::string>& bytes,
                                            const std::string& what) {
  if (!bytes) return bytes.failure();
  auto reading = host::plist::read(*bytes);
  if (!reading) return Failure(EINVAL, reading.reason.append(hintFor(*bytes)));
  if (!reading.list.isDictionary()) return Failure(EINVAL, what + " is a dictionary, this is not");
  return std::move(reading.list);
}

}  // namespace

std::string_view hintFor(std::string_view bytes) {
  const auto first = bytes.find_first_not_of(" \t\r\n");
  const bool mayBeJson = first != bytes.npos && (bytes[first] == '{' || bytes[first] == '[');
  return mayBeJson ? "; prismal convert makes a property list of JSON" : "";
}

Result<platform::PropertyList> readDictionary(const DeviceRoot& root, std::string_view path,
                                              const std::string& what) {
  return dictionaryIn(root.readFile(path, host::plist::kMaxBytes), what);
}

Result<std::string> readListFile(const DeviceRoot& folder, const fs::path& file, Links links) {
  return links == Links::kLeadAnywhere
             ? readRegularFile(file.string())
             : readInFolder(folder, file.filename().string(), host::plist::kMaxBytes);
}

Result<DictionaryFile> readDictionaryFile(const fs::path& file, Links links,
                                          const std::string& what) {
  auto folder = DeviceRoot::open(file.has_parent_path() ? file.parent_path() : fs::path("."),
                                 DeviceRoot::Creation::kNever);
  if (!folder) return Failure(folder.failure().error, file.string() + ": " + folder.reason());
  auto list = dictionaryIn(readListFile(*folder, file, links), what);
  if (!list) return Failure(list.failure().error, file.string() + ": " + list.reason());
  return DictionaryFile{*std::move(list), *std::move(folder)};
}

std::string fileOf(platform::PropertyListView list) {
  std::string binary = host::plist::writeBinary(list);
  return binary.size() <= host::plist::kMaxBytes ? std::move(binary) : host::plist::writeXml(list);
}

bool isDevicePath(std::string_view path) {
  return path.empty() || path.starts_with('/');
}

std::optional<std::string> pathInFolder(std::string_view path) {
  const std::string inFolder = fs::path(path).lexically_normal().string();
  if (inFolder == ".." || inFolder.starts_with("../")) return std::nullopt;
  return inFolder;
}

}  // namespace tools::theme
