#include "support/plist_checks.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "convert/difference.h"
#include "convert/form.h"
#include "host/plist/description.h"
#include "host/plist/reader.h"
#include "host/plist/utf8.h"
#include "host/plist/values.h"
#include "host/plist/writer.h"
#include "support/peer.h"
#include "support/require.h"

namespace fuzz {

using platform::PropertyList;
using platform::PropertyListView;
using tools::convert::firstDifference;
using tools::convert::Form;

namespace {

bool isOneLine(std::string_view text) {
  return host::plist::findInvalidUtf8(text) == text.npos &&
         std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool textFitsXml(std::string_view text) {
  constexpr std::string_view kNonCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
  const auto isForeign = [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
  };
  return std::ranges::none_of(text, isForeign) && text.find(kNonCharacters[0]) == text.npos &&
         text.find(kNonCharacters[1]) == text.npos;
}

/// Whether XML has a way to write all of it.
bool fitsXml(PropertyListView value) {
  if (const auto date = host::plist::dateOf(value)) {
    return std::floor(date->seconds) == date->seconds;
  }
  if (const auto text = value.string()) return textFitsXml(*text);
  return std::ranges::all_of(value.items(), fitsXml) &&
         std::ranges::all_of(value.entries(), [](const auto& entry) {
           return textFitsXml(entry.key) && fitsXml(entry.value);
         });
}

void requireSame(const PropertyList& list, const host::plist::Reading& again, const char* what) {
  require(static_cast<bool>(again), what, again.reason);
  const auto difference = firstDifference(list, again.list);
  require(!difference, what, difference ? difference->place : "");
}

void requirePeerAgrees(std::string_view bytes, PropertyListView list, const char* what) {
  const Opinion opinion = peerOpinion(bytes, list);
  require(opinion == Opinion::kNone || opinion == Opinion::kSame, what, bytes);
}

}  // namespace

void requireWritable(const PropertyList& list) {
  const std::string binary = host::plist::writeBinary(list);
  requireSame(list, host::plist::readBinary(binary), "the binary form is read as it was written");
  requirePeerAgrees(binary, list, "libplist reads our binary form alike");

  const std::string xml = host::plist::writeXml(list);
  const auto again = host::plist::readXml(xml);
  require(static_cast<bool>(again), "our XML can be read", again.reason);
  if (fitsXml(list)) {
    require(host::plist::writeXml(again.list) == xml, "XML written again is the same", xml);
    requireSame(list, again, "XML is read as it was written");
    requirePeerAgrees(xml, list, "libplist reads our XML alike");
  }
  require(isOneLine(host::plist::describe(list)), "a description is one line");
}

void requireWritableAsJson(const PropertyList& list) {
  const auto json = tools::convert::writeForm(list, Form::kJson);
  require(json.reason.empty(), "JSON holds every list", json.reason);
}

void requireReadingOrReason(const PropertyList& list, std::string_view reason) {
  require(static_cast<bool>(list) == reason.empty(), "a list or a reason", reason);
  require(isOneLine(reason), "a reason is one line", reason);
}

}  // namespace fuzz
