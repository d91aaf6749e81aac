#include "check/source.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "check/words.h"
#include "host/plist/limits.h"
#include "host/plist/utf8.h"
#include "host/plist/values.h"

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
  }

  SourceLine at(Position position) {
    if (position.line == 0) return {};
    for (; number_ < position.line; ++number_) {
      const auto end = rest_.find('\n');
      if (end == std::string_view::npos) return {};
      rest_.remove_prefix(end + 1);
    }
    std::string_view line = rest_.substr(0, rest_.find('\n'));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return around(line, position.column);
  }

 private:
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
  std::uint32_t number_ = 1;
};

bool isFolderAt(const std::string& theme) {
  std::error_code error;
  return fs::is_directory(theme, error);
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
  auto bytes = folder->readFile(file.filename().string(), host::plist::kMaxBytes);
  if (!bytes) {
    const bool isLacking = isFolderAt(theme) && bytes.failure().error == ENOENT;
    refusal = {{}, isLacking ? "missing; a theme folder needs one" : bytes.reason(), {}};
    return std::nullopt;
  }
  Source source(*std::move(folder), *std::move(bytes), isFolderAt(theme));
  auto reading = host::plist::read(source.bytes_, source.keys_);
  if (!reading) {
    refusal = refusalOf(reading.reason);
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

void Source::addLines(std::vector<Finding>& findings) const {
  Lines lines(bytes_);
  for (Finding& finding : findings) finding.source = lines.at(finding.place.position);
}

std::string itemOf(const std::string& path, std::size_t index) {
  return path + "[" + std::to_string(index) + "]";
}

std::string entryOf(const std::string& path, std::string_view key) {
  constexpr std::size_t kLongest = 80;
  return (path.empty() ? "" : path + ".") + inOneLine(key, kLongest);
}

}  // namespace tools::check
