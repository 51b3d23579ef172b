// The window for a language that is written from right to left: everything is mirrored but pictures, numbers
// and codes.
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTranslator>

#include "src/frontends/desktop/toolkit_language.h"
#include "src/frontends/shared/language/choice.h"
#include "tests/frontends/desktop/good_layout.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

struct FromTheRight {
  FromTheRight() { QApplication::setLayoutDirection(Qt::RightToLeft); }
  ~FromTheRight() { QApplication::setLayoutDirection(Qt::LeftToRight); }
};

class RightToLeft : private FromTheRight, public SimulatedPanel {
 protected:
  // In the window.
  QRect placeOf(const QWidget* widget) const {
    return {widget->mapTo(&panel.window, QPoint()), widget->size()};
  }
  QRect placeOf(const char* outlet) { return placeOf(panel.widget(outlet)); }

  // Where the handle of a slider is at a value.
  static int handleAt(const QSlider& slider, int value) {
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.direction = Qt::LeftToRight;  // a slider says it by the other flag alone
    option.orientation = Qt::Horizontal;
    option.minimum = slider.minimum();
    option.maximum = slider.maximum();
    option.upsideDown = slider.layoutDirection() == Qt::RightToLeft;
    option.sliderPosition = option.sliderValue = value;
    return slider.style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
        .center()
        .x();
  }

  // In how many pixels two pictures differ clearly.
  static int unlikeness(const QImage& one, const QImage& other) {
    int unlike = 0;
    for (int y = 0; y < std::min(one.height(), other.height()); ++y) {
      for (int x = 0; x < std::min(one.width(), other.width()); ++x)
        unlike += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 24 ? 1 : 0;
    }
    return unlike;
  }

  // Whether there are letters in one half of a picture of a widget: pixels unlike its background.
  static int inkIn(const QImage& picture, QRect part) {
    const QRgb paper = picture.pixel(picture.width() / 2, picture.height() - 2);
    int ink = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) ink += picture.pixel(x, y) != paper ? 1 : 0;
    }
    return ink;
  }
};

TEST_F(RightToLeft, TheSidebarIsAtTheRightOfThePages) {
  EXPECT_GT(placeOf("ib_oview_confBar").left(), placeOf("ib_tview_confView").right());
  EXPECT_GT(placeOf("ib_button_Auth").left(), placeOf("ib_button_Apply").right())
      << "the lock is where a line begins";
}

TEST_F(RightToLeft, AMarkIsAtTheRightOfItsRow) {
  openEverything();
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  panel.tick();
  const QWidget* box = panel.widget("ib_user_chkbox_mseSwap");
  const auto* mark = panel.window.pages()[1]->findChild<QWidget*>(QStringLiteral("changeMark"));
  ASSERT_NE(mark, nullptr);
  EXPECT_FALSE(mark->toolTip().isEmpty()) << "it is on";
  EXPECT_GT(placeOf(mark).left(), placeOf(box).right());
}

TEST_F(RightToLeft, ASliderGrowsToTheLeft) {
  openEverything();
  panel.choosePage("admin", "Image");
  const auto* slider = panel.as<QSlider>("ib_admin_slider_imgDept");
  ASSERT_NE(slider, nullptr);
  EXPECT_GT(handleAt(*slider, slider->minimum()), handleAt(*slider, slider->maximum()));
  // The names of the ends are under the ends that they name.
  const QLabel* fewer = nullptr;
  const QLabel* more = nullptr;
  for (const QLabel* label : panel.window.findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    if (label->text() == QStringLiteral("Fewer colours")) fewer = label;
    if (label->text() == QStringLiteral("More colours")) more = label;
  }
  ASSERT_NE(fewer, nullptr);
  ASSERT_NE(more, nullptr);
  EXPECT_GT(placeOf(fewer).left(), placeOf(more).right());
}

TEST_F(RightToLeft, TheWordsOfTheSidebarBeginAtItsRight) {
  openEverything();
  auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  sidebar->setFixedWidth(2 * sidebar->width());
  panel.settle();
  const QRect row = sidebar->visualItemRect(sidebar->item(0));
  const QImage picture = sidebar->viewport()->grab(row).toImage();
  const QRect whole = picture.rect();
  const QRect left(whole.left(), whole.top(), whole.width() / 2, whole.height());
  const QRect right(whole.left() + whole.width() / 2, whole.top(), whole.width() / 2, whole.height());
  EXPECT_GT(inkIn(picture, right), 10 * std::max(1, inkIn(picture, left)));
}

// The open lock has two different sides.
TEST_F(RightToLeft, ThePictureOfTheLockIsNotMirrored) {
  openEverything();
  const QImage here = panel.widget("ib_button_Auth")->grab().toImage();
  QApplication::setLayoutDirection(Qt::LeftToRight);
  panel.settle();
  const QImage there = panel.widget("ib_button_Auth")->grab().toImage();
  // The style draws it a pixel further at one side; the button's edge is of no interest.
  const QRect inner = here.rect().adjusted(5, 5, -5, -5);
  const auto leastUnlikeness = [&](const QImage& other) {
    int least = inner.width() * inner.height();
    for (const int shift : {-1, 0, 1})
      least = std::min(least, unlikeness(here.copy(inner), other.copy(inner.translated(shift, 0))));
    return least;
  };
  EXPECT_LT(leastUnlikeness(there), 5);
  EXPECT_GT(leastUnlikeness(there.mirrored(true, false)), 20);
  QApplication::setLayoutDirection(Qt::RightToLeft);
}

TEST_F(RightToLeft, EveryPageIsWhole) {
  openEverything();
  panel.control("ib_admin_edbox_nvkPort").setStringValue("port");
  panel.settle();
  expectGoodPages(panel);
}

// Takes back what a program does once, at its start.
class ToolkitLanguage : public testing::Test {
 protected:
  ~ToolkitLanguage() override {
    for (QTranslator* words : qApp->findChildren<QTranslator*>()) delete words;
    QLocale::setDefault(before_);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    chooseLanguage({});
  }

 private:
  QLocale before_;
};

TEST_F(ToolkitLanguage, FollowsThatOfTheProgram) {
  chooseLanguage({"de"});
  useChosenLanguage();
  EXPECT_EQ(QApplication::layoutDirection(), Qt::LeftToRight);
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"))
      << "the package of the toolkit's translations is installed";
  chooseLanguage({"ar"});
  useChosenLanguage();
  EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
}

}  // namespace
}  // namespace norvik::desktop
