#include "theme/device_paths.h"

#include <string>
#include <vector>

#include "host/plist/builder.h"
#include "theme/dictionary_file.h"

namespace tools::theme {

using host::plist::Builder;
using platform::PropertyList;
using platform::PropertyListView;

namespace {

constexpr std::string_view kImages = "BackgroundImages";

PropertyListView onDevice(Builder& builder, PropertyListView path, std::string_view directory) {
  const std::string_view written = path.string().value_or("");
  if (isDevicePath(written)) return path;
  const auto inFolder = pathInFolder(written);
  return inFolder ? builder.string(std::string(directory) + *inFolder) : path;
}

}  // namespace

PropertyList withDevicePaths(const PropertyList& theme, std::string_view directory) {
  const auto written = theme.objectForKey(kImages);
  if (!written.isDictionary()) return theme;
  Builder builder;
  builder.adopt(theme);
  std::vector<Builder::Entry> images;
  for (const auto& [key, path] : written.entries()) {
    images.push_back({key, onDevice(builder, path, directory)});
  }
  std::vector<Builder::Entry> sections(theme.entries().begin(), theme.entries().end());
  sections.push_back({kImages, builder.dictionary(images)});
  return builder.finish(builder.dictionary(sections));
}

}  // namespace tools::theme
