#include "host/files/darwin_notify.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <limits.h>
#include <optional>
#include <string>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "host/files/notification_name.h"

namespace host::files {
namespace {

Result<Descriptor> notifyDirectory(const DeviceRoot& root) {
  auto directory = root.openDirectory(kNotificationDirectory);
  if (directory || !root.makeDirectories(kNotificationDirectory)) return directory;
  return root.openDirectory(kNotificationDirectory);
}

// Touches whatever bears the name, so that nothing planted in its place can hold a post up or lead
// it elsewhere. With a time of its own: the kernel's moves on in steps of milliseconds.
bool touch(int directory, const char* file) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const timespec times[] = {now, now};
  return ::utimensat(directory, file, times, AT_SYMLINK_NOFOLLOW) == 0 ||
         ::utimensat(directory, file, nullptr, AT_SYMLINK_NOFOLLOW) == 0;
}

// When a name was last posted, as its file says; zero for one that never was.
struct PostTime {
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  auto operator<=>(const PostTime&) const = default;

  static PostTime of(const Descriptor& directory, const std::string& file) {
    struct stat status {};
    if (::fstatat(directory.get(), file.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  }
  // The time that the kernel gives to what is touched now.
  static PostTime now() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return {now.tv_sec, now.tv_nsec};
  }
};

bool create(int directory, const char* file) {
  const int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  return static_cast<bool>(Descriptor(::openat(directory, file, flags, 0644)));
}

}  // namespace

bool postNotification(const DeviceRoot& root, std::string_view name) {
  const auto file = fileNameOfNotification(name);
  if (!file) return false;
  // Again when the directory is removed between two steps, but not as long as somebody does that.
  for (int tries = 0; tries < 3; ++tries) {
    const auto directory = notifyDirectory(root);
    if (!directory) return false;
    if (touch(directory->get(), file->c_str())) return true;
    if (errno != ENOENT) return false;
    create(directory->get(), file->c_str());
    if (touch(directory->get(), file->c_str())) return true;
  }
  return false;
}

struct NotificationWatcher::Observer {
  std::string file;
  std::uint64_t number;  // in order of registration
  std::function<void()> callback;
  PostTime last_post = {};  // before the observation, where nothing was watched yet
};

// Shared with what it has queued on the run loop, which finds it gone when the watcher is.
class NotificationWatcher::Watch : public std::enable_shared_from_this<Watch> {
 public:
  Watch(const DeviceRoot& root, RunLoop& run_loop) : root_(root), run_loop_(run_loop) {}

  Token observe(std::string_view name, std::function<void()> callback) {
    auto file = fileNameOfNotification(name);
    if (!file) return nullptr;
    const auto last_post = lastPostIfWatchingCanWait(*file);
    if (!last_post && !startNow()) return nullptr;
    if (inotify_) collect();  // what has been posted until now is not for the new one
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    auto observer = std::make_shared<const Observer>(Observer{
        std::move(*file), next_number_++, std::move(callback), last_post.value_or(PostTime())});
    observers_.push_back(observer);
    return observer;
  }

  void close() {
    observers_.clear();
    due_.clear();
    closed_ = true;
  }

 private:
  // Posted, and for the observers that were there by then.
  struct Due {
    std::string file;
    std::uint64_t before_number;
  };

  // Nobody is told of anything until the run loop comes round, and that is soon enough to begin to
  // watch: what is posted meanwhile shows in the times of the files. A process that ends before,
  // as one that draws a picture, would wait milliseconds for the kernel to let go of a watch. None
  // when the watch has begun, or has to begin now.
  std::optional<PostTime> lastPostIfWatchingCanWait(const std::string& file) {
    if (inotify_) return std::nullopt;
    const auto directory = notifyDirectory(root_);
    if (!directory) return std::nullopt;
    const PostTime last = PostTime::of(*directory, file);
    // Another post could get the very same time, or has one from a clock that was ahead.
    if (last >= PostTime::now()) return std::nullopt;
    if (!std::exchange(start_queued_, true)) {
      run_loop_.post([weak = weak_from_this()] {
        if (const auto watch = weak.lock(); watch && !watch->closed_) watch->startNow();
      });
    }
    return last;
  }

  // Begins to watch, and finds what was posted before.
  bool startNow() {
    if (inotify_) return watched_ >= 0 || start();
    if (!start()) return false;
    const auto directory = notifyDirectory(root_);
    if (!directory) return true;
    std::vector<std::pair<PostTime, Due>> posted;
    for (const auto& weak : observers_) {
      const auto observer = weak.lock();
      if (!observer) continue;
      const PostTime last = PostTime::of(*directory, observer->file);
      if (last != observer->last_post)
        posted.push_back({last, {observer->file, observer->number + 1}});
    }
    std::ranges::stable_sort(posted, {}, [](const auto& post) { return post.first; });
    for (auto& post : posted) noteDue(std::move(post.second));
    queueDelivery();
    return true;
  }

  bool start() {
    if (!inotify_) {
      inotify_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
      if (!inotify_) return false;
      source_ = run_loop_.watch(inotify_.get(), [weak = weak_from_this()] {
        if (const auto watch = weak.lock()) watch->collect();
      });
    }
    if (watched_ < 0) arm();
    return watched_ >= 0;
  }

  // Watches the directory that now has the name, through its descriptor: the path itself could lead
  // out of the root. The descriptor mustn't stay: a removed directory is only given up for lost
  // once nobody holds it.
  //
  // Where it can't be made, because something stands in its place, say, what lies above it is
  // watched until it can. False then.
  bool arm() {
    const int before = std::exchange(watched_, -1);
    auto directory = notifyDirectory(root_);
    is_waiting_ = !directory;
    for (const char* above : {"/var/run", "/var", "/"}) {
      if (!directory) directory = root_.openDirectory(above);
    }
    if (directory) {
      constexpr std::uint32_t kAnyChange = IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_MOVED_FROM;
      const std::string path = "/proc/self/fd/" + std::to_string(directory->get());
      watched_ = ::inotify_add_watch(
          inotify_.get(), path.c_str(),
          IN_ATTRIB | IN_MOVE_SELF | IN_ONLYDIR | (is_waiting_ ? kAnyChange : 0));
    }
    if (before >= 0 && before != watched_) ::inotify_rm_watch(inotify_.get(), before);
    return watched_ >= 0 && !is_waiting_;
  }

  // The directory has been replaced. What has a file in the new one was posted since.
  void armAgain() {
    if (!arm()) return;
    const auto directory = notifyDirectory(root_);
    if (!directory) return;
    for (const auto& file : observedFiles()) {
      struct stat status {};
      if (::fstatat(directory->get(), file.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        notice(file);
      }
    }
  }

  void collect() {
    readEvents();
    queueDelivery();
  }

  void queueDelivery() {
    if (due_.empty() || std::exchange(delivery_queued_, true)) return;
    run_loop_.post([weak = weak_from_this()] {
      if (const auto watch = weak.lock()) watch->deliver();
    });
  }

  void readEvents() {
    alignas(inotify_event) char buffer[16 * (sizeof(inotify_event) + NAME_MAX + 1)];
    for (;;) {
      const ssize_t size = ::read(inotify_.get(), buffer, sizeof buffer);
      if (size < 0 && errno == EINTR) continue;
      if (size <= 0) break;
      for (const char* at = buffer; at < buffer + size;) {
        inotify_event event;
        std::memcpy(&event, at, sizeof event);
        handle(event, at + sizeof event);
        at += sizeof event + event.len;
      }
    }
  }

  void handle(const inotify_event& event, const char* file) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
      // Anything may be among what the kernel dropped, the directory's end included.
      for (const auto& observed : observedFiles()) notice(observed);
      arm();
    } else if (event.wd != watched_) {
      // From a directory that is watched no more.
    } else if (is_waiting_ || (event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) {
      armAgain();
    } else if (event.len != 0) {
      notice(file);
    }
  }

  std::vector<std::string> observedFiles() const {
    std::vector<std::string> files;
    for (const auto& weak : observers_) {
      if (const auto observer = weak.lock()) files.push_back(observer->file);
    }
    return files;
  }

  void notice(const std::string& file) {
    const bool is_observed =
        std::any_of(observers_.begin(), observers_.end(), [&](const auto& weak) {
          const auto observer = weak.lock();
          return observer && observer->file == file;
        });
    if (is_observed) noteDue({file, next_number_});
  }

  void noteDue(Due posted) {
    const auto due = std::ranges::find(due_, posted.file, &Due::file);
    if (due == due_.end())
      due_.push_back(std::move(posted));
    else
      due->before_number = posted.before_number;
  }

  void deliver() {
    readEvents();  // a post until this very moment belongs to the same delivery
    delivery_queued_ = false;
    const auto observers = observers_;  // the callbacks may change ours
    for (const Due& due : std::exchange(due_, {})) {
      for (const auto& weak : observers) {
        const auto observer = weak.lock();
        if (!observer || observer->file != due.file || observer->number >= due.before_number)
          continue;
        observer->callback();
        if (closed_) return;
      }
    }
  }

  const DeviceRoot& root_;
  RunLoop& run_loop_;
  Descriptor inotify_;
  RunLoop::SourceToken source_;
  int watched_ = -1;
  bool is_waiting_ = false;  // for the directory, watching one above it
  std::vector<std::weak_ptr<const Observer>> observers_;
  std::uint64_t next_number_ = 0;
  std::vector<Due> due_;  // in order of the first post
  bool delivery_queued_ = false;
  bool start_queued_ = false;
  bool closed_ = false;
};

NotificationWatcher::NotificationWatcher(const DeviceRoot& root, RunLoop& run_loop)
    : watch_(std::make_shared<Watch>(root, run_loop)) {}

NotificationWatcher::~NotificationWatcher() {
  watch_->close();
}

NotificationWatcher::Token NotificationWatcher::observe(std::string_view name,
                                                        std::function<void()> callback) {
  return watch_->observe(name, std::move(callback));
}

}  // namespace host::files
