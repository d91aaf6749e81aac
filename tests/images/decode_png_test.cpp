#include <algorithm>
#include <gtest/gtest.h>
#include <zlib.h>

#include "host/images/decode.h"
#include "host/images/encode.h"
#include "png_file.h"

namespace host::images {
namespace {

using Pixels = std::vector<Pixel>;

constexpr int kGray = PNG_COLOR_TYPE_GRAY;
constexpr int kGrayAlpha = PNG_COLOR_TYPE_GRAY_ALPHA;
constexpr int kRgb = PNG_COLOR_TYPE_RGB;
constexpr int kRgba = PNG_COLOR_TYPE_RGBA;
constexpr int kPalette = PNG_COLOR_TYPE_PALETTE;

constexpr png_color_16 kGray2{0, 0, 0, 0, 2};
constexpr png_color_16 kGray1234{0, 0, 0, 0, 0x1234};
constexpr png_color_16 kRgb123{0, 1, 2, 3, 0};
constexpr png_color_16 kRgbWide{0, 0x0102, 0x0304, 0x0506, 0};

struct Case {
  const char* name;
  PngFile sample;
  Pixels pixels;
};

class DecodePng : public testing::TestWithParam<Case> {};

TEST_P(DecodePng, GivesPremultipliedPixels) {
  const auto& [name, sample, pixels] = GetParam();
  const auto result = decode(written(sample));
  ASSERT_TRUE(result) << result.reason;
  EXPECT_EQ(result.bitmap->width, static_cast<int>(sample.width));
  EXPECT_EQ(result.bitmap->height, static_cast<int>(sample.height));
  EXPECT_EQ(result.bitmap->pixels, pixels);
  const bool is_opaque =
      std::all_of(pixels.begin(), pixels.end(), [](Pixel pixel) { return pixel >> 24 == 255; });
  EXPECT_EQ(result.bitmap->opaque, is_opaque);
}

constexpr Pixel kBlack = 0xff000000;
constexpr Pixel kWhite = 0xffffffff;
constexpr Pixel kNone = 0;

const Case kCases[] = {
    {"Gray1", {4, 1, 1, kGray, {0x90}}, {kWhite, kBlack, kBlack, kWhite}},
    {"Gray2", {4, 1, 2, kGray, {0x1b}}, {kBlack, 0xff555555, 0xffaaaaaa, kWhite}},
    {"Gray4", {2, 1, 4, kGray, {0x1e}}, {0xff111111, 0xffeeeeee}},
    {"Gray8", {2, 1, 8, kGray, {0x12, 0xfe}}, {0xff121212, 0xfffefefe}},
    {"Gray16", {1, 1, 16, kGray, {0x12, 0xff}}, {0xff121212}},
    {"Gray2Clear", {4, 1, 2, kGray, {0x1b}, &kGray2}, {kBlack, 0xff555555, kNone, kWhite}},
    {"Gray16Clear", {2, 1, 16, kGray, {18, 52, 18, 53}, &kGray1234}, {kNone, 0xff121212}},
    {"GrayAlpha8", {2, 1, 8, kGrayAlpha, {255, 128, 64, 255}}, {0x80808080, 0xff404040}},
    {"GrayAlpha16", {1, 1, 16, kGrayAlpha, {255, 0, 128, 0}}, {0x80808080}},
    {"Rgb8", {1, 2, 8, kRgb, {1, 2, 3, 4, 5, 6}}, {0xff010203, 0xff040506}},
    {"Rgb16", {1, 1, 16, kRgb, {1, 0, 2, 0, 3, 0}}, {0xff010203}},
    {"Rgb8Clear", {2, 1, 8, kRgb, {1, 2, 3, 1, 2, 4}, &kRgb123}, {kNone, 0xff010204}},
    {"Rgb16Clear",
     {1, 2, 16, kRgb, {1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 7}, &kRgbWide},
     {kNone, 0xff010305}},
    {"Rgba8", {1, 2, 8, kRgba, {255, 128, 0, 128, 255, 255, 255, 0}}, {0x80804000, kNone}},
    {"Rgba8Faint", {1, 1, 8, kRgba, {127, 128, 255, 1}}, {0x01000101}},
    {"Rgba8Opaque", {1, 1, 8, kRgba, {1, 2, 3, 255}}, {0xff010203}},
    {"Rgba16", {1, 1, 16, kRgba, {255, 9, 128, 9, 0, 9, 128, 9}}, {0x80804000}},
    {"Palette1",
     {2, 1, 1, kPalette, {0x40}, nullptr, {{1, 2, 3}, {4, 5, 6}}},
     {0xff010203, 0xff040506}},
    {"Palette8Alphas",
     {2, 1, 8, kPalette, {0, 1}, nullptr, {{255, 128, 0}, {4, 5, 6}}, {128}},
     {0x80804000, 0xff040506}},
    {"ChunksThatDecideNothing",
     {.bytes = {100, 150, 200}, .has_ancillary_chunks = true},
     {0xff6496c8}}};

INSTANTIATE_TEST_SUITE_P(ColorTypes, DecodePng, testing::ValuesIn(kCases),
                         [](const auto& test) { return test.param.name; });

PngFile noise(png_uint_32 width, png_uint_32 height, int interlace) {
  PngFile sample{.width = width, .height = height, .color_type = kRgba, .interlace = interlace};
  unsigned state = 1;
  for (std::size_t i = 0; i < 4 * std::size_t{width} * height; ++i) {
    state = state * 1664525 + 1013904223;
    sample.bytes.push_back(static_cast<png_byte>(state >> 24));
  }
  return sample;
}

TEST(DecodePngFile, InterlacedIsTheSamePicture) {
  for (png_uint_32 width : {1U, 2U, 5U, 17U}) {
    for (png_uint_32 height : {1U, 3U, 9U}) {
      const auto plain = decode(written(noise(width, height, PNG_INTERLACE_NONE)));
      const auto interlaced = decode(written(noise(width, height, PNG_INTERLACE_ADAM7)));
      ASSERT_TRUE(plain && interlaced);
      EXPECT_EQ(*plain.bitmap, *interlaced.bitmap);
    }
  }
}

TEST(DecodePngFile, CutShortAnywhereIsNoPicture) {
  for (const int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
    const std::string file = written(noise(9, 7, interlace));
    ASSERT_TRUE(decode(file));
    EXPECT_TRUE(decode(file + "more"));
    for (std::size_t size = 0; size < file.size(); ++size) {
      // In memory of its own, so that reading beyond it shows.
      const std::vector<char> start(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
      const auto result = decode(std::string_view(start.data(), start.size()));
      ASSERT_FALSE(result) << size << " of " << file.size();
      ASSERT_EQ(result.reason, size < 8 ? "Neither PNG nor JPEG" : "Cut short");
    }
  }
}

TEST(DecodePngFile, BrokenAnywhereIsNoPicture) {
  const std::string file = written(noise(9, 7, PNG_INTERLACE_NONE));
  for (std::size_t i = 0; i < file.size(); ++i) {
    std::string broken = file;
    broken[i] = static_cast<char>(broken[i] ^ 0x20);
    EXPECT_FALSE(decode(broken)) << i;
  }
}

// A file of the given sides, whose pixels are all missing.
std::string headerOnly(std::uint32_t width, std::uint32_t height) {
  std::string file = written({.bytes = {0, 0, 0}});
  for (std::size_t i = 0; i < 4; ++i) {
    file[16 + i] = static_cast<char>(width >> (24 - 8 * i));
    file[20 + i] = static_cast<char>(height >> (24 - 8 * i));
  }
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(file.data()) + 12, 17);
  for (std::size_t i = 0; i < 4; ++i) file[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
  return file;
}

TEST(DecodePngFile, SizeIsCheckedBeforeThePixels) {
  const struct {
    std::uint32_t width;
    std::uint32_t height;
    const char* reason;
  } cases[] = {{8000, 8000, "Not enough image data"},
               {8000, 8001, "Too large"},
               {32767, 1, "Not enough image data"},
               {1, 32767, "Not enough image data"},
               {32768, 1, "Invalid IHDR data"},
               {1, 32768, "Invalid IHDR data"},
               {32767, 32767, "Too large"},
               {0x7fffffff, 0x7fffffff, "Invalid IHDR data"},
               {0xffffffff, 1, nullptr},
               {0, 1, "Invalid IHDR data"},
               {1, 0, "Invalid IHDR data"}};
  for (const auto& [width, height, reason] : cases) {
    const auto result = decode(headerOnly(width, height));
    EXPECT_FALSE(result) << width << " x " << height;
    if (reason != nullptr) {
      EXPECT_EQ(result.reason, reason) << width << " x " << height;
    }
  }
}

TEST(Decode, OtherFormatsAreRefused) {
  using namespace std::string_view_literals;
  for (const auto file : {""sv, "GIF89a"sv, "\x89PNG\r\n\x1a"sv, "\x89PNG\n\n\x1a\n"sv,
                          "\xff\xd8"sv, "\xff\xd9\xff"sv, "RIFF\0\0\0\0WEBP"sv}) {
    EXPECT_EQ(decode(file).reason, "Neither PNG nor JPEG");
  }
  EXPECT_EQ(decode(std::span<const std::byte>()).reason, "Neither PNG nor JPEG");
}

}  // namespace
}  // namespace host::images
