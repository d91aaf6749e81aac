#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string>
#include <vector>

#include "host/files/descriptor.h"
#include "serve/host_task.h"
#include "serve/keyboard_host.h"
#include "serve/options.h"
#include "serve/picture_cache.h"
#include "serve/question.h"
#include "serve/user_settings.h"
#include "watch/file_watch.h"

namespace tools::serve {

/// What came of a question.
struct Reply {
  int status = 200;   ///< of HTTP
  std::string bytes;  ///< the answer or, with another status, the reason
};

/// Tells all pages of something that has happened.
using Publish = std::function<void(const std::string& event, const Json& data)>;

/// The keyboards that pages show: one for each look, followed as its theme is saved. Each state of
/// a theme, a version, has a process of its own, because the library reads its tables once; while
/// the theme can't be read, the last good one goes on answering.
class Keyboards {
 public:
  /// All that is given must outlive it.
  Keyboards(const Options& options, HostStarter& starter, UserSettings& settings, Publish publish);

  enum class End : std::uint8_t { kAsked, kAbandoned };

  /// Follows the themes and replaces processes that die, until the supervisor, at the other end of
  /// `channel`, asks for the end, or is gone without a word. One thread.
  End run(int channel);

  // Any thread.

  bool has(Look look) const;
  /// Waits for the process that answers, and once for its successor should it die.
  Reply ask(Wish wish, const Question& question, Parameters parameters);
  /// Whether a file that comes from outside is a picture: its status is 200 then, else 400 with the
  /// reason. A process of its own decodes it.
  Reply lookAtPicture(std::string file);
  /// Tells the running processes of the user's settings, as on a device.
  void tellSettings();
  /// Has processes begin anew with the same themes, as a device's do that are opened again: some
  /// settings are looked at once a process.
  void renew();
  /// All that is known of a look's theme, and all of it that changes with a version.
  Json facts(Look look) const;
  Json version(Look look) const;
  /// What the last check has found, as `check --format json` writes it; null before its end.
  Json findings(Look look) const;
  std::vector<Look> looks() const;

 private:
  using Clock = std::chrono::steady_clock;

  struct Kept {
    Look look = Look::theme;
    std::string theme;  ///< empty: the system's look has none

    // Of the thread that follows.
    std::vector<std::filesystem::path> files;
    std::optional<watch::FileWatch> watch;
    std::optional<Clock::time_point> due;
    std::optional<Clock::time_point> since;  ///< of the first change that is not shown
    std::optional<Clock::time_point> checkDue;
    HostHandle checker;
    bool isCheckedAgain = false;  ///< a check of this version has died
    std::size_t deaths = 0;       ///< since the theme was saved last

    // Guarded by mutex_.
    std::uint64_t version = 0;
    std::uint64_t shown = 0;  ///< the version that answers; 0: none
    Json finding;
    Json facts = Json::object();
    Json findings;
    HostHandle performer;
    double performersScale = 2;  ///< of the device that it shows
    HostHandle answerer;
    Parameters lastAsked;
  };

  /// With what a process was started.
  struct Start {
    Parameters first;
    std::uint64_t generation = 0;  ///< of the settings
    HostHandle performer;
    HostHandle answerer;  ///< null for the system's look
  };

  void doWhatIsDue(Kept& kept);
  void takeRenewal();
  void noteChange(Kept& kept);
  void startVersion(Kept& kept);
  Start startHosts(const Kept& kept);
  static std::optional<Message> hear(const Start& start);
  void show(Kept& kept, const Start& start, const Message& ready);
  void refuse(Kept& kept, const std::optional<Message>& said);
  static void watchWays(Kept& kept);
  bool followFiles(Kept& kept, const Json& files, timespec start);
  static void dueForCheck(Kept& kept);
  void startCheck(Kept& kept);
  void takeCheck(Kept& kept);
  void stopCheck(Kept& kept);
  void tellFindings(Kept& kept, Json findings);
  void takeNote(const Json& note);
  void replace(Kept& kept, HostHandle Kept::*dead, const std::string& how);
  static void dueAfterDeath(Kept& kept);
  std::optional<End> wait(int channel);
  int timeout_ms() const;
  void putSettingsOn(const Kept& kept) const;

  Kept& keptFor(Look look);
  const Kept& keptFor(Look look) const;
  static const HostHandle& hostFor(const Kept& kept, Wish wish, double scale);
  HostHandle waitForHost(const Kept& kept, Wish wish, double scale, const HostHandle& other);
  std::optional<Reply> askHost(KeyboardHost& host, Wish wish, const Parameters& parameters);
  std::string cacheKey(const KeyboardHost& host, Wish wish, const Parameters& parameters,
                       std::uint64_t generation) const;

  HostStarter& starter_;
  UserSettings& settings_;
  Publish publish_;
  std::vector<Kept> all_;  ///< never grows or shrinks
  PictureCache cache_;
  host::files::Descriptor wake_;
  std::atomic<bool> renews_ = false;
  std::mutex sheet_;  ///< held by who draws one: it takes all processors
  mutable std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace tools::serve
