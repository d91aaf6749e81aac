#include "support/list_maker.h"

#include <array>
#include <span>
#include <vector>

#include "support/vocabulary.h"

namespace fuzz {

using host::plist::Builder;

/// What `make` makes, but now and then anything.
template <class Make>
ListMaker::View ListMaker::usually(Make make) {
  return source_.rarely(16) ? anything() : make();
}

template <class Make>
ListMaker::View ListMaker::list(Make make) {
  std::vector<View> items(source_.below(8));
  for (View& item : items) item = usually(make);
  return builder_.array(items);
}

template <class Table, class Make>
ListMaker::View ListMaker::dictionary(const Table& keys, Make make) {
  std::vector<Builder::Entry> entries(source_.below(8));
  for (Builder::Entry& entry : entries) {
    entry.key = source_.rarely(16) ? builder_.keep(source_.text()) : source_.pick(keys);
    entry.value = usually([&] { return make(entry.key); });
  }
  return builder_.dictionary(entries);
}

ListMaker::View ListMaker::text(std::string_view usual) {
  return source_.rarely(16) ? builder_.string(source_.text()) : builder_.string(usual);
}

ListMaker::View ListMaker::anything(int depth) {
  constexpr int kDeepest = 3;
  const std::size_t kinds = depth < kDeepest ? 8 : 6;
  switch (source_.below(kinds)) {
    case 0:
      return builder_.string(source_.text());
    case 1:
      return builder_.boolean(source_.flag());
    case 2:
      return builder_.integer(source_.integer());
    case 3:
      return builder_.real(source_.integer() / 8.0);
    case 4:
      return builder_.date({static_cast<double>(source_.integer())});
    case 5:
      return builder_.data(std::as_bytes(std::span(source_.run())));
    case 6: {
      const std::array items = {anything(depth + 1), anything(depth + 1)};
      return builder_.array(std::span(items).first(source_.below(3)));
    }
    default: {
      const std::array entries = {Builder::Entry{"A", anything(depth + 1)}};
      return builder_.dictionary(std::span(entries).first(source_.below(2)));
    }
  }
}

ListMaker::View ListMaker::colors() {
  return list([&] {
    const std::array items = {text(source_.pick(kColorNames)), text(source_.pick(kColors)),
                              usually([&] { return builder_.string("A"); })};
    return builder_.array(std::span(items).first(source_.rarely(8) ? source_.below(4) : 2));
  });
}

ListMaker::View ListMaker::gradients() {
  return list([&] {
    const auto color = [&] { return text(source_.pick(kColorNames)); };
    const std::array items = {text(source_.pick(kGradientNames)), usually(color), usually(color)};
    return builder_.array(
        std::span(items).first(source_.rarely(8) ? source_.below(4) : 2 + source_.below(2)));
  });
}

ListMaker::View ListMaker::style() {
  return dictionary(kStyleProperties, [&](std::string_view property) {
    if (property.starts_with("EtchOffset")) return builder_.integer(source_.integer());
    if (property == "TransparentForeground") return builder_.boolean(source_.flag());
    return text(source_.flag() ? source_.pick(kGradientNames) : source_.pick(kColorNames));
  });
}

ListMaker::View ListMaker::rule() {
  const std::array items = {text(source_.pick(kConditions)), usually([&] { return style(); }),
                            builder_.boolean(true)};
  return builder_.array(std::span(items).first(source_.rarely(8) ? source_.below(4) : 2));
}

ListMaker::View ListMaker::rules() {
  return list([&] { return rule(); });
}

ListMaker::View ListMaker::styles() {
  return dictionary(kVisualStyles, [&](std::string_view) { return rules(); });
}

ListMaker::View ListMaker::images() {
  return dictionary(kImageKeys, [&](std::string_view) { return text(source_.pick(kPictures)); });
}

ListMaker::View ListMaker::userImages() {
  return dictionary(kVisualStyles, [&](std::string_view) {
    return dictionary(kOrientations,
                      [&](std::string_view) { return text(source_.pick(kPictures)); });
  });
}

platform::PropertyList ListMaker::theme() && {
  const std::uint8_t sections = source_.byte();
  std::vector<Builder::Entry> entries;
  const auto add = [&](unsigned bit, std::string_view name, auto make) {
    if ((sections >> bit & 1U) == 0) entries.push_back({name, usually(make)});
  };
  add(0, "CustomColor", [&] { return colors(); });
  add(1, "CustomLinearGradient", [&] { return gradients(); });
  add(2, "Styles", [&] { return styles(); });
  add(3, "BackgroundImages", [&] { return images(); });
  return builder_.finish(builder_.dictionary(entries));
}

platform::PropertyList ListMaker::settings() && {
  const std::array entries = {
      Builder::Entry{"usePrismal", usually([&] { return builder_.boolean(source_.flag()); })},
      Builder::Entry{"backgroundImages", usually([&] { return userImages(); })}};
  return builder_.finish(builder_.dictionary(std::span(entries).first(source_.below(3))));
}

}  // namespace fuzz
