#include "convert/form.h"

#include "convert/difference.h"
#include "convert/json_reader.h"
#include "convert/json_writer.h"
#include "host/plist/binary_format.h"
#include "host/plist/limits.h"
#include "host/plist/refusal.h"
#include "host/plist/writer.h"
#include "scenario/pointer.h"

namespace tools::convert {

using platform::PropertyListView;

namespace {

std::string bytesOf(PropertyListView list, Form form) {
  switch (form) {
    case Form::kXml:
      return host::plist::writeXml(list);
    case Form::kBinary:
      return host::plist::writeBinary(list);
    case Form::kJson:
      return writeJson(list);
  }
  return {};
}

/// What of a value a form can't hold. Texts and moments are all that any of them has trouble with.
std::string lossOf(const Difference& difference) {
  const std::string place =
      difference.place.empty() ? "" : scenario::printable(difference.place) + ": ";
  const bool isDate = difference.value.type() == PropertyListView::Type::kDate;
  return place +
         (isDate ? "a date with a fraction of a second"
                 : "a text with a control character or another that XML lacks") +
         ": XML can't hold it; --to binary and --to json can";
}

}  // namespace

Form formOf(std::string_view bytes) {
  if (bytes.starts_with(host::plist::binary::kMagic)) return Form::kBinary;
  const auto first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  return first != bytes.npos && bytes[first] == '<' ? Form::kXml : Form::kJson;
}

host::plist::Reading readAnyForm(std::string_view bytes) {
  if (formOf(bytes) != Form::kJson) return host::plist::read(bytes);
  // What a parser of JSON says of a picture would tell nobody anything.
  constexpr std::string_view kJsonOrBlank = " \t\r\n\xEF\xBB\xBF{[\"-0123456789tfn";
  const bool mayBeJson = bytes.empty() || kJsonOrBlank.find(bytes.front()) != bytes.npos;
  if (!mayBeJson) return {{}, "line 1, column 1: neither a property list nor JSON"};
  return readJson(bytes);
}

Writing writeForm(PropertyListView list, Form form) {
  std::string bytes = bytesOf(list, form);
  if (bytes.size() > host::plist::kMaxBytes) {
    return {"", "in this form it would be " + host::plist::whyTooLong()};
  }
  // Read again rather than reasoned about: what the form has lost shows whatever the cause.
  const auto again = readAnyForm(bytes);
  if (!again) return {"", "in this form it could not be read again: " + again.reason};
  if (const auto difference = firstDifference(list, again.list)) return {"", lossOf(*difference)};
  return {std::move(bytes), ""};
}

}  // namespace tools::convert
