#include "device/change_themes.h"

#include "device/change.h"
#include "device/places.h"
#include "device/report.h"
#include "exit_status.h"
#include "held_interruptions.h"

namespace tools::device {

int changeThemes(std::string_view subcommand, const Place& place,
                 host::files::DeviceRoot::Creation creation, const StageThemes& stage) {
  const HeldInterruptions held;
  const auto device = openDevice(place, creation);
  if (!device) return refuse(subcommand, device.reason());
  const auto change = Change::begin(*device);
  if (!change) return refuse(subcommand, change.reason());
  auto store = ThemeStore::read(*device);
  if (!store) return refuse(subcommand, store.reason());
  if (const auto staged = stage(*store); !staged) return refuse(subcommand, staged.reason());
  // From here on it is done before it is stopped.
  if (HeldInterruptions::came()) return refuse(subcommand, "interrupted; nothing has changed");
  const auto notes = store->commit();
  if (!notes) return refuse(subcommand, notes.reason());
  tell(*notes);
  return post(*device, kReloadThemes, subcommand);
}

}  // namespace tools::device
