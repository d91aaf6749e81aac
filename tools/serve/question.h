#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "keyboard/view.h"
#include "keyboard/words.h"

namespace tools::serve {

/// With what the keyboard is drawn.
enum class Look : std::uint8_t { theme, system, other };

inline constexpr keyboard::Word<Look> kLooks[] = {
    {"theme", Look::theme}, {"system", Look::system}, {"other", Look::other}};

/// What can stand beside another look.
inline constexpr keyboard::Word<Look> kOtherLooks[] = {{"system", Look::system},
                                                       {"other", Look::other}};

/// The visual styles behind whose keys a user can put a picture.
inline constexpr std::string_view kBackgroundStyles[] = {"iPhone-Standard",  "iPhone-Alert",
                                                         "iPhone-Dictation", "iPad-Standard",
                                                         "iPad-Alert",       "iPad-Split"};

/// Pixels a point. The whole ones are those that a device can have; between them lie those of
/// screens on a desk.
inline constexpr keyboard::Word<double> kScales[] = {{"1", 1},       {"1.25", 1.25}, {"1.5", 1.5},
                                                     {"1.75", 1.75}, {"2", 2},       {"2.5", 2.5},
                                                     {"3", 3},       {"4", 4}};

using Parameters = std::vector<std::pair<std::string, std::string>>;

/// What a page asks of the keyboard. Each route reads those parts that its parameters name.
struct Question {
  keyboard::ViewOptions view;
  Look look = Look::theme;
  double scale = 2;
  std::string key;
  std::string visualStyle;
  std::string backgroundStyle;
  std::optional<std::size_t> rule;
  std::optional<std::size_t> picture;  ///< of the theme's own
  std::optional<bool> usePrismal;
  bool remove = false;
  std::optional<Look> beside;
};

/// The value for people and programs that a parameter may have: its words, or null for a text.
struct ParameterWords {
  std::string_view name;
  std::vector<std::string_view> words;
};

/// The parameters that are one of a few words, in the order of the command line's options.
std::vector<ParameterWords> choices();

/// Reads `parameters`, whose names must be among `allowed`, into a question; else says what is
/// wrong with which of them. Only those that name keys may be given several times.
std::optional<std::string> readQuestion(const Parameters& parameters,
                                        std::span<const std::string_view> allowed,
                                        Question& question);

/// The names of parameters that have been read before, and can be read again.
std::vector<std::string_view> namesIn(const Parameters& parameters);

}  // namespace tools::serve
