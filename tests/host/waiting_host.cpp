// A host that shows a keyboard of a device and waits, as a program of the device does.
// Usage: waiting_host DEVICE_ROOT LIBRARY. Prints what the library logs, and the colour of the
// letter keys' faces after each line; ends when its standard input does.

#include <cstdio>
#include <string>
#include <unistd.h>

#include "host/drawing/fonts.h"
#include "host/system/log.h"
#include "host/system/process.h"
#include "host/views/color.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/shown_view.h"
#include "keyboard/view.h"
#include "platform/keyboard.h"

namespace {

void tell(std::string_view line) {
  const platform::NSAutoreleasePool pool;
  const auto color = platform::UIKBGetNamedColor("UIKBColorKeyLetter");
  const auto& components = host::runtime::as<host::views::ColorObject>(color)->components;
  std::printf("%.*s %.0f,%.0f,%.0f\n", static_cast<int>(line.size()), line.data(),
              components[0] * 255, components[1] * 255, components[2] * 255);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  tools::keyboard::Dress dress;
  dress.device_root = argv[1];
  dress.library = argv[2];
  dress.quiet = true;
  const auto process = tools::keyboard::KeyboardProcess::start(dress, 2);
  if (!process) return 2;
  host::drawing::Fonts fonts;
  if (!tools::keyboard::showView(tools::keyboard::viewOf({}), 2, fonts)) return 2;
  tell("shown");
  host::system::setLogEcho(tell);

  bool ended = false;
  auto& runLoop = host::system::process().runLoop();
  const auto input = runLoop.watch(STDIN_FILENO, [&] {
    char byte = 0;
    ended = ::read(STDIN_FILENO, &byte, 1) <= 0;
  });
  runLoop.runUntil([&] { return ended; });
  return 0;
}
