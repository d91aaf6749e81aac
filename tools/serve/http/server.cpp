#include "serve/http/server.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "serve/http/refusal.h"

namespace tools::serve::http {

using namespace std::chrono_literals;
using host::files::Descriptor;

namespace {

/// Enough to find out that a client has gone without a word.
constexpr auto kBetweenBeats = 15s;
constexpr std::size_t kWorkers = 6;
constexpr std::size_t kQuickWorkers = 2;

constexpr std::size_t kMostBodyBytes = 8 * kLongestBody;

/// The address in a request's head.
std::string_view targetOf(std::string_view head) {
  const auto first = head.find(' ') + 1;
  return head.substr(first, head.find(' ', first) - first);
}

}  // namespace

Capacity takeCapacity() {
  constexpr rlim_t kWanted = 1024 + 64;
  constexpr rlim_t kOfOurOwn = 64;
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = std::max(limit.rlim_cur, std::min(limit.rlim_max, kWanted));
  setrlimit(RLIMIT_NOFILE, &limit);
  const rlim_t open = std::clamp(limit.rlim_cur, 2 * kOfOurOwn, kWanted) - kOfOurOwn;
  return {static_cast<std::size_t>(open), static_cast<std::size_t>(open * 3 / 4)};
}

Server::Server(std::vector<Descriptor> listeners, std::uint16_t port, Translator& translator,
               std::function<std::string()> greeting, std::function<bool(std::string_view)> isQuick)
    : listeners_(std::move(listeners)),
      port_(port),
      translator_(translator),
      greeting_(std::move(greeting)),
      isQuick_(std::move(isQuick)),
      capacity_(takeCapacity()),
      bodies_(kMostBodyBytes),
      wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      beat_(Clock::now() + kBetweenBeats),
      workers_(kWorkers),
      quickWorkers_(kQuickWorkers) {}

void Server::run() {
  while (!ends_) {
    poll();
    readInbox();
    beat();
    sweep();
  }
}

void Server::stop() {
  ends_ = true;
  wake();
}

void Server::wake() {
  ::eventfd_write(wake_.get(), 1);
}

void Server::broadcast(const std::string& event) {
  {
    const std::scoped_lock lock(mutex_);
    events_ += event;
  }
  wake();
}

void Server::poll() {
  std::vector<pollfd> polled = {{wake_.get(), POLLIN, 0}};
  for (const Descriptor& listener : listeners_) polled.push_back({listener.get(), POLLIN, 0});
  const auto firstClient = static_cast<std::ptrdiff_t>(polled.size());
  for (const auto& [number, connection] : connections_) {
    polled.push_back({connection.descriptor(), connection.wanted(), 0});
  }
  if (::poll(polled.data(), polled.size(), timeout_ms()) <= 0) return;
  auto ready = polled.begin() + firstClient;
  for (auto& [number, connection] : connections_) {
    const short events = (ready++)->revents;
    if (events == 0) continue;
    if (auto request = connection.go(events)) take(number, *std::move(request));
  }
  for (std::size_t i = 0; i < listeners_.size(); ++i) {
    if (polled[1 + i].revents != 0) accept(listeners_[i].get());
  }
}

int Server::timeout_ms() const {
  Clock::time_point first = beat_;
  for (const auto& [number, connection] : connections_) {
    if (const auto deadline = connection.deadline()) first = std::min(first, *deadline);
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(first - Clock::now());
  return std::max(0, static_cast<int>(left.count()));
}

void Server::accept(int listener) {
  Descriptor socket(::accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (!socket) {
    // Without descriptors the listener would stay ready, and this thread busy.
    if (errno == EMFILE || errno == ENFILE) makeRoom();
    return;
  }
  if (connections_.size() >= capacity_.connections) makeRoom();
  if (connections_.size() >= capacity_.connections) return;
  const int one = 1;
  ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
  connections_.try_emplace(next_++, std::move(socket), port_, bodies_);
}

/// The client that has had nothing to ask for longest goes.
void Server::makeRoom() {
  const auto idle =
      std::ranges::find_if(connections_, [](const auto& entry) { return entry.second.isIdle(); });
  if (idle != connections_.end()) connections_.erase(idle);
}

void Server::take(std::uint64_t number, Incoming request) {
  Workers& workers = isQuick_(targetOf(request.head)) ? quickWorkers_ : workers_;
  workers.submit([this, number, request = std::move(request)] {
    Answer answer = translator_.answer(request.head, request.body);
    {
      const std::scoped_lock lock(mutex_);
      answers_.emplace_back(number, std::move(answer));
    }
    wake();
  });
}

void Server::readInbox() {
  eventfd_t count = 0;
  ::eventfd_read(wake_.get(), &count);
  std::vector<std::pair<std::uint64_t, Answer>> answers;
  std::string events;
  {
    const std::scoped_lock lock(mutex_);
    answers.swap(answers_);
    events.swap(events_);
  }
  for (auto& [number, answer] : answers) deliver(number, std::move(answer));
  if (events.empty()) return;
  for (auto& [number, connection] : connections_) {
    if (connection.isStream()) connection.sendEvent(events);
  }
}

void Server::deliver(std::uint64_t number, Answer answer) {
  const auto found = connections_.find(number);
  if (found == connections_.end() || found->second.isGone()) return;
  Connection& connection = found->second;
  if (answer.isStream && countStreams() >= capacity_.streams) {
    connection.refuse({503, "too many pages listen already"});
    return;
  }
  if (answer.isStream) answer.bytes += greeting_();
  connection.send(std::move(answer));
  // Its next request may be here already.
  if (auto request = connection.go(0)) take(number, *std::move(request));
}

std::size_t Server::countStreams() const {
  return static_cast<std::size_t>(std::ranges::count_if(
      connections_, [](const auto& entry) { return entry.second.isStream(); }));
}

void Server::beat() {
  if (Clock::now() < beat_) return;
  beat_ = Clock::now() + kBetweenBeats;
  for (auto& [number, connection] : connections_) {
    if (connection.isStream()) connection.sendEvent(":\n\n");
  }
}

void Server::sweep() {
  const auto now = Clock::now();
  for (auto& [number, connection] : connections_) {
    if (const auto deadline = connection.deadline(); deadline && *deadline <= now) {
      connection.expire();
    }
  }
  std::erase_if(connections_, [](const auto& entry) { return entry.second.isGone(); });
}

}  // namespace tools::serve::http
