#include <new>
#include <utility>

#include "host/images/encode.h"
#include "host/images/guarded.h"
#include "host/images/jpeg_library.h"

namespace host::images {
namespace {

// Takes the file from the library a buffer at a time. The library's own destination in memory loses
// track of its buffer when it fails.
struct Destination : jpeg_destination_mgr {
  Destination() : jpeg_destination_mgr{} {
    init_destination = [](j_compress_ptr jpeg) { of(jpeg).restart(); };
    empty_output_buffer = [](j_compress_ptr jpeg) {
      of(jpeg).keep(jpeg, sizeof of(jpeg).buffer);
      of(jpeg).restart();
      return boolean{TRUE};
    };
    term_destination = [](j_compress_ptr jpeg) {
      of(jpeg).keep(jpeg, sizeof of(jpeg).buffer - of(jpeg).free_in_buffer);
    };
  }

  std::string file;

 private:
  static Destination& of(j_compress_ptr jpeg) { return *static_cast<Destination*>(jpeg->dest); }

  void restart() {
    next_output_byte = buffer;
    free_in_buffer = sizeof buffer;
  }
  void keep(j_compress_ptr jpeg, std::size_t size) {
    bool kept = true;
    try {
      file.append(reinterpret_cast<const char*>(buffer), size);
    } catch (const std::bad_alloc&) {
      kept = false;  // an exception mustn't cross the library, nor a jump leave a handler
    }
    if (!kept) ERREXIT1(jpeg, JERR_OUT_OF_MEMORY, 0);
  }

  JOCTET buffer[64 * 1024];
};

class JpegWriter {
 public:
  explicit JpegWriter(const Bitmap& bitmap) : bitmap_(bitmap) { jpeg_.err = &errors_; }
  JpegWriter(const JpegWriter&) = delete;
  JpegWriter& operator=(const JpegWriter&) = delete;
  ~JpegWriter() { jpeg_destroy_compress(&jpeg_); }

  std::string write(int quality) {
    if (!guarded(errors_.escape, [&] { writeAll(quality); })) return {};
    return std::move(destination_.file);
  }

 private:
  void writeAll(int quality) {
    jpeg_create_compress(&jpeg_);
    jpeg_.dest = &destination_;
    jpeg_.image_width = static_cast<JDIMENSION>(bitmap_.width);
    jpeg_.image_height = static_cast<JDIMENSION>(bitmap_.height);
    jpeg_.input_components = 4;
    // A premultiplied colour is what it looks like over black.
    jpeg_.in_color_space = kPixelWithoutAlpha;
    jpeg_set_defaults(&jpeg_);
    jpeg_set_quality(&jpeg_, quality, TRUE);
    jpeg_start_compress(&jpeg_, TRUE);
    for (int y = 0; y < bitmap_.height; ++y) {
      // The library only reads rows; its type is older than const.
      auto* row = reinterpret_cast<JSAMPROW>(const_cast<Pixel*>(bitmap_.row(y)));
      jpeg_write_scanlines(&jpeg_, &row, 1);
    }
    jpeg_finish_compress(&jpeg_);
  }

  const Bitmap& bitmap_;
  JpegErrors errors_;
  Destination destination_;
  jpeg_compress_struct jpeg_{};
};

}  // namespace

std::string encodeJpeg(const Bitmap& bitmap, int quality) {
  return bitmap.isValid() ? JpegWriter(bitmap).write(quality) : std::string();
}

}  // namespace host::images
