#include "host_session.h"

#include <functional>
#include <stdexcept>
#include <string_view>

#include "host/drawing/draw.h"
#include "host/images/encode.h"
#include "host/keyboard/keyboard.h"
#include "host/render/keyplane.h"
#include "host/render/picture.h"
#include "host/system/device.h"
#include "host/system/library_loader.h"
#include "host/system/process.h"
#include "platform/foundation.h"

namespace tests {

using host::files::DeviceRoot;
using host::images::Bitmap;
namespace render = host::render;
namespace boards = host::boards;

namespace {

constexpr double kScale = 2;

constexpr const char* kThemeText = R"(<dict>
  <key>CustomColor</key><array>
    <array><string>UIKBColorKeyLetter</string><string>#3070C0FF</string></array>
    <array><string>A colour of the theme</string><string>#FFE0A0FF</string></array>
    <array><string>Malformed</string></array>
  </array>
  <key>CustomLinearGradient</key><array>
    <array><string>A gradient of the theme</string><string>UIKBColorKeyLetter</string>
      <string>A colour of the theme</string></array>
    <array><string>A flat one</string><string>A colour of the theme</string></array>
  </array>
  <key>Styles</key><dict><key>iPhone-Standard</key><array>
    <array><string>KeyName=Latin-Small-Letter-A,Latin-Small-Letter-S</string><dict>
      <key>BackgroundGradient</key><string>A gradient of the theme</string>
      <key>TextColor</key><string>A colour of the theme</string></dict></array>
    <array><string>DisplayType=Return</string><dict>
      <key>BackgroundGradient</key><string>A flat one</string>
      <key>EtchOffsetX</key><real>1</real></dict></array>
    <array><string>*</string></array>
  </array></dict>
  <key>BackgroundImages</key><dict>
    <key>Portrait;iPhone-Standard</key><string>/pictures/p.png</string>
  </dict>
</dict>)";

constexpr const char* kSettingsText = R"(<dict>
  <key>usePrismal</key><true/>
  <key>backgroundImages</key><dict><key>iPhone-Standard</key><dict>
    <key>Landscape</key><string>/pictures/l.jpg</string></dict></dict>
</dict>)";

Bitmap drawOne(boards::Orientation orientation, host::drawing::Fonts& fonts) {
  const platform::NSAutoreleasePool pool;
  const render::KeyplaneChoice choice{boards::findBoard("Phone-3.5-Inch"),
                                      boards::Plane::small_letters,
                                      orientation,
                                      boards::Look::standard,
                                      {}};
  const render::LiveKeyplane keyplane = render::makeKeyplane(choice);
  render::show(keyplane, choice);
  return host::drawing::draw(render::pictureOf(keyplane, kScale, fonts), fonts).value_or(Bitmap());
}

}  // namespace

void makeDevice(const std::string& device) {
  const auto root = DeviceRoot::open(device, DeviceRoot::Creation::kIfMissing);
  const auto put = [&](const char* path, std::string_view bytes) {
    if (!root->writeFile(path, bytes)) throw std::runtime_error(path);
  };
  put(kTheme, kThemeText);
  put(kSettings, kSettingsText);
  put(kDefaultSettings, "<dict><key>usePrismal</key><false/></dict>");
  put(kPicture, host::images::encodePng(host::images::solid(9, 7, 200, 40, 40, 255)));
  put(kSibling, host::images::encodePng(host::images::solid(18, 14, 40, 200, 40, 255)));
  put(kPhotograph, host::images::encodeJpeg(host::images::solid(16, 16, 40, 40, 200, 255)));
  put(kCachedKeys, "No longer of use");
}

HostSession::HostSession(const std::string& device) {
  auto root = DeviceRoot::open(device, DeviceRoot::Creation::kNever);
  if (!root) throw std::runtime_error(root.reason());
  host::system::startProcess(*std::move(root), "com.example.notes");
  host::system::setDevice({.screenScale = kScale, .interfaceIdiom = 0, .systemVersion = "7.0.4"});
  host::keyboard::defineKeyboardClasses({}, {});
}

bool HostSession::loadLibrary() {
  const platform::NSAutoreleasePool pool;
  if (host::system::loadLibrary(PRISMAL_LIBRARY)) return false;
  host::system::process().runLoop().drain();
  return true;
}

std::vector<Bitmap> HostSession::draw() {
  std::vector<Bitmap> pictures;
  pictures.push_back(drawOne(boards::Orientation::portrait, fonts_));
  pictures.push_back(drawOne(boards::Orientation::landscape, fonts_));
  return pictures;
}

std::size_t hashOf(const std::vector<Bitmap>& pictures) {
  std::size_t hash = 0;
  for (const Bitmap& picture : pictures) {
    const std::string_view bytes(reinterpret_cast<const char*>(picture.pixels.data()),
                                 picture.pixels.size() * sizeof(host::images::Pixel));
    hash = hash * 31 + std::hash<std::string_view>()(bytes);
  }
  return hash;
}

}  // namespace tests
