// The history in the window: what it shows of each change, and that taking one back only makes edits pending.
#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "src/frontends/desktop/note_label.h"
#include "src/frontends/shared/history/history.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class HistoryInWindow : public SimulatedPanel {
 protected:
  void savePort(const QString& port) {
    panel.choosePage("admin", "Norvik clients");
    panel.type("ib_admin_edbox_nvkPort", port);
    panel.click("ib_button_Apply");
    ASSERT_TRUE(panel.change.pending().empty());
  }

  // Lets each act use the dialog that comes up, one after the other.
  void withDialogs(const std::function<void()>& begin, std::vector<std::function<void(QDialog&)>> acts) {
    std::size_t next = 0;
    QPointer<QDialog> last;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible() || dialog == last || next == acts.size()) return;
      last = dialog;
      acts[next++](*dialog);
    });
    looks.start(5);
    begin();
    EXPECT_EQ(next, acts.size());
    panel.settle();
  }
  static QStringList rowsOf(QDialog& dialog, const char* list) {
    QStringList rows;
    const auto* tree = dialog.findChild<QTreeWidget*>(QString::fromLatin1(list));
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
      QStringList cells;
      for (int column = 0; column < tree->columnCount(); ++column)
        cells += tree->topLevelItem(i)->text(column);
      rows += cells.join(QStringLiteral(" | "));
    }
    return rows;
  }
  static QAbstractButton* undo(QDialog& dialog) {
    return dialog.findChild<QAbstractButton*>(QStringLiteral("historyUndo"));
  }
};

TEST_F(HistoryInWindow, ShowsEachChangeBesideWhatIsNow) {
  openEverything();
  savePort(QStringLiteral("5000"));
  savePort(QStringLiteral("5001"));
  withDialogs(
      [this] { panel.press(Qt::Key_H, Qt::ControlModifier); }, {[](QDialog& dialog) {
        const QStringList entries = rowsOf(dialog, "historyEntries");
        ASSERT_EQ(entries.size(), 2);
        EXPECT_TRUE(
            entries[0].endsWith(QStringLiteral("Settings window | Port number (Norvik clients) | Saved")))
            << entries[0].toStdString();
        EXPECT_EQ(
            rowsOf(dialog, "historySettings"),
            QStringList(QStringLiteral("Port number | Norvik clients | 5000 → 5001 | 5001 | Still so")));
        EXPECT_TRUE(undo(dialog)->isEnabled());
        auto* list = dialog.findChild<QTreeWidget*>(QStringLiteral("historyEntries"));
        QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(
            rowsOf(dialog, "historySettings"),
            QStringList(QStringLiteral("Port number | Norvik clients | 4074 → 5000 | 5001 | Changed again")));
        EXPECT_FALSE(undo(dialog)->isEnabled());
        auto* note = static_cast<NoteLabel*>(dialog.findChild<QLabel*>(QStringLiteral("historyNote")));
        EXPECT_TRUE(note->words().contains(QStringLiteral("changed again"))) << note->words().toStdString();
        dialog.reject();
      }});
}

TEST_F(HistoryInWindow, UndoMakesTheOldValuesPendingAndShowsThem) {
  openEverything();
  savePort(QStringLiteral("5000"));
  withDialogs([this] { panel.history->showHistory(); }, {[](QDialog& dialog) { undo(dialog)->click(); },
                                                         [](QDialog& dialog) {
                                                           EXPECT_EQ(dialog.objectName(),
                                                                     QStringLiteral("changesDialog"));
                                                           dialog.reject();
                                                         }});
  ASSERT_EQ(panel.change.pending().size(), 1u);
  EXPECT_EQ(panel.change.pending()[0].to, "4074");
  EXPECT_EQ(pane.m_admin_nvkPort, 5000) << "nothing is applied";
  panel.click("ib_button_Apply");
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  withDialogs([this] { panel.history->showHistory(); }, {[](QDialog& dialog) {
                EXPECT_EQ(rowsOf(dialog, "historyEntries").size(), 2) << "undo is a change like others";
                dialog.reject();
              }});
}

TEST_F(HistoryInWindow, UndoAsksForTheLock) {
  openEverything();
  savePort(QStringLiteral("5000"));
  panel.click("ib_button_Auth");
  ASSERT_FALSE(pane.authorized());
  desktop.computer.authorization.setInteractiveGranted(false);
  withDialogs([this] { panel.history->showHistory(); }, {[](QDialog& dialog) { undo(dialog)->click(); }});
  EXPECT_TRUE(panel.change.pending().empty());
  EXPECT_EQ(pane.ib_admin_edbox_nvkPort.stringValue(), "5000");
  EXPECT_EQ(panel.window.messages().line(MessageSubject::outcome).message().kind, MessageKind::failure);
}

TEST_F(HistoryInWindow, SaysWhatIsWrongWithIt) {
  withDialogs([this] { panel.history->showHistory(); }, {[](QDialog& dialog) {
                auto* note =
                    static_cast<NoteLabel*>(dialog.findChild<QLabel*>(QStringLiteral("historyNote")));
                EXPECT_EQ(note->words(), QStringLiteral("Nothing was changed yet."));
                EXPECT_FALSE(undo(dialog)->isEnabled());
                dialog.reject();
              }});
  desktop.computer.fileSystem.put(desktop.computer.userState.placeOf(kHistoryFile), "not an entry\n");
  withDialogs(
      [this] { panel.history->showHistory(); }, {[](QDialog& dialog) {
        auto* note = static_cast<NoteLabel*>(dialog.findChild<QLabel*>(QStringLiteral("historyNote")));
        EXPECT_TRUE(note->words().startsWith(QStringLiteral("1 line of "))) << note->words().toStdString();
        dialog.reject();
      }});
}

}  // namespace
}  // namespace norvik::desktop
