#include "host/runtime/trace.h"

#include <utility>

namespace host::runtime {

namespace {

std::vector<Event>& recorded() {
  static std::vector<Event> events;
  return events;
}

}  // namespace

void record(Event::Kind kind, std::string_view text) {
  if (!recording()) return;
  if (kind == Event::Kind::kLog && recordingNow == Recording::kAllButLog) return;
  recorded().push_back({kind, std::string(text)});
}

void startRecording(Recording recording) {
  recordingNow = recording;
}

std::vector<Event> takeEvents() {
  return std::exchange(recorded(), {});
}

}  // namespace host::runtime
