#include "host/render/drawing_stamp.h"

#include <cstdint>

#include "host/drawing/library_versions.h"
#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/checksum.h"

namespace host::render {

namespace {

/// To be raised when a key comes out otherwise for any other reason than a colour or gradient of
/// the system's look: a font, a size, a shape, the way it is drawn.
constexpr int kRevision = 1;

/// Follows the tables of colours and gradients.
std::uint64_t paletteNumber() {
  std::string all;
  for (const auto& [name, color] : boards::systemColors()) {
    all.append(name);
    for (const double part : {color.red, color.green, color.blue, color.alpha}) {
      all.append(" ").append(std::to_string(part));
    }
  }
  for (const auto& [name, start, end] : boards::systemGradients()) {
    all.append(name).append(" ").append(start).append(" ").append(end);
  }
  return keyboard::checksum(all);
}

}  // namespace

const std::string& drawingStamp() {
  static const std::string stamp = drawing::libraryVersions() + ", keys " +
                                   std::to_string(kRevision) + ", palette " +
                                   std::to_string(paletteNumber());
  return stamp;
}

}  // namespace host::render
