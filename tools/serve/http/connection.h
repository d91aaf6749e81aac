#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "host/files/descriptor.h"
#include "serve/http/exchange.h"
#include "serve/http/head.h"

namespace tools::serve::http {

using Clock = std::chrono::steady_clock;

/// How much all connections together may hold of bodies that have not come in whole, in bytes.
/// One thread.
class BodyBudget {
 public:
  explicit BodyBudget(std::size_t bytes) : left_(bytes) {}
  bool take(std::size_t bytes) {
    if (bytes > left_) return false;
    left_ -= bytes;
    return true;
  }
  void giveBack(std::size_t bytes) { left_ += bytes; }

 private:
  std::size_t left_;
};

/// A whole request that has come in.
struct Incoming {
  std::string head;  ///< as Head::forwarded gives it
  std::string body;
};

/// One client's connection: collects a request, sends an answer, and so on. It never waits, and
/// each of its states has its time. One thread only.
class Connection {
 public:
  /// `budget` must outlive it.
  Connection(host::files::Descriptor socket, std::uint16_t port, BodyBudget& budget);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { forgetHead(); }

  int descriptor() const { return socket_.get(); }
  /// What to poll for: POLLIN, POLLOUT, both or none.
  short wanted() const;
  /// When its time is over; none while the answer is ours to find.
  std::optional<Clock::time_point> deadline() const { return deadline_; }

  /// Does what `ready` says can be done, and takes a request if one is whole then. It is answered
  /// before the next is taken.
  std::optional<Incoming> go(short ready);
  void send(Answer answer);
  /// Answers by itself, and closes.
  void refuse(const Refusal& refusal);
  /// Adds to a stream; one whose client doesn't read is given up.
  void sendEvent(const std::string& bytes);
  /// Its time is over.
  void expire();

  bool isGone() const { return state_ == State::kGone; }
  bool isStream() const { return state_ == State::kStreaming; }
  /// Waits for a client that has begun nothing, or has no more to get.
  bool isIdle() const;
  void drop() { state_ = State::kGone; }

 private:
  enum class State : std::uint8_t { kReading, kAnswering, kSending, kStreaming, kLingering, kGone };

  void read();
  void write();
  void becomeReader();
  void linger();
  std::optional<Incoming> takeRequest();
  std::optional<std::size_t> findHead();
  void readHead();
  void forgetHead();

  host::files::Descriptor socket_;
  std::uint16_t port_;
  BodyBudget& budget_;
  State state_ = State::kReading;
  std::optional<Clock::time_point> deadline_;
  std::string in_;
  std::optional<Head> head_;  ///< views into headBytes_
  std::string headBytes_;     ///< of a request whose body is yet to come, or which is refused
  std::string out_;
  std::size_t sent_ = 0;  ///< of out_
  bool closes_ = false;
};

}  // namespace tools::serve::http
