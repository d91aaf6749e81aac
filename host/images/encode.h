#pragma once

#include <string>

#include "host/images/bitmap.h"

namespace host::images {

/// A PNG file of 8 bits a channel, without alpha when the bitmap is opaque. Made to be fast rather
/// than small. Decoded again it is the same bitmap. Empty when the bitmap is invalid or there is no
/// memory for two more of its size. Any thread.
std::string encodePng(const Bitmap& bitmap);

/// A JPEG file of `quality` 1 to 100; what shines through is laid over black. Empty when the bitmap
/// is invalid or larger than the format can hold (65500 a side), or there is no memory. Any thread.
std::string encodeJpeg(const Bitmap& bitmap, int quality = 90);

}  // namespace host::images
