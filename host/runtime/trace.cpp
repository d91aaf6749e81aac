#include "host/runtime/trace.h"

#include <utility>

namespace host::runtime {

namespace {

struct Recorder {
  bool on = false;
  std::vector<Event> events;
};

Recorder& recorder() {
  static Recorder events;
  return events;
}

}  // namespace

void record(Event::Kind kind, std::string_view text) {
  if (recorder().on) recorder().events.push_back({kind, std::string(text)});
}

void startRecording() {
  recorder().on = true;
}

bool recording() {
  return recorder().on;
}

std::vector<Event> takeEvents() {
  return std::exchange(recorder().events, {});
}

}  // namespace host::runtime
