// Many hosts with the library in them share a device while its settings and themes change without
// end; then one of them changes its keyplane without end.
// Usage: load HOSTS NOTIFICATIONS CHANGES. Prints what was reached; exit status 1 when a host ended
// with other settings than the last, stalled, or grew.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <optional>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "host/files/darwin_notify.h"
#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;
using host::files::Descriptor;
using host::files::DeviceRoot;

/// How long a host may take for an answer while the machine is full of work.
constexpr Seconds kStall{20};
/// What a host may grow by, however much it has done, in KiB: caches fill, and the allocator keeps
/// pages back.
#ifdef __SANITIZE_ADDRESS__
constexpr long kGrowth = std::numeric_limits<long>::max();  // it keeps back all that is freed
#else
constexpr long kGrowth = 1024;
#endif

constexpr const char* kSettings = "/var/mobile/Library/Preferences/net.quillon.prismal.plist";
constexpr const char* kReloadSettings = "net.quillon.prismal.relaodSettings";
constexpr const char* kPicture = "/pictures/behind.png";

[[noreturn]] void stop(const std::string& why) {
  std::fprintf(stderr, "load: %s\n", why.c_str());
  std::exit(2);
}

struct Pipe {
  Descriptor reading;
  Descriptor writing;
  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) stop("no pipe");
    reading = Descriptor(ends[0]);
    writing = Descriptor(ends[1]);
  }
};

class Host {
 public:
  explicit Host(const fs::path& device) {
    process_ = ::fork();
    if (process_ != 0) {
      // Or nobody would hear of its end.
      questions_.reading = Descriptor();
      answers_.writing = Descriptor();
      return;
    }
    ::dup2(questions_.reading.get(), STDIN_FILENO);
    ::dup2(answers_.writing.get(), STDOUT_FILENO);
    ::execl(LOAD_HOST, LOAD_HOST, device.c_str(), PRISMAL_LIBRARY, nullptr);
    ::_exit(127);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host() {
    questions_.writing = Descriptor();
    ::waitpid(process_, nullptr, 0);
  }

  void ask(const std::string& question) const {
    const std::string line = question + "\n";
    static_cast<void>(!::write(questions_.writing.get(), line.data(), line.size()));
  }

  /// The next line; none when none comes in that time.
  std::optional<std::string> answer(Seconds most) const {
    std::string line;
    const auto end = Clock::now() + most;
    for (char byte = 0; byte != '\n'; line.push_back(byte)) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
      pollfd polled = {answers_.reading.get(), POLLIN, 0};
      if (::poll(&polled, 1, std::max(0, static_cast<int>(left.count()))) <= 0) return std::nullopt;
      if (::read(answers_.reading.get(), &byte, 1) != 1) return std::nullopt;
    }
    line.pop_back();
    return line;
  }

 private:
  Pipe questions_;
  Pipe answers_;
  pid_t process_ = 0;
};

using Hosts = std::vector<std::unique_ptr<Host>>;

struct State {
  int enabled = -1;
  std::string picture;
  long memory_kib = 0;
  long heard = 0;

  /// The library answers for pictures whatever the switch says.
  bool shows(std::string_view shown, int isOn) const { return picture == shown && enabled == isOn; }

  static std::optional<State> of(const std::string& line) {
    State state;
    std::istringstream text(line);
    text >> state.enabled >> state.picture >> state.memory_kib >> state.heard;
    if (!text) return std::nullopt;
    return state;
  }
};

/// Asks all, then hears all. None of a host that does not answer in time.
std::vector<std::optional<State>> statesOf(const Hosts& hosts) {
  for (const auto& host : hosts) host->ask("state");
  std::vector<std::optional<State>> states;
  for (const auto& host : hosts) {
    const auto line = host->answer(kStall);
    states.push_back(line ? State::of(*line) : std::nullopt);
  }
  return states;
}

/// No two are alike, and the switch is off in the last ones alone.
std::string settingsOf(long number, bool isLast) {
  return std::string("<dict><key>usePrismal</key>") + (isLast ? "<false/>" : "<true/>") +
         "<key>number</key><integer>" + std::to_string(number) +
         "</integer><key>backgroundImages</key><dict><key>iPhone-Standard</key><dict>"
         "<key>Portrait</key><string>" +
         kPicture + "</string></dict></dict></dict>";
}

/// Installs one theme over the other, again and again, until it is ended.
class Installing {
 public:
  Installing(const fs::path& folder, const fs::path& device) {
    process_ = ::fork();
    if (process_ != 0) return;
    for (int i = 0;; ++i) {
      const pid_t one = ::fork();
      const std::string theme = folder / ("Theme" + std::to_string(i % 2) + ".plist");
      if (one == 0) {
        const Descriptor nowhere(::open("/dev/null", O_WRONLY));
        ::dup2(nowhere.get(), STDOUT_FILENO);
        ::execl(PRISMAL, PRISMAL, "install", theme.c_str(), "--device-root", device.c_str(),
                nullptr);
        ::_exit(127);
      }
      int status = 0;
      ::waitpid(one, &status, 0);
      const bool isEnded = ::getppid() == 1 || ::access((folder / "enough").c_str(), F_OK) == 0;
      if (status != 0 || isEnded) ::_exit(status != 0 ? 255 : std::min(i + 1, 254));
    }
  }
  /// How many there were, up to 254; 255 when one failed.
  int end(const fs::path& folder) const {
    const Descriptor enough(::open((folder / "enough").c_str(), O_CREAT | O_WRONLY, 0600));
    int status = 0;
    ::waitpid(process_, &status, 0);
    return WEXITSTATUS(status);
  }

 private:
  pid_t process_ = 0;
};

class Load {
 public:
  Load(std::size_t hosts, long notifications)
      : notifications_(notifications),
        folder_(directory_.path()),
        device_(folder_ / "device"),
        root_(*DeviceRoot::open(device_, DeviceRoot::Creation::kIfMissing)) {
    put(kPicture, host::images::encodePng(host::images::solid(4, 4, 255, 0, 0, 255)));
    for (const char* name : {"Theme0", "Theme1"}) {
      const auto machine = DeviceRoot::open(folder_, DeviceRoot::Creation::kNever);
      const std::string color = name[5] == '0' ? "#FF0000FF" : "#00FF00FF";
      const auto written = machine->writeFile(
          std::string(name) + ".plist",
          "<dict><key>CustomColor</key><array><array><string>UIKBColorKeyLetter</string><string>" +
              color + "</string></array></array></dict>");
      if (!written) stop(written.reason());
    }
    put(kSettings, settingsOf(0, false));
    for (std::size_t i = 0; i < hosts; ++i) hosts_.push_back(std::make_unique<Host>(device_));
  }

  bool run() {
    const auto start = Clock::now();
    const auto first = statesOf(hosts_);
    const bool haveStarted = std::ranges::all_of(
        first, [](const auto& state) { return state && state->shows(kPicture, 1); });
    if (!haveStarted) std::puts("not every host has started with the first settings");
    const Installing installing(folder_, device_);
    for (long number = 1; number <= notifications_; ++number) {
      put(kSettings, settingsOf(number, number == notifications_));
      post();
      if (number % std::max(1L, notifications_ / 10) == 0) look(number);
    }
    const int installs = installing.end(folder_);
    const Seconds posted = Clock::now() - start;
    std::printf("%zu hosts, %ld notifications, %d%s installations in %.1f s\n", hosts_.size(),
                notifications_, installs, installs == 254 ? " or more" : "", posted.count());
    return judge(installs) && haveStarted;
  }

  bool changeKeyplanes(long count) {
    put(kSettings, settingsOf(0, false));
    post();
    const auto start = Clock::now();
    hosts_[0]->ask("change " + std::to_string(count));
    constexpr Seconds kLongest{24 * 3600};
    const auto line = hosts_[0]->answer(kLongest);
    long early = 0;
    long late = 0;
    std::istringstream text(line.value_or(""));
    text >> early >> late;
    const Seconds taken = Clock::now() - start;
    std::printf(
        "%ld changes of the keyplane in %.1f s: %ld KiB after a tenth, %ld KiB in the end\n", count,
        taken.count(), early, late);
    return text && early > 0 && late - early <= kGrowth;
  }

 private:
  /// As any program puts a file in its place. The commands clear away what their own kind has left.
  void put(const std::string& path, const std::string& bytes) const {
    const fs::path place = device_.string() + path;
    const fs::path next = place.string() + ".next";
    fs::create_directories(place.parent_path());
    std::ofstream(next, std::ios::binary) << bytes;
    std::error_code error;
    fs::rename(next, place, error);
    if (error) stop(place.string() + ": " + error.message());
  }

  void post() const {
    if (!host::files::postNotification(root_, kReloadSettings)) stop("nothing can be posted");
  }

  void look(long number) {
    const auto asked = Clock::now();
    const auto states = statesOf(hosts_);
    slowest_ = std::max(slowest_, Seconds(Clock::now() - asked));
    stalled_ += std::ranges::count_if(states, [](const auto& state) { return !state; });
    if (early_.empty() || number <= notifications_ / 5) early_ = states;
  }

  bool judge(int installs) const {
    // All has been posted; what is yet to be heard is heard before the question or soon after.
    std::vector<std::optional<State>> last;
    std::ptrdiff_t right = 0;
    const auto wait = Clock::now() + kStall;
    do {
      last = statesOf(hosts_);
      right = std::ranges::count_if(
          last, [&](const auto& state) { return state && state->shows(kPicture, 0); });
    } while (right != std::ssize(hosts_) && Clock::now() < wait);
    long growth = 0;
    long heard = 0;
    for (std::size_t i = 0; i < last.size(); ++i) {
      if (!last[i] || !early_[i]) continue;
      growth = std::max(growth, last[i]->memory_kib - early_[i]->memory_kib);
      heard += last[i]->heard;
    }
    std::printf(
        "%td hosts ended with the last settings, %td stalled; the slowest round of answers "
        "took %.2f s\n",
        right, stalled_, slowest_.count());
    std::printf("a host read its settings %ld times on average, and grew by %ld KiB at most\n",
                heard / std::ssize(hosts_), growth);
    return right == std::ssize(hosts_) && stalled_ == 0 && growth <= kGrowth && installs != 255;
  }

  long notifications_;
  host::files::TemporaryDirectory directory_;
  fs::path folder_;
  fs::path device_;
  DeviceRoot root_;
  Hosts hosts_;
  std::vector<std::optional<State>> early_;
  Seconds slowest_{};
  std::ptrdiff_t stalled_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: load HOSTS NOTIFICATIONS CHANGES\n", stderr);
    return 2;
  }
  std::signal(SIGPIPE, SIG_IGN);
  ::setlinebuf(stdout);
  Load load(std::strtoul(argv[1], nullptr, 10), std::strtol(argv[2], nullptr, 10));
  const bool holds = load.run();
  const bool isFlat = load.changeKeyplanes(std::strtol(argv[3], nullptr, 10));
  return holds && isFlat ? 0 : 1;
}
