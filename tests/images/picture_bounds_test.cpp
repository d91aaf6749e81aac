// Pictures that ask for more than they show.

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <zlib.h>

#include "host/images/decode.h"
#include "jpeg_file.h"
#include "png_file.h"

namespace host::images {
namespace {

using namespace std::string_literals;

std::string bigEndian(std::uint32_t number) {
  std::string bytes;
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(number >> shift & 255);
  return bytes;
}

std::string chunk(const std::string& type, const std::string& data) {
  const std::string body = type + data;
  const auto sum =
      crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return bigEndian(static_cast<std::uint32_t>(data.size())) + body +
         bigEndian(static_cast<std::uint32_t>(sum));
}

std::string packed(const std::string& bytes) {
  uLongf size = compressBound(bytes.size());
  std::string out(size, '\0');
  compress2(reinterpret_cast<Bytef*>(out.data()), &size,
            reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), 1);
  out.resize(size);
  return out;
}

/// A grey picture of 8 bits, 4 by 4, with `before` and `behind` around its data.
std::string png(const std::string& before, const std::string& data, const std::string& behind = "",
                std::uint32_t side = 4, char interlace = 0) {
  const std::string header =
      bigEndian(side) + bigEndian(side) + "\x08"s + std::string(3, '\0') + interlace;
  return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + before + data + behind + chunk("IEND", "");
}

const std::string kRows(20, '\0');

TEST(PictureBounds, WhatDecidesNothingMayUnpackToAnything) {
  const std::string pixels = chunk("IDAT", packed(kRows));
  const std::string bomb = packed(std::string(std::size_t{32} << 20U, '\0'));
  std::string many;
  for (int i = 0; i < 20'000; ++i) many += chunk("tEXt", "k\0v"s);
  const struct {
    const char* name;
    std::string chunks;
  } cases[] = {
      {"text", chunk("zTXt", "k\0\0"s + bomb)},
      {"international text", chunk("iTXt", "k\0\1\0\0\0"s + bomb)},
      {"colour profile", chunk("iCCP", "k\0\0"s + bomb)},
      {"long text", chunk("tEXt", "k\0"s + std::string(std::size_t{4} << 20U, 'v'))},
      {"palette", chunk("sPLT", "n\0\x08"s + std::string(std::size_t{6} << 19U, '\1'))},
      {"nobody's", chunk("prVt", std::string(std::size_t{4} << 20U, '\1'))},
      {"many texts", many},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(decode(png(c.chunks, pixels)).reason, "") << c.name;
    EXPECT_EQ(decode(png("", pixels, c.chunks)).reason, "") << c.name;
  }
}

TEST(PictureBounds, EmptyPiecesOfPixelsDoNoHarm) {
  std::string pieces;
  for (int i = 0; i < 20'000; ++i) pieces += chunk("IDAT", "");
  EXPECT_EQ(decode(png(pieces, chunk("IDAT", packed(kRows)))).reason, "");
}

TEST(PictureBounds, WhatFollowsTheLastPixelIsNotUnpackedForEver) {
  // Noise, so that much of it is read before it is unpacked.
  std::string surplus;
  unsigned state = 1;
  for (std::size_t i = 0; i < kMaxLastBytes + 100'000; ++i) {
    state = state * 1664525 + 1013904223;
    surplus += static_cast<char>(state >> 24);
  }
  for (const char interlace : {'\0', '\1'}) {
    for (const std::uint32_t side : {1U, 2U, 3U, 4U, 9U}) {
      // More rows than any way to order them needs.
      const std::string rows(std::size_t{side + 3} * (side + 3) + 20, '\0');
      const auto file = [&](const std::string& more) {
        return png("", chunk("IDAT", packed(rows + more)), "", side, interlace);
      };
      EXPECT_EQ(decode(file(surplus.substr(0, 100'000))).reason, "") << side;
      EXPECT_EQ(decode(file(surplus)).reason, "Too much data after the last row") << side;
    }
  }
}

TEST(PictureBounds, AnyRowMayBeAsLongAsItsPixelsNeed) {
  // The longest rows that there are, of noise: none of it is too much.
  PngFile sample{.width = kMaxSide, .height = 3, .depth = 16, .color_type = PNG_COLOR_TYPE_RGBA};
  unsigned state = 1;
  for (std::size_t i = 0; i < std::size_t{8} * kMaxSide * 3; ++i) {
    state = state * 1664525 + 1013904223;
    sample.bytes.push_back(static_cast<png_byte>(state >> 24));
  }
  EXPECT_EQ(decode(written(sample)).reason, "");
  sample.interlace = PNG_INTERLACE_ADAM7;
  EXPECT_EQ(decode(written(sample)).reason, "");
}

TEST(PictureBounds, OneIsTooLargeBesideOthers) {
  const std::string files[] = {
      written({.width = 20, .height = 12, .bytes = std::vector<png_byte>(720)}),
      written(JCS_RGB, {200, 100, 50})};
  for (const std::string& file : files) {
    EXPECT_EQ(decode(file, 240).pixels, 240U);
    EXPECT_EQ(decode(file, 239).reason, "Too large beside the other pictures");
    EXPECT_EQ(decode(file, 239).pixels, 0U);
    // A broken one has cost as much as a whole one.
    EXPECT_EQ(decode(file.substr(0, file.size() - 13)).pixels, 240U);
  }
}

TEST(PictureBounds, MarkersWithoutEndDoNoHarm) {
  const std::string file = written(JCS_RGB, {200, 100, 50});
  const auto with = [&](const std::string& markers) {
    return file.substr(0, 2) + markers + file.substr(2);
  };
  std::string many;
  for (int i = 0; i < 50'000; ++i) many += "\xff\xfe\x00\x03x"s;
  std::string large;
  for (int i = 0; i < 100; ++i) large += "\xff\xe1\xff\xff"s + std::string(0xfffd, 'x');
  for (const std::string& markers : {many, large, std::string(1'000'000, '\xff')}) {
    EXPECT_EQ(decode(with(markers)).reason, "");
  }
}

}  // namespace
}  // namespace host::images
