#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

#include "host/files/descriptor.h"
#include "host/files/device_root.h"
#include "host/files/result.h"
#include "serve/host_task.h"
#include "serve/message.h"

namespace tools::serve {

class HostStarter;

/// A process with a keyboard, as the server sees it. It ends when the last holder lets go of it.
/// Any thread: those who ask wait for each other.
class KeyboardHost {
 public:
  KeyboardHost(const HostTask& task, host::files::Descriptor socket, HostStarter& starter)
      : number_(task.number),
        isAnswerer_(task.role == Role::answerer),
        socket_(std::move(socket)),
        starter_(starter) {}
  KeyboardHost(const KeyboardHost&) = delete;
  KeyboardHost& operator=(const KeyboardHost&) = delete;
  ~KeyboardHost();

  std::uint64_t number() const { return number_; }
  bool isAnswerer() const { return isAnswerer_; }
  /// Can be read when it has something to say.
  int descriptor() const { return socket_.get(); }

  /// What it said of itself when it had started, or would not. None when it died or took longer
  /// than `limit`; it is dead then.
  std::optional<Message> hear(std::chrono::seconds limit);
  /// Asks it; one that would not start answers with what it said. None as above.
  std::optional<Message> ask(const Message& question, std::chrono::seconds limit);
  /// Asks an answerer, of which a copy answers: several may be asked at once. None when the copy
  /// died or took longer.
  std::optional<Message> askCopy(const Json& question, std::chrono::seconds limit);
  /// Ends it at once; who is asking it gets no answer.
  void kill();

 private:
  std::optional<Message> hearFirst(std::chrono::seconds limit);

  std::uint64_t number_;
  bool isAnswerer_;
  host::files::Descriptor socket_;
  HostStarter& starter_;
  std::mutex asking_;
  bool isHeard_ = false;
  Json refusal_;  ///< of one that would not start
  std::atomic<bool> isDead_ = false;
};

using HostHandle = std::shared_ptr<KeyboardHost>;

/// Has the supervisor start such processes. Any thread.
class HostStarter {
 public:
  /// `channel` leads to the supervisor; `session` is the directory of this run. `channel` must
  /// outlive it.
  HostStarter(int channel, std::filesystem::path session)
      : channel_(channel), session_(std::move(session)) {}

  /// Null when none can be made. The number of `task` is for the starter to give.
  HostHandle start(HostTask task);
  void kill(std::uint64_t number) const;
  /// The private device of a host that has started.
  host::files::Result<host::files::DeviceRoot> deviceOf(const KeyboardHost& host) const;

 private:
  int channel_;
  std::filesystem::path session_;
  std::atomic<std::uint64_t> next_ = 1;
};

}  // namespace tools::serve
