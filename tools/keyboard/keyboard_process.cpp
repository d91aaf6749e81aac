#include "keyboard/keyboard_process.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "device/open_device.h"
#include "host/keyboard/cache.h"
#include "host/keyboard/keyboard.h"
#include "host/system/device.h"
#include "host/system/library_loader.h"
#include "host/system/log.h"
#include "host/system/notification_center.h"
#include "host/system/process.h"
#include "host/views/image.h"
#include "theme/settings_source.h"
#include "theme/theme_source.h"

namespace tools::keyboard {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr const char* kBundleIdentifier = "net.quillon.prismal.host";

std::optional<Failure> contradiction(const Dress& dress) {
  if (!dress.theme.empty() && dress.device_root) {
    return Failure(EINVAL,
                   "a THEME or --device-root, not both: one is drawn in place of the other");
  }
  if (!dress.settings.empty() && dress.theme.empty()) {
    return Failure(EINVAL, "--settings goes with a THEME: a device has settings of its own");
  }
  return std::nullopt;
}

/// What the library logs in every process that shows a keyboard.
constexpr std::string_view kRoutineLines[] = {
    "QZ Bundle: ", "PM: Clear Keyboard Cache: ", "PM: Enabled(", "PM: InitColorCache: "};

bool isRoutine(std::string_view line) {
  return std::ranges::any_of(kRoutineLines,
                             [&](std::string_view start) { return line.starts_with(start); });
}

/// What is told for people goes to standard error, each line once: the library tells of a broken
/// rule for every key.
class Teller {
 public:
  explicit Teller(const Dress& dress)
      : quiet_(dress.quiet), faultsOnly_(dress.faultsOnly), prefix_(dress.told_as) {
    if (!prefix_.empty()) prefix_ += ": ";
  }
  void operator()(std::string_view line) {
    if (quiet_ || (faultsOnly_ && isRoutine(line)) || !told_->emplace(line).second) return;
    std::fprintf(stderr, "%s%.*s\n", prefix_.c_str(), static_cast<int>(line.size()), line.data());
  }

 private:
  bool quiet_;
  bool faultsOnly_;
  std::string prefix_;
  std::shared_ptr<std::set<std::string, std::less<>>> told_ =
      std::make_shared<std::set<std::string, std::less<>>>();
};

void tell(const std::vector<std::string>& missingPictures, const Dress& dress) {
  Teller tellOne(dress);
  for (const std::string& picture : missingPictures) tellOne(picture);
}

/// Why the default device, which `failure` kept closed, can't be drawn.
Failure nothingToDraw(const Failure& failure) {
  if (failure.error != ENOENT) return failure;
  return Failure(ENOENT,
                 "no THEME is given, and none is installed; `prismal install THEME` does that, "
                 "`prismal render --system` draws the plain keyboard");
}

Result<Done> putOn(const DeviceRoot& device, const Dress& dress) {
  if (dress.theme.empty()) return Done();
  const auto theme = theme::ThemeSource::read(dress.theme);
  if (!theme) return theme.failure();
  const auto missing = theme->putOn(device);
  if (!missing) return missing.failure();
  tell(*missing, dress);
  if (dress.settings.empty()) return Done();
  const auto settings = theme::putSettingsOn(device, dress.settings);
  if (!settings) return settings.failure();
  tell(*settings, dress);
  return Done();
}

void startHost(DeviceRoot root, const Dress& dress, double scale) {
  host::system::setLogEcho(Teller(dress));
  host::views::setBrokenPictureEcho([tell = Teller(dress)](auto path, auto reason) mutable {
    tell(std::string(path).append(": ").append(reason));
  });
  host::system::startProcess(std::move(root), kBundleIdentifier);
  host::system::setDevice({.screenScale = scale, .interfaceIdiom = 0, .systemVersion = "7.0.4"});
  host::keyboard::defineKeyboardClasses({}, {});
}

std::optional<Failure> loadLibrary(const fs::path& library) {
  const platform::NSAutoreleasePool pool;
  if (auto reason = host::system::loadLibrary(library)) return Failure(ENOEXEC, *reason);
  host::system::postNotification(platform::UIApplicationDidFinishLaunchingNotification);
  host::system::process().runLoop().drain();
  return std::nullopt;
}

}  // namespace

Result<KeyboardProcess> KeyboardProcess::start(const Dress& dress, double scale) {
  if (auto failure = contradiction(dress)) return *std::move(failure);
  std::optional<host::files::TemporaryDirectory> made;
  device::Place place = dress.device_root;
  if (!place && (dress.system || !dress.theme.empty())) place = made.emplace().path();
  auto root = device::openDevice(place, DeviceRoot::Creation::kNever);
  if (!root) return place ? root.failure() : nothingToDraw(root.failure());
  if (const auto put = putOn(*root, dress); !put) return put.failure();
  startHost(*std::move(root), dress, scale);
  // Nobody draws again on a device that goes with this process.
  if (auto* const pictures = host::keyboard::cachedPictures(); made && pictures) {
    pictures->keepInMemory();
  }
  if (!dress.system) {
    if (auto failure = loadLibrary(dress.library)) return *std::move(failure);
  }
  return KeyboardProcess(std::move(made));
}

}  // namespace tools::keyboard
