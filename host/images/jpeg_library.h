#pragma once

// The JPEG library, in the form that both directions use it. Its header needs others before it.

#include <bit>
#include <csetjmp>
#include <cstddef>
#include <cstdio>
#include <jerror.h>
#include <jpeglib.h>

namespace host::images {

// The library's names for the bytes of our pixels as they lie in memory.
inline constexpr J_COLOR_SPACE kPixelWithAlpha =
    std::endian::native == std::endian::little ? JCS_EXT_BGRA : JCS_EXT_ARGB;
inline constexpr J_COLOR_SPACE kPixelWithoutAlpha =
    std::endian::native == std::endian::little ? JCS_EXT_BGRX : JCS_EXT_XRGB;

/// What the library calls on an error: the message is kept, and control goes back to the last
/// guarded step. Never writes to standard error.
struct JpegErrors : jpeg_error_mgr {
  JpegErrors() : jpeg_error_mgr{} {
    jpeg_std_error(this);
    error_exit = fail;
    emit_message = judge;
    output_message = [](j_common_ptr) {};
  }

  /// Leaves the library for a reason of our own.
  [[noreturn]] void refuse(const char* why) {
    static_cast<void>(std::snprintf(reason, sizeof reason, "%s", why));
    std::longjmp(escape, 1);
  }

  std::jmp_buf escape;
  char reason[JMSG_LENGTH_MAX] = "";

 private:
  [[noreturn]] static void fail(j_common_ptr jpeg) {
    auto& self = *static_cast<JpegErrors*>(jpeg->err);
    self.format_message(jpeg, self.reason);
    std::longjmp(self.escape, 1);
  }

  // A warning says that data is broken or missing and that something has been made up for it. These
  // are about what decides no pixel.
  static void judge(j_common_ptr jpeg, int level) {
    const int code = jpeg->err->msg_code;
    const bool harmless = level >= 0 || code == JWRN_JFIF_MAJOR || code == JWRN_ADOBE_XFORM ||
                          code == JWRN_EXTRANEOUS_DATA;
    if (!harmless) fail(jpeg);
  }
};

}  // namespace host::images
