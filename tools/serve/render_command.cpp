#include "serve/render_command.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "host/files/shell_words.h"

namespace tools::serve {

namespace {

using host::boards::Orientation;
using host::files::wordForShell;

class Line {
 public:
  void add(std::string_view text) { line_.append(" ").append(wordForShell(text)); }
  void add(std::string_view option, std::string_view value) {
    // A value that begins with a dash would be taken for an option.
    if (value.starts_with('-')) {
      line_.append(" ").append(wordForShell(std::string(option) + "=" + std::string(value)));
      return;
    }
    add(option);
    add(value);
  }
  template <class Value, std::size_t size>
  void addChoice(std::string_view option, const std::optional<Value>& value,
                 const keyboard::Word<Value> (&words)[size], const Value& usual) {
    if (value && *value != usual) add(option, keyboard::wordOf(words, *value));
  }
  const std::string& text() const { return line_; }

 private:
  std::string line_ = "prismal render";
};

/// Whole: nobody knows from where the line is run.
std::string pathOf(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::absolute(path, error).lexically_normal().string();
}

void addDress(Line& line, const Options& options, const Question& question,
              const std::string& settings) {
  if (question.look == Look::system) {
    line.add("--system");
  } else {
    line.add(pathOf(question.look == Look::other ? options.other : options.theme));
    if (!settings.empty()) line.add("--settings", settings);
  }
  if (options.isLibraryNamed) line.add("--library", pathOf(options.library));
}

void addView(Line& line, const keyboard::ViewOptions& view) {
  line.addChoice("--device", view.device, keyboard::kDevices, keyboard::kDevices[0].value);
  line.addChoice("--orientation", view.orientation, keyboard::kOrientations, Orientation::portrait);
  line.addChoice("--style", view.style, keyboard::kStyles, host::boards::Look::standard);
  if (view.plane) line.add("--keyplane", keyboard::wordOf(keyboard::kPlanes, *view.plane));
  if (view.dictationKey) line.add("--dictation-key", "yes");
  if (!view.internationalKey) line.add("--international-key", "no");
  if (view.dictation) line.add("--dictation");
  if (view.shift) line.add("--shift", keyboard::wordOf(keyboard::kShifts, *view.shift));
  for (const std::string& key : view.pressed) line.add("--press", key);
  for (const std::string& key : view.disabled) line.add("--disable", key);
}

}  // namespace

std::string renderCommand(const Options& options, const Question& question,
                          const std::string& settings) {
  Line line;
  addDress(line, options, question, settings);
  addView(line, question.view);
  // A picture in a file is of a device's own scales.
  if (question.scale < 2) line.add("--scale", "1");
  if (question.beside == Look::system) line.add("--beside-system");
  if (question.beside == Look::other) line.add("--diff", pathOf(options.other));
  return line.text();
}

}  // namespace tools::serve
