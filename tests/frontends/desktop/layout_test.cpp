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
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Layout : public SimulatedPanel {
 protected:
  ~Layout() override { QApplication::setFont(font); }

  // What a person reads or uses, of the visible widgets below this one.
  static QList<QWidget*> leavesOf(QWidget& root) {
    QList<QWidget*> leaves;
    for (auto* widget : root.findChildren<QWidget*>()) {
      const bool leaf = qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
                        qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                        qobject_cast<QSlider*>(widget);
      if (leaf && widget->isVisible() && widget->window() == root.window()) leaves += widget;
    }
    return leaves;
  }

  static QString named(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
    return widget->objectName();
  }

  static void expectWhole(const QWidget* widget) {
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool wraps = label != nullptr && label->wordWrap();
    const QSize wanted =
        wraps ? QSize(0, widget->heightForWidth(widget->width())) : widget->minimumSizeHint();
    EXPECT_GE(widget->width(), wanted.width()) << named(widget).toStdString();
    EXPECT_GE(widget->height(), wanted.height()) << named(widget).toStdString();
    const QRect inParent(widget->mapTo(widget->parentWidget(), QPoint()), widget->size());
    EXPECT_TRUE(widget->parentWidget()->rect().contains(inParent)) << named(widget).toStdString();
  }

  void expectGood(QWidget& root) {
    const auto leaves = leavesOf(root);
    for (qsizetype i = 0; i < leaves.size(); ++i) {
      expectWhole(leaves[i]);
      const QRect here(leaves[i]->mapTo(&root, QPoint()), leaves[i]->size());
      for (qsizetype j = i + 1; j < leaves.size(); ++j) {
        const QRect there(leaves[j]->mapTo(&root, QPoint()), leaves[j]->size());
        EXPECT_FALSE(here.intersects(there))
            << named(leaves[i]).toStdString() << " | " << named(leaves[j]).toStdString();
      }
    }
  }

  void expectGoodPages() {
    for (const TabDescription& tab : panel.interface.tabs) {
      SCOPED_TRACE(tab.label);
      const std::size_t colon = tab.label.find(':');
      panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
      expectGood(*panel.window.pages()[static_cast<std::size_t>(&tab - panel.interface.tabs.data())]);
      expectGood(*panel.widget("ib_button_Auth")->parentWidget());
    }
  }

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
    expectGoodPages();
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
