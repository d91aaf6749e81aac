#pragma once

#include <optional>
#include <string>

#include "host/images/placed_bitmap.h"
#include "host/keyboard/key_picture_store.h"
#include "host/render/keyplane.h"

namespace host::render {

/// The pictures that the keyboard's cache has of the keys of one keyplane at one scale. Valid until
/// groups are removed from the cache.
class KeyCache {
 public:
  /// None where the keyboard may not use its cache, which is asked here, or has no store.
  static std::optional<KeyCache> open(const LiveKeyplane& keyplane, double scale);

  /// The picture of `key` as it is now; null when it has not been drawn.
  images::SharedBitmap find(const LiveKey& key) const;
  void put(const LiveKey& key, images::SharedBitmap picture);
  /// Writes the group's file, if anything was put.
  void write();

 private:
  KeyCache(keyboard::KeyPictureStore& store, const LiveKeyplane& keyplane, double scale);
  std::string identityOf(const LiveKey& key) const;

  keyboard::KeyPictureStore& store_;
  std::string name_;
  /// What the drawing of every key depends on.
  std::string surroundings_;
  keyboard::KeyPictureGroup& group_;
  bool hasNew_ = false;
};

}  // namespace host::render
