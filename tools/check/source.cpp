#include "check/source.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "check/words.h"
#include "host/plist/values.h"
#include "theme/dictionary_file.h"

namespace tools::check {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::plist::Position;

namespace {

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
  auto bytes = theme::readListFile(
      *folder, file, isFolderAt(theme) ? theme::Links::kStayInFolder : theme::Links::kLeadAnywhere);
  if (!bytes) {
    const bool isLacking = isFolderAt(theme) && bytes.failure().error == ENOENT;
    refusal = {{}, isLacking ? "missing; a theme folder needs one" : bytes.reason(), {}};
    return std::nullopt;
  }
  Source source(*std::move(folder), *std::move(bytes), isFolderAt(theme));
  auto reading = host::plist::read(source.bytes_, source.keys_);
  if (!reading) {
    refusal = refusalOf(reading.reason);
    refusal.reason += theme::hintFor(source.bytes_);
    refusal.line = SourceLines().at(source.bytes_, refusal.position);
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
  std::string_view written = lines_.from(bytes_, place.position);
  written.remove_prefix(std::min(written.find('>'), written.size() - 1) + 1);
  if (!isWrittenAs(before, written)) return place;
  const std::string_view line = before.substr(before.rfind('\n') + 1);
  return {place.path, {place.position.line + lines, charactersOf(line) + 1}};
}

void Source::addLines(std::vector<Finding>& findings) const {
  for (Finding& finding : findings) finding.source = lines_.at(bytes_, finding.place.position);
}

std::string itemOf(const std::string& path, std::size_t index) {
  return path + "[" + std::to_string(index) + "]";
}

std::string entryOf(const std::string& path, std::string_view key) {
  constexpr std::size_t kLongest = 80;
  return (path.empty() ? "" : path + ".") + (key.empty() ? "\"\"" : inOneLine(key, kLongest));
}

}  // namespace tools::check
