#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "serve/message.h"

namespace tools::serve {

/// What the user of the keyboards that are shown has chosen: a settings file with its pictures, in
/// a directory of its own, from which it is put on every keyboard's device. Any thread.
class UserSettings {
 public:
  /// Keeps them below `folder`, which is there. Throws std::system_error when that can't be used.
  explicit UserSettings(const std::filesystem::path& folder);

  /// Takes over what the user of `device` has chosen.
  host::files::Result<host::files::Done> takeFrom(const host::files::DeviceRoot& device);
  host::files::Result<host::files::Done> setUse(bool use);
  /// `picture` and, if there is one, its double-resolution `sibling` are files' bytes; `name` is
  /// what the page calls it.
  host::files::Result<host::files::Done> setPicture(const std::string& style,
                                                    const std::string& orientation,
                                                    const std::string& name,
                                                    const std::string& picture,
                                                    const std::string& sibling);
  host::files::Result<host::files::Done> removePicture(const std::string& style,
                                                       const std::string& orientation);

  /// The file; empty as long as nothing has been chosen.
  std::string file() const;
  /// The same; empty also when what has been chosen is what a new user has.
  std::string unusualFile() const;
  /// Puts them on the device of a running keyboard, and tells it.
  host::files::Result<host::files::Done> putOn(const host::files::DeviceRoot& device) const;

  /// "usePrismal", and the "pictures" by style and orientation with their names.
  Json json() const;
  /// Another number after every change.
  std::uint64_t generation() const;

 private:
  template <class Edit>
  host::files::Result<host::files::Done> change(const Edit& edit);

  mutable std::mutex mutex_;
  std::filesystem::path path_;
  host::files::DeviceRoot root_;
  std::uint64_t generation_ = 0;
  std::uint64_t pictures_ = 0;   ///< that were ever chosen
  Json names_ = Json::object();  ///< by style, by orientation
};

}  // namespace tools::serve
