#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli_app.h"
#include "host/render/keyplane.h"

namespace tools::keyboard {

/// One keyboard to be shown: which keyplane, what of it is pressed, or the dictation panel in its
/// place.
struct View {
  host::render::KeyplaneChoice keyplane;
  bool dictation = false;
  std::vector<std::string> pressed;   ///< names or labels of keys
  std::vector<std::string> disabled;  ///< the same
};

/// What the command line says of views. What it doesn't say is for each command to choose.
struct ViewOptions {
  std::optional<std::string_view> device;  ///< a board's name
  std::optional<host::boards::Orientation> orientation;
  std::optional<host::boards::Look> style;
  std::optional<host::boards::Plane> plane;
  std::optional<host::boards::Shift> shift;
  bool dictation = false;
  std::vector<std::string> pressed;
  std::vector<std::string> disabled;
  bool dictationKey = false;
  bool internationalKey = true;
};

/// Adds the options that choose a keyplane. `options` must live until the command line is parsed.
void addKeyplaneOptions(CLI::App& command, ViewOptions& options);

/// The same but for --style, which the command has in another form.
void addKeyplaneOptionsButStyle(CLI::App& command, ViewOptions& options);

/// Adds the options that say what is done to the keyplane.
void addStateOptions(CLI::App& command, ViewOptions& options);

/// Whether `options` say what is done to one keyboard, which makes no sense of several.
bool namesStates(const ViewOptions& options);

/// What of `options` would be without effect; for people, in the words of the command line.
std::optional<std::string> contradictionOf(const ViewOptions& options);

/// The one view that `options` mean: a 3.5-inch phone, upright, its small letters, unless they say
/// otherwise. Shift that is on shows capitals.
View viewOf(const ViewOptions& options);

/// Every view of every board that `options` leave open, the most common boards first.
std::vector<View> everyView(const ViewOptions& options);

/// The words of a view, in the order of the command line's options: "phone-4", "landscape",
/// "alert", "numbers" ("dictation" for the panel).
std::vector<std::string_view> wordsOf(const View& view);

}  // namespace tools::keyboard
