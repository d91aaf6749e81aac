#include "host/plist/xml_values.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/plist/base64.h"
#include "host/plist/date_text.h"
#include "host/plist/limits.h"
#include "host/plist/number_text.h"
#include "host/plist/refusal.h"
#include "host/plist/white_space.h"

namespace host::plist {

using platform::PropertyListView;

namespace {

struct NamedElement {
  std::string_view name;
  XmlElement element;
};

constexpr NamedElement kElements[] = {
    {"key", XmlElement::kKey},         {"string", XmlElement::kString},
    {"integer", XmlElement::kInteger}, {"real", XmlElement::kReal},
    {"true", XmlElement::kTrue},       {"false", XmlElement::kFalse},
    {"date", XmlElement::kDate},       {"data", XmlElement::kData},
    {"dict", XmlElement::kDict},       {"array", XmlElement::kArray},
    {"plist", XmlElement::kPlist},
};

std::string tag(XmlElement element) {
  return plist::tag(nameOf(element));
}

}  // namespace

std::optional<XmlElement> xmlElement(std::string_view name) {
  const auto* const known = std::ranges::find(kElements, name, &NamedElement::name);
  return known == std::end(kElements) ? std::nullopt : std::optional(known->element);
}

std::string_view nameOf(XmlElement element) {
  return std::ranges::find(kElements, element, &NamedElement::element)->name;
}

std::string shortened(std::string_view name) {
  constexpr std::size_t kLongest = 40;
  if (name.size() <= kLongest) return std::string(name);
  std::size_t end = kLongest;
  while ((static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) --end;
  return std::string(name.substr(0, end)) + "...";
}

std::string tag(std::string_view name) {
  return "<" + shortened(name) + ">";
}

std::string inWords(Position position) {
  return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

void XmlValues::refuse(std::size_t offset, std::string_view why) {
  throw Refusal{inWords(positions_.at(std::min(offset, bytes_.size()))) + ": " + std::string(why)};
}

std::string XmlValues::stillOpen() const {
  if (!leaf_ && containers_.empty()) return "";
  const bool isDictionary = !leaf_ && containers_.back().isDictionary;
  const XmlElement element = leaf_          ? leaf_->element
                             : isDictionary ? XmlElement::kDict
                                            : XmlElement::kArray;
  const Position begin =
      leaf_ ? TextPosition(bytes_).at(leaf_->offset) : containers_.back().position;
  return "; the " + tag(element) + " of line " + std::to_string(begin.line) + " is still open";
}

void XmlValues::start(XmlElement element, std::size_t offset) {
  if (leaf_) refuse(offset, tag(element) + " inside " + tag(leaf_->element));
  switch (element) {
    case XmlElement::kPlist:
      return startPlist(offset);
    case XmlElement::kKey:
      return startKey(offset);
    default:
      return startValue(element, offset);
  }
}

void XmlValues::startPlist(std::size_t offset) {
  if (insidePlist_ || !containers_.empty()) refuse(offset, "<plist> that is not outermost");
  insidePlist_ = true;
}

void XmlValues::startKey(std::size_t offset) {
  if (containers_.empty() || !containers_.back().isDictionary) {
    refuse(offset, "<key> outside a dictionary");
  }
  if (containers_.back().key) refuse(offset, "<key> where the value of another belongs");
  leaf_ = {XmlElement::kKey, offset, {}};
}

void XmlValues::startValue(XmlElement element, std::size_t offset) {
  if (containers_.empty() && root_) refuse(offset, "a second value at the root");
  if (!containers_.empty() && containers_.back().isDictionary && !containers_.back().key) {
    refuse(offset, tag(element) + " without a key");
  }
  if (++values_ > kMaxValues) {
    refuse(offset, "more than " + std::to_string(kMaxValues) + " values");
  }
  const Position position = positions_.at(offset);
  if (element != XmlElement::kDict && element != XmlElement::kArray) {
    leaf_ = {element, offset, position};
    return;
  }
  if (containers_.size() == kMaxDepth) {
    refuse(offset, "containers nest deeper than " + std::to_string(kMaxDepth));
  }
  startContainer(element == XmlElement::kDict, position);
}

void XmlValues::startContainer(bool isDictionary, Position position) {
  containers_.push_back({isDictionary, position, isDictionary ? entries_.size() : items_.size()});
}

void XmlValues::text(std::string_view run, std::size_t offset) {
  if (leaf_ && leaf_->element != XmlElement::kTrue && leaf_->element != XmlElement::kFalse) {
    text_ += run;
    return;
  }
  const auto first = run.find_first_not_of(kWhiteSpace);
  if (first != run.npos) refuse(offset + first, "text where none belongs");
}

void XmlValues::end(std::size_t offset) {
  if (leaf_) return endLeaf();
  if (!containers_.empty()) return endContainer();
  if (!root_) refuse(offset, "<plist> without a value");
}

void XmlValues::endLeaf() {
  const Leaf leaf = *leaf_;
  leaf_.reset();
  if (leaf.element == XmlElement::kKey) {
    const std::string_view key = builder_.keep(text_);
    containers_.back().key = key;
    containers_.back().keyOffset = leaf.offset;
    if (keys_) keys_->add(key, positions_.at(leaf.offset));
  } else {
    add(value(leaf));
  }
  text_.clear();
}

PropertyListView XmlValues::value(const Leaf& leaf) {
  switch (leaf.element) {
    case XmlElement::kInteger:
      return builder_.integer(parsed(leaf, parseInteger, "an integer of 64 bits"), leaf.position);
    case XmlElement::kReal:
      return builder_.real(parsed(leaf, parseReal, "a finite number"), leaf.position);
    case XmlElement::kDate:
      return builder_.date(parsed(leaf, parseDate, "a date like 2013-09-18T00:00:00Z"),
                           leaf.position);
    case XmlElement::kData:
      return builder_.data(parsed(leaf, decodeBase64, "base64"), leaf.position);
    case XmlElement::kTrue:
    case XmlElement::kFalse:
      return builder_.boolean(leaf.element == XmlElement::kTrue, leaf.position);
    default:
      return builder_.string(text_, leaf.position);
  }
}

/// What `parse` makes of the text of `leaf`, which should be `what`.
template <class T>
T XmlValues::parsed(const Leaf& leaf, std::optional<T> (*parse)(std::string_view),
                    std::string_view what) {
  auto result = parse(text_);
  if (!result) refuse(leaf.offset, tag(leaf.element) + " does not hold " + std::string(what));
  return *std::move(result);
}

void XmlValues::endContainer() {
  const Container container = containers_.back();
  if (container.key) refuse(container.keyOffset, "<key> without a value");
  containers_.pop_back();
  PropertyListView value;
  if (container.isDictionary) {
    const auto written = Entries(entries_).subspan(container.first);
    value = builder_.dictionary(written, container.position);
    if (keys_) keys_->addRepeated(written, value.entries());
    entries_.resize(container.first);
  } else {
    value = builder_.array(Items(items_).subspan(container.first), container.position);
    items_.resize(container.first);
  }
  add(value);
}

void XmlValues::add(PropertyListView value) {
  if (containers_.empty()) {
    root_ = value;
  } else if (!containers_.back().isDictionary) {
    items_.push_back(value);
  } else {
    entries_.push_back({*containers_.back().key, value});
    containers_.back().key.reset();
  }
}

}  // namespace host::plist
