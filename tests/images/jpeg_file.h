#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <jpeglib.h>
#include <string>
#include <vector>

namespace host::images {

/// A JPEG file of one colour, 20 by 12, written by the library itself. `adjust` runs just before it
/// starts.
inline std::string written(J_COLOR_SPACE space, std::vector<JSAMPLE> color,
                           const std::function<void(j_compress_ptr)>& adjust = {}) {
  constexpr JDIMENSION kWidth = 20;
  constexpr JDIMENSION kHeight = 12;
  jpeg_compress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors);
  jpeg_create_compress(&jpeg);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&jpeg, &bytes, &size);
  jpeg.image_width = kWidth;
  jpeg.image_height = kHeight;
  jpeg.input_components = static_cast<int>(color.size());
  jpeg.in_color_space = space;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, 100, TRUE);
  if (adjust) adjust(&jpeg);
  jpeg_start_compress(&jpeg, TRUE);
  std::vector<JSAMPLE> row;
  for (JDIMENSION x = 0; x < kWidth; ++x) row.insert(row.end(), color.begin(), color.end());
  for (JSAMPROW rows = row.data(); jpeg.next_scanline < kHeight;) {
    jpeg_write_scanlines(&jpeg, &rows, 1);
  }
  jpeg_finish_compress(&jpeg);
  std::string file(reinterpret_cast<const char*>(bytes), size);
  jpeg_destroy_compress(&jpeg);
  std::free(bytes);
  return file;
}

}  // namespace host::images
