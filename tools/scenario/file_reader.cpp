#include "scenario/file_reader.h"

#include <utility>

#include "scenario/json_output.h"
#include "scenario/notation.h"
#include "scenario/shape_reader.h"

namespace tools::scenario {
namespace {

PlistValue::Data readBase64(const Node& node) {
  if (auto bytes = fromBase64(node.string())) return std::move(*bytes);
  node.refuse("expected base64 with its padding");
}

PlistValue::Date readDate(const Node& node) {
  if (const auto date = fromDate(node.string())) return *date;
  node.refuse("expected a date such as \"2013-09-18T00:00:00Z\", found " + shortLine(node.json()));
}

PlistValue readPlist(const Node& node);

PlistValue readPlistArray(const Node& node) {
  PlistValue::Array items;
  node.forEachElement([&](const Node& item) { items.push_back(readPlist(item)); });
  return {std::move(items)};
}

PlistValue readPlistObject(const Node& node) {
  // Only alone do these stand for something else: a dictionary may well have such a key.
  if (node.json().size() == 1 && node.has("$data")) return {readBase64(node.at("$data"))};
  if (node.json().size() == 1 && node.has("$date")) return {readDate(node.at("$date"))};
  PlistValue::Dictionary entries;
  node.forEachMember([&](std::string_view key, const Node& value) {
    entries.push_back({std::string(key), readPlist(value)});
  });
  return {std::move(entries)};
}

PlistValue readPlist(const Node& node) {
  const auto& json = node.json();
  if (json.is_object()) return readPlistObject(node);
  if (json.is_array()) return readPlistArray(node);
  if (json.is_string()) return {node.string()};
  if (json.is_boolean()) return {node.boolean()};
  if (json.is_null()) node.refuse("a property list has no null");
  // A whole number beyond 64 bits is held as a real; it must not become one silently.
  if (json.is_number_integer() || node.isHugeInteger()) return {node.integer()};
  return {node.real()};
}

std::int32_t readEdge(const Node& node) {
  const auto edge = node.integer();
  if (edge < 1 || edge > kMaxImageEdge) {
    node.refuse("expected from 1 to " + std::to_string(kMaxImageEdge) + " pixels, found " +
                std::to_string(edge));
  }
  return static_cast<std::int32_t>(edge);
}

ImageFormat readFormat(const Node& node) {
  if (node.string() == "png") return ImageFormat::kPng;
  if (node.string() == "jpeg") return ImageFormat::kJpeg;
  node.refuse("expected \"png\" or \"jpeg\", found " + shortLine(node.json()));
}

ImageFile readImageFile(const Node& node) {
  node.requireOnly({"size", "color", "format"});
  ImageFile image;
  const auto size = node.at("size");
  size.requireLength(2);
  std::int32_t* edge = &image.width;
  size.forEachElement([&](const Node& n) { *std::exchange(edge, &image.height) = readEdge(n); });
  if (std::int64_t{image.width} * image.height > kMaxImagePixels) {
    size.refuse("more than " + std::to_string(kMaxImagePixels) + " pixels");
  }
  image.color = readColor(node.at("color"));
  member(node, "format", image.format, readFormat);
  return image;
}

File readXmlPlistFile(const Node& node) {
  return PlistFile{readPlist(node), false};
}
File readBinaryPlistFile(const Node& node) {
  return PlistFile{readPlist(node), true};
}
File readTextFile(const Node& node) {
  return BytesFile{node.string()};
}
File readBase64File(const Node& node) {
  std::string bytes;
  for (const auto byte : readBase64(node)) bytes += std::to_integer<char>(byte);
  return BytesFile{std::move(bytes)};
}
File readPictureFile(const Node& node) {
  return readImageFile(node);
}
File readDirectory(const Node& node) {
  if (!node.boolean()) node.refuse("expected true");
  return EmptyDirectory{};
}

struct Form {
  std::string_view name;
  File (*read)(const Node&);
};

constexpr Form kForms[] = {
    {"plist", readXmlPlistFile}, {"binaryPlist", readBinaryPlistFile}, {"text", readTextFile},
    {"base64", readBase64File},  {"image", readPictureFile},           {"directory", readDirectory},
};

}  // namespace

File readFile(const Node& node) {
  node.requireOnly({"plist", "binaryPlist", "text", "base64", "image", "directory"});
  if (node.json().size() != 1) {
    node.refuse("expected one form of a file, found " + std::to_string(node.json().size()));
  }
  std::optional<File> file;
  node.forEachMember([&](std::string_view name, const Node& content) {
    for (const auto& form : kForms) {
      if (form.name == name) file = form.read(content);
    }
  });
  return std::move(*file);
}

}  // namespace tools::scenario
