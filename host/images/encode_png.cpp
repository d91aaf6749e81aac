#include <new>
#include <png.h>
#include <utility>
#include <vector>

#include "host/images/encode.h"
#include "host/images/guarded.h"

namespace host::images {
namespace {

// The library's own are 8 kB: a chunk, its header and its check sum each.
constexpr std::size_t kChunkBytes = 1 << 18;

class PngWriter {
 public:
  explicit PngWriter(const Bitmap& bitmap)
      : bitmap_(bitmap),
        row_((bitmap.opaque ? 3U : 4U) * static_cast<std::size_t>(bitmap.width)),
        png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, this, fail, ignore)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

  std::string write() {
    if (info_ == nullptr || !guarded(escape_, [this] { writeAll(); })) return {};
    return std::move(file_);
  }

 private:
  [[noreturn]] static void fail(png_structp png, png_const_charp) {
    std::longjmp(static_cast<PngWriter*>(png_get_error_ptr(png))->escape_, 1);
  }
  static void ignore(png_structp, png_const_charp) {}

  static void put(png_structp png, png_bytep bytes, std::size_t size) {
    auto& file = static_cast<PngWriter*>(png_get_io_ptr(png))->file_;
    bool kept = true;
    try {
      file.append(reinterpret_cast<const char*>(bytes), size);
    } catch (const std::bad_alloc&) {
      kept = false;  // an exception mustn't cross the library, nor a jump leave a handler
    }
    if (!kept) png_error(png, "Not enough memory");
  }
  static void flush(png_structp) {}

  void writeAll() {
    png_set_write_fn(png_, this, put, flush);
    png_set_IHDR(png_, info_, static_cast<png_uint_32>(bitmap_.width),
                 static_cast<png_uint_32>(bitmap_.height), 8,
                 bitmap_.opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png_, 1);
    png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_set_compression_buffer_size(png_, kChunkBytes);
    png_write_info(png_, info_);
    for (int y = 0; y < bitmap_.height; ++y) {
      fillRow(bitmap_.row(y));
      png_write_row(png_, row_.data());
    }
    png_write_end(png_, nullptr);
  }

  void fillRow(const Pixel* pixels) {
    png_byte* out = row_.data();
    for (const Pixel* const end = pixels + bitmap_.width; pixels != end; ++pixels) {
      const Pixel alpha = bitmap_.opaque ? 255 : *pixels >> 24;
      for (const int shift : {16, 8, 0}) {
        const Pixel color = *pixels >> shift & 255;
        *out++ = static_cast<png_byte>(alpha == 255 ? color : unpremultiplied(color, alpha));
      }
      if (!bitmap_.opaque) *out++ = static_cast<png_byte>(alpha);
    }
  }

  const Bitmap& bitmap_;
  std::vector<png_byte> row_;
  std::string file_;
  std::jmp_buf escape_;
  png_structp png_;
  png_infop info_ = nullptr;
};

}  // namespace

std::string encodePng(const Bitmap& bitmap) {
  return bitmap.isValid() ? PngWriter(bitmap).write() : std::string();
}

}  // namespace host::images
