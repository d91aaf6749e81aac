#pragma once

#include <cstdint>
#include <png.h>
#include <string>
#include <vector>

namespace host::images {

/// What a sample PNG file is made of. `bytes` holds the rows, packed as the file does.
struct PngFile {
  png_uint_32 width = 1;
  png_uint_32 height = 1;
  int depth = 8;
  int color_type = PNG_COLOR_TYPE_RGB;
  std::vector<png_byte> bytes = {};
  const png_color_16* transparent = nullptr;
  std::vector<png_color> palette = {};
  std::vector<png_byte> palette_alphas = {};
  int interlace = PNG_INTERLACE_NONE;
  bool has_ancillary_chunks = false;
};

/// The file, written by the library itself.
inline std::string written(const PngFile& sample) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  std::string file;
  const auto put = [](png_structp writer, png_bytep bytes, std::size_t size) {
    static_cast<std::string*>(png_get_io_ptr(writer))
        ->append(reinterpret_cast<const char*>(bytes), size);
  };
  png_set_write_fn(png, &file, put, nullptr);
  png_set_IHDR(png, info, sample.width, sample.height, sample.depth, sample.color_type,
               sample.interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!sample.palette.empty()) {
    png_set_PLTE(png, info, sample.palette.data(), static_cast<int>(sample.palette.size()));
  }
  if (!sample.palette_alphas.empty() || sample.transparent != nullptr) {
    png_set_tRNS(png, info, sample.palette_alphas.data(),
                 static_cast<int>(sample.palette_alphas.size()), sample.transparent);
  }
  if (sample.has_ancillary_chunks) {
    png_set_gAMA(png, info, 0.2);
    png_color_16 background{};
    background.red = 9;
    png_set_bKGD(png, info, &background);
  }
  png_write_info(png, info);
  const std::size_t row = png_get_rowbytes(png, info);
  std::vector<png_bytep> rows;
  for (png_uint_32 y = 0; y < sample.height; ++y) {
    rows.push_back(const_cast<png_bytep>(sample.bytes.data()) + y * row);
  }
  png_write_image(png, rows.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

}  // namespace host::images
