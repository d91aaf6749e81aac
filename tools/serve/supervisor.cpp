#include "serve/supervisor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "exit_status.h"
#include "leave.h"
#include "serve/host.h"
#include "serve/passed_socket.h"
#include "serve/serving.h"

namespace tools::serve {

using namespace std::chrono_literals;
using host::files::Descriptor;
using host::files::DeviceRoot;

namespace {

/// A server that ends sooner than this, so many times, will do so again.
constexpr auto kQuick = 2s;
constexpr int kMostQuickEnds = 3;

constexpr auto kForGoodbye = 3s;

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal serve: %s\n", reason.c_str());
  return kTrouble;
}

/// For people: "killed by signal 9".
std::string endOf(int status) {
  if (WIFSIGNALED(status)) return "killed by signal " + std::to_string(WTERMSIG(status));
  return "ended with status " + std::to_string(WEXITSTATUS(status));
}

/// The program is ended by its own process; those that it has started notice. Only of a terminal's
/// signals they would hear as well.
void leaveEndToParent() {
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGHUP, SIG_IGN);
}

/// What people see in a list of processes.
const char* nameOf(Role role) {
  if (role == Role::checker) return "prismal-check";
  return role == Role::decoder ? "prismal-decode" : "prismal-host";
}

/// Nothing of a child's may go on in this one's main function.
[[noreturn]] void workAlone(const std::function<void()>& work) {
  int status = kTrouble;
  try {
    work();
    status = kDone;
  } catch (const std::exception& error) {
    refuse(error.what());
  } catch (...) {
    refuse("failed for an unknown reason");
  }
  leave(status);
}

}  // namespace

Supervisor::Supervisor(const Options& options, Listeners listeners)
    : options_(options), listeners_(std::move(listeners)), signals_(std::in_place) {
  auto root = DeviceRoot::open(session_.path(), DeviceRoot::Creation::kNever);
  if (!root) throw std::system_error(root.failure().error, std::generic_category());
  sessionRoot_ = *std::move(root);
  // Looked up once for all keyboards: each begins as a copy of this process.
  for (const char* name : {"InterDisplay-Light", "Inter-Regular"}) fonts_.named(name);
}

bool Supervisor::startChild(Child child, const char* name, const std::function<void()>& work) {
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process > 0) children_[process] = child;
  if (process != 0) return process > 0;
  signals_.reset();
  leaveEndToParent();
  prctl(PR_SET_NAME, name);
  workAlone(work);
}

bool Supervisor::startServer() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return false;
  channel_ = Descriptor(ends[0]);
  const Descriptor servers(ends[1]);
  serverStart_ = Clock::now();
  return startChild({Kind::kServer, 0}, "prismal-server", [&] {
    channel_ = Descriptor();
    serve({options_, listeners_, session_.path(), servers.get()});
  });
}

keyboard::Dress Supervisor::dressFor(const HostTask& task) const {
  keyboard::Dress dress;
  dress.library = options_.library;
  dress.quiet = true;
  dress.sandboxed = options_.sandbox;
  dress.private_device = session_.path() / deviceOf(task.number);
  dress.system = task.look == Look::system;
  if (dress.system) return dress;
  dress.theme = task.look == Look::other ? options_.other : options_.theme;
  if (task.role != Role::checker) dress.settings = task.settings;
  return dress;
}

void Supervisor::startHost(const HostTask& task, Descriptor socket) {
  const std::string folder = folderOf(task.number);
  const auto made = sessionRoot_->makeDirectories(deviceOf(task.number));
  const auto work = [&] {
    channel_ = Descriptor();
    listeners_.sockets.clear();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::setenv("TMPDIR", (session_.path() / folder).c_str(), 1);
    runHost(task, dressFor(task), fonts_, socket.get());
  };
  // Without one the server reads the end of its socket, and says that there is none.
  if (!made || !startChild({Kind::kHost, task.number}, nameOf(task.role), work)) {
    refuse("no process can be started: " + host::files::lastFailure().reason);
  }
}

void Supervisor::takeOrder() {
  auto order = takePassed(channel_.get());
  if (!order) {
    channel_ = Descriptor();
    return;
  }
  const Json json = Json::parse(order->text);
  if (json.contains("start")) return startHost(taskOf(json["start"]), std::move(order->socket));
  for (const auto& [process, child] : children_) {
    if (child.kind == Kind::kHost && child.number == json["kill"]) ::kill(process, SIGKILL);
  }
}

void Supervisor::noteEnd(const Child& child, int status) {
  if (child.kind == Kind::kServer) {
    channel_ = Descriptor();
    endHosts();
    quickEnds_ = Clock::now() - serverStart_ < kQuick ? quickEnds_ + 1 : 1;
    return;
  }
  static_cast<void>(sessionRoot_->remove(folderOf(child.number)));
  const Json note = {{"ended", child.number}, {"how", endOf(status)}};
  if (channel_) pass(channel_.get(), note.dump());
}

/// Those of a dead server: the next one's have the same numbers.
void Supervisor::endHosts() {
  for (const auto& [process, child] : children_) {
    if (child.kind != Kind::kHost) continue;
    ::kill(process, SIGKILL);
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    static_cast<void>(sessionRoot_->remove(folderOf(child.number)));
  }
  std::erase_if(children_, [](const auto& child) { return child.second.kind == Kind::kHost; });
}

void Supervisor::reap() {
  int status = 0;
  for (pid_t process = 0; (process = waitpid(-1, &status, WNOHANG)) > 0;) {
    const auto found = children_.find(process);
    if (found == children_.end()) continue;
    const Child child = found->second;
    children_.erase(found);
    if (child.kind == Kind::kServer) refuse("the server has died: " + endOf(status));
    noteEnd(child, status);
  }
}

int Supervisor::run() {
  if (!startServer()) return refuse(host::files::lastFailure().reason);
  for (;;) {
    std::array<pollfd, 2> polled = {
        {{signals_->descriptor(), POLLIN, 0}, {channel_.get(), POLLIN, 0}}};
    ::poll(polled.data(), polled.size(), -1);
    if (signals_->takeEnd()) break;
    if (polled[1].revents != 0) takeOrder();
    reap();
    const bool hasServer = std::ranges::any_of(
        children_, [](const auto& child) { return child.second.kind == Kind::kServer; });
    if (hasServer) continue;
    if (quickEnds_ >= kMostQuickEnds || !startServer()) {
      endAll();
      return kTrouble;
    }
  }
  endAll();
  return kDone;
}

/// The server ends by itself; what keyboards would clear away goes with the session.
void Supervisor::endAll() {
  if (channel_) pass(channel_.get(), Json({{"end", true}}).dump());
  channel_ = Descriptor();
  for (const auto& [process, child] : children_) {
    if (child.kind == Kind::kHost) ::kill(process, SIGKILL);
  }
  const auto latest = Clock::now() + kForGoodbye;
  while (!children_.empty()) {
    int status = 0;
    const pid_t process = waitpid(-1, &status, WNOHANG);
    if (process > 0) children_.erase(process);
    if (process < 0 && errno != EINTR) return;
    if (process > 0) continue;
    if (Clock::now() > latest) {
      for (const auto& [left, child] : children_) ::kill(left, SIGKILL);
    }
    std::this_thread::sleep_for(2ms);
  }
}

}  // namespace tools::serve
