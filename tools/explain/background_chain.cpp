#include "explain/background_chain.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "backgrounds/background_filenames.h"
#include "backgrounds/background_keys.h"
#include "backgrounds/double_resolution_path.h"
#include "backgrounds/keyplane_index.h"
#include "backgrounds/layout_variant.h"
#include "backgrounds/orientation.h"
#include "host/images/decode.h"
#include "host/images/limits.h"
#include "host/system/process.h"
#include "styles/visual_style.h"

namespace tools::explain {

using host::runtime::Event;

namespace {

prismal::BackgroundKeys keysOf(platform::UIKBTree keyplane) {
  const auto orientation = prismal::orientationName(prismal::keyboardOrientation());
  const auto style = prismal::PMGetVisualStyleName(keyplane);
  const auto index = static_cast<std::uint64_t>(prismal::PMGetKeyplaneIndex(keyplane));
  const std::uint64_t variant = prismal::PMGetLayoutVariant(keyplane);
  const auto full = prismal::fullBackgroundKey(orientation, style, index, variant);
  return {orientation, style, full.view(), index, variant};
}

/// Goes through the files that were read, in their order: each try that has a path read one.
class Reads {
 public:
  explicit Reads(std::span<const Event> events) : events_(events) {}

  /// What was read for `path`: the file itself or its sibling; empty when neither was.
  std::string next(std::string_view path) {
    const std::string sibling = prismal::doubleResolutionPath(path);
    for (std::size_t i = 0; i < events_.size(); ++i) {
      const Event& event = events_[i];
      if (event.kind != Event::Kind::kRead) continue;
      if (event.text != path && event.text != sibling) continue;
      events_ = events_.subspan(i + 1);
      return event.text;
    }
    return {};
  }

 private:
  std::span<const Event> events_;
};

std::string whyNoPicture(const std::string& file) {
  if (file.empty()) return "not asked for";
  const auto bytes = host::system::process().root().readFile(file, host::images::kMaxFileBytes);
  if (!bytes) return bytes.reason();
  return "no picture: " + host::images::decode(*bytes).reason;
}

}  // namespace

std::vector<BackgroundTry> backgroundChain(platform::UIKBTree keyplane,
                                           std::span<const Event> events,
                                           const std::optional<std::string>& shown) {
  std::vector<BackgroundTry> chain;
  Reads reads(events);
  const auto& filenames = prismal::PMGetBackgroundImageFilenames();
  const prismal::BackgroundKeys keys = keysOf(keyplane);
  for (const auto& key : keys.all()) {
    BackgroundTry& tried = chain.emplace_back();
    tried.key = key.view();
    const auto found = filenames.find(key.view());
    if (found == filenames.end()) continue;
    tried.path = found->second;
    tried.file = reads.next(found->second);
    tried.hit = !tried.file.empty() && tried.file == shown;
    if (tried.hit) break;
    tried.reason = whyNoPicture(tried.file);
  }
  return chain;
}

}  // namespace tools::explain
