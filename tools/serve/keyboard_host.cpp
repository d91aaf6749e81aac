#include "serve/keyboard_host.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <sys/time.h>
#include <system_error>
#include <utility>

#include "serve/passed_socket.h"

namespace tools::serve {

namespace fs = std::filesystem;
using host::files::Descriptor;
using host::files::DeviceRoot;
using host::files::Failure;
using host::files::Result;

namespace {

/// An answerer does no more than take a question and make a copy of itself.
constexpr std::chrono::seconds kForCopy(5);

std::optional<Message> receiveWithin(const Descriptor& socket, std::chrono::seconds limit) {
  const timeval time{.tv_sec = limit.count(), .tv_usec = 0};
  ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
  return receive(socket.get());
}

/// One end for each side; none when there are too many already.
std::optional<std::array<Descriptor, 2>> socketPair(int type) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
  return std::array<Descriptor, 2>{Descriptor(ends[0]), Descriptor(ends[1])};
}

}  // namespace

KeyboardHost::~KeyboardHost() {
  // It ends by itself when nobody holds its other end, unless it hangs.
  kill();
}

std::optional<Message> KeyboardHost::hearFirst(std::chrono::seconds limit) {
  auto message = receiveWithin(socket_, limit);
  isHeard_ = message.has_value();
  if (!message) kill();
  if (message && !message->head.value("ok", false)) refusal_ = message->head;
  return message;
}

std::optional<Message> KeyboardHost::hear(std::chrono::seconds limit) {
  const std::scoped_lock lock(asking_);
  return hearFirst(limit);
}

std::optional<Message> KeyboardHost::ask(const Message& question, std::chrono::seconds limit) {
  const std::scoped_lock lock(asking_);
  if (isDead_ || (!isHeard_ && !hearFirst(limit))) return std::nullopt;
  if (!refusal_.is_null()) return Message{refusal_};
  if (!send(socket_.get(), question)) {
    kill();
    return std::nullopt;
  }
  auto answer = receiveWithin(socket_, limit);
  // One that answers late would answer the next question with it.
  if (!answer) kill();
  return answer;
}

std::optional<Message> KeyboardHost::askCopy(const Json& question, std::chrono::seconds limit) {
  auto ends = socketPair(SOCK_STREAM);
  if (!ends) return std::nullopt;
  auto& [ours, theirs] = *ends;
  {
    const std::scoped_lock lock(asking_);
    if (isDead_ || (!isHeard_ && !hearFirst(limit))) return std::nullopt;
    if (!refusal_.is_null()) return Message{refusal_};
    if (!pass(socket_.get(), question.dump(), theirs.get())) return std::nullopt;
  }
  // The copy has it now; kept open here, its death would not be noticed.
  theirs = Descriptor();
  if (!receiveWithin(ours, std::min(limit, kForCopy))) {
    kill();
    return std::nullopt;
  }
  return receiveWithin(ours, limit);
}

void KeyboardHost::kill() {
  isDead_ = true;
  ::shutdown(socket_.get(), SHUT_RDWR);
  starter_.kill(number_);
}

HostHandle HostStarter::start(HostTask task) {
  auto ends = socketPair(task.role == Role::answerer ? SOCK_SEQPACKET : SOCK_STREAM);
  if (!ends) return nullptr;
  task.number = next_++;
  const Json order = {{"start", jsonOf(task)}};
  if (!pass(channel_, order.dump(), (*ends)[1].get())) return nullptr;
  return std::make_shared<KeyboardHost>(task, std::move((*ends)[0]), *this);
}

void HostStarter::kill(std::uint64_t number) const {
  pass(channel_, Json({{"kill", number}}).dump());
}

Result<DeviceRoot> HostStarter::deviceOf(const KeyboardHost& host) const {
  const fs::path folder = session_ / ("host-" + std::to_string(host.number()));
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    // What the process has put there in its place leads who knows where.
    if (entry.is_symlink(error) || !entry.is_directory(error)) continue;
    return DeviceRoot::open(entry.path(), DeviceRoot::Creation::kNever);
  }
  return Failure(ENOENT);
}

}  // namespace tools::serve
