#include "convert.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "choice_option.h"
#include "convert/form.h"
#include "exit_status.h"
#include "output_file.h"
#include "text_file.h"

namespace tools {

namespace fs = std::filesystem;
using convert::Form;

namespace {

struct ConvertOptions {
  std::string input;
  fs::path output = "-";
  std::optional<Form> form;
};

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal convert: %s\n", reason.c_str());
  return kTrouble;
}

/// A reader's "line 3, column 7: why" in the form that editors follow: "file:3:7: why".
std::string placed(const std::string& file, std::string_view reason) {
  constexpr std::string_view kLine = "line ";
  constexpr std::string_view kColumn = ", column ";
  const auto column = reason.find(kColumn);
  if (!reason.starts_with(kLine) || column == reason.npos) return file + ": " + std::string(reason);
  std::string text = file + ":";
  text += reason.substr(kLine.size(), column - kLine.size());
  return text.append(":").append(reason.substr(column + kColumn.size()));
}

/// The form that the command line asks for; none when it leaves that open.
std::optional<Form> wantedForm(const ConvertOptions& options) {
  if (options.form) return options.form;
  const fs::path extension = options.output.extension();
  if (extension == ".json") return Form::kJson;
  if (extension == ".plist" || options.output == "-") return Form::kXml;
  return std::nullopt;
}

int run(const ConvertOptions& options) {
  const bool fromPipe = options.input == "-";
  const std::string name = fromPipe ? "standard input" : options.input;
  const auto form = wantedForm(options);
  if (!form) return refuse(options.output.string() + ": --to has to say which form this is");
  if (form == Form::kBinary && isTerminal(options.output)) {
    return refuse("the binary form is not for a terminal; send it to a file or a program");
  }
  std::error_code ignored;
  if (fs::is_directory(options.input, ignored)) {
    return refuse(name + ": a folder; its theme.plist is what can be converted");
  }
  const auto bytes = readTextFile(fromPipe ? "/dev/stdin" : options.input);
  if (!bytes) return refuse(name + ": " + bytes.reason());
  const auto reading = convert::readAnyForm(*bytes);
  if (!reading) return refuse(placed(name, reading.reason));
  const auto writing = convert::writeForm(reading.list, *form);
  if (!writing.reason.empty()) return refuse(name + ": " + writing.reason);
  const auto written = writeOutput(options.output, writing.bytes);
  return written ? kDone : refuse(options.output.string() + ": " + written.reason());
}

}  // namespace

void addConvertCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ConvertOptions>();
  CLI::App* const command =
      app.add_subcommand("convert", "Turn a theme or settings file into XML, binary or JSON");
  command
      ->add_option("INPUT", options->input,
                   "A property list of any form, told by its bytes; - is standard input")
      ->required();
  command
      ->add_option("-o,--output", options->output,
                   "The file to write: .json gives JSON, .plist XML; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  addChoice(*command, "--to", options->form, "The form, whatever the file is called",
            convert::kForms);
  command->footer(
      "What is converted back is the same list to the last bit. Comments and the order of keys "
      "are\n"
      "no part of a list. JSON has data as {\"$data\": \"base64\"} and a date as\n"
      "{\"$date\": \"2013-09-18T00:00:00Z\"}; a number with a point or an exponent is a real.\n"
      "Exit status: 0 done, 2 something that can't be read, written, or held by the form.\n\n"
      "Examples:\n"
      "  prismal convert theme.json -o theme.plist\n"
      "  prismal convert theme.plist --to json | less\n"
      "  prismal convert settings.plist --to binary -o settings.plist");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
