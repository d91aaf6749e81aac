#include "host/runtime/trace.h"

#include <utility>

namespace host::runtime {

namespace {

struct Recorder {
  Recording recording = Recording::kOff;
  std::vector<Event> events;
};

Recorder& recorder() {
  static Recorder events;
  return events;
}

}  // namespace

void record(Event::Kind kind, std::string_view text) {
  const Recording recording = recorder().recording;
  if (recording == Recording::kOff) return;
  if (kind == Event::Kind::kLog && recording == Recording::kAllButLog) return;
  recorder().events.push_back({kind, std::string(text)});
}

void startRecording(Recording recording) {
  recorder().recording = recording;
}

bool recording() {
  return recorder().recording != Recording::kOff;
}

std::vector<Event> takeEvents() {
  return std::exchange(recorder().events, {});
}

}  // namespace host::runtime
