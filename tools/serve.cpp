#include "serve.h"

#include <CLI/App.hpp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <spawn.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "exit_status.h"
#include "library_path.h"
#include "output_file.h"
#include "sandbox/sandbox.h"
#include "serve/listeners.h"
#include "serve/options.h"
#include "serve/supervisor.h"

namespace tools {

namespace fs = std::filesystem;
using serve::Listeners;
using serve::Options;

namespace {

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal serve: %s\n", reason.c_str());
  return kTrouble;
}

/// In a session of its own: what ends this program is not meant for the browser. Where there is
/// none to open, the address has been printed.
void openInBrowser(std::string address) {
  std::string program = "xdg-open";
  char* const arguments[] = {program.data(), address.data(), nullptr};
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  pid_t process = 0;
  const int error =
      posix_spawnp(&process, program.c_str(), nullptr, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  if (error != 0)
    refuse("--open: xdg-open can't be started: " + std::generic_category().message(error));
}

/// What is missing of that which the command line names.
std::optional<std::string> missing(const Options& options) {
  std::error_code error;
  for (const std::string& theme : {options.theme, options.other}) {
    if (!theme.empty() && !fs::exists(theme, error)) return theme + ": No such file or directory";
  }
  if (!options.device) return std::nullopt;
  const auto device = device::openDevice(options.device, host::files::DeviceRoot::Creation::kNever);
  return device ? std::nullopt : std::optional(device.reason());
}

int run(Options& options) {
  if (const auto reason = missing(options)) return refuse(*reason);
  options.sandbox = sandbox::isToBeUsed(options.sandbox, "serve");
  auto listeners = Listeners::open(options.port);
  if (!listeners) {
    return refuse("port " + std::to_string(options.port) + ": " + listeners.reason() +
                  "; --port 0 takes one that is free");
  }
  const std::string address = "http://127.0.0.1:" + std::to_string(listeners->port) + "/";
  if (const auto printed = printResult(address + "\n"); !printed) {
    return refuse("standard output: " + printed.reason());
  }
  if (options.opens) openInBrowser(address);
  return serve::Supervisor(options, *std::move(listeners)).run();
}

}  // namespace

void addServeCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  options->library = libraryPath();
  CLI::App* const command =
      app.add_subcommand("serve", "Show the keyboard with a theme in a browser, as it is written");
  command->add_option("THEME", options->theme, "A theme folder or a property-list file")
      ->required();
  command->add_option("--port", options->port, "Where the page is; 0 takes any that is free [8320]")
      ->check(CLI::Range(0, 65535).description(""))
      ->type_name("N");
  command->add_flag("--open", options->opens, "Open the page in the browser");
  command->add_option("--compare", options->other, "Another theme, to be seen beside the first")
      ->type_name("OTHER");
  command
      ->add_option("--device-root", options->device,
                   "Begin with the settings of this device's user: the master switch and the "
                   "pictures of their own")
      ->type_name("DIR");
  sandbox::addSandboxOption(*command, options->sandbox);
  CLI::Option* const library =
      command
          ->add_option("--library", options->library,
                       "The library to load, in place of the one that came with this program")
          ->type_name("FILE");
  command->footer(
      "Prints the page's address and serves it to this machine alone, until interrupted. What is\n"
      "saved is drawn at once; a theme that can't be read leaves the last good picture. Nothing "
      "is\n"
      "written but to a directory of this run's own.\n"
      "Exit status: 0 interrupted, 2 wrong usage, or the page can't be served.\n\n"
      "Examples:\n"
      "  prismal serve examples/Dusk.theme --open\n"
      "  prismal serve My.theme --compare examples/Dusk.theme --port 0");
  command->callback([options, library, &status] {
    options->isLibraryNamed = library->count() > 0;
    status = run(*options);
  });
}

}  // namespace tools
