#pragma once

#include <string>
#include <vector>

namespace tools {

/// Rows of equally many texts as lines of columns, two spaces between them; the first row is the
/// heading. UTF-8, every character taken for one column wide, control characters escaped.
std::string textTable(const std::vector<std::vector<std::string>>& rows);

}  // namespace tools
