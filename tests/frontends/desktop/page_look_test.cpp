// How the pages look: header and groups, a column that stops growing, icons, the words beside sliders, the
// preview, and the short result of the ladder. With NORVIK_PICTURES=DIR every page is drawn in several sizes,
// for a person to look at.
#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <QStyleFactory>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <map>

#include "src/frontends/desktop/contrast.h"
#include "src/frontends/desktop/page_header.h"
#include "src/frontends/desktop/preview_view.h"
#include "src/frontends/desktop/reach_card.h"
#include "src/frontends/desktop/reach_line.h"
#include "src/frontends/desktop/section_panel.h"
#include "src/frontends/desktop/theme.h"
#include "tests/frontends/desktop/simulated_panel.h"
#include "tests/support/sandbox.h"

namespace norvik::desktop {
namespace {

class PageLook : public SimulatedPanel {
 protected:
  template <typename Test>
  void onPages(Test test) {
    for (std::size_t i = 0; i < panel.interface.tabs.size(); ++i) {
      const TabDescription& tab = panel.interface.tabs[i];
      SCOPED_TRACE(tab.label);
      const std::size_t colon = tab.label.find(':');
      panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
      test(tab, *panel.window.pages()[i]);
    }
  }
  static QAccessibleInterface& accessible(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
  }
  QString description(const char* outlet) {
    return accessible(*panel.widget(outlet)).text(QAccessible::Description);
  }
  static PreviewView& previewOf(const Page& page) {
    return *dynamic_cast<PreviewView*>(page.findChild<QWidget*>(QStringLiteral("preview")));
  }
};

TEST_F(PageLook, EachPageSaysWhatItIsFor) {
  openEverything();
  onPages([](const TabDescription& tab, const Page& page) {
    auto* title = page.findChild<QLabel*>(QStringLiteral("pageTitle"));
    EXPECT_EQ(title->text(), text(tab.label.substr(tab.label.find(':') + 1)));
    EXPECT_GT(title->fontInfo().pixelSize(), page.fontInfo().pixelSize());
    EXPECT_EQ(page.findChild<QLabel*>(QStringLiteral("pagePurpose"))->text(), text(tab.purpose));
  });
}

TEST_F(PageLook, TitlesAreHeadingsToAScreenReader) {
  openEverything();
  onPages([](const TabDescription& tab, const Page& page) {
    QStringList expected{text(tab.label.substr(tab.label.find(':') + 1))};
    for (const SectionDescription& section : tab.sections) {
      if (!section.title.empty()) expected += text(section.title);
    }
    for (auto* label : page.findChildren<QLabel*>()) {
      if (accessible(*label).role() == QAccessible::Heading)
        expected.removeOne(accessible(*label).text(QAccessible::Name));
    }
    EXPECT_TRUE(expected.isEmpty()) << expected.join(QStringLiteral(", ")).toStdString();
  });
}

TEST_F(PageLook, EverySettingLiesOnThePanelOfAGroup) {
  openEverything();
  onPages([](const TabDescription& tab, const Page& page) {
    const auto panels = page.findChildren<QWidget*>(QStringLiteral("sectionPanel"));
    EXPECT_GE(panels.size(), static_cast<qsizetype>(tab.sections.size()));
    for (const auto& binding : page.bindings()) {
      if (!binding->widget()->isVisible()) continue;
      const QRect at(binding->widget()->mapTo(&page, QPoint()), binding->widget()->size());
      EXPECT_EQ(
          std::ranges::count_if(panels, [&at](const QWidget* one) { return one->geometry().contains(at); }),
          1)
          << binding->control().name();
    }
    for (const QWidget* one : panels) EXPECT_EQ(one->width(), panels.front()->width());
  });
}

TEST_F(PageLook, TheColumnStopsGrowingAndStaysInTheMiddle) {
  openEverything();
  panel.window.resize(1600, 1000);
  panel.settle();
  onPages([this](const TabDescription&, const Page& page) {
    const QWidget* area = panel.as<QStackedWidget>("ib_tview_confView")->currentWidget();
    ASSERT_GT(area->width(), 1200);
    EXPECT_EQ(page.width(), page.mostWidth());
    EXPECT_GE(page.width(), 600);
    EXPECT_LE(page.width(), 760);
    const int left = page.mapTo(area, QPoint()).x();
    EXPECT_NEAR(left, area->width() - left - page.width(), 2);
    for (const auto* slider : page.findChildren<QSlider*>()) EXPECT_LE(slider->width(), 460);
  });
}

TEST_F(PageLook, TheColumnGrowsWithTheFont) {
  openEverything();
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSize(before.pointSize() * 2);
  panel.window.resize(1900, 1000);
  panel.settle();
  const int narrow = panel.window.pages().front()->width();
  QApplication::setFont(large);
  panel.settle();
  const Page& page = *panel.window.pages().front();
  EXPECT_GE(page.width(), narrow * 17 / 10);
  EXPECT_GT(page.findChild<QLabel*>(QStringLiteral("pageTitle"))->fontInfo().pixelSize(),
            page.fontInfo().pixelSize());
  QApplication::setFont(before);
}

TEST_F(PageLook, TheButtonsBelowStandOnOneLine) {
  openEverything();
  const QWidget* apply = panel.widget("ib_button_Apply");
  for (const char* name : {"reachButton", "ib_button_Help"}) {
    EXPECT_EQ(panel.widget(name)->geometry().center().y(), apply->geometry().center().y()) << name;
    EXPECT_EQ(panel.widget(name)->height(), apply->height()) << name;
    EXPECT_EQ(panel.widget(name)->parentWidget(), apply->parentWidget()) << name;
  }
}

// ---- Values and preview -----------------------------------------------------------------------------------

TEST_F(PageLook, AValueIsSaidInWords) {
  openEverything();
  panel.choosePage("admin", "Image");
  panel.drag("ib_admin_slider_imgDept", 7);
  EXPECT_TRUE(
      description("ib_admin_slider_imgDept").startsWith(QStringLiteral("7 of 8, millions of colours. ")))
      << description("ib_admin_slider_imgDept").toStdString();
  QStringList shown;
  for (const auto* label : panel.window.pages()[6]->findChildren<QLabel*>()) {
    if (label->isVisible()) shown += label->text();
  }
  EXPECT_TRUE(shown.contains(QStringLiteral("7 of 8")));
  EXPECT_TRUE(shown.contains(QStringLiteral("millions of colours")));
}

TEST_F(PageLook, ThePreviewFollowsThePendingValuesAtOnce) {
  openEverything();
  panel.choosePage("user", "Image");
  if (!pane.ib_user_chkbox_imgDefs.isOn()) panel.click("ib_user_chkbox_imgDefs");
  panel.choosePage("admin", "Image");
  const PreviewView& preview = previewOf(*panel.window.pages()[6]);
  ASSERT_TRUE(preview.isVisible());
  const QImage before = panel.widget("preview")->window()->grab().toImage();
  panel.drag("ib_admin_slider_imgDept", 4);
  panel.drag("ib_admin_slider_imgShad", 40);
  EXPECT_EQ(preview.settings(), (SampleSettings{2, 4, 40}));
  EXPECT_NE(panel.window.grab().toImage(), before);
  EXPECT_EQ(
      preview.accessibleName(),
      QStringLiteral("Sample screen with image quality High, colour depth 4 of 8, fewest colours, and shadow "
                     "size 40 of 72, wide."));
  EXPECT_EQ(previewOf(*panel.window.pages()[0]).settings(), preview.settings())
      << "the user who follows the server's values sees them";
}

TEST_F(PageLook, ThePreviewIsAPictureAndNoStopForTheKeyboard) {
  openEverything();
  panel.choosePage("user", "Image");
  auto* preview = panel.window.pages()[0]->findChild<QWidget*>(QStringLiteral("preview"));
  EXPECT_EQ(accessible(*preview).role(), QAccessible::Graphic);
  EXPECT_EQ(accessible(*preview).text(QAccessible::Name), preview->accessibleName());
  EXPECT_EQ(preview->focusPolicy(), Qt::NoFocus);
}

// ---- The ladder's short result ----------------------------------------------------------------------------

class ReachCardTest : public PageLook {
 protected:
  void SetUp() override { connectToNetwork(4500); }
  QStringList shown(const char* name) {
    QStringList words;
    for (const auto* label : panel.window.reachCard().findChildren<QLabel*>(QString::fromUtf8(name))) {
      if (label->isVisible()) words += label->text();
    }
    return words;
  }
  void open() {
    openEverything();
    panel.server->lookAtForce();
    panel.choosePage("admin", "Server");
  }
};

TEST_F(ReachCardTest, SaysWhereOthersCanConnect) {
  open();
  const QStringList results = shown("reachResult");
  ASSERT_EQ(results.size(), 2);
  EXPECT_TRUE(results[0].startsWith(QStringLiteral("Norvik clients can connect to mac.example.com:4500")))
      << results[0].toStdString();
  EXPECT_TRUE(shown("reachAdvice").isEmpty());
}

TEST_F(ReachCardTest, SaysTheFirstReasonAndWhatToDo) {
  desktop.computer.ports.hold(4500, 812, "nginx");
  open();
  EXPECT_TRUE(shown("reachResult")[0].contains(QStringLiteral("nginx")))
      << shown("reachResult")[0].toStdString();
  ASSERT_EQ(shown("reachAdvice").size(), 1);
  EXPECT_TRUE(shown("reachResult")[1].contains(QStringLiteral("can connect")));
}

TEST_F(ReachCardTest, ItsButtonOpensTheLadder) {
  open();
  bool isOpen = false;
  QTimer::singleShot(0, [&isOpen] {
    auto* ladder = dynamic_cast<ReachDialog*>(QApplication::activeModalWidget());
    isOpen = ladder != nullptr;
    if (isOpen) ladder->close();
  });
  QTest::mouseClick(&panel.window.reachCard().button(), Qt::LeftButton);
  EXPECT_TRUE(isOpen);
}

// ---- In each theme ----------------------------------------------------------------------------------------

enum class Theme { light, dark, highContrast };

// A computer with a name that others know.
class ThemedLook : public PageLook, public testing::WithParamInterface<Theme> {
 protected:
  ThemedLook() {
    GetParam() == Theme::dark ? useDarkTheme(*qApp) : useDesktopTheme(*qApp);
    if (GetParam() == Theme::highContrast) {
      QPalette palette(Qt::white, Qt::black, Qt::white, Qt::black, Qt::black, Qt::white, Qt::white, Qt::black,
                       Qt::black);
      palette.setColor(QPalette::Highlight, Qt::yellow);
      palette.setColor(QPalette::HighlightedText, Qt::black);
      QApplication::setPalette(palette);
    }
    desktop.computer.host.setAddresses({"127.0.0.1", "192.0.2.7"});
    desktop.computer.network.setName("mac.example.com", {"192.0.2.7"});
  }
  ~ThemedLook() override {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QPalette());
  }

  // The best contrast within the first letters of a row, where its icon is, to what is around it.
  static double iconContrast(QListWidget& sidebar, int row) {
    const QRect all = sidebar.visualItemRect(sidebar.item(row));
    const int indent = 2 * sidebar.fontMetrics().averageCharWidth();
    const QRect square(all.left() + indent, all.top(), sidebar.fontMetrics().height(), all.height());
    const QImage picture = sidebar.viewport()->grab(square).toImage();
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
    }
    const auto most = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
    double best = 1;
    for (const auto& entry : counts)
      best = std::max(best, contrastRatio(QColor::fromRgb(entry.first), QColor::fromRgb(most->first)));
    return best;
  }

  void expectVisibleIcons(int least) {
    auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
    int pages = 0;
    for (int row = 0; row < sidebar->count(); ++row) {
      if (sidebar->item(row)->text().isEmpty() || sidebar->item(row)->font().bold()) continue;
      if (pane.ib_oview_confBar.rows()[static_cast<std::size_t>(row)].node->page == nullptr) continue;
      ++pages;
      EXPECT_GE(iconContrast(*sidebar, row), desktop::kGraphicContrast)
          << sidebar->item(row)->text().toStdString();
    }
    EXPECT_GE(pages, least);
  }

  void take(const QString& name) {
    const QString folder = qEnvironmentVariable("NORVIK_PICTURES");
    if (folder.isEmpty()) return;
    constexpr const char* kNames[] = {"light", "dark", "high-contrast"};
    const QString theme = QString::fromUtf8(kNames[static_cast<int>(GetParam())]);
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(
        panel.window.grab().save(QDir(folder).filePath(QStringLiteral("page-%1-%2.png").arg(name, theme))));
  }
};

TEST_P(ThemedLook, EveryIconCanBeSeen) {
  expectVisibleIcons(9);  // most of them greyed
  openEverything();
  onPages([this](const TabDescription&, const Page&) { expectVisibleIcons(9); });
}

// A group looks different from the window around it; in high contrast by a line.
TEST_P(ThemedLook, TheGroupsCanBeSeen) {
  openEverything();
  panel.choosePage("user", "Mouse");
  auto* group = panel.window.pages()[1]->findChild<QWidget*>(QStringLiteral("sectionPanel"));
  const QImage picture = group->grab().toImage();
  const QColor line = picture.pixelColor(0, picture.height() / 2);
  const QColor window = panel.window.palette().color(QPalette::Window);
  EXPECT_GE(contrastRatio(line, window), GetParam() == Theme::highContrast ? desktop::kGraphicContrast : 1.1);
}

// In the window's first size, as small as it goes, and large; in fonts of 14 and 16 points too.
TEST_P(ThemedLook, EveryPageCanBeLookedAt) {
  const QFont before = QApplication::font();
  panel.window.resize(panel.window.sizeHint());
  panel.choosePage("user", "Image");
  take(QStringLiteral("user-image-locked"));
  openEverything();
  panel.server->lookAtForce();
  const std::pair<QSize, const char*> sizes[] = {{panel.window.sizeHint(), ""},
                                                 {panel.window.minimumSizeHint(), "-small"},
                                                 {QSize(1600, 1000), "-large"}};
  for (const auto& [size, word] : sizes) {
    panel.window.resize(size);
    panel.settle();
    onPages([&, ending = QString::fromUtf8(word)](const TabDescription& tab, const Page& page) {
      EXPECT_LE(page.minimumSizeHint().width(), page.width());
      QString name = text(tab.label).toLower();
      name.replace(QLatin1Char(':'), QLatin1Char('-')).replace(QLatin1Char(' '), QLatin1Char('-'));
      take(name + ending);
    });
  }
  for (const int points : {14, 16}) {
    QFont large = before;
    large.setPointSize(points);
    QApplication::setFont(large);
    panel.window.resize(panel.window.sizeHint());
    panel.settle();
    panel.choosePage("user", "Image");
    take(QStringLiteral("font-%1").arg(points));
  }
  QApplication::setFont(before);
}

std::string themeName(const testing::TestParamInfo<Theme>& theme) {
  constexpr const char* kNames[] = {"Light", "Dark", "HighContrast"};
  return kNames[static_cast<int>(theme.param)];
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemedLook, testing::Values(Theme::light, Theme::dark, Theme::highContrast),
                         themeName);

}  // namespace
}  // namespace norvik::desktop
