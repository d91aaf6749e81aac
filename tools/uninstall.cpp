#include "uninstall.h"

#include <CLI/App.hpp>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/change_themes.h"
#include "device/report.h"
#include "exit_status.h"
#include "say_done.h"
#include "suggestion.h"
#include "theme/theme_source.h"

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

/// What `prismal list` calls the theme that is meant: its name, or the folder NAME.theme of the one
/// that was installed, by its path.
std::string nameOf(const ThemeStore& store, const std::string& meant) {
  const bool isName = std::ranges::find(store.names(), meant) != store.names().end();
  const std::filesystem::path path = std::filesystem::path(meant + "/").parent_path();
  return isName || path.extension() != ".theme" ? meant : theme::themeName(path.string());
}

std::string noSuchTheme(const std::vector<std::string>& installed, const std::string& name) {
  const std::vector<std::string_view> names(installed.begin(), installed.end());
  const auto near = nearest(name, names);
  return name + ": no theme of that name is installed" +
         (near ? "; did you mean " + std::string(*near) + "?" : "");
}

/// Puts the names of what goes into `gone`.
Result<Done> stage(ThemeStore& store, const UninstallOptions& options,
                   std::vector<std::string>& gone) {
  if (options.all) store.uninstallAll();
  for (const std::string& meant : options.names) {
    const std::string name = nameOf(store, meant);
    if (!store.uninstall(name)) return Failure(ENOENT, noSuchTheme(store.names(), meant));
    gone.push_back(name);
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
                       : device::refuse("uninstall", noSuchTheme({}, options.names.front()));
  }
  std::vector<std::string> gone;
  const int status =
      device::changeThemes("uninstall", options.place, DeviceRoot::Creation::kNever,
                           [&](ThemeStore& store) { return stage(store, options, gone); });
  if (status != kDone) return status;
  return sayDone("uninstall",
                 options.all ? kNoneLeft : "Uninstalled " + CLI::detail::join(gone, ", ") + ".");
}

}  // namespace

void addUninstallCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<UninstallOptions>();
  CLI::App* const command = app.add_subcommand("uninstall", "Take themes off the device");
  command->add_option("NAME", options->names,
                      "Names of themes, as `prismal list` tells them, or their folders NAME.theme");
  command->add_flag("--all", options->all, "All themes");
  device::addDeviceOption(*command, options->place);
  command->footer(
      "What is left is merged anew, and running programs are told. All named themes go, or none.\n"
      "Exit status: 0 done, 2 wrong usage, or something that can't be read or written.\n\n"
      "Example: prismal uninstall Evening");
  command->callback([options, &status] { status = uninstall(*options); });
}

}  // namespace tools
