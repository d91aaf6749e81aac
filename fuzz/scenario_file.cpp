// Scenario files, and the expectations in them held against one output.

#include <algorithm>

#include "host/plist/utf8.h"
#include "scenario/expectation.h"
#include "scenario/reader.h"
#include "support/require.h"
#include "support/target.h"

namespace {

namespace scenario = tools::scenario;

void requireReason(const scenario::Fault& fault) {
  const std::string message = fault.message();
  fuzz::require(!fault.reason.empty(), "a fault has a reason");
  fuzz::require(host::plist::findInvalidUtf8(message) == message.npos, "a message is text",
                message);
  fuzz::require(message.find('\n') == message.npos, "a message is one line", message);
}

const nlohmann::ordered_json& someOutput() {
  static const auto output = nlohmann::ordered_json::parse(R"json({
    "step": 0, "do": "traits",
    "result": {"backgroundGradient": {"flatColor": "A"}, "frame": [0, 0, 320, 216.5],
               "symbolStyle": null, "renderEffects": ["UIKBEdgeEffect"]},
    "log": ["PM: Enabled(1)", "PM: InitColorCache: 0x1f"],
    "reads": ["/a/b.plist"],
    "events": [{"log": "PM: Enabled(1)"}, {"read": "/a/b.plist"}]})json");
  return output;
}

void judge(const scenario::Scenario& read) {
  for (const auto& step : read.steps) {
    for (const auto& mismatch : scenario::judge(step.expect, someOutput())) {
      fuzz::require(mismatch.message().find('\n') == std::string::npos, "a mismatch is one line",
                    mismatch.message());
    }
  }
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const auto read = scenario::read("x.json", fuzz::textOf(bytes, size));
  if (const auto* const fault = std::get_if<scenario::Fault>(&read)) {
    requireReason(*fault);
  } else {
    judge(std::get<scenario::Scenario>(read));
  }
  return 0;
}
