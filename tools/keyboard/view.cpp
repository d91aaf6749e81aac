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

/// A board held one way, with all that it can show.
struct Series {
  std::string_view board;
  boards::Orientation orientation;
};

constexpr Series kSeries[] = {
    {"Phone-3.5-Inch", boards::Orientation::portrait},
    {"Phone-3.5-Inch", boards::Orientation::landscape},
    {"Phone-4-Inch", boards::Orientation::portrait},
    {"Phone-4-Inch", boards::Orientation::landscape},
    {"Tablet", boards::Orientation::portrait},
    {"Tablet", boards::Orientation::landscape},
    {"Tablet-Split", boards::Orientation::portrait},
    {"Tablet-Split", boards::Orientation::landscape},
};

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

std::vector<View> everyView(const ViewOptions& options) {
  std::vector<View> views;
  for (const Series& series : kSeries) {
    if (!isOpen(options.device, series.board)) continue;
    if (!isOpen(options.orientation, series.orientation)) continue;
    for (const auto& style : kStyles) {
      if (!isOpen(options.style, style.value)) continue;
      const auto add = [&](boards::Plane plane, bool dictation) {
        View view;
        view.keyplane = choose(options, series.board, series.orientation, style.value, plane);
        view.dictation = dictation;
        views.push_back(std::move(view));
      };
      for (const auto& plane : kPlanes) {
        if (isOpen(options.plane, plane.value)) add(plane.value, false);
      }
      if (!options.plane) add(boards::Plane::small_letters, true);
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
