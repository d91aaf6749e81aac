#include <cstdio>
#include <cstring>
#include <png.h>
#include <utility>
#include <vector>

#include "host/images/decode_formats.h"
#include "host/images/guarded.h"

namespace host::images {
namespace {

constexpr std::size_t kChannels = 4;
constexpr png_uint_32 kPixelChunk = 0x49444154;  // IDAT

class PngReader {
 public:
  explicit PngReader(std::string_view file)
      : rest_(file), png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, fail, ignore)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

  DecodeResult read(std::uint64_t maxPixels) {
    if (info_ == nullptr) return noPicture("Not enough memory");
    if (!guarded(escape_, [this] { readHeader(); })) return noPicture(reason_);
    if (const char* why = refusalOf(width_, height_, maxPixels)) return noPicture(why);
    if (!guarded(escape_, [this] { askForRgba(); })) return noPicture(reason_);

    const std::uint64_t pixels = std::uint64_t{width_} * height_;
    Bitmap bitmap{static_cast<int>(width_), static_cast<int>(height_), true, {}};
    const bool whole = passes_ == 1 ? readRows(bitmap.pixels) : readInterlaced(bitmap.pixels);
    if (!whole) return noPicture(reason_, pixels);
    bitmap.opaque = (alphas_ >> 24) == 255;
    return {std::move(bitmap), {}, pixels};
  }

 private:
  // Never while png_create_* run: what goes wrong there makes them return null.
  [[noreturn]] static void fail(png_structp png, png_const_charp message) {
    auto& self = *static_cast<PngReader*>(png_get_error_ptr(png));
    static_cast<void>(std::snprintf(self.reason_, sizeof self.reason_, "%s", message));
    std::longjmp(self.escape_, 1);
  }
  static void ignore(png_structp, png_const_charp) {}

  static void take(png_structp png, png_bytep bytes, std::size_t size) {
    auto& self = *static_cast<PngReader*>(png_get_io_ptr(png));
    if (size > self.rest_.size()) png_error(png, "Cut short");
    if (self.isAtLastRows_ && (self.lastBytes_ += size) > kMaxLastBytes &&
        png_get_io_chunk_type(png) == kPixelChunk) {
      png_error(png, "Too much data after the last row");
    }
    std::memcpy(bytes, self.rest_.data(), size);
    self.rest_.remove_prefix(size);
  }

  // The library unpacks what follows the last pixel as it reads the last row of all, which is one
  // of the last two in whatever order they come.
  void readRow(png_uint_32 y, png_bytep row) {
    isAtLastRows_ = y + 2 >= height_;
    png_read_row(png_, row, nullptr);
  }

  void readHeader() {
    png_set_read_fn(png_, this, take);
    png_set_user_limits(png_, kMaxSide, kMaxSide);
    png_set_chunk_cache_max(png_, kMaxKeptChunks);
    png_set_chunk_malloc_max(png_, kMaxChunkBytes);
    // Only what decides about pixels is read: no profiles, texts and the like.
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_crc_action(png_, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    png_read_info(png_, info_);
    width_ = png_get_image_width(png_, info_);
    height_ = png_get_image_height(png_, info_);
  }

  void askForRgba() {
    png_set_expand(png_);  // palette, less than 8 bits, transparent colour
    png_set_strip_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_add_alpha(png_, 0xff, PNG_FILLER_AFTER);
    passes_ = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    if (png_get_rowbytes(png_, info_) != kChannels * width_) png_error(png_, "Not RGBA");
  }

  // Room grows with what the file delivers, so that a small file can't claim much memory.
  bool readRows(std::vector<Pixel>& pixels) {
    std::vector<png_byte> row(kChannels * width_);
    pixels.reserve(std::size_t{width_} * height_);
    for (png_uint_32 y = 0; y < height_; ++y) {
      if (!guarded(escape_, [&] { readRow(y, row.data()); })) return false;
      appendRow(row.data(), pixels);
    }
    return readEnd();
  }

  // Every pass needs all rows, so they are read into the pixels' own place.
  bool readInterlaced(std::vector<Pixel>& pixels) {
    pixels.resize(std::size_t{width_} * height_);
    auto* const bytes = reinterpret_cast<png_bytep>(pixels.data());
    const auto readPasses = [&] {
      for (int pass = 0; pass < passes_; ++pass) {
        for (png_uint_32 y = 0; y < height_; ++y) {
          readRow(y, bytes + std::size_t{y} * kChannels * width_);
        }
      }
    };
    if (!guarded(escape_, readPasses)) return false;
    for (Pixel& pixel : pixels) {
      png_byte rgba[kChannels];
      std::memcpy(rgba, &pixel, sizeof rgba);
      pixel = toPixel(rgba);
    }
    return readEnd();
  }

  bool readEnd() {
    return guarded(escape_, [this] { png_read_end(png_, nullptr); });
  }

  void appendRow(const png_byte* rgba, std::vector<Pixel>& pixels) {
    const std::size_t begin = pixels.size();
    pixels.resize(begin + width_);
    for (std::size_t x = 0; x < width_; ++x) pixels[begin + x] = toPixel(rgba + kChannels * x);
  }

  Pixel toPixel(const png_byte* rgba) {
    const Pixel pixel = pixelOf(rgba[0], rgba[1], rgba[2], rgba[3]);
    alphas_ &= pixel;
    return pixel;
  }

  std::string_view rest_;
  std::jmp_buf escape_;
  char reason_[96] = "";
  png_structp png_;
  png_infop info_ = nullptr;
  png_uint_32 width_ = 0;
  png_uint_32 height_ = 0;
  int passes_ = 1;
  bool isAtLastRows_ = false;
  std::size_t lastBytes_ = 0;  // read since the last rows began
  Pixel alphas_ = ~Pixel{0};
};

}  // namespace

DecodeResult decodePng(std::string_view file, std::uint64_t maxPixels) {
  return PngReader(file).read(maxPixels);
}

}  // namespace host::images
