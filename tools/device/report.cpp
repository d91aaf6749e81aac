#include "device/report.h"

#include <cstdio>

#include "exit_status.h"
#include "host/files/darwin_notify.h"
#include "host/plist/description.h"

namespace tools::device {

int refuse(std::string_view subcommand, const std::string& reason) {
  std::fprintf(stderr, "prismal %.*s: %s\n", static_cast<int>(subcommand.size()), subcommand.data(),
               host::plist::escapeControls(reason).c_str());
  return kTrouble;
}

void tell(const std::vector<std::string>& notes) {
  for (const std::string& note : notes) {
    std::fprintf(stderr, "%s\n", host::plist::escapeControls(note).c_str());
  }
}

int post(const host::files::DeviceRoot& device, std::string_view notification,
         std::string_view subcommand) {
  if (host::files::postNotification(device, notification)) return kDone;
  return refuse(subcommand, std::string(notification) +
                                ": can't be posted; running programs have not been told");
}

}  // namespace tools::device
