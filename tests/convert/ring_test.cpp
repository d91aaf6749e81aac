// Random lists go from form to form and come back as what they were.

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "convert/difference.h"
#include "convert/form.h"
#include "host/plist/binary_format.h"
#include "host/plist/builder.h"
#include "host/plist/utf8.h"
#include "host/plist/writer.h"

namespace tools::convert {
namespace {

using host::plist::Builder;
using platform::PropertyListView;

/// Which values it makes up: only those that XML has, or all.
enum class Range { kXml, kAll };

/// Makes lists up. The same seed gives the same lists.
class Lists {
 public:
  Lists(unsigned seed, Range range) : random_(seed), range_(range) {}

  platform::PropertyList next() {
    builder_ = Builder();
    const PropertyListView root = value(0);
    return builder_.finish(root);
  }

 private:
  std::uint64_t below(std::uint64_t end) { return random_() % end; }

  PropertyListView value(unsigned depth) {
    switch (below(depth < 5 ? 10 : 7)) {
      case 0:
        return builder_.boolean(below(2) == 0);
      case 1:
        return builder_.integer(std::bit_cast<std::int64_t>(random_() >> below(64)));
      case 2:
        return builder_.real(real());
      case 3:
        return builder_.date({moment()});
      case 4: {
        std::vector<std::byte> bytes(below(70));
        for (std::byte& byte : bytes) byte = static_cast<std::byte>(below(256));
        return builder_.data(bytes);
      }
      case 5:
      case 6:
        return builder_.string(text());
      case 7:
      case 8: {
        std::vector<PropertyListView> items(below(6));
        for (auto& item : items) item = value(depth + 1);
        return builder_.array(items);
      }
      default:
        return dictionary(depth);
    }
  }

  PropertyListView dictionary(unsigned depth) {
    constexpr std::string_view kAwkward[] = {"$data", "$date", "$$data", "$$$date",
                                             "$",     "",      "data"};
    std::vector<Builder::Entry> entries(below(4));
    for (auto& [key, entry] : entries) {
      key = below(2) == 0 ? kAwkward[below(std::size(kAwkward))] : builder_.keep(text());
      entry = value(depth + 1);
    }
    return builder_.dictionary(entries);
  }

  double real() {
    if (below(3) == 0) return static_cast<double>(below(2000)) / 8 - 100;
    const double bits = std::bit_cast<double>(random_());
    return std::isfinite(bits) ? bits : -0.0;
  }

  double moment() {
    const double whole = static_cast<double>(below(315'537'897'600)) - 62'135'596'800;
    const bool near = below(2) == 0;  // where a double has most digits behind the point
    const double second = near ? static_cast<double>(below(2'000'000'000)) - 1'000'000'000 : whole;
    if (range_ == Range::kXml) return second;
    const double fraction = static_cast<double>(below(1U << 30U)) / (1U << 30U);
    // As a binary file holds it.
    return (second - host::plist::binary::kEpoch + fraction) + host::plist::binary::kEpoch;
  }

  std::string text() {
    constexpr char32_t kEnds[] = {0x80, 0x100, 0x800, 0x3000, 0x10000, 0x110000};
    std::string text;
    for (auto length = below(8) == 0 ? below(200) : below(9); length > 0; --length) {
      const auto c = static_cast<char32_t>(below(kEnds[below(std::size(kEnds))]));
      const bool surrogate = c >= 0xD800 && c < 0xE000;
      const bool notInXml =
          (c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == 0xFFFE || c == 0xFFFF;
      if (surrogate || (range_ == Range::kXml && notInXml)) continue;
      host::plist::appendUtf8(text, c);
    }
    return text;
  }

  std::mt19937_64 random_;
  Range range_;
  Builder builder_;
};

/// Takes `list` through `forms`, one after the other. The binary form, which is written in one way
/// only, is what both ends are compared by.
void expectRound(const platform::PropertyList& list, const std::vector<Form>& forms) {
  platform::PropertyList current = list;
  for (const Form form : forms) {
    const Writing writing = writeForm(current, form);
    ASSERT_EQ(writing.reason, "");
    ASSERT_EQ(formOf(writing.bytes), form);
    const auto reading = readAnyForm(writing.bytes);
    ASSERT_TRUE(reading) << reading.reason << "\n" << writing.bytes;
    current = reading.list;
  }
  EXPECT_EQ(host::plist::writeXml(current), host::plist::writeXml(list));
  const auto difference = firstDifference(list, current);
  EXPECT_FALSE(difference) << difference->place;
}

TEST(Ring, EveryListComesBack) {
  Lists lists(20130918, Range::kXml);
  for (int i = 0; i < 2000; ++i) {
    expectRound(lists.next(),
                {Form::kJson, Form::kBinary, Form::kXml, Form::kJson, Form::kXml, Form::kBinary});
    if (HasFailure()) return;
  }
}

TEST(Ring, WhatXmlLacksGoesBetweenTheOthers) {
  Lists lists(20010101, Range::kAll);
  int refused = 0;
  for (int i = 0; i < 2000; ++i) {
    const auto list = lists.next();
    expectRound(list, {Form::kBinary, Form::kJson, Form::kBinary, Form::kJson});
    if (HasFailure()) return;
    refused += writeForm(list, Form::kXml).bytes.empty() ? 1 : 0;
  }
  EXPECT_GT(refused, 100);
}

TEST(Ring, DifferencesAreFound) {
  struct Case {
    std::string one;
    std::string other;
    std::optional<std::string> place;
  };
  const Case cases[] = {
      {"{\"a/b\": [1, 2]}", "{\"a/b\": [1, 3]}", "/a~1b/1"},
      {"[1]", "[1.0]", "/0"},
      {"[0.0]", "[-0.0]", "/0"},
      {"[true]", "[1]", "/0"},
      {"[1, 2]", "[1]", ""},
      {"{\"a\": 1}", "{\"b\": 1}", ""},
      {"[{\"$data\": \"AA==\"}]", "[{\"$data\": \"AQ==\"}]", "/0"},
      {"[{\"$date\": \"2013-09-18T00:00:00.5Z\"}]", "[{\"$date\": \"2013-09-18T00:00:00Z\"}]",
       "/0"},
      {"{\"a\": [\"x\", {}]}", "{ \"a\": [\"\\u0078\", { }] }", {}},
  };
  for (const Case& c : cases) {
    const auto one = readAnyForm(c.one);
    const auto other = readAnyForm(c.other);
    const auto found = firstDifference(one.list, other.list);
    EXPECT_EQ(found ? std::optional(found->place) : std::nullopt, c.place) << c.one;
  }
}

TEST(Ring, SaysWhatXmlCannotHold) {
  const auto reasonFor = [](const std::string& json) {
    return writeForm(readAnyForm(json).list, Form::kXml).reason;
  };
  EXPECT_EQ(reasonFor("{\"a\": [\"\\u0001\"]}").substr(0, 38),
            "/a/0: a text with a control character ");
  EXPECT_EQ(reasonFor("{\"\\u0001\": 1}").substr(0, 32), "a text with a control character ");
  EXPECT_EQ(reasonFor("{\"$date\": \"2013-09-18T00:00:00.5Z\"}").substr(0, 36),
            "a date with a fraction of a second: ");
  EXPECT_EQ(reasonFor("[\"\\t\\r\\n\"]"), "");
}

}  // namespace
}  // namespace tools::convert
