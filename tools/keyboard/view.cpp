#include "keyboard/view.h"

#include <string>

#include "choice_option.h"
#include "keyboard/words.h"

namespace tools::keyboard {

namespace boards = host::boards;

void addKeyplaneOptions(CLI::App& command, ViewOptions& options) {
  addKeyplaneOptionsButStyle(command, options);
  addChoice(command, "--style", options.style,
            "The light keyboard, or the dark one over alerts [standard]", kStyles);
}

void addKeyplaneOptionsButStyle(CLI::App& command, ViewOptions& options) {
  addChoice(command, "--device", options.device, "The device whose keyboard is shown [phone-3.5]",
            kDevices);
  addChoice(command, "--orientation", options.orientation, "How the device is held [portrait]",
            kOrientations);
  addChoice(command, "--keyplane", options.plane, "Which keyplane is shown [small-letters]",
            kPlanes);
  addChoice(command, "--dictation-key", options.dictationKey,
            "Whether the keyboard has a dictation key [no]", kYesOrNo);
  addChoice(command, "--international-key", options.internationalKey,
            "Whether the keyboard has an international key [yes]", kYesOrNo);
}

void addStateOptions(CLI::App& command, ViewOptions& options) {
  command.add_flag("--dictation", options.dictation, "The dictation panel in place of the keys");
  const auto addKeys = [&](const char* name, std::vector<std::string>& keys, const char* what) {
    command.add_option(name, keys, what)->type_name("KEY")->allow_extra_args(false);
  };
  addKeys("--press", options.pressed,
          "A key to press, by its name or its label; may be given several times");
  addKeys("--disable", options.disabled, "A key that is disabled, likewise");
  addChoice(command, "--shift", options.shift,
            "Shift is on, or locked; shows capital letters unless --keyplane says otherwise",
            kShifts);
}

bool namesStates(const ViewOptions& options) {
  return options.dictation || options.shift || !options.pressed.empty() ||
         !options.disabled.empty();
}

namespace {

host::render::KeyplaneChoice choose(const ViewOptions& options, std::string_view board,
                                    boards::Orientation orientation, boards::Look look,
                                    boards::Plane plane) {
  host::render::KeyplaneChoice choice;
  choice.board = boards::findBoard(board);
  choice.plane = plane;
  choice.orientation = orientation;
  choice.look = look;
  choice.variant = {.international_key = options.internationalKey,
                    .dictation_key = options.dictationKey};
  choice.shift = options.shift;
  return choice;
}

template <class Value>
bool isOpen(const std::optional<Value>& wanted, const Value& value) {
  return !wanted || *wanted == value;
}

}  // namespace

View viewOf(const ViewOptions& options) {
  const auto plane = options.shift ? boards::Plane::capital_letters : boards::Plane::small_letters;
  return {.keyplane =
              choose(options, options.device.value_or(kDevices[0].value),
                     options.orientation.value_or(boards::Orientation::portrait),
                     options.style.value_or(boards::Look::standard), options.plane.value_or(plane)),
          .dictation = options.dictation,
          .pressed = options.pressed,
          .disabled = options.disabled};
}

std::optional<std::string> contradictionOf(const ViewOptions& options) {
  if (options.dictation &&
      (options.shift || !options.pressed.empty() || !options.disabled.empty())) {
    return "--dictation shows no keys; leave --press, --disable and --shift out";
  }
  const auto plane = viewOf(options).keyplane.plane;
  if (options.shift &&
      (plane == boards::Plane::numbers || plane == boards::Plane::numbers_alternate)) {
    return "--shift is for letters; this keyplane has none";
  }
  return std::nullopt;
}

std::vector<View> everyView(const ViewOptions& options) {
  std::vector<View> views;
  const auto add = [&](auto... choice) {
    views.emplace_back().keyplane = choose(options, choice...);
  };
  for (const auto& [device, board] : kDevices) {
    for (const auto& [side, orientation] : kOrientations) {
      for (const auto& [style, look] : kStyles) {
        if (!isOpen(options.device, board) || !isOpen(options.orientation, orientation) ||
            !isOpen(options.style, look)) {
          continue;
        }
        for (const auto& [name, plane] : kPlanes) {
          if (isOpen(options.plane, plane)) add(board, orientation, look, plane);
        }
        if (options.plane) continue;
        add(board, orientation, look, boards::Plane::small_letters);
        views.back().dictation = true;
      }
    }
  }
  return views;
}

std::vector<std::string_view> wordsOf(const View& view) {
  const auto& keyplane = view.keyplane;
  return {wordOf(kDevices, keyplane.board->name), wordOf(kOrientations, keyplane.orientation),
          wordOf(kStyles, keyplane.look),
          view.dictation ? "dictation" : wordOf(kPlanes, keyplane.plane)};
}

}  // namespace tools::keyboard
