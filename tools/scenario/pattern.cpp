#include "scenario/pattern.h"

#include <regex>
#include <system_error>

#include "scenario/deep_stack.h"

namespace tools::scenario {
namespace {

/// How many bytes a character takes that begins with `lead`; 0 for a byte that begins none.
constexpr std::size_t lengthAfter(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

/// The code points of UTF-8 text; U+FFFD for every byte that is not part of one.
std::wstring codePoints(std::string_view text) {
  static_assert(sizeof(wchar_t) >= 4);
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? unsigned{static_cast<unsigned char>(text[at])} : 0U;
  };
  std::wstring points;
  points.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto length = lengthAfter(byte(i));
    unsigned point = length < 2 ? byte(i) : byte(i) & (0x7FU >> length);
    std::size_t read = 1;
    for (; read < length && (byte(i + read) & 0xC0U) == 0x80U; ++read) {
      point = point << 6U | (byte(i + read) & 0x3FU);
    }
    const bool whole = read == length;
    points += whole ? static_cast<wchar_t>(point) : L'\uFFFD';
    i += whole ? length : 1;
  }
  return points;
}

/// The length of the quantifier that begins at `at`, such as {2}, {2,} or {2,3}; 0 when none does.
std::size_t quantifierLength(std::wstring_view pattern, std::size_t at) {
  const auto digits = [&](std::size_t from) {
    const auto end = pattern.find_first_not_of(L"0123456789", from);
    return end == pattern.npos ? pattern.size() : end;
  };
  const auto least = digits(at + 1);
  if (least == at + 1) return 0;
  const auto end = pattern.substr(least).starts_with(L',') ? digits(least + 1) : least;
  return pattern.substr(end).starts_with(L'}') ? end + 1 - at : 0;
}

/// The pattern with every brace that begins or ends no quantifier escaped. ECMAScript engines take
/// such a brace for itself, as in "ERROR: {G = A; }"; the standard library does not.
std::wstring withPlainBraces(std::wstring_view pattern) {
  std::wstring result;
  bool inClass = false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t c = pattern[i];
    if (c == L'\\' && i + 1 < pattern.size()) {
      result += c;
      result += pattern[++i];
    } else if (c == L'{' && !inClass && quantifierLength(pattern, i) != 0) {
      const auto length = quantifierLength(pattern, i);
      result += pattern.substr(i, length);
      i += length - 1;
    } else {
      if (!inClass && (c == L'{' || c == L'}')) result += L'\\';
      result += c;
      inClass = inClass ? c != L']' : c == L'[';
    }
  }
  return result;
}

struct Compiled {
  std::wregex regex;
  bool hasBackReferences = false;
};

/// Throws std::regex_error. Recurses as deep as `pattern` is long.
Compiled compile(const std::wstring& pattern) {
  constexpr auto kFlags = std::regex_constants::ECMAScript;
#ifdef __GLIBCXX__
  // Follows all ways to match at once, so that the length of a text costs no stack and no pattern
  // takes exponential time. Only back references can't be had so.
  try {
    return {std::wregex(pattern,
                        kFlags | std::regex_constants::nosubs | std::regex_constants::__polynomial),
            false};
  } catch (const std::regex_error& error) {
    if (error.code() != std::regex_constants::error_complexity) throw;
  }
#endif
  return {std::wregex(pattern, kFlags), true};
}

/// `attempt` with the compiled pattern, on a stack that is deep enough for it; otherwise why not.
template <class Attempt>
std::string withCompiled(std::string_view pattern, Attempt attempt) {
  const auto points = codePoints(pattern);
  if (points.size() > kMaxPatternLength) {
    return "longer than " + std::to_string(kMaxPatternLength) + " characters";
  }
  try {
    onDeepStack([&] { attempt(compile(withPlainBraces(points))); });
  } catch (const std::regex_error& error) {
    const bool tooLarge = error.code() == std::regex_constants::error_space;
    return tooLarge ? "its repetitions make it too large" : error.what();
  } catch (const std::system_error& error) {
    return error.what();
  }
  return {};
}

}  // namespace

std::optional<std::string> patternFault(std::string_view pattern) {
  auto fault = withCompiled(pattern, [](const Compiled&) {});
  if (fault.empty()) return std::nullopt;
  return fault;
}

PatternMatch matchWhole(std::string_view pattern, std::string_view text) {
  PatternMatch match;
  bool tooLong = false;
  match.fault = withCompiled(pattern, [&](const Compiled& compiled) {
    const auto points = codePoints(text);
    tooLong = compiled.hasBackReferences && points.size() > kMaxBackReferenceTextLength;
    match.matches = !tooLong && std::regex_match(points, compiled.regex);
  });
  if (tooLong) {
    match.fault = "a pattern with back references is tried on at most " +
                  std::to_string(kMaxBackReferenceTextLength) + " characters";
  }
  return match;
}

}  // namespace tools::scenario
