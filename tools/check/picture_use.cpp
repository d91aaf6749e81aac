#include "check/picture_use.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "check/device_theme.h"
#include "check/words.h"
#include "host/render/dictation_panel.h"
#include "keyboard/words.h"
#include "platform/foundation.h"

namespace tools::check {

namespace boards = host::boards;

namespace {

/// An area that a picture lies in.
struct Shown {
  host::drawing::Size size;
  std::string words;  ///< "tablet, landscape"
};

/// Boards that no background key can tell apart, by what they have in common.
using Group = std::string;

struct Use {
  std::map<Group, std::vector<Shown>> areas;
};

Shown shownOn(const Keyplane& keyplane) {
  const auto& choice = keyplane.choice;
  return {keyplane.live.placed.size,
          std::string(keyboard::wordOf(keyboard::kDevices, choice.board->name)) + ", " +
              std::string(keyboard::wordOf(keyboard::kOrientations, choice.orientation))};
}

/// Finds out what lies behind what.
class Lookup {
 public:
  explicit Lookup(std::size_t pictures) : uses_(pictures) {}

  void showAll(const Boards& all) {
    for (const Keyplane& keyplane : all.keyplanes()) {
      const platform::NSAutoreleasePool pool;
      becomeDeviceOf(*keyplane.choice.board);
      for (const bool international : {true, false}) {
        for (const bool dictation : {false, true}) show(keyplane, {international, dictation});
      }
      note(pictureWhileDictating(), "dictation " + orientationOf(keyplane), keyplane, {});
    }
  }

  const Use& useOf(std::size_t picture) const { return uses_[picture]; }
  /// What is seen where `key` was asked for.
  std::set<std::size_t> insteadOf(const std::string& key) const {
    const auto found = winners_.find(key);
    return found == winners_.end() ? std::set<std::size_t>() : found->second;
  }

 private:
  static std::string orientationOf(const Keyplane& keyplane) {
    return std::string(keyboard::wordOf(keyboard::kOrientations, keyplane.choice.orientation));
  }

  void show(const Keyplane& keyplane, boards::Variant variant) {
    auto choice = keyplane.choice;
    choice.variant = variant;
    host::render::show(keyplane.live, choice);
    note(pictureBehind(keyplane.live.tree.get()),
         orientationOf(keyplane) + std::string(keyplane.style), keyplane, keyplane.images);
  }

  void note(std::optional<std::size_t> picture, const Group& group, const Keyplane& keyplane,
            const std::set<std::string>& asked) {
    if (!picture) return;
    auto& areas = uses_[*picture].areas[group];
    const Shown shown = shownOn(keyplane);
    if (std::ranges::find(areas, shown.words, &Shown::words) == areas.end()) areas.push_back(shown);
    for (const std::string& key : asked) winners_[key].insert(*picture);
  }

  std::vector<Use> uses_;
  std::map<std::string, std::set<std::size_t>> winners_;
};

/// By how much a picture is stretched one way more than the other; 0 when it keeps its shape.
double stretchOf(PixelCount pixels, host::drawing::Size area) {
  const double change =
      (area.width / area.height) / (static_cast<double>(pixels.width) / pixels.height);
  return std::max(change, 1 / change) - 1;
}

struct Stretch {
  double by = 0;
  PixelCount pixels;
  const Shown* area = nullptr;
};

/// The least that some picture of `sizes` is stretched on the areas of one group, for the size that
/// is stretched most: a picture needs to fit one of boards that can't be told apart.
Stretch worstOf(std::span<const PixelCount> sizes, const std::vector<Shown>& areas) {
  Stretch worst;
  for (const PixelCount& pixels : sizes) {
    const auto best = std::ranges::min_element(
        areas, {}, [&](const Shown& area) { return stretchOf(pixels, area.size); });
    const double by = stretchOf(pixels, best->size);
    if (by > worst.by) worst = {by, pixels, &*best};
  }
  return worst;
}

void checkStretch(Theme& theme, const Picture& picture, const Use& use) {
  constexpr double kMost = 0.1;
  Stretch worst;
  for (const auto& [group, areas] : use.areas) {
    const Stretch stretch = worstOf(picture.sizes, areas);
    if (stretch.by > worst.by) worst = stretch;
  }
  if (worst.by <= kMost) return;
  const auto number = [](double value) { return std::to_string(std::lround(value)); };
  theme.findings.add("image-stretched"_rule, picture.place,
                     number(worst.pixels.width) + " by " + number(worst.pixels.height) +
                         " pixels are stretched by " + number(100 * worst.by) + " % on " +
                         worst.area->words + ", which is " + number(worst.area->size.width) +
                         " by " + number(worst.area->size.height) + " points");
}

void tellNeverShown(Theme& theme, const Picture& picture, std::span<const Picture> all,
                    const std::set<std::size_t>& instead) {
  std::vector<std::string> others;
  others.reserve(instead.size());
  for (const std::size_t other : instead) others.push_back(inQuotes(all[other].key));
  theme.findings.add("image-never-shown"_rule, picture.place,
                     others.empty() ? "no board ever shows it"
                                    : "no board ever shows it: it gives way to " + listed(others));
}

}  // namespace

void checkPictureUse(Theme& theme, const Boards& all, std::span<const Picture> pictures) {
  if (pictures.empty()) return;
  Lookup lookup(pictures.size());
  lookup.showAll(all);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    if (pictures[i].device_path.empty()) continue;
    if (lookup.useOf(i).areas.empty()) {
      tellNeverShown(theme, pictures[i], pictures, lookup.insteadOf(pictures[i].key));
    } else {
      checkStretch(theme, pictures[i], lookup.useOf(i));
    }
  }
}

}  // namespace tools::check
