// A change by mouse and keyboard from the edit to what the line above the pages says: refused values, the
// list of changes, what others change meanwhile, damaged files, saves that fail.
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/collision_dialog.h"
#include "src/frontends/desktop/note_label.h"
#include "src/server/mac/stores/settings_paths.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

constexpr const char* kServerFile = "/etc/norvik/svr.cfg";

class Changes : public SimulatedPanel {
 protected:
  MessageLine& line(MessageSubject subject) { return panel.window.messages().line(subject); }
  MessageLine& outcome() { return line(MessageSubject::outcome); }
  QString said() { return outcome().isVisible() ? outcome().accessibleName() : QString(); }

  void typePort(const QString& words) {
    panel.choosePage("admin", "Norvik clients");
    panel.type("ib_admin_edbox_nvkPort", words);
  }
  NoteLabel& note() { return *static_cast<NoteLabel*>(panel.widget("ib_admin_edbox_nvkPort_note")); }
  QPushButton& counter() { return *panel.as<QPushButton>("pendingChanges"); }

  // Another program saves the server's file.
  void saveElsewhere(int64_t port, bool sound) {
    const PropertyList::Dictionary service{
        {"PortNumber", port}, {"Disabled", false}, {"SoundOutputEnabled", sound}};
    const PropertyList::Dictionary other{
        {"PortNumber", int64_t{3390}}, {"Disabled", false}, {"SoundOutputEnabled", false}};
    desktop.computer.fileSystem.put(
        kServerFile, encodeXmlPropertyList(PropertyList::Dictionary{{"SingleUser", true},
                                                                    {"ActionOnConnect", int64_t{0}},
                                                                    {"NVKService", service},
                                                                    {"RDPService", other}}));
  }
  void noticeFiles() {
    panel.changes->filesChanged();
    QTest::qWait(250);  // until the file has settled
    panel.settle();
  }
  void press(MessageSubject subject, MessageAction action) {
    for (auto* button : line(subject).findChildren<QPushButton*>()) {
      if (button->accessibleName() == text(titleOf(action)) && button->isVisible())
        return QTest::mouseClick(button, Qt::LeftButton);
    }
    ADD_FAILURE() << "no button " << titleOf(action);
  }
  std::string stored() const { return desktop.computer.fileSystem.find(kServerFile)->bytes; }
  static bool bytesAreIn(const std::string& file, const std::string& bytes) {
    return file.find(bytes) != std::string::npos;
  }
};

// Acts in a dialog of the kind, once, when it is there.
template <typename Dialog>
class InDialog : public QObject {
 public:
  explicit InDialog(std::function<void(Dialog&)> act) : act_(std::move(act)) {
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, timer] {
      auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      timer->stop();
      ++seen;
      act_(*dialog);
    });
    timer->start(5);
  }
  int seen = 0;

 private:
  std::function<void(Dialog&)> act_;
};

// ---- Refused values

TEST_F(Changes, ARefusedPortDoesNotReachThePaneAndIsShown) {
  openEverything();
  const std::string before = stored();
  for (const char* words : {"70000", "0", "3390"}) {
    SCOPED_TRACE(words);
    typePort(QString::fromUtf8(words));
    panel.choosePage("user", "Mouse");
    panel.click("ib_button_Apply");
    EXPECT_EQ(stored(), before);
    EXPECT_FALSE(desktop.launched("\"apply\""));
    EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_edbox_nvkPort")) << "the page is open";
    EXPECT_FALSE(note().words().isEmpty());
    EXPECT_EQ(note().kind(), MessageKind::failure);
    EXPECT_TRUE(said().startsWith(QStringLiteral("Failed: Nothing was applied."))) << said().toStdString();
    EXPECT_TRUE(said().contains(note().words()));
  }
}

TEST_F(Changes, ReturnIsRefusedAsTheButtonIs) {
  openEverything();
  const std::string before = stored();
  typePort(QStringLiteral("70000"));
  panel.press(Qt::Key_Return);
  EXPECT_EQ(stored(), before);
  EXPECT_TRUE(said().startsWith(QStringLiteral("Failed:")));
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("4500"));
  panel.press(Qt::Key_Return);
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  EXPECT_TRUE(said().startsWith(QStringLiteral("Done: Saved the server settings."))) << said().toStdString();
}

TEST_F(Changes, TheNoteOfARefusedPortStandsOut) {
  openEverything();
  typePort(QStringLiteral("5000"));
  const QColor plain = note().palette().color(QPalette::WindowText);
  typePort(QStringLiteral("70000"));
  EXPECT_NE(note().palette().color(QPalette::WindowText), plain);
  EXPECT_GT(note().contentsMargins().left() + note().contentsMargins().right(), 0) << "space for the icon";
  typePort(QStringLiteral("4321"));
  EXPECT_EQ(note().kind(), MessageKind::warning) << "a port in use does not keep anybody from applying";
}

TEST_F(Changes, AnAddressWithAPortThatCannotBeIsNotOfferedForCopying) {
  openEverything();
  const auto canCopy = [this](const char* port) {
    typePort(QString::fromUtf8(port));
    return panel.widget("ib_admin_label_nvkAddress_copy")->isVisible();
  };
  EXPECT_TRUE(canCopy("4500"));
  const QPoint below = panel.widget("ib_admin_edbox_nvkPort")->mapTo(&panel.window, QPoint());
  EXPECT_FALSE(canCopy("70000"));
  EXPECT_EQ(panel.widget("ib_admin_edbox_nvkPort")->mapTo(&panel.window, QPoint()), below)
      << "the page does not jump";
  EXPECT_TRUE(canCopy("4501"));
}

// ---- Saved, and saves that fail

TEST_F(Changes, AnApplyThatWorkedIsSaidUntilTheNextEdit) {
  openEverything();
  typePort(QStringLiteral("4500"));
  panel.click("ib_button_Apply");
  EXPECT_TRUE(said().contains(QStringLiteral("Saved the server settings. Told the server.")))
      << said().toStdString();
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  panel.click("ib_admin_chkbox_nvkClipb");
  EXPECT_EQ(said(), QString());
}

TEST_F(Changes, AFullDiskIsSaidAndRetryWorksWhenThereIsSpace) {
  openEverything();
  const std::string before = stored();
  typePort(QStringLiteral("4500"));
  const std::string temporary = pane.getTempFilePath(kServerConfigTempName);
  desktop.computer.fileFaults.set(FileOperation::write, temporary, true);
  panel.click("ib_button_Apply");
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(outcome().message().kind, MessageKind::failure) << said().toStdString();
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4500"))
      << "the edit stays";
  EXPECT_TRUE(panel.widget("ib_button_Apply")->isEnabled());
  desktop.computer.fileFaults.set(FileOperation::write, temporary, false);
  press(MessageSubject::outcome, MessageAction::retry);
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  EXPECT_EQ(outcome().message().kind, MessageKind::done);
}

TEST_F(Changes, AToolThatFailsIsSaidWithItsWords) {
  openEverything();
  typePort(QStringLiteral("4500"));
  desktop.computer.tools.setFailure("/usr/sbin/nvkservice", "apply", 3, "the daemon does not answer");
  panel.click("ib_button_Apply");
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  QString details;
  InDialog<QDialog> look([&details](QDialog& dialog) {
    for (const auto* child : dialog.findChildren<QWidget*>())
      details += child->property("plainText").toString();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  press(MessageSubject::outcome, MessageAction::showDetails);
  EXPECT_TRUE(details.contains(QStringLiteral("the daemon does not answer"))) << details.toStdString();
  desktop.computer.tools.setUsual("/usr/sbin/nvkservice", "apply");
  const auto before =
      std::ranges::count_if(desktop.launches, [](const auto& l) { return l.find("apply") != l.npos; });
  press(MessageSubject::outcome, MessageAction::retry);
  const auto after =
      std::ranges::count_if(desktop.launches, [](const auto& l) { return l.find("apply") != l.npos; });
  EXPECT_EQ(after, before + 1) << "the files are saved, so only the server has to take them up";
  EXPECT_EQ(outcome().message().kind, MessageKind::done) << said().toStdString();
}

TEST_F(Changes, SomebodyElsesLockIsSaidAndTheEditStays) {
  openEverything();
  typePort(QStringLiteral("4500"));
  desktop.computer.locks.holdElsewhere(std::nullopt);
  panel.click("ib_button_Apply");
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  desktop.computer.locks.holdElsewhere(std::chrono::milliseconds(0));
  press(MessageSubject::outcome, MessageAction::retry);
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
}

// ---- The list of changes

TEST_F(Changes, AreCountedBesideApplyAndMarkedInTheSidebar) {
  openEverything();
  EXPECT_FALSE(counter().isVisible());
  typePort(QStringLiteral("4500"));
  EXPECT_EQ(counter().accessibleName(), QStringLiteral("1 change"));
  panel.click("ib_admin_chkbox_nvkSound");
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  EXPECT_EQ(counter().accessibleName(), QStringLiteral("3 changes"));
  EXPECT_TRUE(counter().isVisible());
  auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  QStringList read;
  for (int i = 0; i < sidebar->count(); ++i) {
    const QVariant words = sidebar->item(i)->data(Qt::AccessibleTextRole);
    if (!words.isNull()) read += words.toString();
  }
  EXPECT_EQ(read,
            (QStringList{QStringLiteral("Mouse, 1 change"), QStringLiteral("Norvik clients, 2 changes")}));
  panel.click("ib_button_Apply");
  EXPECT_FALSE(counter().isVisible());
}

TEST_F(Changes, AreListedWithOldAndNewValueAndWhatApplyDoes) {
  openEverything();
  typePort(QStringLiteral("4500"));
  QStringList row;
  QString effects;
  InDialog<ChangesDialog> look([&](ChangesDialog& dialog) {
    auto* list = dialog.findChild<QTreeWidget*>();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    for (int i = 0; i < 4; ++i) row += list->topLevelItem(0)->text(i);
    effects = dialog.findChild<QLabel*>(QStringLiteral("changesEffects"))->text();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  QTest::mouseClick(&counter(), Qt::LeftButton);
  EXPECT_EQ(row, (QStringList{QStringLiteral("Port number"), QStringLiteral("Norvik clients"),
                              QStringLiteral("4074"), QStringLiteral("4500")}));
  EXPECT_TRUE(effects.contains(QStringLiteral("/etc/norvik/svr.cfg")));
  EXPECT_TRUE(effects.contains(QStringLiteral("/usr/sbin/nvkservice apply")));
  EXPECT_TRUE(effects.contains(QStringLiteral("the server")));
  EXPECT_TRUE(effects.contains(QStringLiteral("Connections to this computer end."))) << effects.toStdString();
}

TEST_F(Changes, TheListLeadsToASetting) {
  openEverything();
  typePort(QStringLiteral("4500"));
  panel.choosePage("user", "Mouse");
  InDialog<ChangesDialog> go([](ChangesDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("changesGoTo")), Qt::LeftButton);
  });
  QTest::mouseClick(&counter(), Qt::LeftButton);
  EXPECT_EQ(go.seen, 1);
  EXPECT_EQ(panel.window.focusWidget(), panel.widget("ib_admin_edbox_nvkPort"));
}

TEST_F(Changes, TheListTakesOneBackThenAllAndApplies) {
  openEverything();
  typePort(QStringLiteral("4500"));
  panel.click("ib_admin_chkbox_nvkSound");
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  int left = -1;
  InDialog<ChangesDialog> takeBack([&left](ChangesDialog& dialog) {
    auto* list = dialog.findChild<QTreeWidget*>();
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("changesTakeBack")), Qt::LeftButton);
    left = list->topLevelItemCount();
    QTest::keyClick(&dialog, Qt::Key_Return);  // Apply is the default
  });
  QTest::mouseClick(&counter(), Qt::LeftButton);
  EXPECT_EQ(left, 2);
  EXPECT_EQ(pane.m_user_mseSwap, 0) << "taken back";
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  panel.click("ib_user_chkbox_mseSwap");
  InDialog<ChangesDialog> all([](ChangesDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("changesTakeBackAll")), Qt::LeftButton);
    EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("changesApply"))->isEnabled());
    EXPECT_EQ(dialog.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  QTest::mouseClick(&counter(), Qt::LeftButton);
  EXPECT_FALSE(counter().isVisible());
  EXPECT_FALSE(panel.as<QCheckBox>("ib_user_chkbox_mseSwap")->isChecked());
}

// ---- Others

TEST_F(Changes, WithNothingPendingTheControlsFollowWhatOthersSave) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  saveElsewhere(4600, true);
  noticeFiles();
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4600"));
  EXPECT_TRUE(line(MessageSubject::others).isVisible());
  EXPECT_TRUE(line(MessageSubject::others).accessibleName().contains(QStringLiteral("Port")));
  EXPECT_FALSE(counter().isVisible());
}

TEST_F(Changes, WhatDoesNotCollideIsTakenOverAndTheEditsStay) {
  openEverything();
  typePort(QStringLiteral("4500"));
  saveElsewhere(4074, true);
  noticeFiles();
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4500"));
  EXPECT_EQ(pane.m_admin_nvkSound, 1);
  EXPECT_EQ(counter().accessibleName(), QStringLiteral("1 change"));
  panel.click("ib_button_Apply");
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  EXPECT_EQ(pane.m_admin_nvkSound, 1) << "theirs is not overwritten";
}

TEST_F(Changes, WhatCollidesIsAskedAboutBeforeTheSave) {
  openEverything();
  typePort(QStringLiteral("4500"));
  saveElsewhere(4600, false);
  QStringList radios;
  InDialog<CollisionDialog> cancel([&radios](CollisionDialog& dialog) {
    for (const auto* radio : dialog.findChildren<QRadioButton*>()) radios += radio->accessibleName();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  panel.click("ib_button_Apply");
  EXPECT_EQ(cancel.seen, 1);
  EXPECT_EQ(radios, (QStringList{QStringLiteral("Port number: Take Theirs, 4600"),
                                 QStringLiteral("Port number: Keep Mine, 4500")}));
  EXPECT_TRUE(bytesAreIn(stored(), "4600")) << "cancelled";
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4500"));
  InDialog<CollisionDialog> mine([](CollisionDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  panel.click("ib_button_Apply");
  EXPECT_EQ(mine.seen, 1);
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
}

TEST_F(Changes, ACollisionIsSaidAtOnceAndTheirsCanBeTaken) {
  openEverything();
  typePort(QStringLiteral("4500"));
  saveElsewhere(4600, true);
  noticeFiles();
  EXPECT_EQ(line(MessageSubject::others).message().kind, MessageKind::warning);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "nobody is interrupted";
  desktop.computer.ports.setServerPorts({4999, 3390});
  panel.server->lookAtForce();
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible()) << "what is stored has yet to be taken over";
  InDialog<CollisionDialog> theirs([](CollisionDialog& dialog) {
    QTest::mouseClick(dialog.findChildren<QRadioButton*>().front(), Qt::LeftButton, {}, QPoint(5, 8));
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("collisionContinue")), Qt::LeftButton);
  });
  press(MessageSubject::others, MessageAction::chooseValues);
  EXPECT_EQ(theirs.seen, 1);
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4600"));
  EXPECT_FALSE(counter().isVisible());
  EXPECT_FALSE(line(MessageSubject::others).isVisible());
  EXPECT_TRUE(line(MessageSubject::inForce).accessibleName().contains(QStringLiteral("stored 4600")));
}

TEST_F(Changes, WhatOthersHadChangedIsNamedAsThePagesNameIt) {
  openEverything();
  typePort(QStringLiteral("4500"));
  saveElsewhere(4074, true);
  panel.click("ib_button_Apply");
  EXPECT_TRUE(said().contains(QStringLiteral("Play sound on the client (Norvik clients)")))
      << said().toStdString();
  EXPECT_FALSE(said().contains(QStringLiteral("nvk.sound"))) << said().toStdString();
}

TEST_F(Changes, OwnSavesAreNoChangesOfOthers) {
  openEverything();
  typePort(QStringLiteral("4500"));
  panel.click("ib_button_Apply");
  noticeFiles();
  EXPECT_FALSE(line(MessageSubject::others).isVisible());
}

// ---- Damaged files

TEST_F(Changes, ADamagedFileIsSaidWithItsCopyAndTheCopyIsRestored) {
  openEverything();
  typePort(QStringLiteral("4500"));
  panel.click("ib_button_Apply");
  const std::string good = stored();
  desktop.computer.fileSystem.put(kServerFile, good.substr(0, 300));
  noticeFiles();
  MessageLine& files = line(MessageSubject::files);
  ASSERT_TRUE(files.isVisible());
  EXPECT_TRUE(files.accessibleName().contains(QStringLiteral("/etc/norvik/svr.cfg")))
      << files.accessibleName().toStdString();
  EXPECT_TRUE(files.accessibleName().contains(QStringLiteral("those that could be read last.")))
      << files.accessibleName().toStdString();
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  EXPECT_TRUE(files.isVisible()) << "it stays";
  press(MessageSubject::files, MessageAction::restoreCopy);
  EXPECT_EQ(stored(), good);
  EXPECT_EQ(pane.m_admin_nvkPort, 4500);
  EXPECT_FALSE(files.isVisible());
  EXPECT_TRUE(said().startsWith(QStringLiteral("Done: The copy"))) << said().toStdString();
  EXPECT_TRUE(said().contains(QStringLiteral("svr.cfg.damaged"))) << said().toStdString();
}

TEST_F(Changes, ADamagedFileIsNotWrittenOverUntilAPersonSaysSo) {
  openEverything();
  desktop.computer.fileSystem.put(kServerFile, "<plist><dict>");
  noticeFiles();
  EXPECT_FALSE(counter().isVisible()) << "nobody has edited anything";
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkSound");
  {
    Answers cancel(Qt::Key_Escape);
    panel.click("ib_button_Apply");
    ASSERT_EQ(cancel.seen.size(), 1u);
    EXPECT_EQ(cancel.seen[0].title, QStringLiteral("Damaged Settings File"));
  }
  EXPECT_EQ(said(), QStringLiteral("Note: Nothing was saved.")) << "the damage is said already";
  EXPECT_EQ(stored(), "<plist><dict>");
  Answers replace(QStringLiteral("Replace File"));
  panel.click("ib_button_Apply");
  EXPECT_EQ(replace.seen.size(), 1u);
  EXPECT_TRUE(bytesAreIn(stored(), "SoundOutputEnabled"));
  EXPECT_FALSE(line(MessageSubject::files).isVisible());
}

TEST_F(Changes, AMessageAboutFilesThatWasClosedStaysClosedUntilItSaysMore) {
  openEverything();
  desktop.computer.fileSystem.put(kServerFile, "<plist><dict>");
  noticeFiles();
  MessageLine& files = line(MessageSubject::files);
  QTest::mouseClick(files.findChild<QWidget*>(QStringLiteral("message_files_close")), Qt::LeftButton);
  EXPECT_FALSE(files.isVisible());
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkSound");
  Answers cancel(Qt::Key_Escape);
  panel.click("ib_button_Apply");
  EXPECT_EQ(cancel.seen.size(), 1u);
  EXPECT_FALSE(files.isVisible());
}

// ---- The lock

TEST_F(Changes, ADeniedUnlockIsSaidAndCanBeTriedAgain) {
  desktop.computer.authorization.setInteractiveGranted(false);
  panel.unlock();
  EXPECT_TRUE(said().startsWith(QStringLiteral("Failed: The lock was not opened")));
  desktop.computer.authorization.setInteractiveGranted(true);
  press(MessageSubject::outcome, MessageAction::retry);
  EXPECT_TRUE(pane.authorized());
  EXPECT_EQ(said(), QString());
}

TEST_F(Changes, ADeniedUnlockSaysWhy) {
  desktop.computer.authorization.setInteractiveGranted(false);
  desktop.computer.authorization.setRefusal(AuthorizationRefusal::noAgent);
  panel.unlock();
  EXPECT_TRUE(said().startsWith(QStringLiteral("Failed: The lock was not opened"))) << said().toStdString();
  EXPECT_TRUE(said().contains(text(sentenceOf(AuthorizationRefusal::noAgent)))) << said().toStdString();
}

TEST_F(Changes, ACancelledUnlockIsNoFailure) {
  desktop.computer.authorization.setInteractiveGranted(false);
  desktop.computer.authorization.setRefusal(AuthorizationRefusal::dismissed);
  panel.unlock();
  EXPECT_EQ(line(MessageSubject::outcome).message().kind, MessageKind::note);
  EXPECT_TRUE(said().contains(text(sentenceOf(AuthorizationRefusal::dismissed)))) << said().toStdString();
}

TEST_F(Changes, WhatLockingAppliedIsSaid) {
  openEverything();
  typePort(QStringLiteral("4500"));
  Answers apply(QStringLiteral("Apply now"));
  panel.click("ib_button_Auth");
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_TRUE(bytesAreIn(stored(), "4500"));
  EXPECT_TRUE(said().contains(QStringLiteral("Saved the server settings."))) << said().toStdString();
}

}  // namespace
}  // namespace norvik::desktop
