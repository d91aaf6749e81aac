// Counts what the requests of a keyboard allocate once they have been made before. Prints a line a
// request: what, how many, and how many there may be, between tabs. Exit status 1 when there are
// more.

#include <cstdio>
#include <string_view>

#include "allocation_count.h"
#include "backgrounds/background_lookup.h"
#include "device.h"
#include "host/keyboard/gradient.h"
#include "platform/keyboard.h"
#include "rule_terms.h"
#include "sample_theme.h"
#include "styles/style_matching.h"
#include "styles/style_table.h"

namespace {

void askColor() {
  static const std::string name = bench::colorName(3);
  platform::UIKBGetNamedColor(name);
}

void askUnknownColor() {
  platform::UIKBGetNamedColor("A colour that nobody has defined");
}

void askGradient() {
  static const std::string name = bench::gradientName(3);
  host::keyboard::askNamedGradient(name);
}

void askBackground() {
  prismal::PMGetKeyboardBackgroundImage(bench::sampleKeyplane(), "Portrait", "iPhone-Standard",
                                        prismal::PMKeyplaneSmallLetters);
}

void askMissingBackground() {
  prismal::PMGetKeyboardBackgroundImage(bench::sampleKeyplane(), "Landscape", "iPad-Standard",
                                        prismal::PMKeyplaneSmallLetters);
}

void match(int controlState) {
  const auto rules = prismal::PMGetStyles("iPhone-Standard");
  prismal::PMGetMatchingStyles(rules, prismal::KeyIdentity(bench::sampleKey()), controlState);
}

void matchFive() {
  match(bench::kSampleControlState);
}

struct Request {
  const char* what;
  void (*make)();
  std::size_t limit;
};

constexpr Request kRequests[] = {
    {"named colour, hit", askColor, 0},
    {"named colour, miss", askUnknownColor, 0},
    {"named gradient", askGradient, 0},
    {"repeated background request, found", askBackground, 0},
    {"repeated background request, none", askMissingBackground, 0},
    {"matching 100 rules, 5 hold (the result list)", matchFive, 1},
};

std::size_t secondTime(void (*make)()) {
  make();
  const std::size_t before = tests::allocationCount();
  make();
  return tests::allocationCount() - before;
}

}  // namespace

int main() {
  const platform::NSAutoreleasePool pool;
  bench::startDevice();
  int status = 0;
  for (const Request& request : kRequests) {
    const std::size_t allocations = secondTime(request.make);
    std::printf("%s\t%zu\t%zu\n", request.what, allocations, request.limit);
    if (allocations > request.limit) status = 1;
  }
  return status;
}
