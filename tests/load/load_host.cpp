// A host that shows a keyboard of a device and answers for its state.
// Usage: load_host DEVICE_ROOT LIBRARY. Each line of standard input is a question, each line of
// standard output its answer; the end of the input is its end.
//   state      -> the settings that it heard of last, the picture behind its keys, its memory
//   change N   -> after N changes of the keyplane, its memory after the first tenth and after all

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "host/drawing/fonts.h"
#include "host/render/picture.h"
#include "host/system/log.h"
#include "host/system/process.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/shown_view.h"
#include "keyboard/view.h"

namespace {

namespace keyboard = tools::keyboard;

int enabled = -1;
long heard = 0;

void note(std::string_view line) {
  constexpr std::string_view kSwitch = "PM: Enabled(";
  if (!line.starts_with(kSwitch)) return;
  enabled = line[kSwitch.size()] - '0';
  ++heard;
}

/// What of this process lies in memory and belongs to nobody else, in KiB.
long ownMemory() {
  std::ifstream file("/proc/self/statm");
  long all = 0;
  long resident = 0;
  long shared = 0;
  file >> all >> resident >> shared;
  return (resident - shared) * (::sysconf(_SC_PAGESIZE) / 1024);
}

void answerState(const keyboard::View& view, host::drawing::Fonts& fonts) {
  const bool isShown = static_cast<bool>(keyboard::showView(view, 2, fonts));
  std::printf("%d %s %ld %ld\n", enabled,
              isShown ? host::render::backgroundPath().value_or("none").c_str() : "unshown",
              ownMemory(), heard);
}

/// Changes to all keyplanes that there are, in turn. Every change asks the library for the picture
/// behind the keys and for the colours of each.
void answerChanges(long count, host::drawing::Fonts& fonts) {
  std::vector<keyboard::View> views = keyboard::everyView({});
  std::erase_if(views, [](const keyboard::View& view) { return view.dictation; });
  long early = 0;
  for (long i = 0; i < count; ++i) {
    const auto& view = views[static_cast<std::size_t>(i) % views.size()];
    if (!keyboard::showView(view, 2, fonts)) break;
    if (i == count / 10) early = ownMemory();
  }
  std::printf("%ld %ld\n", early, ownMemory());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  keyboard::Dress dress;
  dress.device_root = argv[1];
  dress.library = argv[2];
  dress.quiet = true;
  const auto process = keyboard::KeyboardProcess::start(dress, 2);
  if (!process) {
    std::fprintf(stderr, "load_host: %s\n", process.reason().c_str());
    return 2;
  }
  host::drawing::Fonts fonts;
  const keyboard::View view = keyboard::viewOf({});
  host::system::setLogEcho(note);

  bool ended = false;
  std::string line;
  const auto answer = [&] {
    if (line == "state") answerState(view, fonts);
    if (line.starts_with("change ")) answerChanges(std::strtol(&line[7], nullptr, 10), fonts);
    std::fflush(stdout);
    line.clear();
  };
  auto& runLoop = host::system::process().runLoop();
  const auto input = runLoop.watch(STDIN_FILENO, [&] {
    char byte = 0;
    ended = ::read(STDIN_FILENO, &byte, 1) <= 0;
    byte == '\n' ? answer() : line.push_back(byte);
  });
  runLoop.runUntil([&] { return ended; });
  return 0;
}
