#include "host/system/files.h"

#include <utility>

#include "host/files/shell.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/runtime/class_table.h"
#include "host/runtime/trace.h"
#include "host/system/process.h"
#include "platform/foundation.h"
#include "platform/property_list.h"

namespace host::system {

namespace {

/// The file at a device path as the library reads it; the attempt is noted, also when it fails.
files::Result<std::string> readNoted(std::string_view path, std::size_t maxBytes) {
  runtime::record(runtime::Event::Kind::kRead, path);
  return process().root().readFile(path, maxBytes);
}

}  // namespace

DataObject::DataObject(std::string fileBytes, std::string filePath)
    : objc_object(runtime::defineClass("NSData")),
      bytes(std::move(fileBytes)),
      path(std::move(filePath)) {}

}  // namespace host::system

namespace platform {

PropertyList PropertyList::dictionaryWithContentsOfFile(std::string_view path) {
  const auto bytes = host::system::readNoted(path, host::plist::kMaxBytes);
  if (!bytes) return {};
  auto reading = host::plist::read(*bytes);
  return reading.list.isDictionary() ? std::move(reading.list) : PropertyList();
}

NSData NSData::dataWithContentsOfFile(std::string_view path) {
  auto bytes = host::system::readNoted(path, host::system::kMaxDataBytes);
  if (!bytes) return {};
  return NSData(host::runtime::makeAutoreleased<host::system::DataObject>(*std::move(bytes),
                                                                          std::string(path)));
}

NSFileManager NSFileManager::defaultManager() {
  static auto* const manager = new objc_object(host::runtime::defineClass("NSFileManager"));
  return NSFileManager(manager);
}

bool NSFileManager::fileExistsAtPath(std::string_view path) const {
  host::runtime::record(host::runtime::Event::Kind::kExists, path);
  return host::system::process().root().exists(path);
}

int system(std::string_view command) {
  host::runtime::record(host::runtime::Event::Kind::kShell, command);
  return host::files::runShell(host::system::process().root(), command);
}

}  // namespace platform
