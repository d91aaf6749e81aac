#pragma once

// A scenario as plain values. Conventions:
//
//  1. Names, units and meanings are those of docs/scenario-format.
//  2. Nullable<T>: null, or a T. std::optional alone: not given. Where a member may be left out and
//     may be null too, it is a std::optional<Nullable<T>>.
//  3. Strings are UTF-8. A string that is called a path is an absolute device path.
//  4. Everything is owned by the structure that holds it.

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tools::scenario {

template <class T>
using Nullable = std::optional<T>;

/// A colour written "#RRGGBBAA".
struct Rgba {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 0;
  friend bool operator==(const Rgba&, const Rgba&) = default;
};

// ---- What the keyboard is made of

struct Keyplane {
  Nullable<std::string> name;
  std::int32_t visualStyle = 1;
  std::int32_t type = 0;
  bool isLetters = false;
  bool isShiftKeyplane = false;
};

struct Key {
  Nullable<std::string> name;
  std::int32_t displayType = 0;
  std::int32_t displayTypeHint = 0;
  std::int32_t displayRowHint = 0;
  std::int32_t state = 0;
};

struct FlatGradient {
  std::string color;
};
struct LinearGradient {
  std::string startColor;
  std::string endColor;
};
/// One of the platform's own gradients.
struct NamedGradient {
  std::string name;
};
using Gradient = std::variant<FlatGradient, LinearGradient, NamedGradient>;

/// In output an effect stands as it was given: a name alone, or both names.
struct Effect {
  std::string className;
  std::optional<std::string> superclass;
};

struct TextStyle {
  Nullable<std::string> textColor;
  Nullable<std::string> etchColor;
  Nullable<std::string> fontName;
  std::array<double, 2> etchOffset{};
};

struct Traits {
  Nullable<std::vector<Effect>> renderEffects;
  bool renderEffectsMutable = true;
  Nullable<Gradient> backgroundGradient;
  Nullable<TextStyle> symbolStyle;
  Nullable<TextStyle> secondarySymbolStyle;
};

struct BackgroundTraits {
  Nullable<Gradient> backgroundGradient;
};

/// An image that a view shows before the first step; nothing is read for it.
struct Image {
  Nullable<std::string> path;
  Nullable<double> scale;
  Nullable<std::array<std::int32_t, 2>> size;  ///< width and height in pixels
  Nullable<std::int64_t> id;
};

struct View {
  std::string className = "UIView";
  std::int32_t tag = 0;
  std::array<double, 4> frame{};  ///< x, y, width, height in points
  Nullable<Image> image;          ///< of a "UIImageView" only
  std::vector<View> subviews;     ///< backmost first
};

// ---- The host

enum class Layout : std::uint8_t { kStar, kOther };

struct KeyboardCache {
  bool store = true;
  std::vector<std::string> groups{"a", "b"};
};

/// Members of the host. In a `set` step the given ones are present. In Scenario::host all are, but
/// for those marked (own): without a value these leave the host's own in place.
struct Host {
  std::optional<Nullable<std::string>> bundleIdentifier;             // never in `set`
  std::optional<std::vector<std::string>> missingClasses;            // never in `set`
  std::optional<std::vector<std::string>> missingInstanceVariables;  // never in `set`
  std::optional<Nullable<std::int32_t>> userInterfaceIdiom;          ///< 0 phone, 1 tablet
  std::optional<std::string> systemVersion;
  std::optional<double> screenScale;  ///< pixels a point
  std::optional<std::int32_t> orientation;
  std::optional<bool> sharedKeyboard;
  std::optional<Nullable<Layout>> layout;
  std::optional<bool> dictationKey;
  std::optional<bool> internationalKey;
  std::optional<KeyboardCache> keyboardCache;
  std::optional<std::vector<std::pair<std::string, Rgba>>> systemColors;  ///< (own)
  std::optional<std::vector<std::string>> systemGradients;                ///< (own)
  std::optional<std::vector<std::string>> rejectedColors;
  std::optional<bool> colorCreation;
  std::optional<std::vector<std::pair<std::int32_t, std::string>>> displayTypeNames;  ///< (own)
  std::optional<Nullable<View>> backgroundView;
  std::optional<View> dictationView;
};

// ---- Files

struct PlistEntry;

/// A value of a property list.
struct PlistValue {
  using Data = std::vector<std::byte>;
  using Date = std::chrono::sys_seconds;
  using Array = std::vector<PlistValue>;
  using Dictionary = std::vector<PlistEntry>;  // in the order of writing; no key twice
  std::variant<bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary> value;
};

struct PlistEntry {
  std::string key;
  PlistValue value;
};

struct PlistFile {
  PlistValue value;
  bool binary = false;
};
struct BytesFile {
  std::string bytes;
};
enum class ImageFormat : std::uint8_t { kPng, kJpeg };
struct ImageFile {
  std::int32_t width = 0;  ///< pixels
  std::int32_t height = 0;
  Rgba color;
  ImageFormat format = ImageFormat::kPng;
};
struct EmptyDirectory {};
using File = std::variant<PlistFile, BytesFile, ImageFile, EmptyDirectory>;

// ---- Steps

/// What must hold of a step's output; a part that is not given may be anything. Every string that
/// begins with "~" has been checked to be a pattern.
struct Expectation {
  std::optional<nlohmann::ordered_json> result;
  std::optional<nlohmann::ordered_json> log;
  std::optional<nlohmann::ordered_json> reads;
  std::optional<nlohmann::ordered_json> events;
};

namespace step {
struct Load {};
struct FinishLaunching {};
struct Notify {
  std::string name;
};
struct Set {
  Host host;
};
struct Write {
  std::string path;
  File file;
};
struct Remove {
  std::string path;
};
struct List {
  std::string path;
};
struct Color {
  std::string name;
};
struct Gradient {
  std::string name;
};
struct Traits {
  Nullable<Key> key;
  Nullable<Keyplane> keyplane;
  std::optional<Nullable<scenario::Traits>> system;  ///< not given: the host's own
};
struct BackgroundTraits {
  Nullable<Keyplane> keyplane;
  std::optional<Nullable<scenario::BackgroundTraits>> system;  ///< not given: the host's own
};
struct Show {
  Nullable<Keyplane> keyplane;
};
struct Change {
  Nullable<Keyplane> keyplane;
  /// The layout's current keyplane; not given: the very object that `keyplane` is.
  std::optional<Nullable<Keyplane>> current;
};
struct ReturnKey {
  std::string argument;
};
struct Dictation {
  std::string config;
};
struct CacheEnabled {};
}  // namespace step

using Action = std::variant<step::Load, step::FinishLaunching, step::Notify, step::Set, step::Write,
                            step::Remove, step::List, step::Color, step::Gradient, step::Traits,
                            step::BackgroundTraits, step::Show, step::Change, step::ReturnKey,
                            step::Dictation, step::CacheEnabled>;

struct Step {
  std::string name;  ///< the word after "do"
  Action action;
  Expectation expect;
};

struct Scenario {
  std::string title;                                ///< empty when there is none
  Host host;                                        ///< with the defaults filled in
  std::vector<std::pair<std::string, File>> files;  ///< in the order of writing; no path twice
  std::vector<Step> steps;
};

}  // namespace tools::scenario
