#pragma once

#include <memory>
#include <string_view>

namespace host::drawing {

class Face;

/// The fonts of a process: each is looked up when it is first drawn with, and kept open. Costs
/// nothing before that. Not safe for use by two threads at once.
class Fonts {
 public:
  Fonts();
  ~Fonts();
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;

  /// The face that `name` stands for (see TextStyle::font_name); null where no font at all is
  /// installed, or while it can't be opened. Lives until the next call of this function.
  const Face* named(std::string_view name);
  /// A face that has `character`: `preferred` if it does, else the installed one that goes best
  /// with it, else `preferred`.
  const Face* covering(char32_t character, const Face* preferred);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace host::drawing
