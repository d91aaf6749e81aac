#include "serve/question.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "host/plist/utf8.h"

namespace tools::serve {

namespace {

constexpr std::size_t kMostKeys = 16;
constexpr std::size_t kLongestKey = 64;
constexpr std::size_t kMostDigits = 9;

/// Puts a value into a question; false when it can't be one.
using Put = bool (*)(Question&, std::string_view);

template <class Target, class Value, std::size_t size>
bool putWord(Target& target, const keyboard::Word<Value> (&words)[size], std::string_view text) {
  const auto* const found = std::ranges::find(words, text, &keyboard::Word<Value>::word);
  if (found == std::end(words)) return false;
  target = found->value;
  return true;
}

template <std::size_t size>
bool putName(std::string& target, const std::string_view (&names)[size], std::string_view text) {
  target = text;
  return std::ranges::find(names, text) != std::end(names);
}

/// A name or a label: short, and printable.
bool isKey(std::string_view text) {
  if (text.empty() || text.size() > kLongestKey) return false;
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  return host::plist::findInvalidUtf8(text) == text.npos && std::ranges::none_of(text, isControl);
}

bool putKey(std::vector<std::string>& keys, std::string_view text) {
  if (!isKey(text) || keys.size() == kMostKeys) return false;
  keys.emplace_back(text);
  return true;
}

std::optional<std::size_t> numberOf(std::string_view text) {
  std::size_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  const bool isWhole = error == std::errc() && last == end && text.size() <= kMostDigits;
  return isWhole ? std::optional(number) : std::nullopt;
}

struct Parameter {
  std::string_view name;
  Put put;
  bool repeats = false;
};

constexpr Parameter kParameters[] = {
    {"device",
     [](Question& to, auto text) { return putWord(to.view.device, keyboard::kDevices, text); }},
    {"orientation",
     [](Question& to, auto text) {
       return putWord(to.view.orientation, keyboard::kOrientations, text);
     }},
    {"style",
     [](Question& to, auto text) { return putWord(to.view.style, keyboard::kStyles, text); }},
    {"keyplane",
     [](Question& to, auto text) { return putWord(to.view.plane, keyboard::kPlanes, text); }},
    {"dictation-key",
     [](Question& to, auto text) {
       return putWord(to.view.dictationKey, keyboard::kYesOrNo, text);
     }},
    {"international-key",
     [](Question& to, auto text) {
       return putWord(to.view.internationalKey, keyboard::kYesOrNo, text);
     }},
    {"dictation",
     [](Question& to, auto text) { return putWord(to.view.dictation, keyboard::kYesOrNo, text); }},
    {"shift",
     [](Question& to, auto text) { return putWord(to.view.shift, keyboard::kShifts, text); }},
    {"press", [](Question& to, auto text) { return putKey(to.view.pressed, text); }, true},
    {"disable", [](Question& to, auto text) { return putKey(to.view.disabled, text); }, true},
    {"scale", [](Question& to, auto text) { return putWord(to.scale, kScales, text); }},
    {"look", [](Question& to, auto text) { return putWord(to.look, kLooks, text); }},
    {"key",
     [](Question& to, auto text) {
       to.key = text;
       return isKey(text);
     }},
    {"visual-style",
     [](Question& to, auto text) {
       return putName(to.visualStyle, keyboard::kVisualStyles, text);
     }},
    {"background-style",
     [](Question& to, auto text) { return putName(to.backgroundStyle, kBackgroundStyles, text); }},
    {"rule", [](Question& to, auto text) { return (to.rule = numberOf(text)).has_value(); }},
    {"picture", [](Question& to, auto text) { return (to.picture = numberOf(text)).has_value(); }},
    {"use-prismal",
     [](Question& to, auto text) { return putWord(to.usePrismal, keyboard::kYesOrNo, text); }},
    {"remove",
     [](Question& to, auto text) { return putWord(to.remove, keyboard::kYesOrNo, text); }},
    {"beside", [](Question& to, auto text) { return putWord(to.beside, kOtherLooks, text); }},
    // Makes an address another one, for browsers.
    {"version", [](Question&, auto text) { return numberOf(text).has_value(); }},
};

template <class Value, std::size_t size>
ParameterWords wordsFor(std::string_view name, const keyboard::Word<Value> (&words)[size]) {
  ParameterWords choice{name, {}};
  for (const auto& word : words) choice.words.push_back(word.word);
  return choice;
}

/// For people, whatever it was.
std::string shown(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  return "\"" + std::string(text.substr(0, kLongest)) + "\"";
}

}  // namespace

std::vector<ParameterWords> choices() {
  return {wordsFor("device", keyboard::kDevices),
          wordsFor("orientation", keyboard::kOrientations),
          wordsFor("style", keyboard::kStyles),
          wordsFor("keyplane", keyboard::kPlanes),
          wordsFor("shift", keyboard::kShifts),
          wordsFor("dictation", keyboard::kYesOrNo),
          wordsFor("dictation-key", keyboard::kYesOrNo),
          wordsFor("international-key", keyboard::kYesOrNo),
          wordsFor("scale", kScales),
          wordsFor("look", kLooks)};
}

std::optional<std::string> readQuestion(const Parameters& parameters,
                                        std::span<const std::string_view> allowed,
                                        Question& question) {
  std::vector<std::string_view> seen;
  for (const auto& [name, value] : parameters) {
    if (std::ranges::find(allowed, name) == allowed.end())
      return shown(name) + ": no parameter here";
    const auto* const known = std::ranges::find(kParameters, name, &Parameter::name);
    if (!known->repeats && std::ranges::find(seen, name) != seen.end()) return name + ": twice";
    if (!known->put(question, value)) return name + ": it can't be " + shown(value);
    seen.push_back(known->name);
  }
  return keyboard::contradictionOf(question.view);
}

std::vector<std::string_view> namesIn(const Parameters& parameters) {
  std::vector<std::string_view> names;
  for (const auto& [name, value] : parameters) names.push_back(name);
  return names;
}

}  // namespace tools::serve
