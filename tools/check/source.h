#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/finding.h"
#include "check/source_lines.h"
#include "host/files/device_root.h"
#include "host/files/result.h"
#include "host/plist/key_positions.h"
#include "platform/property_list.h"

namespace tools::check {

/// The file of the theme at `theme`, a folder or a file, as it is named to people.
std::string fileOfTheme(const std::string& theme);

/// A theme's file, with the places of all that is in it.
class Source {
 public:
  /// Why there is no list to check, and where.
  struct Refusal {
    host::plist::Position position;
    std::string reason;
    SourceLine line;
  };

  /// Reads the theme at `theme`. What is at the root may be of any type. When there is nothing,
  /// `refusal` says why.
  static std::optional<Source> read(const std::string& theme, Refusal& refusal);

  const platform::PropertyList& list() const { return list_; }
  /// Whether the theme is a folder, which has its pictures in it.
  bool isFolder() const { return isFolder_; }
  /// The folder in which the file lies.
  const host::files::DeviceRoot& folder() const { return folder_; }

  Place at(std::string path, platform::PropertyListView value) const;
  /// The place of an entry's key.
  Place atKey(std::string path, const platform::PropertyListEntry& entry) const;
  /// The place of what begins `offset` bytes into the text of a string at `place`: another one only
  /// where it stands on a later line, and the file has the text as it is.
  Place within(const Place& place, std::string_view text, std::size_t offset) const;
  const host::plist::KeyPositions& keys() const { return keys_; }

  /// Gives each finding the line of the file on which it stands. They are in the order of their
  /// places, so that one pass over the file does.
  void addLines(std::vector<Finding>& findings) const;

 private:
  Source(host::files::DeviceRoot folder, std::string bytes, bool isFolder)
      : folder_(std::move(folder)), bytes_(std::move(bytes)), isFolder_(isFolder) {}

  host::files::DeviceRoot folder_;
  std::string bytes_;
  mutable SourceLines lines_;
  bool isFolder_;
  platform::PropertyList list_;
  host::plist::KeyPositions keys_;
};

/// The path of an item, and of the value under a key, of what has `path`.
std::string itemOf(const std::string& path, std::size_t index);
std::string entryOf(const std::string& path, std::string_view key);

}  // namespace tools::check
