#include "notify.h"

#include <memory>
#include <string_view>

#include "choice_option.h"
#include "device/open_device.h"
#include "device/places.h"
#include "device/report.h"
#include "exit_status.h"

namespace tools {

namespace {

struct NotifyOptions {
  std::string_view notification;
  device::Place place;
};

struct Choice {
  std::string_view word;
  std::string_view value;
};

constexpr Choice kChoices[] = {{"themes", device::kReloadThemes},
                               {"settings", device::kReloadSettings}};

int notify(const NotifyOptions& options) {
  const auto device = device::openDeviceIfAny(options.place);
  if (!device) return device::refuse("notify", device.reason());
  if (!*device) return kDone;  // nobody runs where there is no device
  return device::post(**device, options.notification, "notify");
}

}  // namespace

void addNotifyCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<NotifyOptions>();
  CLI::App* const command =
      app.add_subcommand("notify", "Tell running programs of changes made by hand");
  addChoice(*command, "WHAT", options->notification, "What has changed", kChoices)->required();
  device::addDeviceOption(*command, options->place);
  command->footer(
      "Posts net.quillon.prismal.relaodThemes or net.quillon.prismal.relaodSettings. install,\n"
      "uninstall and settings do so by themselves.\n\n"
      "Example:\n"
      "  prismal notify settings");
  command->callback([options, &status] { status = notify(*options); });
}

}  // namespace tools
