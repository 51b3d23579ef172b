// The window in a language whose texts are in brackets, with accents, and half as long again: what is shown
// without brackets comes from no catalogue, and nothing may be cut.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTreeWidget>

#include "src/frontends/desktop/address_label.h"
#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/collision_dialog.h"
#include "src/frontends/shared/language/language.h"
#include "tests/frontends/desktop/good_layout.h"
#include "tests/frontends/desktop/simulated_panel.h"
#include "tests/support/files.h"

namespace norvik::desktop {
namespace {

// Before the panel, which is made with its texts.
struct SpokenPseudo {
  SpokenPseudo() {
    const auto catalogue = Catalogue::read(bytes);
    EXPECT_TRUE(catalogue) << NORVIK_PSEUDO_LANGUAGE;
    speak(catalogue);
  }
  ~SpokenPseudo() { speak(std::nullopt); }
  const std::string bytes = contentOf(NORVIK_PSEUDO_LANGUAGE);
};

class PseudoLanguage : private SpokenPseudo, public SimulatedPanel {
 protected:
  // Every text of a widget, and what is said of it.
  static QStringList textsOf(QWidget& widget) {
    QStringList texts{widget.toolTip(), widget.accessibleName(), widget.accessibleDescription()};
    if (auto* label = qobject_cast<QLabel*>(&widget)) texts += label->text();
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) texts += button->text();
    if (auto* field = qobject_cast<QLineEdit*>(&widget)) texts += field->placeholderText();
    if (auto* popUp = qobject_cast<QComboBox*>(&widget)) {
      for (int i = 0; i < popUp->count(); ++i) texts += popUp->itemText(i);
    }
    if (auto* list = qobject_cast<QListWidget*>(&widget)) {
      for (int i = 0; i < list->count(); ++i) texts += list->item(i)->text();
    }
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
      for (int i = 0; i < tabs->count(); ++i) texts += tabs->tabText(i);
    }
    if (auto* tree = qobject_cast<QTreeWidget*>(&widget)) {
      for (int i = 0; i < tree->columnCount(); ++i) texts += tree->headerItem()->text(i);
      for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        for (int j = 0; j < tree->columnCount(); ++j) texts += tree->topLevelItem(i)->text(j);
      }
    }
    if (widget.isWindow()) texts += widget.windowTitle();
    return texts;
  }

  // Words that are outside of all brackets. Addresses, paths and numbers are nobody's words.
  static QString wordsOutside(const QString& text) {
    QString outside;
    int depth = 0;
    for (const QChar letter : text) {
      if (letter == QLatin1Char('[')) ++depth;
      if (depth == 0) outside += letter;
      if (letter == QLatin1Char(']')) --depth;
    }
    static const QRegularExpression kNoWords(
        QStringLiteral("<[^>]*>|&\\w+;|&|[^\\s<]*[./:][^\\s<]+|\\w+…|-\\w+|Norvik|RDP|root|apply|[^A-Za-z]"));
    return outside.remove(kNoWords);
  }

  void expectTranslated(QWidget& root) {
    auto widgets = root.findChildren<QWidget*>();
    widgets.prepend(&root);
    for (QWidget* widget : widgets) {
      // A tool that scrolls has texts of the toolkit's.
      if (widget->objectName().startsWith(QLatin1String("qt_"))) continue;
      for (const QString& text : textsOf(*widget)) {
        if (!wordsOutside(text).isEmpty())
          ADD_FAILURE() << "in no catalogue: \"" << text.toStdString() << "\" of "
                        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        if (!text.isEmpty()) ++texts;
      }
    }
  }

  int texts = 0;
};

TEST_F(PseudoLanguage, EveryTextOfTheWindowIsFromTheCatalogue) {
  for (const bool isOpen : {false, true}) {
    if (isOpen) openEverything();
    for (const TabDescription& tab : panel.interface.tabs) {
      SCOPED_TRACE(tab.label);
      choosePage(panel, tab);
      expectTranslated(panel.window);
    }
  }
  EXPECT_GT(texts, 1000) << "the pages were looked at";
}

TEST_F(PseudoLanguage, EveryTextOfTheMessagesAndDialogsIsFromTheCatalogue) {
  openEverything();
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  panel.choosePageOf("ib_admin_edbox_nvkPort");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("70000"));
  panel.tick();
  MessageLine& outcome = panel.window.messages().line(MessageSubject::outcome);
  ForeignChanges foreign;
  foreign.takenOver = panel.change.pending();
  outcome.showMessage(foreignMessage(foreign));
  panel.settle();
  expectTranslated(panel.window);
  const Collision collision{"user.image.quality", "[Label]", "Image", "Low", "High", "none"};
  CollisionDialog asks(&panel.window, {collision});
  ChangesDialog lists(&panel.window, {[this] { return panel.change.preview(); }, {}, {}});
  for (QDialog* dialog : {static_cast<QDialog*>(&asks), static_cast<QDialog*>(&lists)}) {
    dialog->show();
    panel.settle();
    expectTranslated(*dialog);
    dialog->hide();
  }
}

TEST_F(PseudoLanguage, TheQuestionsOfThePaneAreFromTheCatalogue) {
  openEverything();
  Answers answers(Qt::Key_Escape);
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkClipb");
  panel.click("ib_button_Auth");  // which asks what becomes of the change
  panel.choosePage("admin", "Server");
  panel.click("ib_admin_button_svrRestart");
  ASSERT_EQ(answers.seen.size(), 2U);
  for (const Answers::Seen& seen : answers.seen) {
    EXPECT_EQ(wordsOutside(seen.title), QString()) << seen.title.toStdString();
    EXPECT_EQ(wordsOutside(seen.message), QString()) << seen.message.toStdString();
    for (const QString& button : seen.buttons)
      EXPECT_EQ(wordsOutside(button), QString()) << button.toStdString();
  }
}

TEST_F(PseudoLanguage, LongTextsAreWhole) {
  openEverything();
  panel.control("ib_admin_edbox_nvkPort").setStringValue("port");
  panel.settle();
  expectGoodPages(panel);
}

TEST_F(PseudoLanguage, TheWindowFitsASmallScreen) {
  openEverything();
  panel.window.resize(1, 1);
  panel.settle();
  EXPECT_LE(panel.window.width(), 1280);
  EXPECT_LE(panel.window.height(), 800);
  for (const TabDescription& tab : panel.interface.tabs) {
    choosePage(panel, tab);
    EXPECT_LE(panel.window.minimumSizeHint().width(), 1280) << tab.label;
    EXPECT_LE(panel.window.minimumSizeHint().height(), 800) << tab.label;
  }
}

TEST_F(PseudoLanguage, AnAddressIsStillCopied) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  QApplication::processEvents();
  EXPECT_FALSE(panel.window.addressLabel(pane.ib_admin_label_nvkAddress).address().isEmpty());
}

}  // namespace
}  // namespace norvik::desktop
