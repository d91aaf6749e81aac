#include "check/contrast.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

#include "check/device_theme.h"
#include "check/doubts.h"
#include "check/names.h"
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
  /// Whether it isn't what was meant, which has been told.
  bool isDoubtful = false;
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

constexpr int kDisabled = static_cast<int>(boards::KeyState::disabled);

class ContrastCheck {
 public:
  ContrastCheck(Theme& theme, const Boards& all, const RuleUse& use,
                std::span<const Picture> pictures)
      : theme_(theme),
        boards_(all),
        words_(use.words),
        doubts_(theme, all, use.dead),
        pictures_(pictures) {}

  void checkKeys(const Keyplane& keyplane) {
    const platform::NSAutoreleasePool pool;
    becomeDeviceOf(*keyplane.choice.board);
    host::render::show(keyplane.live, keyplane.choice);
    auto bare = keyplane.live;
    bare.keys.clear();
    KeyboardPicture board = host::render::pictureOf(bare, 1);
    const auto picture = pictureBehind(keyplane.live.tree.get());
    const Origin behind = behindOf(keyplane, picture);
    checkKeys(keyplane, board, behind);
    if (useSibling(board, picture)) checkKeys(keyplane, board, behind);
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
                             panelOrigin(keyplane, pictureWhileDictating(), look)};
    const std::string words = "Done (" + wordsOf(keyplane, true) + ")";
    const SymbolBoxes boxes = boxesOf(done);
    const double needed = neededContrast(*done.symbol);
    const Ground ground{panel, done, boxes.symbol};
    measure(ground, *done.symbol, needed, origins, words);
    if (useSibling(panel, pictureWhileDictating())) {
      measure(ground, *done.symbol, needed, origins, words);
    }
  }

  void tell() const {
    for (const auto& [key, group] : groups_) tell(group);
  }

 private:
  /// Makes `board` what it is on a screen of two pixels a point, when its picture shows something
  /// else there.
  bool useSibling(KeyboardPicture& board, std::optional<std::size_t> picture) const {
    const bool differs = picture && pictures_[*picture].other_sibling;
    if (!differs || board.background_images.empty()) return false;
    board.scale = 2;
    board.background_images.back().bitmap = pictures_[*picture].other_sibling.get();
    return true;
  }

  void checkKeys(const Keyplane& keyplane, const KeyboardPicture& board, const Origin& behind) {
    for (const LiveKey& key : keyplane.live.keys) {
      for (const int state : statesOf(keyplane, key)) checkKey(keyplane, key, state, board, behind);
      checkKey(keyplane, key, kDisabled, board, behind);
    }
  }

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
    return {name, found == theme_.colors.end() ? std::nullopt : std::optional(found->second.value),
            check::isDoubtful(theme_, Kind::color, name)};
  }

  /// A gradient that the theme defines, else the colour that the system's own has.
  Origin gradientOrigin(const std::string& name) const {
    const bool isDoubtful = check::isDoubtful(theme_, Kind::gradient, name);
    const auto found = theme_.gradients.find(name);
    if (found != theme_.gradients.end()) return {name, found->second.value, isDoubtful};
    const auto* const system = boards::systemGradient(name);
    Origin origin = system ? colorOrigin(std::string(system->start)) : Origin{name, {}};
    origin.isDoubtful = isDoubtful;
    return origin;
  }

  std::optional<Origin> pictureOrigin(std::optional<std::size_t> picture) const {
    if (!picture || pictures_[*picture].sizes.empty()) return std::nullopt;
    return Origin{pictures_[*picture].path, pictures_[*picture].place};
  }

  /// Whether a picture was meant to come before the one under `found`; empty: none was found. Keys
  /// are the longer the earlier they are tried.
  bool isPictureDoubtful(const std::set<std::string>& asked, std::string_view found) const {
    if (theme_.lost.contains(kImages) && theme_.doubtfulImages.empty()) return true;
    return std::ranges::any_of(asked, [&](const std::string& key) {
      return key.size() > found.size() && theme_.doubtfulImages.contains(key);
    });
  }

  Origin behindOf(const Keyplane& keyplane, std::optional<std::size_t> picture) const {
    Origin origin = pictureOrigin(picture).value_or(colorsBehind(keyplane));
    origin.isDoubtful |= isPictureDoubtful(keyplane.images, picture ? pictures_[*picture].key : "");
    return origin;
  }

  Origin colorsBehind(const Keyplane& keyplane) const {
    const auto pair = prismal::backgroundColorNames(keyplane.live.tree->visualStyle());
    const bool isWhole = theme_.colors.contains(pair.start) && theme_.colors.contains(pair.end);
    Origin origin =
        isWhole
            ? colorOrigin(std::string(pair.start))
            : gradientOrigin(std::string(boards::systemBackgroundGradient(keyplane.choice.look)));
    for (const std::string_view name : {pair.start, pair.end}) {
      origin.isDoubtful |= check::isDoubtful(theme_, Kind::color, name);
    }
    return origin;
  }

  Origin panelOrigin(const Keyplane& keyplane, std::optional<std::size_t> picture,
                     const boards::PanelLook& look) const {
    Origin origin = pictureOrigin(picture).value_or(gradientOrigin(std::string(look.background)));
    const std::string key = std::string(orientationOf(keyplane.choice)) + ";iPhone-Dictation";
    origin.isDoubtful |= isPictureDoubtful({key}, picture ? pictures_[*picture].key : "");
    return origin;
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
    const std::string name(*value.string());
    const Kind kind = part == Part::background ? Kind::gradient : Kind::color;
    return Origin{name, theme_.source.at(entryOf(path, property), value),
                  check::isDoubtful(theme_, kind, name)};
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
    const auto measureText = [&](const std::optional<Symbol>& symbol, const auto& box,
                                 const Origin& text) {
      if (!symbol) return;
      const Origins origins = {text, dressed.face, rest};
      const auto needed = neededOn(state, origins, *symbol);
      if (needed) measure({board, picture, box}, *symbol, *needed, origins, words);
    };
    measureText(picture.symbol, boxes.symbol, dressed.text);
    measureText(picture.secondary_symbol, boxes.secondary, dressed.second);
  }

  /// The contrast that a text needs in `state`; none where it is all the system's.
  static std::optional<double> neededOn(int state, const Origins& origins, const Symbol& symbol) {
    // What the system's disabled text hardly falls below on the system's own faces.
    constexpr double kSystemsDisabled = 2;
    if (state != kDisabled || origins.text.place) return neededContrast(symbol);
    if (!origins.face.place) return std::nullopt;
    return kSystemsDisabled;
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
      case boards::KeyState::disabled:
        return ", disabled";
      case boards::KeyState::normal:
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
    const auto key_case = boards_.cases()[boards_.caseOf(keyplane, key, state)];
    const auto isDead = [&](Part part) {
      return doubts_.isDoubtful(keyplane.style, key_case, word, part);
    };
    const auto color = [&](Part part, std::string_view property, std::string_view system) {
      Origin origin = rule(part, property).value_or(colorOrigin(std::string(system)));
      origin.isDoubtful |= isDead(part);
      return origin;
    };
    dressed.text = color(Part::text, "TextColor", look.text_color);
    dressed.second = color(Part::second_text, "SecondaryTextColor", look.secondary_text_color);
    dressed.face = rule(Part::background, "BackgroundGradient")
                       .value_or(gradientOrigin(std::string(look.gradient)));
    dressed.face.isDoubtful |= isDead(Part::background);
  }

  // Results.

  /// What a text lies on.
  struct Ground {
    const KeyboardPicture& board;
    const KeyPicture& key;
    const host::drawing::Rect& box;
  };

  void measure(const Ground& ground, const Symbol& symbol, double needed, const Origins& origins,
               const std::string& words) {
    if (!origins.text.place && !origins.face.place && !origins.behind.place) return;
    for (const Origin* origin : {&origins.text, &origins.face, &origins.behind}) {
      if (origin->isDoubtful) return;
    }
    const auto pixels = drawBehind(ground.board, ground.key, ground.box, fonts_);
    if (!pixels) return;
    const auto contrast = contrastOn(*pixels, symbol.style.color);
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
    // A rule that takes the face away says nothing of what shows then.
    const bool hasFace = origins.face.place && !origins.face.name.empty();
    const auto& place = origins.text.place                 ? origins.text.place
                        : hasFace || !origins.behind.place ? origins.face.place
                                                           : origins.behind.place;
    theme_.findings.add("low-contrast"_rule, *place, message);
  }

  Theme& theme_;
  const Boards& boards_;
  const LastWords& words_;
  Doubts doubts_;
  std::span<const Picture> pictures_;
  host::drawing::Fonts fonts_;
  std::map<std::tuple<std::string_view, std::string, const boards::Key*, int, int>, Dressed>
      dressed_;
  std::map<std::tuple<std::string, std::string, std::string>, Group> groups_;
};

}  // namespace

void checkContrast(Theme& theme, const Boards& all, const RuleUse& use,
                   std::span<const Picture> pictures) {
  ContrastCheck check(theme, all, use, pictures);
  for (const Keyplane& keyplane : all.keyplanes()) {
    check.checkKeys(keyplane);
    if (keyplane.choice.plane == boards::Plane::small_letters) check.checkPanel(keyplane);
  }
  check.tell();
}

}  // namespace tools::check
