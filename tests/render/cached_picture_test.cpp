// The keyboard's cache while the keyboard is drawn: what is asked, what is kept, what comes back.

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/drawing/draw.h"
#include "host/keyboard/cache.h"
#include "host/keyboard/text_object.h"
#include "host/render/picture.h"
#include "host/runtime/class_table.h"
#include "platform/keyboard.h"
#include "render/host_process.h"

namespace host::render {
namespace {

using boards::Look;
using boards::Orientation;
using keyboard::KeyPictureStore;
using platform::IMP;

// What the keyboard is asked, counted on the way to the platform's own answers.
struct Asked {
  int traits = 0;
  int colors = 0;
};
Asked asked;

using TraitsMethod = platform::UIKBRenderTraits (*)(platform::UIKBRenderFactory, platform::SEL,
                                                    platform::UIKBTree, platform::UIKBTree);
using ColorFunction = platform::CGColorRef (*)(std::string_view);
TraitsMethod systemTraits = nullptr;
ColorFunction systemColor = nullptr;

platform::UIKBRenderTraits countedTraits(platform::UIKBRenderFactory self, platform::SEL selector,
                                         platform::UIKBTree key, platform::UIKBTree keyplane) {
  ++asked.traits;
  return systemTraits(self, selector, key, keyplane);
}

platform::CGColorRef countedColor(std::string_view name) {
  ++asked.colors;
  return systemColor(name);
}

template <bool kAnswer>
bool enabled(platform::Class, platform::SEL) {
  return kAnswer;
}

void setEnabled(bool (*answer)(platform::Class, platform::SEL)) {
  runtime::addMethod(platform::objc_getClass("UIKeyboardCache").get()->isa, "enabled",
                     reinterpret_cast<IMP>(answer));
}

class CachedPicture : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    hostDevice();
    IMP traits = nullptr;
    IMP color = nullptr;
    platform::MSHookMessageEx(platform::object_getClass(keyboard::keyboard().factory.get()),
                              platform::sel_registerName("traitsForKey:onKeyplane:"),
                              reinterpret_cast<IMP>(&countedTraits), &traits);
    platform::MSHookFunction(reinterpret_cast<IMP>(&platform::UIKBGetNamedColor),
                             reinterpret_cast<IMP>(&countedColor), &color);
    systemTraits = reinterpret_cast<TraitsMethod>(traits);
    systemColor = reinterpret_cast<ColorFunction>(color);
  }

  void SetUp() override {
    static_cast<void>(root_.remove("/var"));
    startAgain();
    setEnabled(&enabled<true>);
  }

  /// The cache is what a new process has: nothing but files.
  static void startAgain() {
    keyboard::sharedCache().store.set(
        runtime::makeRetained<platform::Object, keyboard::CacheStoreObject>(
            std::vector<std::string>())
            .get());
  }

  /// Shows a keyplane and draws it by way of the cache; `asked` is for this picture alone.
  static images::Bitmap draw(const KeyplaneChoice& choice, double scale = 2,
                             std::string_view pressed = {}) {
    LiveKeyplane keyplane = makeKeyplane(choice);
    press(keyplane, pressed);
    return draw(keyplane, choice, scale);
  }
  static images::Bitmap draw(const LiveKeyplane& keyplane, const KeyplaneChoice& choice,
                             double scale = 2) {
    static drawing::Fonts fonts;
    show(keyplane, choice);
    asked = {};
    return drawing::draw(pictureOf(keyplane, scale, fonts), fonts).value();
  }

  std::vector<std::string> files() const { return *root_.list("/var"); }

  const platform::NSAutoreleasePool pool_;
  const files::DeviceRoot& root_ = hostDevice();
  const KeyplaneChoice portrait_ = choiceOf(Look::standard, Orientation::portrait);
  const int keys_ = static_cast<int>(makeKeyplane(portrait_).keys.size());
};

TEST_F(CachedPicture, SecondPictureIsTheFirstAndAsksForNoKey) {
  for (const Look look : {Look::standard, Look::alert}) {
    for (const Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
      const KeyplaneChoice choice = choiceOf(look, orientation);
      const images::Bitmap first = draw(choice);
      EXPECT_EQ(asked.traits, keys_);
      const int all_colors = asked.colors;
      EXPECT_TRUE(draw(choice) == first) << "from memory";
      EXPECT_EQ(asked.traits, 0);
      startAgain();
      EXPECT_TRUE(draw(choice) == first) << "from the file";
      EXPECT_EQ(asked.traits, 0);
      EXPECT_EQ(asked.colors, 2) << "the background's";
      EXPECT_GT(all_colors, 2 + 2 * keys_);
    }
  }
  EXPECT_EQ(files().size(), 4U);
}

TEST_F(CachedPicture, WithoutPermissionTheCacheIsNeitherReadNorWritten) {
  setEnabled(&enabled<false>);
  const images::Bitmap uncached = draw(portrait_);
  EXPECT_EQ(asked.traits, keys_);
  EXPECT_TRUE(files().empty());
  EXPECT_TRUE(keyboard::cachedPictures()->groups().empty());

  // Somebody else's pictures, which would be seen.
  setEnabled(&enabled<true>);
  draw(portrait_);
  const std::string path = files().at(0);
  auto group = *keyboard::decodeGroup(*root_.readFile(path, SIZE_MAX));
  for (auto& [key, picture] : group.pictures) {
    picture = std::make_shared<images::PlacedBitmap>(
        images::PlacedBitmap{0, 0, images::solid(9, 9, 255, 0, 0, 255)});
  }
  const std::string planted = keyboard::encodeGroup(group);
  ASSERT_TRUE(root_.writeFile(path, planted));
  startAgain();
  EXPECT_EQ(draw(portrait_).at(4, 4), 0xffff0000U);

  setEnabled(&enabled<false>);
  for (const bool fresh : {false, true}) {
    if (fresh) startAgain();
    EXPECT_TRUE(draw(portrait_) == uncached);
    EXPECT_EQ(asked.traits, keys_);
  }
  EXPECT_EQ(*root_.readFile(path, SIZE_MAX), planted);
}

TEST_F(CachedPicture, WithoutAStoreEveryKeyIsAsked) {
  keyboard::sharedCache().store.set({});
  for (int i = 0; i < 2; ++i) {
    draw(portrait_);
    EXPECT_EQ(asked.traits, keys_);
  }
  EXPECT_TRUE(files().empty());
}

TEST_F(CachedPicture, AKeyInAnotherStateIsAnotherPicture) {
  const images::Bitmap normal = draw(portrait_);
  const images::Bitmap pressed = draw(portrait_, 2, "g");
  EXPECT_EQ(asked.traits, 1);
  EXPECT_FALSE(pressed == normal);
  startAgain();
  EXPECT_TRUE(draw(portrait_, 2, "g") == pressed);
  EXPECT_TRUE(draw(portrait_) == normal);
  EXPECT_EQ(asked.traits, 0);
  EXPECT_EQ(files().size(), 1U);
}

TEST_F(CachedPicture, WhateverAKeyDependsOnMakesAnotherPicture) {
  using Change = void (*)(LiveKeyplane&);
  constexpr Change kChanges[] = {
      [](LiveKeyplane& keyplane) { keyplane.keys[0].placed.face.x += 1; },
      [](LiveKeyplane& keyplane) { keyplane.keys[0].placed.face.height -= 1; },
      [](LiveKeyplane& keyplane) { keyplane.keys[0].placed.key = keyplane.keys[1].placed.key; },
      [](LiveKeyplane& keyplane) { keyplane.keys[0].tree = keyplane.keys[1].tree; },
      [](LiveKeyplane& keyplane) { keyplane.cornerRadius_pt = 0; },
      [](LiveKeyplane& keyplane) { keyplane.placed.size.height += 1; },
  };
  draw(portrait_);
  for (const Change change : kChanges) {
    LiveKeyplane keyplane = makeKeyplane(portrait_);
    change(keyplane);
    draw(keyplane, portrait_);
    EXPECT_GE(asked.traits, 1) << &change - kChanges;
    draw(keyplane, portrait_);
    EXPECT_EQ(asked.traits, 0) << &change - kChanges;
  }
  draw(portrait_, 1);
  EXPECT_EQ(asked.traits, keys_) << "another scale";
}

TEST_F(CachedPicture, PicturesAreWhereTheDeviceKeepsThemAndGoWhenItPurges) {
  draw(portrait_);
  EXPECT_EQ(files(), std::vector<std::string>{std::string(KeyPictureStore::kDirectory) +
                                              "/1-Portrait_Small-Letters-320x216@2.keys"});
  const auto cache =
      platform::UIKeyboardCache::sharedInstance(platform::objc_getClass("UIKeyboardCache"));
  const platform::UIKBCacheStore store(cache.valueForKey("_store").get());
  ASSERT_EQ(store.allGroups().count(), 1U);
  store.removeImagesInGroups(store.allGroups());
  EXPECT_TRUE(files().empty());
  EXPECT_EQ(store.allGroups().count(), 0U);
  draw(portrait_);
  EXPECT_EQ(asked.traits, keys_);

  static_cast<void>(root_.remove(KeyPictureStore::kDirectory));
  cache.clearNonPersistentCache();
  EXPECT_EQ(store.allGroups().count(), 0U);
  draw(portrait_);
  EXPECT_EQ(asked.traits, keys_);
}

TEST_F(CachedPicture, GroupsThatAreSaidToBeThereStandBesideThem) {
  keyboard::sharedCache().store.set(
      runtime::makeRetained<platform::Object, keyboard::CacheStoreObject>(
          std::vector<std::string>{"a", "../b"})
          .get());
  draw(portrait_);
  const platform::UIKBCacheStore store(keyboard::sharedCache().store.get().get());
  const auto groups = store.allGroups();
  ASSERT_EQ(groups.count(), 3U);
  EXPECT_EQ(runtime::as<keyboard::TextObject>(groups.objectAtIndex(1))->text, "../b");
  store.purge();
  EXPECT_EQ(store.allGroups().count(), 3U);
  store.removeImagesInGroups(groups);
  EXPECT_EQ(store.allGroups().count(), 0U);
}

TEST_F(CachedPicture, IsDrawnWhereTheDeviceTakesNoFile) {
  ASSERT_TRUE(root_.writeFile("/var/mobile/Library/Caches", "in the way"));
  const images::Bitmap first = draw(portrait_);
  EXPECT_TRUE(draw(portrait_) == first);
  EXPECT_EQ(asked.traits, 0);
  startAgain();
  EXPECT_TRUE(draw(portrait_) == first);
  EXPECT_EQ(asked.traits, keys_);
}

}  // namespace
}  // namespace host::render
