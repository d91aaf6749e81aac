#include "serve/keyboard_host.h"

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

std::optional<Message> KeyboardHost::receiveWithin(std::chrono::seconds limit) {
  const timeval time{.tv_sec = limit.count(), .tv_usec = 0};
  ::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
  auto message = receive(socket_.get());
  // One that answers late would answer the next question with it.
  if (!message) kill();
  return message;
}

std::optional<Message> KeyboardHost::hearFirst(std::chrono::seconds limit) {
  auto message = receiveWithin(limit);
  isHeard_ = message.has_value();
  if (message && !message->head.value("ok", false)) refusal_ = message->head;
  return message;
}

std::optional<Message> KeyboardHost::hear(std::chrono::seconds limit) {
  const std::scoped_lock lock(asking_);
  return hearFirst(limit);
}

std::optional<Message> KeyboardHost::ask(const Json& question, std::chrono::seconds limit) {
  const std::scoped_lock lock(asking_);
  if (isDead_ || (!isHeard_ && !hearFirst(limit))) return std::nullopt;
  if (!refusal_.is_null()) return Message{refusal_};
  if (!send(socket_.get(), {question})) {
    kill();
    return std::nullopt;
  }
  return receiveWithin(limit);
}

void KeyboardHost::kill() {
  isDead_ = true;
  ::shutdown(socket_.get(), SHUT_RDWR);
  starter_.kill(number_);
}

HostHandle HostStarter::start(HostTask task) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
  Descriptor ours(ends[0]);
  const Descriptor theirs(ends[1]);
  task.number = next_++;
  const Json order = {{"start", jsonOf(task)}};
  if (!pass(channel_, order.dump(), theirs.get())) return nullptr;
  return std::make_shared<KeyboardHost>(task.number, std::move(ours), *this);
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
