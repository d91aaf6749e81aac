#pragma once

#include <gtest/gtest.h>

#include "host/files/temporary_directory.h"
#include "host/keyboard/keyboard.h"
#include "host/render/keyplane.h"
#include "host/system/process.h"

namespace host::render {

/// This program as a host process on an empty device, without the library; once for all tests.
inline const files::DeviceRoot& hostDevice() {
  static const files::TemporaryDirectory directory;
  static const files::DeviceRoot& root = []() -> const files::DeviceRoot& {
    system::startProcess(
        *files::DeviceRoot::open(directory.path(), files::DeviceRoot::Creation::kNever), {});
    keyboard::defineKeyboardClasses({}, {});
    return system::process().root();
  }();
  return root;
}

inline KeyplaneChoice choiceOf(boards::Look look, boards::Orientation orientation,
                               const boards::Board& board = *boards::findBoard("Phone-3.5-Inch")) {
  return {&board, boards::Plane::small_letters, orientation, look, {}};
}

}  // namespace host::render
