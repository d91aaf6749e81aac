#include <utility>
#include <vector>

#include "host/images/decode_formats.h"
#include "host/images/guarded.h"
#include "host/images/jpeg_library.h"

namespace host::images {
namespace {

// A progressive picture comes in about ten scans, each of which goes over all of it. A file of a
// few bytes a scan could keep us busy for hours.
constexpr int kMaxScans = 64;

class JpegReader {
 public:
  explicit JpegReader(std::string_view file) : file_(file) {
    jpeg_.err = &errors_;
    progress_.progress_monitor = countScans;
  }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;
  ~JpegReader() { jpeg_destroy_decompress(&jpeg_); }

  DecodeResult read() {
    if (!guarded(errors_.escape, [this] { readHeader(); })) return noPicture(errors_.reason);
    if (!fits(jpeg_.image_width, jpeg_.image_height)) return noPicture("Too large");
    if (!guarded(errors_.escape, [this] { start(); })) return noPicture(errors_.reason);

    Bitmap bitmap{
        static_cast<int>(jpeg_.output_width), static_cast<int>(jpeg_.output_height), true, {}};
    if (!readRows(bitmap.pixels)) return noPicture(errors_.reason);
    return {std::move(bitmap), {}};
  }

 private:
  static void countScans(j_common_ptr jpeg) {
    if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number <= kMaxScans) return;
    static_cast<JpegErrors*>(jpeg->err)->refuse("Too many scans");
  }

  void readHeader() {
    jpeg_create_decompress(&jpeg_);
    jpeg_.progress = &progress_;
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

DecodeResult decodeJpeg(std::string_view file) {
  return JpegReader(file).read();
}

}  // namespace host::images
