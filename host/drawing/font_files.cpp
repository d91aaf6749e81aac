#include "host/drawing/font_files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fontconfig/fontconfig.h>
#include <iterator>
#include <span>
#include <system_error>

namespace host::drawing {
namespace {

struct FreeConfig {
  void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
struct FreePattern {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
struct FreeFontSet {
  void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};
struct FreeObjectSet {
  void operator()(FcObjectSet* set) const { FcObjectSetDestroy(set); }
};
struct FreeCharSet {
  void operator()(FcCharSet* set) const { FcCharSetDestroy(set); }
};
using Config = std::unique_ptr<FcConfig, FreeConfig>;
using FontPattern = std::unique_ptr<FcPattern, FreePattern>;
using FontSet = std::unique_ptr<FcFontSet, FreeFontSet>;
using ObjectSet = std::unique_ptr<FcObjectSet, FreeObjectSet>;
using CharSet = std::unique_ptr<FcCharSet, FreeCharSet>;

/// The fonts of `set`, which has to outlive them; a null set is empty.
std::span<FcPattern* const> fontsOf(const FontSet& set) {
  if (!set) return {};
  return {set->fonts, static_cast<std::size_t>(set->nfont)};
}

void add(const FontPattern& pattern, const char* property, std::string_view text) {
  const std::string terminated(text);
  // Fontconfig's characters are unsigned, its texts ordinary ones.
  FcPatternAddString(pattern.get(), property, reinterpret_cast<const FcChar8*>(terminated.c_str()));
}

int integer(FcPattern* font, const char* property, int otherwise) {
  int value = otherwise;
  return FcPatternGetInteger(font, property, 0, &value) == FcResultMatch ? value : otherwise;
}

std::optional<FontFile> fileOf(FcPattern* font) {
  FcChar8* path = nullptr;
  if (!font || FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
  return FontFile{reinterpret_cast<const char*>(path), integer(font, FC_INDEX, 0)};
}

struct Weight {
  std::string_view name;
  int value;
};

constexpr Weight kWeights[] = {
    {"Thin", FC_WEIGHT_THIN},           {"ExtraLight", FC_WEIGHT_EXTRALIGHT},
    {"Light", FC_WEIGHT_LIGHT},         {"Medium", FC_WEIGHT_MEDIUM},
    {"SemiBold", FC_WEIGHT_DEMIBOLD},   {"Bold", FC_WEIGHT_BOLD},
    {"ExtraBold", FC_WEIGHT_EXTRABOLD}, {"Black", FC_WEIGHT_BLACK},
};

int weightOf(FontTraits traits) {
  const auto found = std::ranges::find(kWeights, traits.weight, &Weight::name);
  return found == std::end(kWeights) ? FC_WEIGHT_REGULAR : found->value;
}

int slantOf(FontTraits traits) {
  return traits.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN;
}

/// How far `font` is from `traits`; upright or not weighs more than any weight, width most.
int distance(FcPattern* font, FontTraits traits) {
  const bool italic = integer(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
  const int width = std::abs(integer(font, FC_WIDTH, FC_WIDTH_NORMAL) - FC_WIDTH_NORMAL);
  return std::abs(integer(font, FC_WEIGHT, FC_WEIGHT_REGULAR) - weightOf(traits)) +
         (italic == traits.italic ? 0 : 1000) + width * 1000;
}

struct Family {
  std::string_view name;
  std::string_view font;
};

constexpr Family kSystemFamilies[] = {{"Inter", "Inter-Regular"},
                                      {"Inter Display", "InterDisplay-Regular"}};

/// The PostScript name of the font that stands for a family of the system font; else `name`.
std::string_view withoutFamily(std::string_view name) {
  const auto found = std::ranges::find(kSystemFamilies, name, &Family::name);
  return found == std::end(kSystemFamilies) ? name : found->font;
}

/// The system font's file in the folder that was found when the host was built. `name` may come
/// from a theme, so nothing but letters and one "-" makes a file name of it.
std::optional<FontFile> fromSystemFolder(std::string_view name) {
  constexpr std::string_view kFolder = HOST_SYSTEM_FONT_FOLDER;
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  const auto dash = name.find('-');
  if (kFolder.empty() || dash == name.npos) return std::nullopt;
  const std::string_view family = name.substr(0, dash);
  if (family != "Inter" && family != "InterDisplay") return std::nullopt;
  if (!std::ranges::all_of(name.substr(dash + 1), isLetter)) return std::nullopt;
  std::string path(kFolder);
  path.append("/").append(name).append(".otf");
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  return FontFile{std::move(path), 0};
}

// Where fonts are installed, and nothing of what a user or a machine prefers: a picture follows
// from what is installed alone.
constexpr const char* kFontConfiguration = R"(<fontconfig>
  <dir>/usr/share/fonts</dir>
  <dir>/usr/local/share/fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
</fontconfig>)";

constexpr const char* kFolders[] = {
    HOST_SYSTEM_FONT_FOLDER, "/usr/share/fonts", "/usr/local/share/fonts", "/var/cache/fontconfig",
    // Where links in the others lead to, as Debian's packages have them.
    "/usr/share/texmf/fonts"};

Config loadFonts() {
  Config config(FcConfigCreate());
  // Fontconfig's characters are unsigned, its texts ordinary ones.
  const auto* const text = reinterpret_cast<const FcChar8*>(kFontConfiguration);
  if (config && FcConfigParseAndLoadFromMemory(config.get(), text, FcTrue)) {
    FcConfigBuildFonts(config.get());
  }
  return config;
}

}  // namespace

std::span<const char* const> fontFolders() {
  return kFolders;
}

/// What fontconfig knows of the machine, loaded at construction.
struct FontFiles::Installed {
  Config config = loadFonts();

  FontSet list(const char* property, std::string_view value) const {
    const FontPattern wanted(FcPatternCreate());
    add(wanted, property, value);
    // The family of a variable font stands in the list beside its named instances.
    FcPatternAddBool(wanted.get(), FC_VARIABLE, FcFalse);
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    const ObjectSet told(
        FcObjectSetBuild(FC_FILE, FC_INDEX, FC_WEIGHT, FC_SLANT, FC_WIDTH, nullptr));
    return FontSet(FcFontList(config.get(), wanted.get(), told.get()));
  }

  std::optional<FontFile> nearest(const char* property, std::string_view value,
                                  FontTraits traits) const {
    const FontSet set = list(property, value);
    const auto fonts = fontsOf(set);
    const auto best = std::ranges::min_element(
        fonts, {}, [&](FcPattern* font) { return distance(font, traits); });
    return best == fonts.end() ? std::nullopt : fileOf(*best);
  }

  FontPattern likeSystemFont(FontTraits traits) const {
    FontPattern pattern(FcPatternCreate());
    add(pattern, FC_FAMILY, "Inter");
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, weightOf(traits));
    FcPatternAddInteger(pattern.get(), FC_SLANT, slantOf(traits));
    return pattern;
  }

  void complete(const FontPattern& pattern) const {
    FcConfigSubstitute(config.get(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
  }
};

FontFiles::FontFiles() = default;
FontFiles::~FontFiles() = default;

FontFiles::Installed& FontFiles::installed() {
  if (!installed_) installed_ = std::make_unique<Installed>();
  return *installed_;
}

std::optional<FontFile> FontFiles::named(std::string_view name) {
  if (name.empty()) return std::nullopt;
  if (auto file = fromSystemFolder(withoutFamily(name))) return file;
  const Installed& fonts = installed();
  const FontTraits traits = traitsOf(name);
  for (const char* property : {FC_POSTSCRIPT_NAME, FC_FULLNAME}) {
    if (auto file = fonts.nearest(property, name, traits)) return file;
  }
  // A family's name may hold a weight, as in "DejaVu Sans Light", but it need not mean one.
  if (auto file = fonts.nearest(FC_FAMILY, name, FontTraits{})) return file;
  const auto dash = name.rfind('-');
  if (dash == name.npos || dash == 0) return std::nullopt;
  return fonts.nearest(FC_FAMILY, name.substr(0, dash), traits);
}

std::set<std::string> FontFiles::names() {
  constexpr const char* kNames[] = {FC_POSTSCRIPT_NAME, FC_FULLNAME, FC_FAMILY};
  const FontPattern any(FcPatternCreate());
  FcPatternAddBool(any.get(), FC_SCALABLE, FcTrue);
  const ObjectSet told(FcObjectSetBuild(kNames[0], kNames[1], kNames[2], nullptr));
  const FontSet set(FcFontList(installed().config.get(), any.get(), told.get()));
  std::set<std::string> names;
  for (FcPattern* font : fontsOf(set)) {
    for (const char* property : kNames) {
      FcChar8* name = nullptr;
      for (int i = 0; FcPatternGetString(font, property, i, &name) == FcResultMatch; ++i) {
        names.emplace(reinterpret_cast<const char*>(name));
      }
    }
  }
  return names;
}

std::optional<FontFile> FontFiles::system(FontTraits traits) {
  if (auto file = fromSystemFolder(systemFontName(traits))) return file;
  const FontPattern pattern = installed().likeSystemFont(traits);
  installed().complete(pattern);
  FcResult result = FcResultNoMatch;
  const FontPattern match(FcFontMatch(installed().config.get(), pattern.get(), &result));
  return fileOf(match.get());
}

std::optional<FontFile> FontFiles::covering(char32_t character, FontTraits traits) {
  const CharSet characters(FcCharSetCreate());
  FcCharSetAddChar(characters.get(), character);
  const FontPattern pattern = installed().likeSystemFont(traits);
  FcPatternAddCharSet(pattern.get(), FC_CHARSET, characters.get());
  installed().complete(pattern);
  FcResult result = FcResultNoMatch;
  const FontSet sorted(
      FcFontSort(installed().config.get(), pattern.get(), FcFalse, nullptr, &result));
  for (FcPattern* font : fontsOf(sorted)) {
    FcCharSet* has = nullptr;
    if (FcPatternGetCharSet(font, FC_CHARSET, 0, &has) == FcResultMatch &&
        FcCharSetHasChar(has, character)) {
      return fileOf(font);
    }
  }
  return std::nullopt;
}

}  // namespace host::drawing
