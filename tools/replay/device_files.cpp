#include "replay/device_files.h"

#include <vector>

#include "host/images/encode.h"
#include "host/plist/builder.h"
#include "host/plist/writer.h"

namespace tools::replay {

using host::files::DeviceRoot;
using host::plist::Builder;

namespace {

// A scenario nests no deeper than its reader allows, so a recursion is safe here.
struct ListBuilder {
  Builder& builder;

  Builder::View operator()(bool value) const { return builder.boolean(value); }
  Builder::View operator()(std::int64_t value) const { return builder.integer(value); }
  Builder::View operator()(double value) const { return builder.real(value); }
  Builder::View operator()(const std::string& value) const { return builder.string(value); }
  Builder::View operator()(const scenario::PlistValue::Data& value) const {
    return builder.data(value);
  }
  Builder::View operator()(scenario::PlistValue::Date value) const {
    return builder.date(host::plist::Date{static_cast<double>(value.time_since_epoch().count())});
  }
  Builder::View operator()(const scenario::PlistValue::Array& value) const {
    std::vector<Builder::View> items;
    for (const auto& item : value) items.push_back(std::visit(*this, item.value));
    return builder.array(items);
  }
  Builder::View operator()(const scenario::PlistValue::Dictionary& value) const {
    std::vector<Builder::Entry> entries;
    for (const auto& entry : value) {
      entries.push_back({builder.keep(entry.key), std::visit(*this, entry.value.value)});
    }
    return builder.dictionary(entries);
  }
};

struct FileBytes {
  std::string operator()(const scenario::PlistFile& file) const {
    Builder builder;
    const auto root = std::visit(ListBuilder{builder}, file.value.value);
    const auto list = std::move(builder).finish(root);
    return file.binary ? host::plist::writeBinary(list) : host::plist::writeXml(list);
  }
  std::string operator()(const scenario::BytesFile& file) const { return file.bytes; }
  std::string operator()(const scenario::ImageFile& file) const {
    const auto& color = file.color;
    const auto bitmap = host::images::solid(file.width, file.height, color.red, color.green,
                                            color.blue, color.alpha);
    return file.format == scenario::ImageFormat::kPng ? host::images::encodePng(bitmap)
                                                      : host::images::encodeJpeg(bitmap);
  }
  std::string operator()(const scenario::EmptyDirectory&) const { return {}; }
};

host::files::Result<host::files::Done> makeEmptyDirectory(const DeviceRoot& root,
                                                          std::string_view path) {
  if (auto removed = root.remove(path); !removed) return removed;
  return root.makeDirectories(path);
}

}  // namespace

std::optional<std::string> writeDeviceFile(const DeviceRoot& root, std::string_view path,
                                           const scenario::File& file) {
  const auto done = std::holds_alternative<scenario::EmptyDirectory>(file)
                        ? makeEmptyDirectory(root, path)
                        : root.writeFile(path, std::visit(FileBytes(), file));
  if (done) return std::nullopt;
  return std::string(path) + ": " + done.reason();
}

}  // namespace tools::replay
