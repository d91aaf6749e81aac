#include "check/source.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "check/words.h"
#include "host/plist/utf8.h"
#include "host/plist/values.h"
#include "text_file.h"

namespace tools::check {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::plist::Position;

namespace {

/// Finds lines of a text, each further down than the one before.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
    hasReturns_ = rest_.find('\r') != rest_.npos;
  }

  SourceLine at(Position position) {
    if (!goTo(position)) return {};
    return around(rest_.substr(0, endOfLine()), position.column);
  }

  /// All from `position` to the end of the text; empty where there is none.
  std::string_view from(Position position) {
    return goTo(position) ? withoutFirst(rest_, position.column - 1) : "";
  }

 private:
  bool goTo(Position position) {
    for (; number_ < position.line; ++number_) {
      const auto end = endOfLine();
      if (end == rest_.npos) return false;
      rest_.remove_prefix(end + (rest_.substr(end).starts_with("\r\n") ? 2 : 1));
    }
    return position.line > 0;
  }

  std::size_t endOfLine() const {
    // Nearly all files have line feeds alone, which are found faster.
    return hasReturns_ ? rest_.find_first_of("\r\n") : rest_.find('\n');
  }

  /// What is shown of a line: what fits on a screen.
  static SourceLine around(std::string_view line, std::uint32_t column) {
    constexpr std::uint32_t kBefore = 60;
    constexpr std::size_t kMost = 100;
    const std::uint32_t dropped = column > kMost ? column - kBefore : 0;
    std::string_view shown = withoutFirst(line, dropped);
    shown = shown.substr(0, shown.size() - withoutFirst(shown, kMost).size());
    return {std::string(shown), column - dropped};
  }

  /// `text` without its first `count` characters.
  static std::string_view withoutFirst(std::string_view text, std::size_t count) {
    for (; count > 0 && !text.empty(); --count) {
      text.remove_prefix(host::plist::firstUtf8Character(text).length);
    }
    return text;
  }

  std::string_view rest_;
  bool hasReturns_ = false;
  std::uint32_t number_ = 1;
};

bool isFolderAt(const std::string& theme) {
  std::error_code error;
  return fs::is_directory(theme, error);
}

/// Whether `written`, of an XML file, begins with `text` as it is: no reference stands in it.
bool isWrittenAs(std::string_view text, std::string_view written) {
  for (const char c : text) {
    if (c == '\n' && written.starts_with("\r\n")) written.remove_prefix(1);
    const bool isReturn = c == '\n' && written.starts_with('\r');
    if (!isReturn && !written.starts_with(c)) return false;
    written.remove_prefix(1);
  }
  return true;
}

/// Takes `word` and the number behind it off the front of `text`.
std::optional<std::uint32_t> takeNumber(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return std::nullopt;
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [next, error] = std::from_chars(text.data() + word.size(), end, number);
  if (error != std::errc()) return std::nullopt;
  text = {next, end};
  return number;
}

bool mayBeJson(std::string_view bytes) {
  const auto first = bytes.find_first_not_of(" \t\r\n");
  return first != bytes.npos && (bytes[first] == '{' || bytes[first] == '[');
}

/// Parts a reader's reason into the place, which it names first, and the rest.
Source::Refusal refusalOf(std::string_view reason) {
  std::string_view rest = reason;
  const auto line = takeNumber(rest, "line ");
  const auto column = takeNumber(rest, ", column ");
  if (!line || !column || !rest.starts_with(": ")) return {{}, std::string(reason), {}};
  return {{*line, *column}, std::string(rest.substr(2)), {}};
}

}  // namespace

std::string fileOfTheme(const std::string& theme) {
  return isFolderAt(theme) ? (fs::path(theme) / "theme.plist").string() : theme;
}

std::optional<Source> Source::read(const std::string& theme, Refusal& refusal) {
  const fs::path file = fileOfTheme(theme);
  auto folder = DeviceRoot::open(file.has_parent_path() ? file.parent_path() : fs::path("."),
                                 DeviceRoot::Creation::kNever);
  if (!folder) {
    refusal = {{}, folder.reason(), {}};
    return std::nullopt;
  }
  auto bytes = readRegularFile(file.string());
  if (!bytes) {
    const bool isLacking = isFolderAt(theme) && bytes.failure().error == ENOENT;
    refusal = {{}, isLacking ? "missing; a theme folder needs one" : bytes.reason(), {}};
    return std::nullopt;
  }
  Source source(*std::move(folder), *std::move(bytes), isFolderAt(theme));
  auto reading = host::plist::read(source.bytes_, source.keys_);
  if (!reading) {
    refusal = refusalOf(reading.reason);
    if (mayBeJson(source.bytes_)) {
      refusal.reason += "; prismal convert makes a property list of JSON";
    }
    refusal.line = Lines(source.bytes_).at(refusal.position);
    return std::nullopt;
  }
  source.list_ = std::move(reading.list);
  return source;
}

Place Source::at(std::string path, platform::PropertyListView value) const {
  return {std::move(path), host::plist::positionOf(value)};
}

Place Source::atKey(std::string path, const platform::PropertyListEntry& entry) const {
  const Position position = keys_.of(entry.key);
  if (position == Position()) return at(std::move(path), entry.value);
  return {std::move(path), position};
}

Place Source::within(const Place& place, std::string_view text, std::size_t offset) const {
  offset = std::min(text.find_first_not_of(" \t\n", offset), text.size());
  const std::string_view before = text.substr(0, offset);
  const auto lines = static_cast<std::uint32_t>(std::ranges::count(before, '\n'));
  if (lines == 0 || place.position.line == 0) return place;
  std::string_view written = Lines(bytes_).from(place.position);
  written.remove_prefix(std::min(written.find('>'), written.size() - 1) + 1);
  if (!isWrittenAs(before, written)) return place;
  const std::string_view line = before.substr(before.rfind('\n') + 1);
  return {place.path, {place.position.line + lines, charactersOf(line) + 1}};
}

void Source::addLines(std::vector<Finding>& findings) const {
  Lines lines(bytes_);
  for (Finding& finding : findings) finding.source = lines.at(finding.place.position);
}

std::string itemOf(const std::string& path, std::size_t index) {
  return path + "[" + std::to_string(index) + "]";
}

std::string entryOf(const std::string& path, std::string_view key) {
  constexpr std::size_t kLongest = 80;
  return (path.empty() ? "" : path + ".") + (key.empty() ? "\"\"" : inOneLine(key, kLongest));
}

}  // namespace tools::check
