#include <utility>
#include <vector>

#include "host/images/decode_formats.h"
#include "host/images/guarded.h"
#include "host/images/jpeg_library.h"

namespace host::images {
namespace {

class JpegReader {
 public:
  explicit JpegReader(std::string_view file) : file_(file) {
    jpeg_.err = &errors_;
    progress_.progress_monitor = countScans;
  }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;
  ~JpegReader() { jpeg_destroy_decompress(&jpeg_); }

  DecodeResult read(std::uint64_t maxPixels) {
    if (!guarded(errors_.escape, [this] { readHeader(); })) return noPicture(errors_.reason);
    const char* const why = refusalOf(jpeg_.image_width, jpeg_.image_height, maxPixels);
    if (why != nullptr) return noPicture(why);
    const std::uint64_t pixels = std::uint64_t{jpeg_.image_width} * jpeg_.image_height;
    if (!guarded(errors_.escape, [this] { start(); })) return noPicture(errors_.reason, pixels);

    Bitmap bitmap{
        static_cast<int>(jpeg_.output_width), static_cast<int>(jpeg_.output_height), true, {}};
    if (!readRows(bitmap.pixels)) return noPicture(errors_.reason, pixels);
    return {std::move(bitmap), {}, pixels};
  }

 private:
  static void countScans(j_common_ptr jpeg) {
    if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number <= kMaxScans) return;
    static_cast<JpegErrors*>(jpeg->err)->refuse("Too many scans");
  }

  void readHeader() {
    jpeg_create_decompress(&jpeg_);
    jpeg_.progress = &progress_;
    jpeg_.mem->max_memory_to_use = static_cast<long>(kMaxCoderBytes);
    jpeg_mem_src(&jpeg_, reinterpret_cast<const unsigned char*>(file_.data()), file_.size());
    jpeg_read_header(&jpeg_, TRUE);
  }

  void start() {
    const bool is_cmyk = jpeg_.num_components == 4;
    jpeg_.out_color_space = is_cmyk ? JCS_CMYK : kPixelWithAlpha;
    jpeg_start_decompress(&jpeg_);
  }

  bool readRows(std::vector<Pixel>& pixels) {
    const std::size_t width = jpeg_.output_width;
    std::vector<Pixel> row(width);  // four bytes a pixel, in either colour space
    pixels.reserve(width * jpeg_.output_height);
    auto* bytes = reinterpret_cast<JSAMPROW>(row.data());
    while (jpeg_.output_scanline < jpeg_.output_height) {
      if (!guarded(errors_.escape, [&] { jpeg_read_scanlines(&jpeg_, &bytes, 1); })) return false;
      if (jpeg_.out_color_space == JCS_CMYK) cmykToPixels(bytes, row);
      pixels.insert(pixels.end(), row.begin(), row.end());
    }
    // Reads up to the end marker, whose absence shows a file cut short.
    return guarded(errors_.escape, [this] { jpeg_finish_decompress(&jpeg_); });
  }

  // Programs that mark their files as theirs (the marker is Adobe's) store how much paper stays
  // free of each ink, all others how much ink there is.
  void cmykToPixels(const JSAMPLE* cmyk, std::vector<Pixel>& row) const {
    const Pixel flip = jpeg_.saw_Adobe_marker ? 0 : 255;
    for (Pixel& pixel : row) {
      const Pixel free[] = {cmyk[0] ^ flip, cmyk[1] ^ flip, cmyk[2] ^ flip, cmyk[3] ^ flip};
      pixel = Pixel{255} << 24 | premultiplied(free[0], free[3]) << 16 |
              premultiplied(free[1], free[3]) << 8 | premultiplied(free[2], free[3]);
      cmyk += 4;
    }
  }

  std::string_view file_;
  JpegErrors errors_;
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct jpeg_{};
};

}  // namespace

DecodeResult decodeJpeg(std::string_view file, std::uint64_t maxPixels) {
  return JpegReader(file).read(maxPixels);
}

}  // namespace host::images
