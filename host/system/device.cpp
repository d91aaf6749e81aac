#include "host/system/device.h"

#include <utility>

#include "host/runtime/class_table.h"
#include "platform/graphics.h"

namespace host::system {

namespace {

Device& theDevice() {
  static Device& answers = *new Device;
  return answers;
}

objc_object* deviceObject() {
  static auto* const object = new objc_object(runtime::defineClass("UIDevice"));
  return object;
}

int userInterfaceIdiom(platform::UIDevice, platform::SEL) {
  return theDevice().interfaceIdiom.value_or(0);
}

}  // namespace

const Device& device() {
  return theDevice();
}

void setDevice(Device device) {
  objc_class* const cls = deviceObject()->isa;
  cls->methods.clear();
  if (device.interfaceIdiom) {
    runtime::addMethod(cls, "userInterfaceIdiom",
                       reinterpret_cast<platform::IMP>(&userInterfaceIdiom));
  }
  theDevice() = std::move(device);
}

}  // namespace host::system

namespace platform {

UIDevice UIDevice::currentDevice() {
  return UIDevice(host::system::deviceObject());
}

int UIDevice::userInterfaceIdiom() const {
  return host::runtime::send<int>(*this, sel_registerName("userInterfaceIdiom"));
}

std::string_view UIDevice::systemVersion() const {
  return get() ? std::string_view(host::system::device().systemVersion) : std::string_view();
}

UIScreen UIScreen::mainScreen() {
  static auto* const screen = new objc_object(host::runtime::defineClass("UIScreen"));
  return UIScreen(screen);
}

double UIScreen::scale() const {
  return get() ? host::system::device().screenScale : 0;
}

}  // namespace platform
