// Every page in each language that the window comes with: nothing is cut and nothing lies over another. With
// NORVIK_PICTURES=DIR the pictures are written to that folder, for documents.
#include <QApplication>
#include <QDir>
#include <QTest>

#include "src/frontends/shared/language/choice.h"
#include "src/frontends/shared/language/language.h"
#include "tests/frontends/desktop/good_layout.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

using Language = std::string_view;

// Before the panel, which is made with its texts.
struct SpokenLanguage {
  explicit SpokenLanguage(Language language) {
    EXPECT_EQ(chooseLanguage({std::string(language)}), language);
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  }
  ~SpokenLanguage() {
    chooseLanguage({});
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }
};

class EachLanguage : public testing::WithParamInterface<Language>,
                     private SpokenLanguage,
                     public SimulatedPanel {
 protected:
  EachLanguage() : SpokenLanguage(GetParam()) {}

  void keep(const QString& name) {
    const QString folder = qEnvironmentVariable("NORVIK_PICTURES");
    if (folder.isEmpty()) return;
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = name + QLatin1Char('-') + text(GetParam()) + QStringLiteral(".png");
    EXPECT_TRUE(panel.window.grab().save(QDir(folder).filePath(file)));
  }
};

TEST_P(EachLanguage, EveryPageIsWhole) {
  openEverything();
  panel.control("ib_admin_edbox_nvkPort").setStringValue("port");
  panel.settle();
  expectGoodPages(panel);
  EXPECT_LE(panel.window.minimumSizeHint().width(), 1280);
  EXPECT_LE(panel.window.minimumSizeHint().height(), 800);
}

TEST_P(EachLanguage, IsShownBesideAChange) {
  openEverything();
  panel.choosePageOf("ib_admin_edbox_nvkPort");
  panel.click("ib_admin_chkbox_nvkSound");
  panel.settle();
  QString words = panel.window.changesButton().text();
  EXPECT_EQ(words.contains(QLatin1Char('&')), GetParam() != "ja") << "there is a key for no letter of it";
  EXPECT_EQ(words.remove(QLatin1Char('&')).toStdString(), counted("{1} change", "{1} changes", 1) + "…");
  keep(QStringLiteral("window"));
  panel.choosePageOf("ib_admin_slider_imgDept");
  panel.settle();
  keep(QStringLiteral("window-image"));
}

INSTANTIATE_TEST_SUITE_P(Shipped, EachLanguage, testing::ValuesIn(shippedLanguages()),
                         [](const auto& made) { return std::string(made.param); });

}  // namespace
}  // namespace norvik::desktop
