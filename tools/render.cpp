#include "render.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "choice_option.h"
#include "exit_status.h"
#include "host/drawing/draw.h"
#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "host/keyboard/keyboard.h"
#include "host/render/keyplane.h"
#include "host/render/picture.h"
#include "host/system/device.h"
#include "host/system/library_loader.h"
#include "host/system/log.h"
#include "host/system/notification_center.h"
#include "host/system/process.h"
#include "library_path.h"
#include "output_file.h"
#include "platform/foundation.h"
#include "theme/theme_source.h"

namespace tools {

namespace fs = std::filesystem;
namespace boards = host::boards;
using host::files::DeviceRoot;

namespace {

struct RenderOptions {
  std::string theme;
  fs::path output = "keyboard.png";
  bool system = false;
  boards::Plane plane = boards::Plane::small_letters;
  boards::Orientation orientation = boards::Orientation::portrait;
  boards::Look look = boards::Look::standard;
  int scale = 2;
  std::vector<std::string> pressed;
  std::optional<fs::path> deviceRoot;
  fs::path library;
  bool quiet = false;
};

constexpr std::string_view kBoard = "Phone-3.5-Inch";
constexpr const char* kBundleIdentifier = "net.quillon.prismal.host";

/// Says in one line why there is no picture.
int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal render: %s\n", reason.c_str());
  return kTrouble;
}

/// The device root that the keyboard runs on: for a THEME a private one, which goes with this
/// object, else the one whose theme is drawn.
class RenderDevice {
 public:
  explicit RenderDevice(const RenderOptions& options) {
    if (options.deviceRoot) {
      path_ = *options.deviceRoot;
    } else if (options.theme.empty() && !options.system) {
      path_ = host::files::defaultDeviceRoot();
    } else {
      path_ = private_.emplace().path();
    }
  }

  /// The failure's text names the directory.
  host::files::Result<DeviceRoot> open() const {
    using host::files::Failure;
    auto root = DeviceRoot::open(path_, DeviceRoot::Creation::kNever);
    if (!root) {
      return Failure(root.failure().error, "no device at " + path_.string() + ": " + root.reason());
    }
    if (root->isMachineRoot()) {
      return Failure(EINVAL, path_.string() + ": this machine's own root can't be a device");
    }
    return root;
  }

 private:
  std::optional<host::files::TemporaryDirectory> private_;
  fs::path path_;
};

void startHost(DeviceRoot root, const RenderOptions& options) {
  if (!options.quiet) {
    // The library tells of a broken rule for every key; once is enough for a person.
    host::system::setLogEcho(
        [told = std::set<std::string, std::less<>>()](std::string_view line) mutable {
          if (!told.emplace(line).second) return;
          std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
        });
  }
  host::system::startProcess(std::move(root), kBundleIdentifier);
  host::system::setDevice({.screenScale = static_cast<double>(options.scale),
                           .interfaceIdiom = 0,
                           .systemVersion = "7.0.4"});
  host::keyboard::defineKeyboardClasses({}, {});
}

/// The picture of the keyboard in this process as a file's bytes, or why there is none.
host::files::Result<std::string> drawKeyboard(const RenderOptions& options) {
  using host::files::Failure;
  const host::render::KeyplaneChoice choice{.board = boards::findBoard(kBoard),
                                            .plane = options.plane,
                                            .orientation = options.orientation,
                                            .look = options.look,
                                            .variant = {}};
  auto keyplane = host::render::makeKeyplane(choice);
  for (const std::string& key : options.pressed) {
    if (!host::render::press(keyplane, key)) {
      return Failure(EINVAL, "--press " + key + ": no such key; this keyplane has" +
                                 host::render::keyNames(keyplane));
    }
  }
  host::render::show(keyplane, choice);
  host::drawing::Fonts fonts;
  const auto bitmap = host::drawing::draw(host::render::pictureOf(keyplane, options.scale), fonts);
  if (!bitmap) return Failure(ENOMEM, "the picture can't be drawn");
  return host::images::encodePng(*bitmap);
}

int render(const RenderOptions& options) {
  if (options.deviceRoot && options.deviceRoot->empty()) {
    return refuse("--device-root names no directory");
  }
  if (!options.theme.empty() && options.deviceRoot) {
    return refuse("a THEME or --device-root, not both: one is drawn in place of the other");
  }
  const RenderDevice device(options);
  auto root = device.open();
  if (!root) return refuse(root.reason());
  if (!options.theme.empty()) {
    const auto theme = theme::ThemeSource::read(options.theme);
    if (!theme) return refuse(theme.reason());
    const auto missing = theme->putOn(*root);
    if (!missing) return refuse(missing.reason());
    for (const std::string& picture : *missing) {
      if (!options.quiet) std::fprintf(stderr, "%s\n", picture.c_str());
    }
  }
  startHost(*std::move(root), options);
  const platform::NSAutoreleasePool pool;
  if (!options.system) {
    if (const auto failure = host::system::loadLibrary(options.library)) return refuse(*failure);
  }
  host::system::postNotification(platform::UIApplicationDidFinishLaunchingNotification);
  host::system::process().runLoop().drain();

  const auto picture = drawKeyboard(options);
  if (!picture) return refuse(picture.reason());
  if (const auto written = writeOutput(options.output, *picture); !written) {
    return refuse(options.output.string() + ": " + written.reason());
  }
  return kDone;
}

}  // namespace

void addRenderCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<RenderOptions>();
  options->library = libraryPath();
  CLI::App* const command = app.add_subcommand("render", "Draw the keyboard with a theme");
  command->add_option(
      "THEME", options->theme,
      "A theme folder, or a property-list file of the merged form; without it, what is "
      "installed on the device");
  command
      ->add_option("-o,--output", options->output,
                   "The picture to write, a PNG file; - is "
                   "standard output")
      ->capture_default_str();
  command->add_flag("--system", options->system,
                    "The plain system keyboard, the library not loaded");
  addChoice<boards::Plane>(*command, "--keyplane", options->plane, "Which keyplane is shown",
                           {{"small-letters", boards::Plane::small_letters},
                            {"capital-letters", boards::Plane::capital_letters},
                            {"numbers", boards::Plane::numbers},
                            {"numbers-alternate", boards::Plane::numbers_alternate}});
  addChoice<boards::Orientation>(
      *command, "--orientation", options->orientation, "How the phone is held",
      {{"portrait", boards::Orientation::portrait}, {"landscape", boards::Orientation::landscape}});
  addChoice<boards::Look>(*command, "--style", options->look,
                          "The light keyboard, or the dark one over alerts",
                          {{"standard", boards::Look::standard}, {"alert", boards::Look::alert}});
  command->add_option("--scale", options->scale, "Pixels a point")
      ->check(CLI::IsMember({1, 2}))
      ->capture_default_str();
  command
      ->add_option("--press", options->pressed,
                   "A key to press, by its name or its label; may be given several times")
      ->type_name("KEY")
      ->allow_extra_args(false);
  command->add_option("--device-root", options->deviceRoot,
                      "The device to draw, in place of $XDG_DATA_HOME/prismal/device "
                      "(~/.local/share/prismal/device)");
  command->add_flag("--quiet", options->quiet, "Don't show the lines that the library logs");
  command->add_option("--library", options->library,
                      "The library to load, in place of the one "
                      "that came with this program");
  command->footer(
      "What the library logs goes to standard error, each line once. On the device that is drawn\n"
      "the library does what it does on every device: it empties the keyboard's cache.\n"
      "Exit status: 0 done, 2 wrong usage, or something that can't be read, loaded or written.\n\n"
      "Examples:\n"
      "  prismal render examples/Dusk.theme -o dusk.png\n"
      "  prismal render examples/Dusk.theme --orientation landscape --keyplane numbers\n"
      "  prismal render --system --press a -o plain.png");
  command->callback([options, &status] { status = render(*options); });
}

}  // namespace tools
