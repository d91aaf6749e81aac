#pragma once

#include <csignal>
#include <string>

namespace host::files {

/// Says of a file or directory of this machine that this process wants it gone when it is
/// interrupted, for as long as the object lives. What can't be noted, because its path is too long
/// or too many are noted, stays then. Any thread.
class Leftover {
 public:
  Leftover() = default;
  explicit Leftover(const std::string& path);
  Leftover(Leftover&& other) noexcept;
  Leftover& operator=(Leftover&& other) noexcept;
  ~Leftover();

 private:
  int slot_ = -1;
};

/// While this lives, a signal that asks the program to end waits. For the moment between making
/// something and noting it.
class InterruptionsWait {
 public:
  InterruptionsWait();
  InterruptionsWait(const InterruptionsWait&) = delete;
  InterruptionsWait& operator=(const InterruptionsWait&) = delete;
  ~InterruptionsWait();

 private:
  sigset_t before_{};
};

/// Removes a file, or a directory with all that lies in it, however deep; symbolic links are never
/// followed. What can't be removed stays. May be called by a signal handler.
void removeTree(const char* path);

/// Removes what is noted, directories with all that lies in them; symbolic links are never
/// followed. Leaves alone what another process has noted, of which this one is a copy. May be
/// called by a signal handler.
void removeLeftovers();

}  // namespace host::files
