#include "uninstall.h"

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include "device/change_themes.h"
#include "device/report.h"
#include "exit_status.h"
#include "say_done.h"

namespace tools {

using device::ThemeStore;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

struct UninstallOptions {
  std::vector<std::string> names;
  bool all = false;
  device::Place place;
};

constexpr const char* kNoneLeft = "No theme is installed any more.";

std::string noSuchTheme(const std::string& name) {
  return name + ": no theme of that name is installed";
}

Result<Done> stage(ThemeStore& store, const UninstallOptions& options) {
  if (options.all) store.uninstallAll();
  for (const std::string& name : options.names) {
    if (!store.uninstall(name)) return Failure(ENOENT, noSuchTheme(name));
  }
  return Done();
}

int uninstall(const UninstallOptions& options) {
  if (options.all != options.names.empty()) {
    return device::refuse("uninstall", "names of themes, or --all");
  }
  const auto device = device::openDeviceIfAny(options.place);
  if (device && !*device) {
    return options.all ? sayDone("uninstall", kNoneLeft)
                       : device::refuse("uninstall", noSuchTheme(options.names.front()));
  }
  const int status = device::changeThemes("uninstall", options.place, DeviceRoot::Creation::kNever,
                                          [&](ThemeStore& store) { return stage(store, options); });
  const std::string names = CLI::detail::join(options.names, ", ");
  return status == kDone
             ? sayDone("uninstall", options.all ? kNoneLeft : "Uninstalled " + names + ".")
             : status;
}

}  // namespace

void addUninstallCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<UninstallOptions>();
  CLI::App* const command = app.add_subcommand("uninstall", "Take themes off the device");
  command->add_option("NAME", options->names, "Names of themes, as `prismal list` tells them");
  command->add_flag("--all", options->all, "All themes");
  device::addDeviceOption(*command, options->place);
  command->footer(
      "What is left is merged anew, and running programs are told. All named themes go, or none.\n"
      "Exit status: 0 done, 2 wrong usage, or something that can't be read or written.\n\n"
      "Example: prismal uninstall Evening");
  command->callback([options, &status] { status = uninstall(*options); });
}

}  // namespace tools
