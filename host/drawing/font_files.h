#pragma once

#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "host/drawing/font_traits.h"

namespace host::drawing {

/// A face within a font file: the low 16 bits of `index` number the face, those above a named
/// instance of it, from 1.
struct FontFile {
  std::string path;
  int index = 0;
  friend auto operator<=>(const FontFile&, const FontFile&) = default;
};

/// The folders of this machine from which fonts, and fontconfig's lists of them, are read, there or
/// not: for whoever takes the rest away.
std::span<const char* const> fontFolders();

/// Which file holds which font. The installed fonts are listed at the first question that the
/// system font's own folder can't answer, which takes some milliseconds. One thread at a time.
class FontFiles {
 public:
  FontFiles();
  ~FontFiles();

  /// By PostScript name, full name, family, then family and style; none when not installed.
  std::optional<FontFile> named(std::string_view name);
  /// What `named` may be asked for: every family and the PostScript name and the full name of every
  /// font that is installed.
  std::set<std::string> names();
  /// The system font, or what comes nearest to it; none only where no font is installed.
  std::optional<FontFile> system(FontTraits traits);
  /// The font with `character` that goes best with the system font; none when no font has it.
  std::optional<FontFile> covering(char32_t character, FontTraits traits);

 private:
  struct Installed;
  Installed& installed();
  std::unique_ptr<Installed> installed_;
};

}  // namespace host::drawing
