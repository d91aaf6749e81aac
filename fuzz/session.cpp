// A whole host process driven by bytes: the library's own hooks in the desktop host, with a theme,
// settings, keys, keyplanes, notifications and reloads in any order. Each session has a process of
// its own, as the library keeps much for as long as its process lives.

#include <optional>
#include <sys/stat.h>
#include <syslog.h>

#include "confinement.h"
#include "hooks/library_load.h"
#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"
#include "host/runtime/class_table.h"
#include "replay/player.h"
#include "support/expected_colors.h"
#include "support/nursery.h"
#include "support/require.h"
#include "support/session_maker.h"
#include "support/target.h"

namespace {

using fuzz::require;
namespace scenario = tools::scenario;

/// The directory that stands for the device of every session. It goes when its process ends.
std::optional<host::files::TemporaryDirectory> device;

/// For sessions: what they write is confined twice, by the device root and by the kernel.
void confine() {
  const bool confined = tests::confineWritingTo(device->path().c_str()) || tests::becomeNobody();
  require(confined, "a session runs without the rights of root");
}

/// Plays the steps of a session, and requires on the way what must hold after each.
class Host {
 public:
  explicit Host(fuzz::Session session)
      : session_(std::move(session)),
        makesColors_(*session_.scenario.host.colorCreation),
        player_(session_.scenario, "") {
    const auto failure = player_.start(device->path());
    require(!failure, "the host starts", failure.value_or(""));
  }

  void play() {
    for (std::size_t i = 0; i < session_.scenario.steps.size(); ++i) {
      const auto& action = session_.scenario.steps[i].action;
      if (std::holds_alternative<scenario::step::Load>(action)) {
        load();
      } else {
        perform(i);
      }
    }
  }

 private:
  /// The library's entry, called as the loader calls it: once, and in no host without the class
  /// that the library is linked to.
  void load() {
    if (loaded_ || !host::runtime::hasClass("UIKeyboardImpl")) return;
    loaded_ = true;
    PMLibraryLoad();
  }

  void perform(std::size_t index) {
    const auto outcome = player_.performStep(index);
    if (session_.asksAgain[index]) {
      require(outcome.output["result"] == last_, "asked again the keyboard answers the same",
              outcome.output.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
    }
    last_ = outcome.output["result"];
    const auto* const set =
        std::get_if<scenario::step::Set>(&session_.scenario.steps[index].action);
    if (set) makesColors_ = set->host.colorCreation.value_or(makesColors_);
    const platform::NSAutoreleasePool pool;
    colors_.follow(outcome.output["reads"], makesColors_);
    colors_.require();
  }

  const fuzz::Session session_;
  bool loaded_ = false;
  bool makesColors_;
  tools::replay::Player player_;
  nlohmann::ordered_json last_;
  fuzz::ExpectedColors colors_;
};

void play(std::string_view bytes) {
  confine();
  fuzz::ByteSource source(bytes);
  Host(fuzz::makeSession(source)).play();
}

void makeDevice() {
  device.emplace();
  // For whoever a session becomes.
  require(::chmod(device->path().c_str(), 0777) == 0, "the device can be opened to all");
}

void emptyDevice() {
  const auto root =
      host::files::DeviceRoot::open(device->path(), host::files::DeviceRoot::Creation::kNever);
  require(root && root->remove("/"), "the device can be emptied");
}

std::optional<fuzz::Nursery> sessions;

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  // The library logs, and a system log has better to do.
  ::setlogmask(LOG_MASK(LOG_EMERG));
  sessions.emplace(fuzz::Nursery::Duties{makeDevice, play, emptyDevice, [] { device.reset(); }});
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  sessions->run(fuzz::textOf(bytes, size));
  return 0;
}
