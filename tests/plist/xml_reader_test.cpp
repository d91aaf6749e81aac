#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "host/plist/description.h"
#include "host/plist/key_positions.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/values.h"
#include "samples.h"

namespace host::plist {
namespace {

using namespace std::string_view_literals;
using platform::PropertyListView;
using samples::repeated;
using Type = PropertyListView::Type;

TEST(XmlReader, ReadsEveryType) {
  struct Case {
    std::string_view xml;
    Type type;
    std::string_view description;
  };
  constexpr Case kCases[] = {
      {"<true/>", Type::kBoolean, "1"},
      {"<false></false>", Type::kBoolean, "0"},
      {"<integer>42</integer>", Type::kInteger, "42"},
      {"<integer>\n +42 </integer>", Type::kInteger, "42"},
      {"<integer>-0x1F</integer>", Type::kInteger, "-31"},
      {"<integer>9223372036854775807</integer>", Type::kInteger, "9223372036854775807"},
      {"<integer>-0x8000000000000000</integer>", Type::kInteger, "-9223372036854775808"},
      {"<real>7</real>", Type::kReal, "7"},
      {"<real> -1.5e3 </real>", Type::kReal, "-1500"},
      {"<string/>", Type::kString, ""},
      {"<string>a b</string>", Type::kString, "a b"},
      {"<date>2000-02-29T23:59:59Z</date>", Type::kDate, "2000-02-29 23:59:59 +0000"},
      {"<date>0001-01-01T00:00:00Z</date>", Type::kDate, "0001-01-01 00:00:00 +0000"},
      {"<data/>", Type::kData, "<>"},
      {"<data>\n\tAA EC\n\tA/8=\n</data>", Type::kData, "<00010203ff>"},
      {"<array/>", Type::kArray, "()"},
      {"<array><array><true/></array><string>A</string></array>", Type::kArray, "((1), A)"},
      {"<dict/>", Type::kDictionary, "{}"},
      {"<dict><key>b</key><true/><key>a</key><dict/></dict>", Type::kDictionary,
       "{a = {}; b = 1; }"},
      {"<dict><key>a</key><true/><key/><true/><key>a</key><false/></dict>", Type::kDictionary,
       "{\"\" = 1; a = 0; }"},
  };
  for (const Case& c : kCases) {
    const Reading reading = readXml(c.xml);
    ASSERT_TRUE(reading) << c.xml << '\n' << reading.reason;
    EXPECT_EQ(reading.list.type(), c.type) << c.xml;
    EXPECT_EQ(describe(reading.list), c.description) << c.xml;
  }
}

TEST(XmlReader, TakesWhatSurroundsAValue) {
  constexpr std::string_view kDocuments[] = {
      "<string>A&lt;B</string>",
      "<plist><string>A&lt;B</string></plist>",
      "<plist version='1.0' other='&amp;&#65;'><string>A&lt;B</string></plist>",
      "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><string>A&#60;B</string>\n<!--a-->",
      "<!DOCTYPE plist><plist><string>A&#x3c;B</string></plist>",
      "<!DOCTYPE plist PUBLIC '-' 'http://localhost/a'><plist><string>A&lt;B</string></plist>",
      "<!DOCTYPE plist SYSTEM \"file:///etc/passwd\"><string>A&lt;B</string>",
      "<plist><!-- a --><?b c?><string>A<!-- d --><![CDATA[<]]><?e?>B</string> \t\r\n</plist>",
  };
  for (const std::string_view document : kDocuments) {
    const Reading reading = readXml(document);
    EXPECT_EQ(reading.list.string(), "A<B") << document << '\n' << reading.reason;
  }
}

TEST(XmlReader, RefusesWithThePlace) {
  struct Case {
    std::string_view accepted;
    std::string_view refused;
    std::string_view reason;
  };
  constexpr Case kCases[] = {
      // Structure.
      {"<a/>"sv.substr(0, 0), "", "line 1, column 1: no element found"},
      {"<plist><true/></plist>", "<plist></plist>", "line 1, column 8: <plist> without a value"},
      {"<plist><true/></plist>", "<plist><true/><true/></plist>",
       "line 1, column 15: a second value at the root"},
      {"<true/>", "<true/><true/>", "line 1, column 8: junk after document element"},
      {"<true/>\n", "<true/>\nx", "line 2, column 1: junk after document element"},
      {"<plist><true/></plist>", "<plist><plist><true/></plist></plist>",
       "line 1, column 8: <plist> that is not outermost"},
      {"<array>\n <true/></array>", "<array>\n <tru/></array>",
       "line 2, column 2: unknown element <tru>"},
      {"<true/>", "<True/>", "line 1, column 1: unknown element <True>"},
      {"<array></array>", "<array></arra>",
       "line 1, column 10: mismatched tag; the <array> of line 1 is still open"},
      {"<array></array>", "<array>",
       "line 1, column 8: no element found; the <array> of line 1 is still open"},
      {"<array></array>", "<array></array",
       "line 1, column 8: unclosed token; the <array> of line 1 is still open"},
      {"<array> </array>", "<array>\n x</array>", "line 2, column 2: text where none belongs"},
      {"<true> </true>", "<true>1</true>", "line 1, column 7: text where none belongs"},
      {"<plist> <true/></plist>", "<plist>&#65;<true/></plist>",
       "line 1, column 8: text where none belongs"},
      {"<string>a</string>", "<string><true/></string>",
       "line 1, column 9: <true> inside <string>"},
      // Dictionaries.
      {"<dict><key>a</key><true/></dict>", "<dict><key>a</key></dict>",
       "line 1, column 7: <key> without a value"},
      {"<dict><key>a</key><true/></dict>", "<dict><true/></dict>",
       "line 1, column 7: <true> without a key"},
      {"<dict><key>a</key><true/></dict>", "<dict><key>a</key><key>a</key><true/></dict>",
       "line 1, column 19: <key> where the value of another belongs"},
      {"<array><string>a</string></array>", "<array><key>a</key></array>",
       "line 1, column 8: <key> outside a dictionary"},
      {"<string>a</string>", "<key>a</key>", "line 1, column 1: <key> outside a dictionary"},
      // Entities and document types.
      {"<string>&amp;</string>", "<string>&am;</string>", "line 1, column 9: undefined entity"},
      {"<!DOCTYPE p SYSTEM 'x'><string>&amp;</string>",
       "<!DOCTYPE p SYSTEM 'x'><string>&am;</string>", "line 1, column 32: unknown entity &am;"},
      {"<!DOCTYPE p SYSTEM 'x'><string a='&amp;'/>", "<!DOCTYPE p SYSTEM 'x'><string a='&am;'/>",
       "line 1, column 24: unknown entity &am;"},
      {"<!DOCTYPE p><true/>", "<!DOCTYPE p []><true/>",
       "line 1, column 13: a document type that declares something"},
      {"<!DOCTYPE p SYSTEM 'x'><true/>",
       "<!DOCTYPE p SYSTEM 'x' [<!ENTITY a 'b'>]><string>&a;</string>",
       "line 1, column 24: a document type that declares something"},
      {"<string>&#65;</string>", "<string>&#xD800;</string>",
       "line 1, column 9: reference to invalid character number"},
      // Encodings.
      {"<?xml version='1.0' encoding='UTF-8'?><true/>",
       "<?xml version='1.0' encoding='UTF-7'?><true/>",
       "line 1, column 1: the encoding is not UTF-8"},
      {"<string>\n\xC3\xA4\xC3\xA4</string>", "<string>\n\xC3\xA4\xC3</string>",
       "line 2, column 2: a byte that is no UTF-8"},
      {"<string>\xED\x9F\xBF</string>", "<string>\xED\xA0\x80</string>",
       "line 1, column 9: a byte that is no UTF-8"},
      {"<true/>", "\xFF\xFE<\0t\0"sv, "line 1, column 1: a byte that is no UTF-8"},
      {"<string>\t</string>", "<string>\x01</string>",
       "line 1, column 9: not well-formed (invalid token)"},
      {"<true/>", "<true/>\0"sv, "line 1, column 8: not well-formed (invalid token)"},
      // Integers.
      {"<integer>0</integer>", "<integer></integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>+1</integer>", "<integer>+-1</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>10</integer>", "<integer>1 0</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>10</integer>", "<integer>1.0</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>0x1</integer>", "<integer>0x</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>9223372036854775807</integer>", "<integer>9223372036854775808</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>-9223372036854775808</integer>", "<integer>-9223372036854775809</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      {"<integer>0x7FFFFFFFFFFFFFFF</integer>", "<integer>0x8FFFFFFFFFFFFFFF</integer>",
       "line 1, column 1: <integer> does not hold an integer of 64 bits"},
      // Reals.
      {"<real>1.5</real>", "<real>1,5</real>",
       "line 1, column 1: <real> does not hold a finite number"},
      {"<real>1</real>", "<real>nan</real>",
       "line 1, column 1: <real> does not hold a finite number"},
      {"<real>-1</real>", "<real>-inf</real>",
       "line 1, column 1: <real> does not hold a finite number"},
      {"<real>1e99</real>", "<real>1e999</real>",
       "line 1, column 1: <real> does not hold a finite number"},
      // Dates.
      {"<date>2000-02-29T00:00:00Z</date>", "<date>1900-02-29T00:00:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-12-01T00:00:00Z</date>", "<date>2000-13-01T00:00:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-01-01T23:00:00Z</date>", "<date>2000-01-01T24:00:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-01-01T00:59:00Z</date>", "<date>2000-01-01T00:60:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-01-01T00:00:59Z</date>", "<date>2000-01-01T00:00:60Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>0001-01-01T00:00:00Z</date>", "<date>0000-01-01T00:00:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-01-01T00:00:00Z</date>", "<date>2000-01-01T00:00:00</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      {"<date>2000-01-01T00:00:00Z</date>", "<date>2000-1-01T00:00:00Z</date>",
       "line 1, column 1: <date> does not hold a date like 2013-09-18T00:00:00Z"},
      // Data.
      {"<data>AA==</data>", "<data>AA=</data>", "line 1, column 1: <data> does not hold base64"},
      {"<data>AA==</data>", "<data>A===</data>", "line 1, column 1: <data> does not hold base64"},
      {"<data>AAA=</data>", "<data>AA=A</data>", "line 1, column 1: <data> does not hold base64"},
      {"<data>AAA=</data>", "<data>AAB=</data>", "line 1, column 1: <data> does not hold base64"},
      {"<data>AAAA</data>", "<data>AAAA====</data>",
       "line 1, column 1: <data> does not hold base64"},
      {"<data>AA/A</data>", "<data>AA_A</data>", "line 1, column 1: <data> does not hold base64"},
  };
  for (const Case& c : kCases) {
    if (!c.accepted.empty()) {
      EXPECT_TRUE(readXml(c.accepted)) << c.accepted << '\n' << readXml(c.accepted).reason;
    }
    const Reading reading = readXml(c.refused);
    EXPECT_FALSE(reading) << c.refused;
    EXPECT_EQ(reading.reason, c.reason) << c.refused;
  }
}

TEST(XmlReader, KeepsNamesOfAnyLengthOutOfItsReasons) {
  const std::string name = "x" + repeated("\xC3\xA4", 1000);
  EXPECT_EQ(readXml("<" + name + "/>").reason,
            "line 1, column 1: unknown element <x" + repeated("\xC3\xA4", 19) + "...>");
}

TEST(XmlReader, KnowsWhereValuesStand) {
  const Reading reading = readXml(
      "\xEF\xBB\xBF<dict>\r\n\t<key>\xC3\xA4</key><string>\n</string><!--\n"
      "-->\n  <key>b</key> <array><true/></array></dict>");
  ASSERT_TRUE(reading) << reading.reason;
  EXPECT_EQ(positionOf(reading.list), (Position{1, 1}));
  EXPECT_EQ(positionOf(reading.list.objectForKey("\xC3\xA4")), (Position{2, 14}));
  const PropertyListView array = reading.list.objectForKey("b");
  EXPECT_EQ(positionOf(array), (Position{5, 16}));
  EXPECT_EQ(positionOf(array.items()[0]), (Position{5, 23}));
  EXPECT_EQ(positionOf(PropertyListView()), Position());
}

TEST(XmlReader, CountsLinesHoweverTheyEnd) {
  for (const std::string end : {"\n", "\r", "\r\n"}) {
    const auto withEnds = [&](const std::string& text) {
      std::string written;
      for (const char c : text) c == '\n' ? written += end : written += c;
      return written;
    };
    const Reading reading = readXml(withEnds("<array>\n\n<string>a\nb</string>\n <true/></array>"));
    ASSERT_TRUE(reading) << reading.reason;
    EXPECT_EQ(positionOf(reading.list.items()[0]), (Position{3, 1}));
    EXPECT_EQ(positionOf(reading.list.items()[1]), (Position{5, 2}));
    EXPECT_EQ(readXml(withEnds("<array>\n<dict>\n</array>")).reason,
              "line 3, column 3: mismatched tag; the <dict> of line 2 is still open");
  }
}

TEST(XmlReader, KnowsWhereKeysStand) {
  KeyPositions keys;
  const Reading reading = readXml(
      "<dict>\n  <key>b</key><dict><key>a</key><true/></dict>\n<!-- <key>a</key> -->"
      "<key>a</key>\n  <integer>1</integer><key/><true/>\n\t<key>b</key><dict/></dict>",
      keys);
  ASSERT_TRUE(reading) << reading.reason;
  const auto entries = reading.list.entries();
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(keys.of(entries[0].key), (Position{4, 23}));
  EXPECT_EQ(keys.of(entries[1].key), (Position{3, 22}));
  EXPECT_EQ(keys.of(entries[2].key), (Position{5, 2}));
  EXPECT_EQ(keys.of("a"), Position()) << "an equal text, but none of the list's";

  ASSERT_EQ(keys.repeated().size(), 1U);
  EXPECT_EQ(keys.repeated()[0].key, "b");
  EXPECT_EQ(keys.repeated()[0].position, (Position{2, 3}));
  EXPECT_EQ(keys.of(keys.repeated()[0].last->key), (Position{5, 2}));
}

TEST(XmlReader, LimitsDepth) {
  const auto nested = [](std::size_t depth, std::string_view open, std::string_view close) {
    return repeated(open, depth) + "<true/>" + repeated(close, depth);
  };
  EXPECT_TRUE(readXml(nested(kMaxDepth, "<array>", "</array>")));
  EXPECT_EQ(readXml(nested(kMaxDepth + 1, "<array>", "</array>")).reason,
            "line 1, column 3585: containers nest deeper than 512");
  EXPECT_TRUE(readXml(nested(kMaxDepth, "<dict><key/>", "</dict>")));
  EXPECT_FALSE(readXml(nested(kMaxDepth + 1, "<dict><key/>", "</dict>")));
}

TEST(XmlReader, LimitsTheNumberOfValues) {
  const auto array = [](std::size_t values) {
    return "<array>" + repeated("<true/>", values - 1) + "</array>";
  };
  EXPECT_TRUE(readXml(array(kMaxValues)));
  EXPECT_EQ(readXml(array(kMaxValues + 1)).reason,
            "line 1, column 7000001: more than 1000000 values");
}

TEST(XmlReader, LimitsTheSize) {
  std::string document = "<true/>" + std::string(kMaxBytes - 7, ' ');
  EXPECT_TRUE(readXml(document));
  EXPECT_EQ(readXml(document + ' ').reason, "longer than 64 MiB");
}

/// What a reading says, with the places of its values.
std::string told(const Reading& reading) {
  std::string text = reading.reason + describe(reading.list);
  for (const auto& entry : reading.list.entries()) {
    const Position position = positionOf(entry.value);
    text += ' ' + std::to_string(position.line) + ':' + std::to_string(position.column);
  }
  return text;
}

/// Who asks for the places of keys is served by the parser of all XML, everybody else by the quick
/// reader where that will do.
void expectBothReadersAgree(std::string_view document) {
  KeyPositions keys;
  EXPECT_EQ(told(readXml(document)), told(readXml(document, keys))) << document;
}

TEST(XmlReader, ReadsPlainDocumentsAsItReadsAll) {
  const std::string_view head =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//A//DTD B 1.0//EN\" "
      "\"http://localhost/a.dtd\">\n";
  constexpr std::string_view kBodies[] = {
      "<plist version=\"1.0\">\n<dict>\n\t<key>a</key>\n\t<string>b</string>\n</dict>\n</plist>\n",
      "<plist version=\"1.0\"><dict/></plist>",
      "<!-- a --><dict><key>a<!-- b --> c</key><string> <!-- d --> e <!-- f --> </string></dict>",
      "<dict><key>&lt;&gt;&amp;&quot;&apos;</key><string>a&amp;b &lt;c</string></dict>",
      "<dict><key>a</key><string>a&#65;</string><key>b</key><string>&nbsp;</string></dict>",
      "<dict><key>a</key><string>]]&gt; ] ]] ></string></dict>",
      "<dict><key>a</key><string>]]></string></dict>",
      "<dict><key>a</key><string>\xEF\xBF\xBE</string></dict>",
      "<dict><key>a</key><string>\xEF\xBF\xBD</string></dict>",
      "<dict><key>a</key><string>1\r\n2\r3</string></dict>",
      "<dict><key>a</key><string>\x01</string></dict>",
      "<dict><key>a</key><integer> 7 </integer><key>b</key><real>x</real></dict>",
      "<dict ><key>a</key ><true /></dict>",
      "<dict><!-- a -- b --></dict>",
      "<dict><!-- a",
      "<dict></dict><dict></dict>",
      "<plist version=\"1.0\"></plist><dict/>",
      "<plist version=\"1.0\"><plist version=\"1.0\"/></plist>",
      "<dict></array>",
      "<dict></dict></dict>",
      "<dict>",
      "<dict><key>a</key></dict>",
      "<array><string><true/></string></array>",
      "<plist version=\"1.1\"><dict/></plist>",
      "<dict/>x",
      "x<dict/>",
      "</dict>",
      "<>",
      "</>",
      "<",
      "",
  };
  for (const std::string_view body : kBodies) {
    expectBothReadersAgree(body);
    expectBothReadersAgree(std::string(head).append(body));
  }
}

TEST(XmlReader, SurvivesEveryTruncationAndChange) {
  const std::string_view whole = samples::kEverything;
  ASSERT_TRUE(readXml(whole)) << readXml(whole).reason;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(readXml(whole.substr(0, length)).reason.empty()) << length;
  }
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const char change : {'\x01', '\x20', '\x80', '\xFF'}) {
      std::string changed(whole);
      changed[i] = static_cast<char>(changed[i] ^ change);
      const Reading reading = readXml(changed);
      EXPECT_EQ(reading.reason.empty(), static_cast<bool>(reading)) << changed;
      expectBothReadersAgree(changed);
    }
  }
}

}  // namespace
}  // namespace host::plist
