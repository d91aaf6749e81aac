#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <poll.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/descriptor.h"
#include "serve/http/connection.h"
#include "serve/http/exchange.h"
#include "serve/http/workers.h"

namespace tools::serve::http {

/// How many clients may be connected at once, and how many of them may listen to events.
struct Capacity {
  std::size_t connections;
  std::size_t streams;
};

/// As many as this process may have descriptors for, which it first makes as many as it may.
Capacity takeCapacity();

/// Takes connections and talks to all of them on one thread, so that a client that is slow, or only
/// listens, costs its memory and nothing else; what is asked is answered on a few others. What
/// needs no waiting has threads of its own: whatever others wait for, it is answered.
class Server {
 public:
  /// `port` is where `listeners` listen. `greeting` gives the events with which every stream
  /// begins, on the thread that runs; `isQuick` says of an address, as it was sent, whether it is
  /// answered without waiting. What is given must outlive the server.
  Server(std::vector<host::files::Descriptor> listeners, std::uint16_t port, Translator& translator,
         std::function<std::string()> greeting, std::function<bool(std::string_view)> isQuick);

  /// Until stop.
  void run();
  /// Any thread, and signal handlers.
  void stop();
  /// Sends `event` to all that listen. A stream that begins meanwhile gets it, or has a greeting
  /// that was made after this call. Any thread.
  void broadcast(const std::string& event);

 private:
  using Connections = std::map<std::uint64_t, Connection>;

  void poll();
  void readInbox();
  void accept(int listener);
  void makeRoom();
  void take(std::uint64_t number, Incoming request);
  void deliver(std::uint64_t number, Answer answer);
  void beat();
  void sweep();
  std::size_t countStreams() const;
  int timeout_ms() const;
  void wake();

  std::vector<host::files::Descriptor> listeners_;
  std::uint16_t port_;
  Translator& translator_;
  std::function<std::string()> greeting_;
  std::function<bool(std::string_view)> isQuick_;
  Capacity capacity_;
  BodyBudget bodies_;
  host::files::Descriptor wake_;
  std::atomic<bool> ends_ = false;
  std::uint64_t next_ = 0;
  Connections connections_;
  Clock::time_point beat_;

  std::mutex mutex_;
  std::vector<std::pair<std::uint64_t, Answer>> answers_;
  std::string events_;
  Workers workers_;
  Workers quickWorkers_;
};

}  // namespace tools::serve::http
