#include "keyboard/confinement.h"

#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/drawing/font_files.h"
#include "host/files/darwin_notify.h"
#include "host/files/descriptor.h"
#include "host/keyboard/key_picture_store.h"
#include "host/system/log.h"
#include "sandbox/landlock.h"
#include "sandbox/system_calls.h"

namespace tools::keyboard {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;
using sandbox::Access;
using sandbox::FileRules;
using sandbox::Programs;

namespace {

/// The shell that a device's library runs, and what its one command is made of.
constexpr const char* kShell[] = {"/bin/sh", "/bin/rm", "/lib64/ld-linux-x86-64.so.2",
                                  "/lib/ld-linux-aarch64.so.1"};
constexpr const char* kSharedLibraries[] = {"/lib", "/lib64", "/usr/lib", "/etc/ld.so.cache"};

Failure cannotEnter(const Failure& failure) {
  return {failure.error,
          "the sandbox can't be entered: " + failure.reason + "; --no-sandbox goes on without it"};
}

void allow(const FileRules& rules, const DeviceRoot& device, std::string_view path, Access access) {
  if (const auto directory = device.openDirectory(path)) rules.allow(directory->get(), access);
}

/// What a keyboard writes on a device. The rules are for directories that are there, so these are
/// made; where they can't be, nothing could be written either.
void allowWriting(const FileRules& rules, const DeviceRoot& device, std::string_view path) {
  static_cast<void>(device.makeDirectories(path));
  allow(rules, device, path, Access::kReadAndWrite);
}

/// The cache directory itself stays unmade: that it is not there spares the library its shell.
constexpr std::string_view kCaches = host::keyboard::KeyPictureStore::kDirectory.substr(
    0, host::keyboard::KeyPictureStore::kDirectory.rfind('/'));

void allowInstalled(const FileRules& rules, const DeviceRoot& device, bool hasLibrary) {
  allow(rules, device, "/", Access::kRead);
  allowWriting(rules, device, kCaches);
  if (!hasLibrary) return;
  allowWriting(rules, device, host::files::kNotificationDirectory);
  for (const char* path : kShell) rules.allow(path, Access::kReadAndExecute);
  for (const char* path : kSharedLibraries) rules.allow(path, Access::kRead);
}

/// Rules that leave what every keyboard needs.
Result<FileRules> rulesFor(const Dress& dress) {
  auto rules = FileRules::forbidAll();
  if (!rules) return rules;
  for (const char* path : host::drawing::fontFolders()) rules->allow(path, Access::kRead);
  rules->allow(dress.library.c_str(), Access::kRead);
  return rules;
}

/// A theme's folder; or a list that is named itself, wherever it is a link to, and the folder in
/// which it is named, which has its pictures.
void allowListAt(const FileRules& rules, const fs::path& place) {
  rules.allow(place.c_str(), Access::kRead);
  std::error_code error;
  if (!fs::is_directory(place, error)) {
    rules.allow((place.parent_path() / ".").c_str(), Access::kRead);
  }
}

/// Calls `allowed` with the rules that are to be enforced.
template <class Allow>
Result<Done> enforceRules(const Dress& dress, const Allow& allowed) {
  if (!FileRules::areOffered()) return Done();
  const auto rules = rulesFor(dress);
  if (!rules) return cannotEnter(rules.failure());
  allowed(*rules);
  const auto enforced = rules->enforce();
  return enforced ? enforced : cannotEnter(enforced.failure());
}

/// Not twice a process: the same filter would only be asked twice at each call.
Result<Done> filterSystemCalls(Programs programs) {
  static bool isDone = false;
  if (std::exchange(isDone, true) || !sandbox::isFilterOffered()) return Done();
  const auto forbidden = sandbox::forbidSystemCalls(programs);
  return forbidden ? forbidden : cannotEnter(forbidden.failure());
}

/// What the caller's standard input is, a stranger's theme has no use for. Once: later the sandbox
/// keeps the way to do it closed.
Result<Done> leaveInput() {
  static bool isDone = false;
  if (std::exchange(isDone, true)) return Done();
  const host::files::Descriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  if (!nothing || ::dup2(nothing.get(), STDIN_FILENO) < 0) {
    return cannotEnter(host::files::lastFailure());
  }
  return Done();
}

/// What is to be done before anything is taken away.
Result<Done> prepare() {
  host::system::openLog();
  return leaveInput();
}

}  // namespace

Result<Done> confineToTheme(const Dress& dress, const DeviceRoot& device) {
  if (!dress.sandboxed || dress.theme.empty()) return Done();
  if (auto prepared = prepare(); !prepared) return prepared;
  const auto enforced = enforceRules(dress, [&](const FileRules& rules) {
    allow(rules, device, "/", Access::kReadAndWrite);
    allowListAt(rules, dress.theme);
    if (!dress.settings.empty()) allowListAt(rules, dress.settings);
  });
  return enforced ? filterSystemCalls(Programs::kForbidden) : enforced;
}

Result<Done> confineToDevice(const Dress& dress, const DeviceRoot& device, bool isPrivate) {
  if (!dress.sandboxed) return Done();
  if (dress.theme.empty()) {
    if (auto prepared = prepare(); !prepared) return prepared;
  }
  const bool runsShell = !isPrivate && !dress.system;
  const auto enforced = enforceRules(dress, [&](const FileRules& rules) {
    isPrivate ? allow(rules, device, "/", Access::kReadAndWrite)
              : allowInstalled(rules, device, runsShell);
  });
  return enforced ? filterSystemCalls(runsShell ? Programs::kAllowed : Programs::kForbidden)
                  : enforced;
}

}  // namespace tools::keyboard
