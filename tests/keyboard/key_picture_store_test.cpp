// The cache of key pictures in memory and on a device.

#include "host/keyboard/key_picture_store.h"

#include <gtest/gtest.h>

#include "files/sample_device.h"
#include "keyboard/key_pictures.h"

namespace host::keyboard {
namespace {

using Names = std::vector<std::string>;

class KeyPictureStoreTest : public testing::Test {
 protected:
  static std::string pathOf(const std::string& group) {
    return std::string(KeyPictureStore::kDirectory) + "/" + group + ".keys";
  }

  /// Puts a picture into a group and writes it, as a picture of the keyboard does.
  static void draw(KeyPictureStore& store, std::string_view group, std::string_view stamp = "1") {
    store.open(group, stamp).pictures.emplace("key", smallPicture(2, 2, 7));
    store.write(group);
  }

  std::size_t pictures(std::string_view group, std::string_view stamp = "1") const {
    return KeyPictureStore(&root_).open(group, stamp).pictures.size();
  }
  Names files() const { return *root_.list("/"); }

  files::SampleDevice device_;
  files::DeviceRoot root_ = device_.open();
  KeyPictureStore store_{&root_};
};

TEST_F(KeyPictureStoreTest, TheNextProcessFindsWhatWasWritten) {
  draw(store_, "1-Portrait_Small@2x");
  EXPECT_EQ(files(), Names{pathOf("1-Portrait_Small@2x")});
  KeyPictureStore next(&root_);
  EXPECT_EQ(next.groups(), Names{"1-Portrait_Small@2x"});
  EXPECT_TRUE(
      sameGroup(next.open("1-Portrait_Small@2x", "1"), {"1", {{"key", smallPicture(2, 2, 7)}}}));
  EXPECT_TRUE(next.open("another", "1").pictures.empty());
}

TEST_F(KeyPictureStoreTest, WhatAnotherStampDrewIsReplaced) {
  draw(store_, "g", "old");
  EXPECT_EQ(pictures("g", "new"), 0U);
  EXPECT_TRUE(store_.open("g", "new").pictures.empty()) << "from memory";
  draw(store_, "g", "new");
  EXPECT_EQ(pictures("g", "new"), 1U);
  EXPECT_EQ(pictures("g", "old"), 0U);
}

TEST_F(KeyPictureStoreTest, AFileThatIsNoGroupIsReplaced) {
  for (const std::string bytes : {"", "no group", "PMKEYPIC"}) {
    device_.file(pathOf("g"), bytes);
    EXPECT_EQ(pictures("g"), 0U) << bytes;
  }
  draw(store_, "g");
  EXPECT_EQ(pictures("g"), 1U);
  device_.directory(pathOf("directory"));
  draw(store_, "directory");
  EXPECT_EQ(pictures("directory"), 1U);
}

TEST_F(KeyPictureStoreTest, WithoutAPlainNameThereIsNoFile) {
  const std::string outside = "/var/mobile/Library/Caches/up.keys";
  device_.file(outside, "not ours");
  device_.directory(std::string(KeyPictureStore::kDirectory) + "/a");
  const Names names = {"../up",   "/up", "a/b",      "",
                       ".hidden", "a b", "\xc3\xa4", std::string(201, 'n')};
  for (const std::string& name : names) {
    draw(store_, name);
    EXPECT_EQ(store_.open(name, "1").pictures.size(), 1U) << name;
    EXPECT_EQ(files(), Names{outside}) << name;
    EXPECT_EQ(store_.groups(), Names{name});
    store_.remove(name);
    EXPECT_EQ(files(), Names{outside}) << name;
    EXPECT_EQ(store_.groups(), Names{});
  }
  draw(store_, std::string(200, 'n'));
  EXPECT_EQ(files().size(), 2U);
}

TEST_F(KeyPictureStoreTest, WhatIsRemovedComesBackFromNowhere) {
  draw(store_, "a");
  draw(store_, "b");
  KeyPictureStore(&root_).remove("a");
  store_.remove("a");
  EXPECT_EQ(files(), Names{pathOf("b")});
  EXPECT_EQ(store_.groups(), Names{"b"});
  EXPECT_TRUE(store_.open("a", "1").pictures.empty());
  EXPECT_EQ(store_.open("b", "1").pictures.size(), 1U);
}

TEST_F(KeyPictureStoreTest, MemoryIsForgottenAndFilesStay) {
  draw(store_, "written");
  store_.open("unwritten", "1").pictures.emplace("key", smallPicture(1, 1, 1));
  EXPECT_EQ(store_.groups(), (Names{"unwritten", "written"}));
  store_.clearMemory();
  EXPECT_EQ(store_.groups(), Names{"written"});
  EXPECT_EQ(store_.open("written", "1").pictures.size(), 1U);
}

TEST_F(KeyPictureStoreTest, MemoryCanBeAll) {
  draw(store_, "before");
  store_.keepInMemory();
  store_.clearMemory();
  draw(store_, "after");
  EXPECT_EQ(store_.groups(), Names{"after"});
  EXPECT_TRUE(store_.open("before", "1").pictures.empty());
  store_.remove("before");
  store_.purge();
  EXPECT_EQ(files(), Names{pathOf("before")});
}

TEST_F(KeyPictureStoreTest, PurgeRemovesWhatIsOfNoUse) {
  const std::string other = std::string(KeyPictureStore::kDirectory) + "/notes.txt";
  draw(store_, "used");
  device_.file(pathOf("damaged"), "no group");
  device_.file(pathOf("empty"), encodeGroup({"1", {}}));
  device_.file(pathOf(".hidden"), "no group");
  device_.file(other, "not ours");
  store_.open("opened", "1");
  store_.purge();
  EXPECT_EQ(files(), (Names{pathOf(".hidden"), other, pathOf("used")}));
  EXPECT_EQ(store_.groups(), Names{"used"});
}

TEST_F(KeyPictureStoreTest, AFileThatCannotBeWrittenIsDoneWithout) {
  device_.file("/var/mobile/Library/Caches", "in the way");
  draw(store_, "g");
  EXPECT_EQ(store_.open("g", "1").pictures.size(), 1U);
  EXPECT_EQ(store_.groups(), Names{"g"});
  EXPECT_EQ(files(), Names{"/var/mobile/Library/Caches"});
}

}  // namespace
}  // namespace host::keyboard
