// The panel above the keyboard while the user dictates.

#include "host/render/dictation_panel.h"

#include <cmath>
#include <gtest/gtest.h>

#include "host/keyboard/named_colors.h"
#include "host/render/picture.h"
#include "host/views/image.h"
#include "host/views/view.h"
#include "render/host_process.h"

namespace host::render {
namespace {

using boards::Look;
using boards::Orientation;
using drawing::KeyboardPicture;
using drawing::Rgba;

class DictationPanel : public testing::Test {
 protected:
  void SetUp() override { hostDevice(); }
  void TearDown() override { keyboard::setSystemColors(std::nullopt); }

  static KeyboardPicture panel(const KeyplaneChoice& choice) {
    const LiveKeyplane keyplane = makeKeyplane(choice);
    showDictation(keyplane, choice);
    return pictureOfDictation(keyplane, choice, 2);
  }

  template <typename Check>
  static void forEveryBoard(Check check) {
    for (const boards::Board& board : boards::allBoards()) {
      for (const Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
        for (const Look look : {Look::standard, Look::alert}) {
          SCOPED_TRACE(std::string(board.name) + std::to_string(static_cast<int>(orientation)) +
                       std::to_string(static_cast<int>(look)));
          check(choiceOf(look, orientation, board));
        }
      }
    }
  }

  const platform::NSAutoreleasePool pool_;
};

TEST_F(DictationPanel, CoversTheBoardAndHearsOfItsLook) {
  forEveryBoard([](const KeyplaneChoice& choice) {
    const drawing::Size size = panel(choice).size;
    EXPECT_EQ(size, choice.board->metrics(choice.orientation).size);
    const auto& view = keyboard::keyboard().dictationViewObject();
    EXPECT_EQ(view.frame, (platform::Rect{0, 0, size.width, size.height}));
    EXPECT_EQ(view.renderConfig, choice.look == Look::alert ? "alert" : "standard");
    EXPECT_EQ(keyboard::keyboard().inputObject().orientation,
              choice.orientation == Orientation::portrait ? 1 : 3);
  });
}

TEST_F(DictationPanel, EveryNameOfItIsKnown) {
  forEveryBoard([](const KeyplaneChoice& choice) {
    const KeyboardPicture picture = panel(choice);
    EXPECT_TRUE(picture.background);
    ASSERT_GT(picture.keys.size(), 20U);
    for (const drawing::KeyPicture& key : picture.keys) EXPECT_TRUE(key.background);
    const drawing::KeyPicture& done = picture.keys.back();
    ASSERT_TRUE(done.symbol && done.edge);
    EXPECT_EQ(std::get<std::string>(done.symbol->mark), "Done");
    EXPECT_TRUE(done.symbol->style.etch_color);
    EXPECT_EQ(done.symbol->style.color.red, choice.look == Look::alert ? 1 : 0);
  });
}

TEST_F(DictationPanel, BarsStandInTheMiddleAboveTheDoneKey) {
  forEveryBoard([](const KeyplaneChoice& choice) {
    const KeyboardPicture picture = panel(choice);
    const drawing::Rect done = picture.keys.back().frame;
    const double center = picture.size.width / 2;
    EXPECT_EQ(done.x + done.width / 2, center);
    EXPECT_LT(done.bottom(), picture.size.height);
    const drawing::Rect first = picture.keys.front().frame;
    const drawing::Rect last = picture.keys[picture.keys.size() - 2].frame;
    EXPECT_LE(std::fabs((first.x + last.right()) / 2 - center), 0.5);
    for (std::size_t i = 0; i + 1 < picture.keys.size(); ++i) {
      const drawing::Rect bar = picture.keys[i].frame;
      EXPECT_EQ(bar.y + bar.bottom(), first.y + first.bottom());
      EXPECT_GE(bar.height, bar.width);
      EXPECT_GT(bar.y, 0);
      EXPECT_LT(bar.bottom(), done.y);
      EXPECT_GT(picture.keys[i + 1].frame.x, i + 2 < picture.keys.size() ? bar.right() : 0);
    }
  });
}

TEST_F(DictationPanel, TakesItsColorsByName) {
  const auto choice = choiceOf(Look::alert, Orientation::portrait);
  keyboard::setSystemColors(
      keyboard::NamedColors{{"UIKBColorAlertDictationLevel", {1, 0, 0, 1}},
                            {"UIKBColorAlertDictationBackground", {0, 0, 1, 0.5}}});
  const KeyboardPicture picture = panel(choice);
  EXPECT_EQ(picture.background, drawing::Fill::flat({0, 0, 1, 0.5}));
  EXPECT_EQ(picture.keys[0].background, drawing::Fill::flat({1, 0, 0, 1}));
  const drawing::KeyPicture& done = picture.keys.back();
  EXPECT_FALSE(done.background || done.edge);
  EXPECT_EQ(done.symbol->style.color, (Rgba{0, 0, 0, 1})) << "what a fresh context has";
  keyboard::setSystemColors(keyboard::NamedColors{});
  EXPECT_EQ(panel(choice).keys.size(), 1U);
}

TEST_F(DictationPanel, ShowsTheImageInItsViewAndTellsItsPath) {
  const auto choice = choiceOf(Look::standard, Orientation::portrait);
  EXPECT_TRUE(panel(choice).background_images.empty());
  EXPECT_EQ(dictationBackgroundPath(), std::nullopt);

  const auto bitmap = runtime::makeRetained<platform::CGImageRef, views::BitmapObject>(
      images::solid(2, 2, 255, 0, 0, 255), "/panel.png");
  const auto image = runtime::makeRetained<platform::UIImage, views::ImageObject>(bitmap, 2);
  const auto view = platform::UIImageView::initWithFrame({10, 20, 30, 40});
  view->setImage(image.get());
  auto& shown = keyboard::keyboard().dictationViewObject();
  shown.subviews.push_back(platform::Retained(platform::UIView(view.get())));
  const KeyboardPicture picture = panel(choice);
  shown.subviews.clear();
  ASSERT_EQ(picture.background_images.size(), 1U);
  EXPECT_EQ(picture.background_images[0].frame, (drawing::Rect{10, 20, 30, 40}));

  const auto choose = [&](platform::UIView parent) {
    parent.insertSubview(view.get(), 0);
    return std::pair(backgroundPath(), dictationBackgroundPath());
  };
  using Paths = std::pair<std::optional<std::string>, std::optional<std::string>>;
  EXPECT_EQ(choose(keyboard::keyboard().dictationView.get()), Paths(std::nullopt, "/panel.png"));
  shown.subviews.clear();
  const platform::UIView behind(keyboard::keyboard().layoutObject().backgroundView.get().get());
  EXPECT_EQ(choose(behind), Paths("/panel.png", std::nullopt));
}

}  // namespace
}  // namespace host::render
