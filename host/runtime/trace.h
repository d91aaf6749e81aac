#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::runtime {

/// One thing that the library asked of the platform.
struct Event {
  enum class Kind { kLog, kRead, kExists, kShell, kCache, kObserve, kHook, kPrevious };
  Kind kind;
  std::string text;
};

/// Notes an event while recording is on.
void record(Event::Kind kind, std::string_view text);

enum class Recording : std::uint8_t { kOff, kAllButLog, kAll };

/// Turns recording on; it is off at first, and costs nothing then. What a theme makes the library
/// log has no bound, so those who don't look at it leave it out.
void startRecording(Recording recording = Recording::kAll);

/// What startRecording has been told last. Here so that all that is asked of the keyboard can look
/// at it without a call.
inline constinit Recording recordingNow = Recording::kOff;
inline bool recording() {
  return recordingNow != Recording::kOff;
}

/// What has been recorded since the last call, in order.
std::vector<Event> takeEvents();

}  // namespace host::runtime
