#include "install.h"

#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <vector>

#include "device/change_themes.h"
#include "device/report.h"
#include "exit_status.h"
#include "held_interruptions.h"
#include "host/files/shell_words.h"
#include "say_done.h"
#include "theme/theme_source.h"

namespace tools {

using device::ThemeStore;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Result;
using theme::ThemeSource;

namespace {

struct InstallOptions {
  std::vector<std::string> themes;
  device::Place place;
};

void tellOfTwins(const std::vector<ThemeSource>& sources, const std::vector<std::string>& paths) {
  for (std::size_t i = 0; i < sources.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (sources[j].name() != sources[i].name()) continue;
      device::tell(
          {sources[i].name() + ": the name of two themes; " + paths[i] + " replaces " + paths[j]});
    }
  }
}

Result<Done> stage(ThemeStore& store, const std::vector<ThemeSource>& sources) {
  for (const ThemeSource& source : sources) {
    if (HeldInterruptions::came()) break;
    const auto missing = store.install(source);
    if (!missing) return missing.failure();
    device::tell(*missing);
  }
  return Done();
}

/// "Installed Linen, Dusk; Dusk is the topmost." and how to look at it.
std::string summaryOf(const std::vector<ThemeSource>& sources, const device::Place& place) {
  std::string names;
  for (const ThemeSource& source : sources) {
    names += (names.empty() ? "" : ", ") + source.name();
  }
  const std::string& topmost = sources.back().name();
  const std::string which =
      sources.size() == 1 ? ", the topmost" : "; " + topmost + " is the topmost";
  const std::string device =
      place ? "--device-root " + host::files::wordForShell(place->string()) + " " : "";
  return "Installed " + names + which + ". Look at the device: prismal render " + device +
         "-o picture.png";
}

int install(const InstallOptions& options) {
  // All of them are read before anything is written.
  std::vector<ThemeSource> sources;
  for (const std::string& path : options.themes) {
    auto source = ThemeSource::read(path);
    if (!source) return device::refuse("install", source.reason());
    sources.push_back(*std::move(source));
  }
  tellOfTwins(sources, options.themes);
  const int status =
      device::changeThemes("install", options.place, DeviceRoot::Creation::kIfMissing,
                           [&](ThemeStore& store) { return stage(store, sources); });
  return status == kDone ? sayDone("install", summaryOf(sources, options.place)) : status;
}

}  // namespace

void addInstallCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<InstallOptions>();
  CLI::App* const command =
      app.add_subcommand("install", "Put themes on the device, over those that are there");
  command
      ->add_option("THEME", options->themes,
                   "Theme folders or property-list files; each goes over the ones before it, and "
                   "all of them over what is installed")
      ->required();
  device::addDeviceOption(*command, options->place);
  command->footer(
      "A theme that is installed already is replaced and comes to the top. All installed themes "
      "are\n"
      "merged into the one file that the library reads; where they differ the topmost wins. "
      "Running\n"
      "programs are told. All themes are installed, or none.\n"
      "Exit status: 0 done, 2 wrong usage, or something that can't be read or written.\n\n"
      "Examples:\n"
      "  prismal install Evening.theme\n"
      "  prismal install --device-root phone Evening.theme Accents.theme");
  command->callback([options, &status] { status = install(*options); });
}

}  // namespace tools
