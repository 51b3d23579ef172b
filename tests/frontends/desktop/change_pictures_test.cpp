// The messages and the dialogs around a change, as they look: nothing of them is cut off, in light and in
// dark colours. With NORVIK_PICTURES=DIR the pictures are written to that folder, for documents.
#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/collision_dialog.h"
#include "src/frontends/desktop/theme.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class ChangePictures : public SimulatedPanel, public testing::WithParamInterface<bool> {
 protected:
  ChangePictures() { GetParam() ? useDarkTheme(*qApp) : useDesktopTheme(*qApp); }
  ~ChangePictures() override {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QPalette());
  }

  void take(QWidget& widget, const QString& name) {
    panel.settle();
    expectNothingCutOff(widget);
    keep(widget.grab(), name);
  }

  // The window with a menu that is open over it, which a screen has in a window of its own.
  void takeWithMenu(const QMenu& menu, const QString& name) {
    QPixmap picture = panel.window.grab();
    QPainter painter(&picture);
    painter.drawPixmap(panel.window.mapFromGlobal(menu.pos()), const_cast<QMenu&>(menu).grab());
    painter.end();
    keep(picture, name);
  }

  static void keep(const QPixmap& picture, const QString& name) {
    EXPECT_FALSE(picture.isNull());
    const QString folder = qEnvironmentVariable("NORVIK_PICTURES");
    if (folder.isEmpty()) return;
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString theme = GetParam() ? QStringLiteral("-dark") : QString();
    EXPECT_TRUE(picture.save(QDir(folder).filePath(name + theme + QStringLiteral(".png"))));
  }

  static void expectNothingCutOff(const QWidget& widget) {
    for (const auto* label : widget.findChildren<QLabel*>()) {
      if (!label->isVisible() || label->text().isEmpty()) continue;
      EXPECT_GE(label->width(), label->minimumSizeHint().width()) << label->text().toStdString();
      const int needed =
          label->wordWrap() ? label->heightForWidth(label->width()) : label->minimumSizeHint().height();
      EXPECT_GE(label->height(), needed) << label->text().toStdString();
    }
    for (const auto* button : widget.findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().isEmpty()) continue;
      EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text().toStdString();
    }
  }

  // Takes a picture of the dialog that comes up, and closes it.
  template <typename Act>
  void takeDialog(const QString& name, Act act) {
    int taken = 0;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      looks.stop();
      ++taken;
      take(*dialog, name);
      dialog->reject();
    });
    looks.start(20);
    act();
    EXPECT_EQ(taken, 1) << name.toStdString();
  }

  void edit() {
    openEverything();
    panel.choosePage("user", "Mouse");
    panel.click("ib_user_chkbox_mseSwap");
    panel.choosePage("admin", "Norvik clients");
    panel.type("ib_admin_edbox_nvkPort", QStringLiteral("4500"));
    panel.click("ib_admin_chkbox_nvkSound");
  }
  void saveElsewhere() {
    const PropertyList::Dictionary nvk{{"PortNumber", int64_t{4600}}, {"SoundOutputEnabled", false}};
    const PropertyList::Dictionary rdp{{"PortNumber", int64_t{3390}}, {"SoundOutputEnabled", true}};
    desktop.computer.fileSystem.put("/etc/norvik/svr.cfg",
                                    encodeXmlPropertyList(PropertyList::Dictionary{
                                        {"SingleUser", true}, {"NVKService", nvk}, {"RDPService", rdp}}));
  }
  MessageLine& line(MessageSubject subject) { return panel.window.messages().line(subject); }
};

TEST_P(ChangePictures, TheListOfChanges) {
  edit();
  takeDialog(QStringLiteral("window-changes"), [this] { panel.changes->showChanges(); });
}

TEST_P(ChangePictures, TheMenuOfARow) {
  edit();
  QWidget* box = panel.widget("ib_admin_chkbox_nvkPort");
  const QPoint place(box->width() / 2, box->height());
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, box->mapToGlobal(place));
  QApplication::sendEvent(box, &event);
  panel.settle();
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  expectNothingCutOff(panel.window);
  takeWithMenu(*menu, QStringLiteral("window-row-menu"));
  menu->close();
}

TEST_P(ChangePictures, ASearch) {
  panel.press(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(panel.widget("searchField"), QStringLiteral("speed"));
  panel.settle();
  take(panel.window, QStringLiteral("window-search"));
}

TEST_P(ChangePictures, AnImport) {
  openEverything();
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("office.json"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(R"({"norvikProfile": 1, "settings": {"nvk.port": 5000, "nvk.sound": true, "image.depth": 8}})");
  file.close();
  panel.profile->chooseExisting = [&path] { return path; };
  takeDialog(QStringLiteral("window-import"), [this] { panel.profile->importProfile(); });
  takeDialog(QStringLiteral("window-export"), [this] { panel.profile->exportProfile(); });
}

TEST_P(ChangePictures, TheHistory) {
  edit();
  panel.click("ib_button_Apply");
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkSound");
  panel.click("ib_button_Apply");
  QTimer down;
  QObject::connect(&down, &QTimer::timeout, &down, [] {
    auto* dialog = QApplication::activeModalWidget();
    auto* list =
        dialog != nullptr ? dialog->findChild<QTreeWidget*>(QStringLiteral("historyEntries")) : nullptr;
    if (list != nullptr) list->setCurrentItem(list->topLevelItem(1));
  });
  down.start(5);
  takeDialog(QStringLiteral("window-history"), [this] { panel.history->showHistory(); });
}

TEST_P(ChangePictures, ATrial) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("4500"));
  panel.trial->apply();
  line(MessageSubject::outcome).clear();
  desktop.computer.clock.sleep(18'000'000);
  panel.trial->tick();
  ASSERT_TRUE(line(MessageSubject::trial).isVisible());
  take(panel.window, QStringLiteral("window-trial"));
}

TEST_P(ChangePictures, ACollision) {
  edit();
  saveElsewhere();
  takeDialog(QStringLiteral("window-collision"), [this] { panel.click("ib_button_Apply"); });
}

TEST_P(ChangePictures, TheQuestionBeforeLeaving) {
  edit();
  takeDialog(QStringLiteral("window-leaving"), [this] { panel.window.close(); });
}

TEST_P(ChangePictures, Details) {
  edit();
  desktop.computer.tools.setFailure("/usr/sbin/nvkservice", "apply", 3, "the daemon does not answer");
  panel.click("ib_button_Apply");
  take(panel.window, QStringLiteral("window-message-failure"));
  takeDialog(QStringLiteral("window-details"),
             [this] { line(MessageSubject::outcome).acted(MessageAction::showDetails); });
}

TEST_P(ChangePictures, ARefusedPort) {
  edit();
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("70000"));
  panel.click("ib_button_Apply");
  ASSERT_TRUE(line(MessageSubject::outcome).isVisible());
  take(panel.window, QStringLiteral("window-refused"));
}

TEST_P(ChangePictures, ASuccess) {
  edit();
  panel.click("ib_button_Apply");
  ASSERT_EQ(line(MessageSubject::outcome).message().kind, MessageKind::done);
  take(panel.window, QStringLiteral("window-saved"));
}

TEST_P(ChangePictures, ADamagedFile) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("4500"));
  panel.click("ib_button_Apply");
  desktop.computer.ports.setServerPorts({4999, 3390});
  desktop.computer.fileSystem.put("/etc/norvik/svr.cfg", "<plist><dict>");
  panel.changes->filesChanged();
  QTest::qWait(250);
  ASSERT_TRUE(line(MessageSubject::files).isVisible());
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible()) << "nobody should take up a damaged file";
  take(panel.window, QStringLiteral("window-damaged"));
}

TEST_P(ChangePictures, WhatIsInForce) {
  openEverything();
  panel.choosePage("admin", "Server");
  desktop.computer.ports.setServerPorts({4999, 3390});
  panel.server->lookAtForce();
  ASSERT_TRUE(line(MessageSubject::inForce).isVisible());
  take(panel.window, QStringLiteral("window-in-force"));
}

TEST_P(ChangePictures, AStart) {
  panel.unlock();
  panel.choosePage("admin", "Server");
  desktop.computer.service.setStartDelay(9);
  bool taken = false;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
    if (taken || !desktop.busy.isBusy() || panel.as<QLabel>("ib_admin_label_svrState")->text().size() < 16)
      return;
    taken = true;
    take(panel.window, QStringLiteral("window-starting"));
  });
  looks.start(2);
  panel.click("ib_admin_button_svrStart");
  EXPECT_TRUE(taken);
}

TEST_P(ChangePictures, TheLadder) {
  desktop.computer.host.setAddresses({"127.0.0.1", "192.0.2.7"});
  desktop.computer.network.setName("mac.example.com", {"192.0.2.7"});
  openEverything();
  panel.server->lookAtForce();
  takeDialog(QStringLiteral("window-reach"), [this] { panel.click("reachButton"); });
}

TEST_P(ChangePictures, TheLadderWithItsReason) {
  desktop.computer.ports.hold(4074, 812, "nginx");
  openEverything();
  panel.server->lookAtForce();
  take(panel.window, QStringLiteral("window-not-reached"));
  takeDialog(QStringLiteral("window-reach-reason"), [this] { panel.click("reachButton"); });
}

INSTANTIATE_TEST_SUITE_P(Themes, ChangePictures, testing::Bool(),
                         [](const auto& theme) { return theme.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace norvik::desktop
