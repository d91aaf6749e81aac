#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace host::plist {

/// Reads an XML property list written plainly, as programs and people mostly do: tags without
/// attributes but the version of <plist>, comments, the entities of every document and a document
/// type that merely names one. It takes a third of the time of a parser of all XML. Null for any
/// other document, malformed ones included: the parser is to judge them and say what is wrong.
/// `bytes` are UTF-8 without a byte-order mark. Throws nothing but std::bad_alloc.
platform::PropertyList readPlainXml(std::string_view bytes);

}  // namespace host::plist
