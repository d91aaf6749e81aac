#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

#include "host/drawing/fonts.h"
#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"
#include "keyboard/keyboard_process.h"
#include "serve/host_task.h"
#include "serve/listeners.h"
#include "serve/options.h"
#include "watch/signals.h"

namespace tools::serve {

/// What a server's process is given to work with.
struct ServerPlace {
  const Options& options;
  Listeners& listeners;
  std::filesystem::path session;  ///< a directory of this run's own
  int channel;                    ///< to the supervisor
};

/// The process that the user has started. It has one thread and reads nothing that comes from
/// outside: it starts the server and, when that asks for one, a process with a keyboard, waits for
/// them, and starts the server anew should it die. Whatever they leave behind goes with the
/// session's directory.
class Supervisor {
 public:
  Supervisor(const Options& options, Listeners listeners);

  /// Until a signal asks for the end; the exit status of the program.
  int run();

 private:
  using Clock = std::chrono::steady_clock;
  enum class Kind : std::uint8_t { kServer, kHost };
  struct Child {
    Kind kind;
    std::uint64_t number;  ///< of a host
  };

  /// Runs `work` in a copy of this process that has none of its descriptors; whether there is one.
  bool startChild(Child child, const char* name, const std::function<void()>& work);
  bool startServer();
  void takeOrder();
  void startHost(const HostTask& task, host::files::Descriptor socket);
  void reap();
  void noteEnd(const Child& child, int status);
  void endHosts();
  void endAll();
  keyboard::Dress dressFor(const HostTask& task) const;
  std::string folderOf(std::uint64_t host) const { return "host-" + std::to_string(host); }
  std::string deviceOf(std::uint64_t host) const { return folderOf(host) + "/device"; }

  const Options& options_;
  Listeners listeners_;
  host::files::TemporaryDirectory session_;
  std::optional<host::files::DeviceRoot> sessionRoot_;
  std::optional<watch::Signals> signals_;
  host::drawing::Fonts fonts_;
  host::files::Descriptor channel_;
  std::map<pid_t, Child> children_;
  Clock::time_point serverStart_;
  int quickEnds_ = 0;  ///< of servers, one after the other
};

}  // namespace tools::serve
