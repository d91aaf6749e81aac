#include "text_table.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "host/plist/description.h"

namespace tools {
namespace {

using Rows = std::vector<std::vector<std::string>>;

/// What a theme says may hold what would move the cursor.
Rows printable(const Rows& rows) {
  Rows clean = rows;
  for (auto& row : clean) {
    for (std::string& cell : row) cell = host::plist::escapeControls(cell);
  }
  return clean;
}

std::size_t columnsOf(std::string_view text) {
  const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80; };
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continues));
}

std::vector<std::size_t> widthsOf(const Rows& rows) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columnsOf(row[i]));
  }
  return widths;
}

}  // namespace

std::string textTable(const Rows& written) {
  if (written.empty()) return {};
  const Rows rows = printable(written);
  const auto widths = widthsOf(rows);
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      line.append(widths[i] - columnsOf(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace tools
