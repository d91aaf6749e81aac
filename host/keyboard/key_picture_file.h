#pragma once

// The form in which a group of key pictures is kept in a file, in the byte order of the machine:
//
//   magic         8 bytes
//   version       4 bytes
//   number of pictures     4 bytes
//   checksum of all that follows     8 bytes
//   stamp         4 bytes for its length, then as many
//   a picture     its key's identity, like the stamp; left, top, width, height, 4 bytes each; then
//                 its pixels, 4 bytes each, colours multiplied by alpha, rows from the top

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/images/placed_bitmap.h"

namespace host::keyboard {

/// Pictures of keys that are drawn on one board.
struct KeyPictureGroup {
  /// What drew them; pictures of another stamp may look otherwise.
  std::string stamp;
  /// By the identity of their key: everything that its drawing depends on, in a text of bytes.
  std::map<std::string, images::SharedBitmap, std::less<>> pictures;
};

/// The bytes of a file that holds `group`.
std::string encodeGroup(const KeyPictureGroup& group);

/// The group that `bytes` hold; none when they are not, to the last byte, what encodeGroup makes.
/// Reserves no memory beyond what is there to fill it, whatever the bytes claim. Any thread.
std::optional<KeyPictureGroup> decodeGroup(std::string_view bytes);

}  // namespace host::keyboard
