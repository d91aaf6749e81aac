#include "serve/http/connection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <utility>
#include <variant>

#include "serve/http/refusal.h"

namespace tools::serve::http {

using namespace std::chrono_literals;

namespace {

// How long a client may take for each of its parts.
constexpr auto kForNextRequest = 60s;
constexpr auto kForHead = 10s;
constexpr auto kForBody = 30s;
constexpr auto kForAnswer = 30s;
constexpr auto kForGoodbye = 2s;

/// A stream that has so much to read and doesn't is nobody's.
constexpr std::size_t kMostUnread = std::size_t{1} << 20U;

constexpr std::string_view kEndOfHead = "\r\n\r\n";

}  // namespace

Connection::Connection(host::files::Descriptor socket, std::uint16_t port, BodyBudget& budget)
    : socket_(std::move(socket)), port_(port), budget_(budget) {
  becomeReader();
}

bool Connection::isIdle() const {
  return (state_ == State::kReading && in_.empty() && !head_) || state_ == State::kLingering;
}

short Connection::wanted() const {
  switch (state_) {
    case State::kReading:
    case State::kLingering:
      return POLLIN;
    case State::kSending:
      return POLLOUT;
    case State::kStreaming:
      return sent_ < out_.size() ? POLLIN | POLLOUT : POLLIN;
    case State::kAnswering:
    case State::kGone:
      break;
  }
  return 0;
}

std::optional<Incoming> Connection::go(short ready) {
  if ((ready & (POLLERR | POLLHUP | POLLNVAL)) != 0) drop();
  if ((ready & POLLIN) != 0) read();
  if ((ready & POLLOUT) != 0) write();
  return takeRequest();
}

void Connection::read() {
  if ((wanted() & POLLIN) == 0) return;
  std::array<char, std::size_t{64} << 10U> bytes;
  const ssize_t size = ::recv(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (size <= 0) return drop();
  // Who listens to events, or has been refused, has no more to say.
  if (state_ != State::kReading) return;
  if (in_.empty() && !head_) deadline_ = Clock::now() + kForHead;
  in_.append(bytes.data(), static_cast<std::size_t>(size));
}

void Connection::write() {
  while (sent_ < out_.size()) {
    const ssize_t size = ::send(socket_.get(), out_.data() + sent_, out_.size() - sent_,
                                MSG_DONTWAIT | MSG_NOSIGNAL);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0 && errno == EAGAIN) return;
    if (size <= 0) return drop();
    sent_ += static_cast<std::size_t>(size);
  }
  out_.clear();
  sent_ = 0;
  if (state_ == State::kStreaming) deadline_.reset();
  if (state_ == State::kSending) closes_ ? linger() : becomeReader();
}

void Connection::becomeReader() {
  state_ = State::kReading;
  deadline_ = Clock::now() + (in_.empty() ? kForNextRequest : kForHead);
}

/// A connection that is closed while bytes are still coming takes back what was sent.
void Connection::linger() {
  ::shutdown(socket_.get(), SHUT_WR);
  state_ = State::kLingering;
  deadline_ = Clock::now() + kForGoodbye;
  in_.clear();
}

void Connection::refuse(const Refusal& refusal) {
  const std::string& asked = headBytes_.empty() ? in_ : headBytes_;
  const bool isHead = asked.starts_with("HEAD ");
  send({isHead ? headOf(refusal) : headOf(refusal) + bodyOf(refusal.reason), true, false});
}

/// The size of a head that has come in whole.
std::optional<std::size_t> Connection::findHead() {
  const auto end = in_.find(kEndOfHead);
  const std::size_t size = end == in_.npos ? in_.size() : end + kEndOfHead.size();
  if (size > kLongestHead) refuse({431, "the head is too long"});
  if (end == in_.npos || size > kLongestHead) return std::nullopt;
  return size;
}

void Connection::readHead() {
  const auto size = findHead();
  if (!size) return;
  headBytes_ = in_.substr(0, *size);
  in_.erase(0, *size);
  const auto parsed = parseHead(headBytes_);
  if (const auto* const refusal = std::get_if<Refusal>(&parsed)) return refuse(*refusal);
  const Head& head = std::get<Head>(parsed);
  if (!isOwn(head, port_)) return refuse({403, "this server is for pages of its own"});
  if (!budget_.take(head.contentLength)) return refuse({503, "too much is being sent already"});
  head_ = head;
  deadline_ = Clock::now() + kForBody;
}

void Connection::forgetHead() {
  if (head_) budget_.giveBack(head_->contentLength);
  head_.reset();
  headBytes_.clear();
}

std::optional<Incoming> Connection::takeRequest() {
  if (state_ == State::kReading && !head_) readHead();
  if (state_ != State::kReading || !head_) return std::nullopt;
  const std::size_t length = head_->contentLength;
  if (in_.size() < length) return std::nullopt;
  Incoming request{head_->forwarded(), in_.substr(0, length)};
  in_.erase(0, length);
  forgetHead();
  state_ = State::kAnswering;
  deadline_.reset();
  return request;
}

void Connection::send(Answer answer) {
  forgetHead();
  state_ = answer.isStream ? State::kStreaming : State::kSending;
  out_ = std::move(answer.bytes);
  sent_ = 0;
  closes_ = answer.closes;
  deadline_ = Clock::now() + kForAnswer;
  write();
}

void Connection::sendEvent(const std::string& bytes) {
  if (out_.size() - sent_ > kMostUnread) return drop();
  if (out_.empty()) deadline_ = Clock::now() + kForAnswer;
  out_ += bytes;
  write();
}

void Connection::expire() {
  const bool isSlow = state_ == State::kReading && !isIdle();
  isSlow ? refuse({408, "the request didn't come in time"}) : drop();
}

}  // namespace tools::serve::http
