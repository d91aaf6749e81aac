#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "host/plist/description.h"
#include "host/plist/key_positions.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/values.h"
#include "host/plist/writer.h"
#include "samples.h"

namespace host::plist {
namespace {

using namespace std::string_literals;
using platform::PropertyListView;
using samples::bigEndian;
using samples::binaryFile;
using samples::Layout;
using samples::repeated;
using Type = PropertyListView::Type;
using Objects = std::vector<std::string>;

/// An array, or with the marker 0xDF a dictionary, of `count` with a count of four bytes.
std::string counted(std::size_t count, const std::string& body, char marker = '\xAF') {
  return marker + "\x12"s + bigEndian(count, 4) + body;
}

TEST(BinaryReader, ReadsEveryType) {
  struct Case {
    Objects objects;
    Type type;
    std::string_view description;
  };
  const Case kCases[] = {
      {{"\x08"s}, Type::kBoolean, "0"},
      {{"\x09"s}, Type::kBoolean, "1"},
      {{"\x10\xFF"s}, Type::kInteger, "255"},
      {{"\x11\x80\x00"s}, Type::kInteger, "32768"},
      {{"\x12\xFF\xFF\xFF\xFF"s}, Type::kInteger, "4294967295"},
      {{"\x13"s + std::string(8, '\xFF')}, Type::kInteger, "-1"},
      {{"\x14"s + bigEndian(0, 8) + bigEndian(7, 8)}, Type::kInteger, "7"},
      {{"\x14"s + std::string(15, '\xFF') + "\xFE"}, Type::kInteger, "-2"},
      {{"\x22\x3F\xC0\x00\x00"s}, Type::kReal, "1.5"},
      {{"\x23\x3F\xB9\x99\x99\x99\x99\x99\x9A"s}, Type::kReal, "0.1"},
      {{"\x33"s + std::string(8, '\0')}, Type::kDate, "2001-01-01 00:00:00 +0000"},
      {{"\x42\x00\xFF"s}, Type::kData, "<00ff>"},
      {{"\x52hi"s}, Type::kString, "hi"},
      {{"\x5F\x10\x02hi"s}, Type::kString, "hi"},
      {{"\x5F\x13"s + bigEndian(2, 8) + "hi"}, Type::kString, "hi"},
      {{"\x61\x20\xAC"s}, Type::kString, "\xE2\x82\xAC"},
      {{"\x62\xD8\x3D\xDE\x00"s}, Type::kString, "\xF0\x9F\x98\x80"},
      {{"\xA0"s}, Type::kArray, "()"},
      {{"\xA2\x01\x02"s, "\x08"s, "\xA1\x01"s}, Type::kArray, "(0, (0))"},
      {{"\xD2\x01\x02\x03\x04"s,
        "\x51"s
        "b",
        "\x51"s
        "a",
        "\x09"s, "\xD0"s},
       Type::kDictionary,
       "{a = {}; b = 1; }"},
      {{"\xD2\x01\x02\x03\x04"s,
        "\x51"s
        "a",
        "\x51"s
        "a",
        "\x09"s, "\x08"s},
       Type::kDictionary,
       "{a = 0; }"},
      {{"\xD1\x01\x01"s,
        "\x51"s
        "a"},
       Type::kDictionary,
       "{a = a; }"},
  };
  for (const Case& c : kCases) {
    for (const std::size_t size : {1U, 2U, 3U, 8U}) {
      const Reading reading = read(binaryFile(c.objects, {.offsetSize = size}));
      ASSERT_TRUE(reading) << c.description << '\n' << reading.reason;
      EXPECT_EQ(reading.list.type(), c.type) << c.description;
      EXPECT_EQ(describe(reading.list), c.description);
      EXPECT_EQ(positionOf(reading.list), Position());
    }
  }
}

TEST(BinaryReader, KnowsWhichKeysCountForNothing) {
  // {"a": true, "a": false, "b": {"a": true}}, every "a" the same object.
  const std::string file = binaryFile({"\xD3\x01\x01\x02\x03\x04\x05"s, "\x51\x61"s, "\x51\x62"s,
                                       "\x09"s, "\x08"s, "\xD1\x01\x03"s});
  KeyPositions keys;
  const Reading reading = readBinary(file, keys);
  ASSERT_TRUE(reading) << reading.reason;
  ASSERT_EQ(keys.repeated().size(), 1U);
  EXPECT_EQ(keys.repeated()[0].key, "a");
  EXPECT_EQ(keys.repeated()[0].position, Position());
  EXPECT_EQ(keys.repeated()[0].last, reading.list.entries().data());
}

TEST(BinaryReader, TakesReferencesOfAnySize) {
  for (std::size_t size = 1; size <= 8; ++size) {
    const Objects objects = {"\xA2"s + bigEndian(1, size) + bigEndian(2, size), "\x08"s, "\x09"s};
    const Reading reading = readBinary(binaryFile(objects, {.referenceSize = size}));
    EXPECT_EQ(describe(reading.list), "(0, 1)") << reading.reason;
  }
}

TEST(BinaryReader, RefusesWithThePlace) {
  struct Case {
    Objects accepted;
    Objects refused;
    std::string_view reason;
  };
  const Case kCases[] = {
      // Kinds that no list holds.
      {{"\x08"s}, {"\x00"s}, "object 0 at offset 8: a null object"},
      {{"\x08"s}, {"\x0F"s}, "object 0 at offset 8: a fill byte"},
      {{"\x08"s}, {"\x07"s}, "object 0 at offset 8: an unknown kind of object"},
      {{"\x10\x01"s}, {"\x80\x01"s}, "object 0 at offset 8: a UID"},
      {{"\xA1\x01"s, "\x08"s}, {"\xC1\x01"s, "\x08"s}, "object 0 at offset 8: a set"},
      {{"\xA1\x01"s, "\x08"s}, {"\xB1\x01"s, "\x08"s}, "object 0 at offset 8: a set"},
      {{"\x14"s + std::string(16, '\0')},
       {"\x15"s + std::string(32, '\0')},
       "object 0 at offset 8: an unknown kind of object"},
      {{"\x22"s + std::string(4, '\0')},
       {"\x21"s + std::string(2, '\0')},
       "object 0 at offset 8: an unknown kind of object"},
      {{"\x33"s + std::string(8, '\0')},
       {"\x32"s + std::string(4, '\0')},
       "object 0 at offset 8: an unknown kind of object"},
      // Values out of range.
      {{"\x14"s + bigEndian(0, 8) + bigEndian(INT64_MAX, 8)},
       {"\x14"s + bigEndian(0, 8) + bigEndian(1ULL << 63U, 8)},
       "object 0 at offset 8: an integer that does not fit into 64 bits"},
      {{"\x14"s + bigEndian(0, 8) + bigEndian(7, 8)},
       {"\x14"s + bigEndian(1, 8) + bigEndian(7, 8)},
       "object 0 at offset 8: an integer that does not fit into 64 bits"},
      {{"\x22\x7F\x7F\xFF\xFF"s},
       {"\x22\x7F\x80\x00\x00"s},
       "object 0 at offset 8: a real that is not finite"},
      {{"\x23\x7F\xEF"s + std::string(6, '\0')},
       {"\x23\x7F\xF0"s + std::string(6, '\0')},
       "object 0 at offset 8: a real that is not finite"},
      {{"\x33\x42\x4D"s + std::string(6, '\0')},
       {"\x33\x42\x5D"s + std::string(6, '\0')},
       "object 0 at offset 8: a date outside the years 1 to 9999"},
      {{"\x33"s + std::string(8, '\0')},
       {"\x33"s + std::string(8, '\xFF')},
       "object 0 at offset 8: a date outside the years 1 to 9999"},
      // Strings.
      {{"\x51\x7F"s}, {"\x51\x80"s}, "object 0 at offset 8: a byte that is not ASCII"},
      {{"\x62\xD8\x3D\xDE\x00"s},
       {"\x61\xD8\x3D"s},
       "object 0 at offset 8: half of a surrogate pair"},
      {{"\x62\xD8\x3D\xDE\x00"s},
       {"\x62\xD8\x3D\xD8\x3D"s},
       "object 0 at offset 8: half of a surrogate pair"},
      {{"\x61\xE0\x00"s}, {"\x61\xDF\xFF"s}, "object 0 at offset 8: half of a surrogate pair"},
      // Lengths.
      {{"\x51"s
        "a"},
       {"\x52"s
        "a"},
       "object 0 at offset 8: it ends outside the objects"},
      {{"\x61\x00"s
        "a"},
       {"\x62\x00"s
        "a"},
       "object 0 at offset 8: it ends outside the objects"},
      {{"\x10\x01"s}, {"\x11\x01"s}, "object 0 at offset 8: it ends outside the objects"},
      {{"\x5F\x10\x01"s
        "a"},
       {"\x5F\x13"s + bigEndian(~0ULL, 8) + "a"},
       "object 0 at offset 8: it ends outside the objects"},
      {{"\x61\x00"s
        "a"},
       {"\x6F\x13"s + bigEndian((1ULL << 63U) + 1, 8) + "\0a"s},
       "object 0 at offset 8: it ends outside the objects"},
      {{"\xA1\x01"s, "\x08"s},
       {"\xAF\x13"s + bigEndian(1ULL << 63U, 8), "\x08"s},
       "object 0 at offset 8: it ends outside the objects"},
      {{"\x5F\x10\x01"s
        "a"},
       {"\x5F\x50\x01"s
        "a"},
       "object 0 at offset 8: the count is no integer"},
      {{"\x5F\x13"s + bigEndian(1, 8) + "a"},
       {"\x5F\x14"s + bigEndian(0, 8) + bigEndian(1, 8) + "a"},
       "object 0 at offset 8: the count is no integer"},
      {{"\x50"s}, {"\x5F"s}, "object 0 at offset 8: it ends outside the objects"},
      {{"\x5F\x10\x00"s}, {"\x5F\x10"s}, "object 0 at offset 8: it ends outside the objects"},
      // References.
      {{"\xA1\x01"s, "\x08"s},
       {"\xA1\x02"s, "\x08"s},
       "object 0 at offset 8: it refers to object 2, which is not there"},
      {{"\xA1\x01"s, "\x08"s}, {"\xA1\x00"s, "\x08"s}, "object 0 at offset 8: it contains itself"},
      {{"\xA1\x01"s, "\xA1\x02"s, "\x08"s},
       {"\xA1\x01"s, "\xA1\x02"s, "\xA1\x01"s},
       "object 1 at offset 10: it contains itself"},
      // Keys.
      {{"\xD1\x01\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       {"\xD1\x01\x02"s,
        "\x41"s
        "a",
        "\x08"s},
       "object 1 at offset 11: a key that is no string"},
      {{"\xD1\x01\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       {"\xD1\x00\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       "object 0 at offset 8: a key that is no string"},
      {{"\xD1\x01\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       {"\xD1\x02\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       "object 2 at offset 13: a key that is no string"},
      {{"\xD1\x01\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       {"\xD1\x03\x02"s,
        "\x51"s
        "a",
        "\x08"s},
       "object 0 at offset 8: it refers to object 3, which is not there"},
  };
  for (const Case& c : kCases) {
    EXPECT_TRUE(readBinary(binaryFile(c.accepted))) << readBinary(binaryFile(c.accepted)).reason;
    const Reading reading = readBinary(binaryFile(c.refused));
    EXPECT_FALSE(reading);
    EXPECT_EQ(reading.reason, c.reason);
  }
}

TEST(BinaryReader, RefusesAFrameThatDoesNotFit) {
  struct Case {
    Layout layout;
    std::string_view reason;
  };
  const Case kCases[] = {
      {{}, ""},
      {{.root = 1}, "trailer at offset 10: the root is none of the objects"},
      {{.surplusObjects = 1}, "trailer at offset 10: the offset table does not end at the trailer"},
      {{.surplusObjects = ~0ULL},
       "trailer at offset 10: the offset table does not end at the trailer"},
      {{.surplusObjects = 1ULL << 63U},
       "trailer at offset 10: the offset table does not end at the trailer"},
      {{.surplusTableOffset = ~0ULL},
       "trailer at offset 10: the offset table does not end at the trailer"},
      {{.surplusTableOffset = 2}, "trailer at offset 10: the offset table begins outside the file"},
      {{.surplusTableOffset = 1ULL << 63U},
       "trailer at offset 10: the offset table begins outside the file"},
      {{.surplusObjects = ~0ULL, .surplusTableOffset = 1},
       "trailer at offset 10: there are no objects"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(readBinary(binaryFile({"\x08"s}, c.layout)).reason, c.reason);
  }
  EXPECT_TRUE(readBinary(binaryFile({"\x08"s, "\x09"s})));
  EXPECT_EQ(readBinary(binaryFile({"\x08"s, ""s})).reason,
            "trailer at offset 11: there are more objects than bytes for them");
  EXPECT_EQ(readBinary(binaryFile({"\x08"s}) + '\n').reason,
            "trailer at offset 11: references have to take 1 to 8 bytes");
  const auto withSize = [](std::size_t place, char size) {
    std::string bytes = binaryFile({"\x08"s});
    bytes[bytes.size() - place] = size;
    return readBinary(bytes).reason;
  };
  EXPECT_EQ(withSize(26, 0), "trailer at offset 10: offsets have to take 1 to 8 bytes");
  EXPECT_EQ(withSize(26, 9), "trailer at offset 10: offsets have to take 1 to 8 bytes");
  EXPECT_EQ(withSize(25, 0), "trailer at offset 10: references have to take 1 to 8 bytes");
  EXPECT_EQ(withSize(25, 9), "trailer at offset 10: references have to take 1 to 8 bytes");
  EXPECT_EQ(readBinary("bplist00").reason, "trailer at offset 8: the file ends before it");
  EXPECT_EQ(readBinary("<true/>").reason, "header at offset 0: no binary property list");

  for (const char offset : {'\x07', '\x09'}) {
    std::string bytes = binaryFile({"\x08"s});
    bytes[9] = offset;
    EXPECT_EQ(readBinary(bytes).reason, "object 0 at offset "s + static_cast<char>('0' + offset) +
                                            ": the offset lies outside the objects");
  }
}

TEST(BinaryReader, SharesWhatIsShared) {
  const Reading reading = readBinary(binaryFile({"\xA2\x01\x01"s, "\xA1\x02"s,
                                                 "\x51"s
                                                 "a"}));
  ASSERT_TRUE(reading);
  EXPECT_EQ(reading.list.items()[0].get(), reading.list.items()[1].get());
}

TEST(BinaryReader, LimitsDepthAlsoWhereItIsShared) {
  // Each array holds the next one; the last one is empty.
  const auto chain = [](std::size_t depth) {
    Objects arrays;
    for (std::size_t i = 1; i < depth; ++i) arrays.push_back("\xA1"s + bigEndian(i, 2));
    arrays.push_back("\xA0"s);
    return arrays;
  };
  const Layout layout = {.offsetSize = 2, .referenceSize = 2};
  EXPECT_TRUE(readBinary(binaryFile(chain(kMaxDepth), layout)));
  EXPECT_EQ(readBinary(binaryFile(chain(kMaxDepth + 1), layout)).reason,
            "object 512 at offset 1544: containers nest deeper than 512");

  // The middle of the chain is read first from the root, where it is not as deep.
  Objects arrays = chain(kMaxDepth);
  arrays[0] = "\xA2"s + bigEndian(kMaxDepth / 2, 2) + bigEndian(1, 2);
  EXPECT_TRUE(readBinary(binaryFile(arrays, layout)));
  arrays.back() = "\xA1"s + bigEndian(kMaxDepth, 2);
  arrays.push_back("\xA0"s);
  EXPECT_FALSE(readBinary(binaryFile(arrays, layout)));
}

TEST(BinaryReader, CountsSharedValuesAsOftenAsTheyStandSomewhere) {
  // Nine arrays of ten times the next, and the last of `last` booleans: nothing to read, but
  // 10 ^ 9 values to whoever walks it.
  Objects laughs;
  for (char next = 1; next <= 9; ++next) laughs.push_back("\xAA"s + std::string(10, next));
  laughs.push_back("\x08"s);
  EXPECT_EQ(readBinary(binaryFile(laughs)).reason,
            "object 3 at offset 41: more than 1000000 values once what is shared is written out");

  // 1 + 1000 * (1 + 998) values, and as many more as there is room for.
  const auto list = [](std::size_t further) {
    const std::string again = repeated("\x01", 1000) + repeated("\x02", further);
    return binaryFile(
        {counted(1000 + further, again), counted(998, repeated("\x02", 998)), "\x08"s},
        {.offsetSize = 4});
  };
  EXPECT_TRUE(readBinary(list(999))) << readBinary(list(999)).reason;
  EXPECT_EQ(readBinary(list(1000)).reason,
            "object 0 at offset 8: more than 1000000 values once what is shared is written out");
  // Too many of them for any list, and refused before room is made for them.
  EXPECT_EQ(readBinary(binaryFile({counted(kMaxValues, repeated("\x01", kMaxValues)), "\x08"s},
                                  {.offsetSize = 4}))
                .reason,
            "object 0 at offset 8: more than 1000000 values once what is shared is written out");
}

TEST(BinaryReader, DoesNotCountKeys) {
  const std::size_t entries = kMaxValues - 1;
  const std::string body = repeated("\x01", entries) + repeated("\x02", entries);
  EXPECT_TRUE(readBinary(binaryFile({counted(entries, body, '\xDF'),
                                     "\x51"s
                                     "a",
                                     "\x08"s},
                                    {.offsetSize = 4})));
}

TEST(BinaryReader, LimitsTheTextThatIsShared) {
  const std::string long_text = "\x5F\x12"s + bigEndian(1U << 20U, 4) + std::string(1U << 20U, 'a');
  const auto list = [&](std::size_t times) {
    return binaryFile({counted(times, repeated("\x01", times)), long_text}, {.offsetSize = 4});
  };
  EXPECT_TRUE(readBinary(list(64)));
  EXPECT_EQ(readBinary(list(65)).reason,
            "object 0 at offset 8: more than 64 MiB of text once what is shared is written out");
  const auto keys = [&](std::size_t times) {
    const std::string body = repeated("\x01", times) + repeated("\x02", times);
    return binaryFile({counted(times, body, '\xDF'), long_text, "\x08"s}, {.offsetSize = 4});
  };
  EXPECT_TRUE(readBinary(keys(64)));
  EXPECT_FALSE(readBinary(keys(65)));
}

TEST(BinaryReader, RefusesTextsThatOverlap) {
  // Texts of 48 characters whose markers follow one another, so that each but the last holds the
  // markers after it and most of the next one's characters. Many long ones would fill the memory.
  const auto list = [](std::size_t texts) {
    Objects objects = {counted(texts, "")};
    for (std::size_t i = 1; i <= texts; ++i) objects[0] += static_cast<char>(i);
    objects.insert(objects.end(), texts, "\x5F\x10\x30"s);
    objects.back() += std::string(48, 'a');
    return readBinary(binaryFile(objects)).reason;
  };
  EXPECT_EQ(list(2), "");
  EXPECT_EQ(list(8), "object 3 at offset 28: it overlaps other objects");
}

TEST(BinaryReader, LimitsTheSize) {
  std::string padded = std::string(kMaxBytes - 42, 'x');
  const std::string text = "\x5F\x12"s + bigEndian(padded.size(), 4) + padded;
  std::string bytes = binaryFile({text});
  ASSERT_GT(bytes.size(), kMaxBytes);
  EXPECT_EQ(readBinary(bytes).reason, "longer than 64 MiB");
  padded.resize(padded.size() - (bytes.size() - kMaxBytes));
  EXPECT_TRUE(readBinary(binaryFile({"\x5F\x12"s + bigEndian(padded.size(), 4) + padded})));
}

TEST(BinaryReader, SurvivesEveryTruncationAndChange) {
  const Reading sample = readXml(samples::kEverything);
  ASSERT_TRUE(sample) << sample.reason;
  const std::string whole = writeBinary(sample.list);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of just that size, for the sanitizer to see the end of.
    const std::string start = whole.substr(0, length);
    EXPECT_FALSE(readBinary(start)) << length;
  }
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      std::string changed = whole;
      changed[i] = static_cast<char>(byte);
      const Reading reading = readBinary(changed);
      ASSERT_EQ(reading.reason.empty(), static_cast<bool>(reading)) << i << ' ' << byte;
      // What is taken in can be walked and given back.
      if (!reading) continue;
      ASSERT_TRUE(readBinary(writeBinary(reading.list))) << i << ' ' << byte;
    }
  }
}

}  // namespace
}  // namespace host::plist
