#include <gtest/gtest.h>

#include "host/images/decode.h"
#include "jpeg_file.h"

namespace host::images {
namespace {

void progressive(j_compress_ptr jpeg) {
  jpeg_simple_progression(jpeg);
}
void asYcck(j_compress_ptr jpeg) {
  jpeg_set_colorspace(jpeg, JCS_YCCK);
}
void withoutMarkers(j_compress_ptr jpeg) {
  jpeg->write_Adobe_marker = FALSE;
}
void asRgb(j_compress_ptr jpeg) {
  jpeg_set_colorspace(jpeg, JCS_RGB);
}

bool isNear(Pixel one, Pixel other) {
  for (const int shift : {24, 16, 8, 0}) {
    const auto difference =
        static_cast<int>(one >> shift & 255) - static_cast<int>(other >> shift & 255);
    if (std::abs(difference) > 2) return false;
  }
  return true;
}

TEST(DecodeJpeg, GivesOpaquePixels) {
  const struct {
    const char* name;
    std::string file;
    Pixel pixel;
  } cases[] = {{"colour", written(JCS_RGB, {200, 100, 50}), 0xffc86432},
               {"colour, stored as RGB", written(JCS_RGB, {200, 100, 50}, asRgb), 0xffc86432},
               {"gray", written(JCS_GRAYSCALE, {77}), 0xff4d4d4d},
               {"progressive", written(JCS_RGB, {200, 100, 50}, progressive), 0xffc86432},
               {"progressive gray", written(JCS_GRAYSCALE, {77}, progressive), 0xff4d4d4d},
               {"CMYK, as free paper", written(JCS_CMYK, {255, 128, 0, 128}), 0xff804000},
               {"YCCK, as free paper", written(JCS_CMYK, {255, 128, 0, 128}, asYcck), 0xff804000},
               {"CMYK, as ink", written(JCS_CMYK, {0, 127, 255, 127}, withoutMarkers), 0xff804000}};
  for (const auto& [name, file, pixel] : cases) {
    SCOPED_TRACE(name);
    const auto result = decode(file);
    ASSERT_TRUE(result) << result.reason;
    EXPECT_EQ(result.bitmap->width, 20);
    EXPECT_EQ(result.bitmap->height, 12);
    EXPECT_TRUE(result.bitmap->opaque);
    ASSERT_TRUE(result.bitmap->isValid());
    for (const Pixel one : result.bitmap->pixels) {
      ASSERT_TRUE(isNear(one, pixel)) << std::hex << one << " for " << pixel;
    }
  }
}

TEST(DecodeJpeg, CutShortAnywhereIsNoPicture) {
  for (const std::string& file :
       {written(JCS_RGB, {200, 100, 50}), written(JCS_RGB, {200, 100, 50}, progressive)}) {
    ASSERT_TRUE(decode(file));
    EXPECT_TRUE(decode(file + "more"));
    for (std::size_t size = 0; size < file.size(); ++size) {
      // In memory of its own, so that reading beyond it shows.
      const std::vector<char> start(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
      const auto result = decode(std::string_view(start.data(), start.size()));
      ASSERT_FALSE(result) << size << " of " << file.size();
      ASSERT_EQ(result.reason, size < 3 ? "Neither PNG nor JPEG" : "Premature end of JPEG file");
    }
  }
}

TEST(DecodeJpeg, BrokenAnywhereDoesNoHarm) {
  const std::string file = written(JCS_RGB, {200, 100, 50}, progressive);
  for (std::size_t i = 0; i < file.size(); ++i) {
    for (const int flip : {0x01, 0x80, 0xff}) {
      std::string broken = file;
      broken[i] = static_cast<char>(broken[i] ^ flip);
      const auto result = decode(broken);
      EXPECT_NE(result.bitmap.has_value(), !result.reason.empty());
    }
  }
}

// Of the frame header FF C0 ..: length 2, precision 1, height 2, width 2.
std::string withSides(std::string file, unsigned width, unsigned height) {
  const auto frame = file.find("\xff\xc0");
  file[frame + 5] = static_cast<char>(height >> 8);
  file[frame + 6] = static_cast<char>(height);
  file[frame + 7] = static_cast<char>(width >> 8);
  file[frame + 8] = static_cast<char>(width);
  return file;
}

TEST(DecodeJpeg, SizeIsCheckedBeforeThePixels) {
  const std::string file = written(JCS_RGB, {200, 100, 50});
  ASSERT_TRUE(decode(withSides(file, 20, 12)));
  const struct {
    unsigned width;
    unsigned height;
    const char* reason;
  } cases[] = {{8000, 8001, "Too large"},
               {32768, 1, "Too large"},
               {1, 32768, "Too large"},
               {65535, 65535, "Maximum supported image dimension is 65500 pixels"},
               {8000, 8000, "Corrupt JPEG data: premature end of data segment"},
               {0, 12, "Empty JPEG image (DNL not supported)"}};
  for (const auto& [width, height, reason] : cases) {
    EXPECT_EQ(decode(withSides(file, width, height)).reason, reason) << width << " x " << height;
  }
}

TEST(DecodeJpeg, TooManyScansAreRefused) {
  // All but the last bit of the mean, then each frequency, then the bit.
  std::vector<jpeg_scan_info> scans = {{1, {0}, 0, 0, 0, 1}};
  for (int i = 1; i < 64; ++i) scans.push_back({1, {0}, i, i, 0, 0});
  const auto inScans = [&](j_compress_ptr jpeg) {
    jpeg->scan_info = scans.data();
    jpeg->num_scans = static_cast<int>(scans.size());
  };
  EXPECT_EQ(decode(written(JCS_GRAYSCALE, {77}, inScans)).reason, "");
  scans.push_back({1, {0}, 0, 0, 1, 0});
  EXPECT_EQ(decode(written(JCS_GRAYSCALE, {77}, inScans)).reason, "Too many scans");
}

}  // namespace
}  // namespace host::images
