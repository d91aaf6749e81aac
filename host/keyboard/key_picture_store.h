#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/device_root.h"
#include "host/keyboard/key_picture_file.h"

namespace host::keyboard {

/// The pictures of drawn keys, in groups: in memory, and each group in a file of the device's cache
/// directory, so that the next process need not draw them. A file that is missing, damaged or of
/// another version counts as one without pictures; one that can't be written is done without. Main
/// thread only.
class KeyPictureStore {
 public:
  static constexpr std::string_view kDirectory = "/var/mobile/Library/Caches/com.apple.keyboards";
  /// Ends the name of every file that holds a group.
  static constexpr std::string_view kSuffix = ".keys";

  /// Keeps files on the device at `root`, which must outlive the store; null: memory is all.
  explicit KeyPictureStore(const files::DeviceRoot* root) : root_(root) {}

  /// From now on memory is all: files are neither read nor written nor removed.
  void keepInMemory() { root_ = nullptr; }

  /// The group of that name: from memory, else from its file, else without pictures, as it is when
  /// what is there has another stamp. Stays where it is until it is removed. A name of other
  /// characters than letters, digits and "-._@", of more than 200, or with a dot in front has no
  /// file.
  KeyPictureGroup& open(std::string_view name, std::string_view stamp);

  /// Puts the group of that name, as it is in memory, in the place of its file.
  void write(std::string_view name) const;

  /// The names of all groups, in memory or in files, sorted by bytes.
  std::vector<std::string> groups() const;

  /// Removes a group from memory and its file.
  void remove(std::string_view name);

  /// Removes what is of no use: groups without pictures, and files of groups that nobody can read.
  void purge();

  /// Forgets everything that is in memory. Files stay.
  void clearMemory() { memory_.clear(); }

 private:
  KeyPictureGroup read(std::string_view name) const;
  std::vector<std::string> fileGroups() const;

  const files::DeviceRoot* root_;
  std::map<std::string, KeyPictureGroup, std::less<>> memory_;
};

}  // namespace host::keyboard
