#pragma once

#include <utility>

#include "host/files/result.h"
#include "host/images/bitmap.h"
#include "keyboard/keyboard_child.h"
#include "keyboard/view.h"

namespace tools::render {

/// A picture that another process draws meanwhile, because a process has one keyboard and one
/// dress.
class OtherProcess {
 public:
  /// To be started before this process has threads or a keyboard of its own.
  static host::files::Result<OtherProcess> start(const keyboard::Dress& dress,
                                                 const keyboard::View& view, double scale);

  /// What it drew, once; or its failure. Waits for it.
  host::files::Result<host::images::Bitmap> picture();

 private:
  explicit OtherProcess(keyboard::KeyboardChild process) : process_(std::move(process)) {}

  keyboard::KeyboardChild process_;
};

}  // namespace tools::render
