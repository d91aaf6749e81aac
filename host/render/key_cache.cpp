#include "host/render/key_cache.h"

#include <charconv>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "host/keyboard/cache.h"
#include "host/render/drawing_stamp.h"

namespace host::render {

namespace {

/// The shortest text that stands for the number and no other.
std::string textOf(double number) {
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return {std::begin(digits), end};
}

/// "1-Portrait_Small-Letters-320x216@2": what a person finds among the files.
std::string groupName(const LiveKeyplane& keyplane, double scale) {
  const drawing::Size size = keyplane.placed.size;
  return std::to_string(keyplane.tree->visualStyle())
      .append("-")
      .append(keyplane.placed.name)
      .append("-")
      .append(textOf(size.width))
      .append("x")
      .append(textOf(size.height))
      .append("@")
      .append(textOf(scale));
}

/// Each part behind its length, so that no two lists of parts make one text.
class Identity {
 public:
  Identity& add(std::string_view part) {
    text_.append(std::to_string(part.size())).append(":").append(part);
    return *this;
  }
  Identity& add(std::initializer_list<int> numbers) {
    for (const int number : numbers) add(std::to_string(number));
    return *this;
  }
  Identity& add(const drawing::Rect& rect) {
    for (const double side : {rect.x, rect.y, rect.width, rect.height}) add(textOf(side));
    return *this;
  }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace

KeyCache::KeyCache(keyboard::KeyPictureStore& store, const LiveKeyplane& keyplane, double scale)
    : store_(store),
      name_(groupName(keyplane, scale)),
      surroundings_(Identity().add(name_).add(textOf(keyplane.cornerRadius_pt)).take()),
      group_(store.open(name_, drawingStamp())) {}

std::optional<KeyCache> KeyCache::open(const LiveKeyplane& keyplane, double scale) {
  if (!keyboard::askCacheEnabled()) return std::nullopt;
  auto* const store = keyboard::cachedPictures();
  if (!store) return std::nullopt;
  return KeyCache(*store, keyplane, scale);
}

std::string KeyCache::identityOf(const LiveKey& key) const {
  const platform::UIKBTree tree = key.tree.get();
  const boards::Key& description = *key.placed.key;
  return Identity()
      .add(surroundings_)
      .add(tree.name().value_or(""))
      .add({tree.state(), tree.displayType(), tree.displayTypeHint(), tree.displayRowHint(),
            static_cast<int>(description.role), static_cast<int>(description.shape)})
      .add(description.label)
      .add(description.secondary_label)
      .add(key.placed.face)
      .take();
}

images::SharedBitmap KeyCache::find(const LiveKey& key) const {
  const auto found = group_.pictures.find(identityOf(key));
  return found == group_.pictures.end() ? nullptr : found->second;
}

void KeyCache::put(const LiveKey& key, images::SharedBitmap picture) {
  group_.pictures.insert_or_assign(identityOf(key), std::move(picture));
  hasNew_ = true;
}

void KeyCache::write() {
  if (std::exchange(hasNew_, false)) store_.write(name_);
}

}  // namespace host::render
