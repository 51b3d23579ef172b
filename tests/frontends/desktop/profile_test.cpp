// Settings to a file and from one: what is written, what an import shows first, and that it applies nothing.
#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/shared/profile/profile.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class ProfileInWindow : public SimulatedPanel {
 protected:
  ProfileInWindow() {
    panel.profile->chooseNew = [this] { return path(); };
    panel.profile->chooseExisting = [this] { return path(); };
  }

  QString path() const { return folder.filePath(QStringLiteral("office.json")); }
  void put(const QByteArray& bytes) const {
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  ProfileReading written() const {
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly)) return {};
    return readProfile(file.readAll().toStdString(), settingsOf(panel.interface));
  }

  // Lets `act` use the dialog that `begin` opens.
  template <typename Begin, typename Act>
  void withDialog(Begin begin, Act act) {
    int seen = 0;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      looks.stop();
      ++seen;
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    looks.start(5);
    begin();
    EXPECT_EQ(seen, 1);
    panel.settle();
  }
  static void press(QDialog& dialog, const char* name) {
    auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
    ASSERT_NE(button, nullptr) << name;
    button->click();
  }
  static QStringList rowsOf(const QDialog& dialog) {
    QStringList rows;
    const auto* list = dialog.findChild<QTreeWidget*>();
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
      const QTreeWidgetItem* item = list->topLevelItem(i);
      rows += item->text(0) + QStringLiteral(": ") + item->text(2) + QStringLiteral(" > ") + item->text(3);
    }
    return rows;
  }
  void import(const std::function<void(QDialog&)>& act) {
    withDialog([this] { panel.profile->importProfile(); }, act);
  }
  const WindowMessage& outcome() { return panel.window.messages().line(MessageSubject::outcome).message(); }

  QTemporaryDir folder;
};

TEST_F(ProfileInWindow, ExportWritesWhatTheWindowShows) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  withDialog([this] { panel.profile->exportProfile(); }, [](QDialog& dialog) { press(dialog, "exportGo"); });
  const ProfileReading all = written();
  EXPECT_TRUE(all.faults.empty());
  EXPECT_GT(all.settings.size(), 25u);
  EXPECT_NE(std::ranges::find(all.settings, ProfileSetting{"nvk.port", 5000}), all.settings.end());
  EXPECT_EQ(outcome().kind, MessageKind::done);
  EXPECT_NE(outcome().sentence.find(path().toStdString()), std::string::npos);
  withDialog([this] { panel.profile->exportProfile(); },
             [](QDialog& dialog) {
               press(dialog, "exportPage");
               press(dialog, "exportChangedOnly");
               press(dialog, "exportGo");
             });
  const ProfileReading some = written();
  EXPECT_LT(some.settings.size(), 6u);
  for (const ProfileSetting& setting : some.settings)
    EXPECT_EQ(setting.name.rfind("nvk.", 0), 0u) << setting.name;
  EXPECT_NE(std::ranges::find(some.settings, ProfileSetting{"nvk.sound", 0}), some.settings.end());
}

TEST_F(ProfileInWindow, AFileThatCannotBeWrittenIsNamed) {
  panel.profile->chooseNew = [this] { return folder.filePath(QStringLiteral("no such folder/office.json")); };
  withDialog([this] { panel.profile->exportProfile(); }, [](QDialog& dialog) { press(dialog, "exportGo"); });
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  EXPECT_NE(outcome().sentence.find("no such folder/office.json could not be written"), std::string::npos)
      << outcome().sentence;
}

TEST_F(ProfileInWindow, FaultsAreShownByLineAndNothingIsChanged) {
  openEverything();
  put("{\"norvikProfile\": 1, \"settings\": {\n\"nvk.prot\": 5000}}");
  panel.profile->importProfile();
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  EXPECT_NE(outcome().sentence.find("line 2: unknown setting \"nvk.prot\""), std::string::npos)
      << outcome().sentence;
  put("{\"norvikProfile\": 1, \"settings\": {\n\"nvk.prot\": 5000,\n\"nvk.port\": 70000}}");
  panel.profile->importProfile();
  EXPECT_NE(outcome().details.find("line 3: "), std::string::npos) << outcome().details;
  EXPECT_NE(outcome().sentence.find("2 things"), std::string::npos) << outcome().sentence;
  EXPECT_TRUE(panel.change.pending().empty());
  panel.profile->chooseExisting = [this] { return folder.path(); };
  panel.profile->importProfile();
  EXPECT_EQ(outcome().kind, MessageKind::failure) << "a folder";
  panel.profile->chooseExisting = [this] { return folder.filePath(QStringLiteral("none.json")); };
  panel.profile->importProfile();
  EXPECT_NE(outcome().sentence.find("none.json could not be read"), std::string::npos) << outcome().sentence;
}

TEST_F(ProfileInWindow, WhatIsTakenOverIsPendingAndNotApplied) {
  openEverything();
  put(R"({"norvikProfile": 1, "settings": {"nvk.port": 5000, "nvk.sound": true, "nvk.clipboard": true}})");
  import([](QDialog& dialog) {
    EXPECT_EQ(rowsOf(dialog), QStringList({QStringLiteral("Port number: 4074 > 5000"),
                                           QStringLiteral("Play sound on the client: off > on")}));
});
EXPECT_TRUE(panel.change.pending().empty()) << "cancelled";
  import([](QDialog& dialog) { press(dialog, "importTakeOver");
  }  // namespace
);
EXPECT_EQ(panel.change.pending().size(), 2u);
EXPECT_EQ(pane.new_admin_nvkPort(), 5000);
EXPECT_EQ(pane.m_admin_nvkPort, 4074);
panel.click("ib_button_Apply");
EXPECT_EQ(pane.m_admin_nvkPort, 5000);
}  // namespace norvik::desktop

TEST_F(ProfileInWindow, OtherSettingsMayGoToTheirDefaults) {
  openEverything();
  put(R"({"norvikProfile": 1, "settings": {"nvk.port": 5000}})");
  import([](QDialog& dialog) {
    const qsizetype few = rowsOf(dialog).size();
  press(dialog, "importToDefaults");
  EXPECT_GT(rowsOf(dialog).size(), few);
  press(dialog, "importTakeOver");
});
EXPECT_EQ(pane.new_admin_nvkPort(), 5000);
EXPECT_EQ(pane.new_admin_rdpPort(), 3389);
EXPECT_EQ(pane.new_user_imgDefs(), 1);
}

TEST_F(ProfileInWindow, SettingsBehindTheLockNeedIt) {
  put(R"({"norvikProfile": 1, "settings": {"nvk.port": 5000, "user.mouse.swap": true}})");
  const auto takeOver = [](QDialog& dialog) {
    EXPECT_NE(static_cast<NoteLabel*>(dialog.findChild<QLabel*>(QStringLiteral("importNote")))->words(),
              QString());
    press(dialog, "importTakeOver");
  };
  desktop.computer.authorization.setInteractiveGranted(false);
  import(takeOver);
  EXPECT_FALSE(pane.authorized());
  EXPECT_TRUE(panel.change.pending().empty()) << "all or nothing";
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  desktop.computer.authorization.setInteractiveGranted(true);
  import(takeOver);
  EXPECT_TRUE(pane.authorized());
  EXPECT_EQ(panel.change.pending().size(), 2u);
}

TEST_F(ProfileInWindow, NothingToTakeOverIsSaid) {
  put(R"({"norvikProfile": 1, "settings": {"nvk.port": 4074}})");
  import([](QDialog& dialog) {
    EXPECT_EQ(rowsOf(dialog).size(), 0);
  EXPECT_FALSE(dialog.findChild<QAbstractButton*>(QStringLiteral("importTakeOver"))->isEnabled());
});
}

}  // namespace
}  // namespace norvik::desktop
