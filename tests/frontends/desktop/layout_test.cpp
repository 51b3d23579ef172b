// The layout of every page in fonts from small to large: nothing clipped, nothing overlapping, nothing
// unlabelled.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <algorithm>

#include "src/frontends/desktop/theme.h"
#include "tests/frontends/desktop/good_layout.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Layout : public SimulatedPanel {
 protected:
  ~Layout() override { QApplication::setFont(font); }

  const QFont font = QApplication::font();
};

TEST_F(Layout, IsWholeInEveryFontSize) {
  openEverything();
  panel.control("ib_admin_edbox_nvkPort").setStringValue("port");
  for (const int points : {7, 10, 14, 20}) {
    SCOPED_TRACE(points);
    QFont other = font;
    other.setPointSize(points);
    QApplication::setFont(other);
    panel.settle();
    expectGoodPages(panel);
  }
}

TEST_F(Layout, FollowsALargerFontWithoutANewStart) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  const int before = panel.widget("ib_admin_chkbox_nvkClipb")->height();
  QFont large = font;
  large.setPointSize(font.pointSize() * 2);
  QApplication::setFont(large);
  panel.settle();
  EXPECT_GT(panel.widget("ib_admin_chkbox_nvkClipb")->height(), before);
}

TEST_F(Layout, TheSidebarsScrollBarIsBesideItsWords) {
  openEverything();
  const auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  const int before = sidebar->viewport()->width();
  const int height = panel.window.height();
  panel.window.resize(panel.window.width(), 1);  // as low as it goes
  panel.settle();
  ASSERT_TRUE(sidebar->verticalScrollBar()->isVisible());
  EXPECT_GE(sidebar->viewport()->width(), before);
  panel.window.resize(panel.window.width(), height);
  panel.settle();
  EXPECT_EQ(sidebar->width(), before + 2 * sidebar->frameWidth());
}

TEST_F(Layout, CaptionsLineUp) {
  openEverything();
  panel.choosePage("user", "Image");
  QSet<int> rights;
  for (const auto* label : panel.window.pages().front()->findChildren<QLabel*>()) {
    if (label->isVisible() && label->buddy() != nullptr) rights += label->geometry().right();
  }
  EXPECT_EQ(rights.size(), 1);
  QSet<int> lefts;
  for (const auto* slider : panel.window.pages().front()->findChildren<QSlider*>()) {
    lefts += slider->mapTo(&panel.window, QPoint()).x();
  }
  EXPECT_EQ(lefts.size(), 1);
}

TEST_F(Layout, TheMinimumSizeIsUsable) {
  openEverything();
  panel.window.resize(1, 1);
  panel.settle();
  EXPECT_LE(panel.window.width(), 640) << "half of a small screen of two pixels a point";
  EXPECT_LE(panel.window.height(), 400);
  EXPECT_GE(panel.as<QWidget>("ib_tview_confView")->height(), 10 * panel.window.fontMetrics().height());
  for (const TabDescription& tab : panel.interface.tabs) {
    const std::size_t colon = tab.label.find(':');
    panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
    const auto* area = panel.as<QStackedWidget>("ib_tview_confView")->currentWidget();
    EXPECT_EQ(static_cast<const QScrollArea*>(area)->horizontalScrollBar()->maximum(), 0) << tab.label;
  }
}

TEST_F(Layout, APortIsWholeAtTheMinimumWidth) {
  openEverything();
  panel.window.resize(1, panel.window.height());
  for (const char* outlet : {"ib_admin_edbox_nvkPort", "ib_admin_edbox_rdpPort"}) {
    panel.choosePageOf(outlet);
    panel.type(outlet, QStringLiteral("65535"));
    auto* field = panel.as<QLineEdit>(outlet);
    EXPECT_EQ(field->visibleRegion(), QRegion(field->rect())) << outlet;
    EXPECT_GE(field->width(), field->fontMetrics().horizontalAdvance(QStringLiteral("65535"))) << outlet;
  }
}

// In its first size; on a screen that is too low for that, the lowest part of the longest pages is scrolled
// to.
TEST_F(Layout, TheWindowFitsItsPagesWithoutScrolling) {
  openEverything();
  const int missing = std::max(0, panel.window.sizeHint().height() - panel.window.height());
  for (const Page* page : panel.window.pages()) {
    EXPECT_LE(page->sizeHint().width(), panel.as<QWidget>("ib_tview_confView")->width());
    EXPECT_LE(page->sizeHint().height(), panel.as<QWidget>("ib_tview_confView")->height() + missing);
  }
}

}  // namespace
}  // namespace norvik::desktop
