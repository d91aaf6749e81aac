#include "keyboard/dress_options.h"

#include <CLI/App.hpp>

namespace tools::keyboard {

void addDressOptions(CLI::App& command, Dress& dress) {
  command.add_option("THEME", dress.theme,
                     "A theme folder, or a property-list file of the merged form; without it, what "
                     "is installed on the device");
  command
      .add_option("--device-root", dress.device_root,
                  "The device to look at, in place of $XDG_DATA_HOME/prismal/device "
                  "(~/.local/share/prismal/device)")
      ->type_name("DIR");
  command
      .add_option("--settings", dress.settings,
                  "A settings file for the THEME; relative paths of pictures in it are relative to "
                  "its folder")
      ->type_name("FILE");
  command
      .add_option("--library", dress.library,
                  "The library to load, in place of the one that came with this program")
      ->type_name("FILE");
  command.add_flag("--quiet", dress.quiet,
                   "Don't show the lines that the library logs, nor which pictures are missing");
}

}  // namespace tools::keyboard
