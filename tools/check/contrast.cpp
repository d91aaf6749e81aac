#include "check/contrast.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

#include "check/device_theme.h"
#include "check/text_contrast.h"
#include "check/words.h"
#include "colors/keyplane_gradient.h"
#include "host/drawing/fonts.h"
#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/tree.h"
#include "host/render/dictation_panel.h"
#include "host/render/picture.h"
#include "host/runtime/object.h"
#include "keyboard/view.h"
#include "platform/foundation.h"

namespace tools::check {

namespace boards = host::boards;
using host::drawing::KeyboardPicture;
using host::drawing::KeyPicture;
using host::drawing::Symbol;
using host::render::LiveKey;
using platform::PropertyListView;

namespace {

/// Where a theme says how something looks, and the name that it gives.
struct Origin {
  std::string name;
  std::optional<Place> place;  ///< none: the system's own
};

/// Who says how a text and what lies behind it look.
struct Origins {
  Origin text;
  Origin face;
  Origin behind;  ///< none where the face hides it
};

/// Texts of one colour on one face, and the one of them that stands out least.
struct Group {
  Origins origins;
  double contrast = 0;
  double needed = 0;
  std::string worst;
  std::size_t keys = 0;
};

class ContrastCheck {
 public:
  ContrastCheck(Theme& theme, const Boards& all, const LastWords& words,
                std::span<const Picture> pictures)
      : theme_(theme), boards_(all), words_(words), pictures_(pictures) {}

  void checkKeys(const Keyplane& keyplane) {
    const platform::NSAutoreleasePool pool;
    becomeDeviceOf(*keyplane.choice.board);
    host::render::show(keyplane.live, keyplane.choice);
    auto bare = keyplane.live;
    bare.keys.clear();
    const KeyboardPicture board = host::render::pictureOf(bare, 1);
    const Origin behind = behindOf(keyplane, pictureBehind(keyplane.live.tree.get()));
    for (const LiveKey& key : keyplane.live.keys) {
      for (const int state : statesOf(keyplane, key)) checkKey(keyplane, key, state, board, behind);
    }
  }

  void checkPanel(const Keyplane& keyplane) {
    const platform::NSAutoreleasePool pool;
    becomeDeviceOf(*keyplane.choice.board);
    host::render::showDictation(keyplane.live, keyplane.choice);
    KeyboardPicture panel = host::render::pictureOfDictation(keyplane.live, keyplane.choice, 1);
    const KeyPicture done = panel.keys.back();
    panel.keys.clear();
    const auto look = boards::systemPanelLook(keyplane.choice.look);
    const Origins origins = {colorOrigin(std::string(look.done_text)),
                             gradientOrigin(std::string(look.done)),
                             panelOrigin(pictureWhileDictating(), look)};
    measure(panel, done, *done.symbol, boxesOf(done).symbol, origins,
            "Done (" + wordsOf(keyplane, true) + ")");
  }

  void tell() const {
    for (const auto& [key, group] : groups_) tell(group);
  }

 private:
  static std::string wordsOf(const Keyplane& keyplane, bool dictation) {
    keyboard::View view;
    view.keyplane = keyplane.choice;
    view.dictation = dictation;
    std::string text;
    for (const auto word : keyboard::wordsOf(view))
      text.append(text.empty() ? "" : " ").append(word);
    return text;
  }

  // Origins.

  Origin colorOrigin(const std::string& name) const {
    const auto found = theme_.colors.find(name);
    return {name, found == theme_.colors.end() ? std::nullopt : std::optional(found->second)};
  }

  /// A gradient that the theme defines, else the colour that the system's own has.
  Origin gradientOrigin(const std::string& name) const {
    const auto found = theme_.gradients.find(name);
    if (found != theme_.gradients.end()) return {name, found->second};
    const auto* const system = boards::systemGradient(name);
    return system ? colorOrigin(std::string(system->start)) : Origin{name, std::nullopt};
  }

  std::optional<Origin> pictureOrigin(std::optional<std::size_t> picture) const {
    if (!picture || pictures_[*picture].sizes.empty()) return std::nullopt;
    return Origin{pictures_[*picture].path, pictures_[*picture].place};
  }

  Origin behindOf(const Keyplane& keyplane, std::optional<std::size_t> picture) const {
    if (auto origin = pictureOrigin(picture)) return *origin;
    const auto pair = prismal::backgroundColorNames(keyplane.live.tree->visualStyle());
    const bool isWhole = theme_.colors.contains(pair.start) && theme_.colors.contains(pair.end);
    if (isWhole) return colorOrigin(std::string(pair.start));
    return gradientOrigin(std::string(boards::systemBackgroundGradient(keyplane.choice.look)));
  }

  Origin panelOrigin(std::optional<std::size_t> picture, const boards::PanelLook& look) const {
    if (auto origin = pictureOrigin(picture)) return *origin;
    return gradientOrigin(std::string(look.background));
  }

  /// The rule that has the last word on `part`; none when no rule has.
  std::optional<Origin> ruleOrigin(std::string_view list, const LastWord& word, Part part,
                                   std::string_view property) const {
    const std::int32_t rule = word[static_cast<std::size_t>(part)];
    if (rule < 0) return std::nullopt;
    const auto index = static_cast<std::size_t>(rule);
    const PropertyListView style =
        theme_.section(kStyles).objectForKey(list).items()[index].items()[1];
    const PropertyListView value = style.objectForKey(property);
    const std::string path = itemOf(itemOf(entryOf(std::string(kStyles), list), index), 1);
    if (!value.isString()) return Origin{"", theme_.source.at(path, style)};
    return Origin{std::string(*value.string()), theme_.source.at(entryOf(path, property), value)};
  }

  // Keys.

  struct Dressed {
    KeyPicture picture;
    Origin text;
    Origin second;
    Origin face;
  };

  void checkKey(const Keyplane& keyplane, const LiveKey& key, int state,
                const KeyboardPicture& board, const Origin& behind) {
    const Dressed& dressed = dress(keyplane, key, state);
    KeyPicture picture = dressed.picture;
    picture.frame = key.placed.face;
    const bool hides = picture.background && picture.background->top.alpha >= 1 &&
                       picture.background->bottom.alpha >= 1;
    const Origin rest = hides ? Origin() : behind;
    const std::string words = std::string(key.placed.key->name) + stateWord(state) + " (" +
                              wordsOf(keyplane, false) + ")";
    const SymbolBoxes boxes = boxesOf(picture);
    if (picture.symbol) {
      measure(board, picture, *picture.symbol, boxes.symbol, {dressed.text, dressed.face, rest},
              words);
    }
    if (picture.secondary_symbol) {
      measure(board, picture, *picture.secondary_symbol, boxes.secondary,
              {dressed.second, dressed.face, rest}, words);
    }
  }

  static std::string stateWord(int state) {
    switch (static_cast<boards::KeyState>(state)) {
      case boards::KeyState::pressed:
        return ", pressed";
      case boards::KeyState::shift_on:
        return ", on";
      case boards::KeyState::shift_on_pressed:
        return ", on and pressed";
      case boards::KeyState::shift_locked:
        return ", locked";
      case boards::KeyState::shift_locked_pressed:
        return ", locked and pressed";
      case boards::KeyState::normal:
      case boards::KeyState::disabled:
        break;
    }
    return "";
  }

  /// How the library dresses a key. It is asked once for all boards that have the key in one style:
  /// nothing else of the board goes into the answer.
  const Dressed& dress(const Keyplane& keyplane, const LiveKey& key, int state) {
    const auto identity =
        std::tuple(keyplane.style, keyplane.list, key.placed.key, key.placed.row_hint, state);
    const auto found = dressed_.find(identity);
    if (found != dressed_.end()) return found->second;
    setState(key, state);
    auto only = keyplane.live;
    only.keys = {key};
    Dressed dressed;
    dressed.picture = host::render::pictureOf(only, 1).keys.front();
    nameOrigins(dressed, keyplane, key, state);
    return dressed_.emplace(identity, std::move(dressed)).first->second;
  }

  void nameOrigins(Dressed& dressed, const Keyplane& keyplane, const LiveKey& key,
                   int state) const {
    const auto look = boards::systemKeyLook(boards::kindOf(*key.placed.key), keyplane.choice.look,
                                            boards::Family::phone, state);
    const LastWord& word = words_[boards_.caseOf(keyplane, key, state)];
    const auto rule = [&](Part part, std::string_view property) {
      return ruleOrigin(keyplane.list, word, part, property);
    };
    const auto color = [&](Part part, std::string_view property, std::string_view system) {
      const auto origin = rule(part, property);
      return origin ? *origin : colorOrigin(std::string(system));
    };
    dressed.text = color(Part::text, "TextColor", look.text_color);
    dressed.second = color(Part::second_text, "SecondaryTextColor", look.secondary_text_color);
    const auto face = rule(Part::background, "BackgroundGradient");
    dressed.face = face ? *face : gradientOrigin(std::string(look.gradient));
  }

  // Results.

  void measure(const KeyboardPicture& board, const KeyPicture& key, const Symbol& symbol,
               const host::drawing::Rect& box, const Origins& origins, const std::string& words) {
    if (!origins.text.place && !origins.face.place && !origins.behind.place) return;
    const auto pixels = drawBehind(board, key, box, fonts_);
    if (!pixels) return;
    const auto contrast = contrastOn(*pixels, symbol.style.color);
    const double needed = neededContrast(symbol);
    if (!contrast || *contrast >= needed) return;
    const auto pathOf = [](const Origin& origin) { return origin.place ? origin.place->path : ""; };
    Group& group = groups_[{pathOf(origins.text), pathOf(origins.face), pathOf(origins.behind)}];
    ++group.keys;
    if (group.keys > 1 && *contrast / needed >= group.contrast / group.needed) return;
    group.origins = origins;
    group.contrast = *contrast;
    group.needed = needed;
    group.worst = words;
  }

  void tell(const Group& group) const {
    const Origins& origins = group.origins;
    const auto named = [](const Origin& origin, std::string_view otherwise) {
      return origin.name.empty() ? std::string(otherwise) : inQuotes(origin.name);
    };
    char numbers[64];
    // Rounded down: what is too little must not look like enough.
    const double contrast = static_cast<int>(group.contrast * 10) / 10.0;
    std::snprintf(numbers, sizeof numbers, "a contrast of %.1f, below %.1f", contrast,
                  group.needed);
    std::string message =
        "text in " + named(origins.text, "its colour") + " on " + named(origins.face, "no face");
    if (!origins.behind.name.empty()) message += " over " + inQuotes(origins.behind.name);
    message += std::string(" has ") + numbers + ": " + group.worst;
    if (group.keys > 1) message += " and " + std::to_string(group.keys - 1) + " more";
    const auto& place = origins.text.place   ? origins.text.place
                        : origins.face.place ? origins.face.place
                                             : origins.behind.place;
    theme_.findings.add("low-contrast"_rule, *place, message);
  }

  Theme& theme_;
  const Boards& boards_;
  const LastWords& words_;
  std::span<const Picture> pictures_;
  host::drawing::Fonts fonts_;
  std::map<std::tuple<std::string_view, std::string, const boards::Key*, int, int>, Dressed>
      dressed_;
  std::map<std::tuple<std::string, std::string, std::string>, Group> groups_;
};

}  // namespace

void checkContrast(Theme& theme, const Boards& all, const LastWords& words,
                   std::span<const Picture> pictures) {
  ContrastCheck check(theme, all, words, pictures);
  for (const Keyplane& keyplane : all.keyplanes()) {
    check.checkKeys(keyplane);
    if (keyplane.choice.plane == boards::Plane::small_letters) check.checkPanel(keyplane);
  }
  check.tell();
}

}  // namespace tools::check
