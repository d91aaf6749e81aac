#pragma once

#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace fuzz {

/// What the library should know of the theme's colours: it has what the files held when it last
/// read them, and nothing of what was written since.
class ExpectedColors {
 public:
  /// Follows what the library has read in a step, from the files as they are now. `makesColors`:
  /// whether the platform makes colours.
  void follow(const nlohmann::ordered_json& reads, bool makesColors);

  /// Requires that the keyboard gets the theme's colours while the master switch is on.
  void require() const;

 private:
  void readTheme(bool makesColors);
  void readSettings();

  bool enabled_ = true;
  std::map<std::string, std::array<double, 4>> colors_;
};

}  // namespace fuzz
