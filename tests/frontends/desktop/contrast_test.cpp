// Colours reach the contrasts of WCAG AA, light and dark: 4.5 to 1 for text, 3 to 1 for the outline of a
// control and its focus.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <cmath>

#include "src/frontends/desktop/theme.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

constexpr double kTextContrast = 4.5;
constexpr double kGraphicContrast = 3;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05;
  const double other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

// A translucent colour as it appears on a background.
QColor over(const QColor& color, const QColor& background) {
  const auto mixed = [&color](float top, float bottom) {
    return top * color.alphaF() + bottom * (1 - color.alphaF());
  };
  return QColor::fromRgbF(mixed(color.redF(), background.redF()), mixed(color.greenF(), background.greenF()),
                          mixed(color.blueF(), background.blueF()));
}

class Contrast : public SimulatedPanel, public testing::WithParamInterface<bool> {
 protected:
  Contrast() {
    if (GetParam())
      useDarkTheme(*qApp);
    else
      useDesktopTheme(*qApp);
    openEverything();
  }
  ~Contrast() override {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QPalette());
  }

  template <typename Test>
  void onEachPage(Test test) {
    for (const TabDescription& tab : panel.interface.tabs) {
      SCOPED_TRACE(tab.label);
      const std::size_t colon = tab.label.find(':');
      panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
      test();
    }
  }

  // At each of the four edges of the mark, the highest contrast of its three outer pixels to the window's
  // colour; the lowest of the four.
  static double outlineContrast(QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool radio = qobject_cast<QRadioButton*>(&button) != nullptr;
    const QRect mark = button.style()->subElementRect(
        radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &button);
    const QImage picture = button.grab().toImage();
    const QPoint center = mark.center();
    const std::pair<QPoint, QPoint> edges[] = {{QPoint(mark.left(), center.y()), QPoint(1, 0)},
                                               {QPoint(mark.right(), center.y()), QPoint(-1, 0)},
                                               {QPoint(center.x(), mark.top()), QPoint(0, 1)},
                                               {QPoint(center.x(), mark.bottom()), QPoint(0, -1)}};
    double weakest = 21;
    for (const auto& [edge, inwards] : edges) {
      double strongest = 1;
      for (int i = 0; i < 3; ++i) {
        const QPoint at = (edge + i * inwards) * picture.devicePixelRatio();
        strongest =
            std::max(strongest, contrast(picture.pixelColor(at), button.palette().color(QPalette::Window)));
      }
      weakest = std::min(weakest, strongest);
    }
    return weakest;
  }
};

TEST_P(Contrast, EveryTextCanBeRead) {
  int texts = 0;
  onEachPage([&] {
    for (const auto* label : panel.window.findChildren<QLabel*>()) {
      if (!label->isVisible() || !label->isEnabled() || label->text().isEmpty()) continue;
      ++texts;
      const QColor background = label->palette().color(QPalette::Window);
      EXPECT_GE(contrast(over(label->palette().color(label->foregroundRole()), background), background),
                kTextContrast)
          << label->text().toStdString();
    }
  });
  EXPECT_GT(texts, 40);
  const QPalette palette = panel.window.palette();
  if (GetParam()) {  // in light colours the chosen page has the desktop's own
    EXPECT_GE(contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
              kTextContrast);
  }
}

TEST_P(Contrast, EveryBoxHasAnOutline) {
  int boxes = 0;
  onEachPage([&] {
    for (auto* button : panel.window.findChildren<QAbstractButton*>()) {
      const bool box =
          qobject_cast<QCheckBox*>(button) != nullptr || qobject_cast<QRadioButton*>(button) != nullptr;
      if (!box || !button->isVisible() || !button->isEnabled()) continue;
      ++boxes;
      EXPECT_GE(outlineContrast(*button), kGraphicContrast) << button->objectName().toStdString();
    }
  });
  EXPECT_GT(boxes, 20);
}

TEST_P(Contrast, TheArrowOfAWayBackCanBeSeen) {
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkSound");
  QWidget* button = panel.widget("nvk.sound_back");
  ASSERT_TRUE(button->isVisible());
  const QPoint place = button->mapTo(&panel.window, QPoint());
  const QImage picture = panel.window.grab(QRect(place, button->size())).toImage();
  int drawn = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x)
      drawn += contrast(picture.pixelColor(x, y), picture.pixelColor(0, 0)) >= kGraphicContrast ? 1 : 0;
  }
  EXPECT_GE(drawn, button->width());
}

TEST_P(Contrast, TheFocusInTheSidebarIsVisible) {
  panel.choosePage("admin", "Server");
  auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  const QRect row = sidebar->visualItemRect(sidebar->currentItem());
  sidebar->setFocus(Qt::TabFocusReason);
  panel.settle();
  const QImage focused = sidebar->viewport()->grab(row).toImage();
  panel.widget("ib_button_Help")->setFocus(Qt::TabFocusReason);
  panel.settle();
  const QImage unfocused = sidebar->viewport()->grab(row).toImage();
  int changed = 0;
  for (int y = 0; y < unfocused.height(); ++y) {
    for (int x = 0; x < unfocused.width(); ++x)
      changed += contrast(focused.pixelColor(x, y), unfocused.pixelColor(x, y)) >= kGraphicContrast ? 1 : 0;
  }
  EXPECT_GE(changed, 2 * 2 * (row.width() + row.height() - 8)) << "a frame of two pixels, a little inside";
}

INSTANTIATE_TEST_SUITE_P(Themes, Contrast, testing::Bool(),
                         [](const auto& theme) { return theme.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace norvik::desktop
