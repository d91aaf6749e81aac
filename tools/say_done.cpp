#include "say_done.h"

#include "device/report.h"
#include "exit_status.h"
#include "output_file.h"

namespace tools {

int sayDone(std::string_view subcommand, const std::string& line) {
  const auto printed = printResult(line + "\n");
  return printed ? kDone : device::refuse(subcommand, "standard output: " + printed.reason());
}

}  // namespace tools
