#include <algorithm>

#include "check/output.h"

namespace tools::check {

namespace {

/// How a terminal is told to change colours; nothing of it when there are none.
struct Paint {
  std::string_view error;
  std::string_view warning;
  std::string_view strong;
  std::string_view faint;
  std::string_view plain;

  std::string_view of(Severity severity) const {
    return severity == Severity::error ? error : warning;
  }
};
constexpr Paint kColors = {"\x1b[1;31m", "\x1b[1;35m", "\x1b[1m", "\x1b[2m", "\x1b[0m"};

std::string placeOf(const Report& report, const Finding& finding) {
  const auto [line, column] = finding.place.position;
  if (line == 0) return report.file + ":";
  return report.file + ":" + std::to_string(line) + ":" + std::to_string(column) + ":";
}

std::string lineOf(const Report& report, const Finding& finding, const Paint& paint) {
  const Severity severity = finding.rule->severity;
  std::string line;
  line.append(paint.strong).append(placeOf(report, finding)).append(paint.plain).append(" ");
  line.append(paint.of(severity)).append(wordOf(severity)).append(":").append(paint.plain);
  line.append(" ").append(sentenceOf(finding)).append(" ");
  return line.append(paint.faint)
             .append("[")
             .append(finding.rule->name)
             .append("]")
             .append(paint.plain) +
         "\n";
}

/// White space as wide as the beginning of `text`, so that what follows stands below its place.
std::string indentOf(std::string_view text, std::uint32_t characters) {
  std::string indent;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) continue;
    if (characters-- == 0) break;
    indent += c == '\t' ? '\t' : ' ';
  }
  return indent;
}

/// A file may hold what would move the cursor.
std::string shown(std::string_view text) {
  std::string clean(text);
  std::ranges::replace_if(
      clean, [](char c) { return c != '\t' && static_cast<unsigned char>(c) < 0x20; }, ' ');
  std::ranges::replace(clean, '\x7f', ' ');
  return clean;
}

std::string excerptOf(const Finding& finding, const Paint& paint) {
  const auto& [text, mark] = finding.source;
  const std::string number = std::to_string(finding.place.position.line);
  const std::string margin(std::max<std::size_t>(number.size(), 4), ' ');
  std::string excerpt;
  if (!text.empty()) {
    excerpt += " " + margin.substr(number.size()) + number + " | " + shown(text) + "\n";
    excerpt += " " + margin + " | " + indentOf(text, mark - 1);
    excerpt.append(paint.of(finding.rule->severity)).append("^").append(paint.plain) += "\n";
  }
  if (!finding.log.empty()) excerpt += " " + margin + " = the library logs: " + finding.log + "\n";
  return excerpt;
}

}  // namespace

std::string sentenceOf(const Finding& finding) {
  return (finding.place.path.empty() ? "" : finding.place.path + ": ") + finding.message;
}

std::string textOf(std::span<const Report> reports, bool full, bool inColor) {
  const Paint paint = inColor ? kColors : Paint();
  std::string text;
  for (const Report& report : reports) {
    for (const Finding& finding : report.findings) {
      text += lineOf(report, finding, paint);
      if (full) text += excerptOf(finding, paint);
    }
  }
  return text;
}

std::string githubOf(std::span<const Report> reports) {
  const auto escaped = [](std::string_view text, std::string_view special) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (special.find(c) == special.npos) {
        result += c;
      } else {
        result.append("%").append({kDigits[byte >> 4U], kDigits[byte & 0xFU]});
      }
    }
    return result;
  };
  std::string text;
  for (const Report& report : reports) {
    for (const Finding& finding : report.findings) {
      const auto [line, column] = finding.place.position;
      text.append("::").append(wordOf(finding.rule->severity));
      text += " file=" + escaped(report.file, "%\r\n:,");
      if (line > 0) text += ",line=" + std::to_string(line) + ",col=" + std::to_string(column);
      text.append(",title=").append(finding.rule->name);
      text += "::" + escaped(sentenceOf(finding), "%\r\n") + "\n";
    }
  }
  return text;
}

std::size_t countOf(std::span<const Report> reports, Severity severity) {
  std::size_t count = 0;
  for (const Report& report : reports) {
    for (const Finding& finding : report.findings) count += finding.rule->severity == severity;
  }
  return count;
}

}  // namespace tools::check
