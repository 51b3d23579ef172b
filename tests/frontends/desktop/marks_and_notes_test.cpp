// What is beside the controls: the mark of a setting that Apply will change, and the note of an invalid port.
#include <QLabel>
#include <QPushButton>

#include "src/frontends/desktop/change_mark.h"
#include "src/frontends/desktop/note_label.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Marks : public SimulatedPanel {
 protected:
  // The marks that are on, on the page that shows.
  int shown() {
    int count = 0;
    for (const ChangeMark* mark : all()) count += mark->isVisible() && mark->isOn() ? 1 : 0;
    return count;
  }

  QList<ChangeMark*> all() {
    QList<ChangeMark*> marks;
    for (auto* mark : panel.window.findChildren<QWidget*>(QStringLiteral("changeMark"))) {
      marks += static_cast<ChangeMark*>(mark);
    }
    return marks;
  }
};

TEST_F(Marks, ShowWhatApplyWillChange) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_EQ(shown(), 0);
  panel.click("ib_admin_chkbox_nvkClipb");
  EXPECT_EQ(shown(), 1);
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  EXPECT_EQ(shown(), 2);
  EXPECT_TRUE(panel.widget("ib_admin_edbox_nvkPort")
                  ->accessibleDescription()
                  .endsWith(text(panel.interface.changedHelp)));
  panel.click("ib_admin_chkbox_nvkClipb");
  EXPECT_EQ(shown(), 1);
  panel.click("ib_button_Apply");
  EXPECT_EQ(shown(), 0);
}

TEST_F(Marks, NothingOfALockedAdministratorIsMarked) {
  openEverything();
  panel.choosePage("admin", "Image");
  panel.drag("ib_admin_slider_imgDept", 8);
  EXPECT_EQ(shown(), 1);
  pane.deauthorize();
  panel.tick();
  for (const ChangeMark* mark : all()) EXPECT_FALSE(mark->isOn());
}

class PortNote : public SimulatedPanel {
 protected:
  QString noteFor(const QString& typed) {
    panel.type("ib_admin_edbox_nvkPort", typed);
    return note()->words();
  }

  NoteLabel* note() { return static_cast<NoteLabel*>(panel.widget("ib_admin_edbox_nvkPort_note")); }
};

TEST_F(PortNote, SaysWhatIsWrong) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_EQ(noteFor(QStringLiteral("5000")), QString());
  EXPECT_EQ(noteFor(QStringLiteral("abc")),
            QStringLiteral("A port is a whole number from 1 to 65535, not \"abc\"."));
  EXPECT_EQ(noteFor(QStringLiteral("65536")),
            QStringLiteral("A port is a whole number from 1 to 65535, not \"65536\"."));
  EXPECT_NE(noteFor(QStringLiteral("3390")), QString()) << "the other service's";
  EXPECT_NE(noteFor(QStringLiteral("4321")), QString()) << "in use";
  EXPECT_EQ(panel.widget("ib_admin_edbox_nvkPort")->accessibleDescription().left(9),
            QStringLiteral("Port 4321"));
  EXPECT_TRUE(panel.widget("ib_button_Apply")->isEnabled()) << "the pane's own rules stay";
  EXPECT_EQ(noteFor(QStringLiteral("5001")), QString());
}

TEST_F(PortNote, IsEmptyForAFieldThatCannotBeEdited) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_NE(noteFor(QStringLiteral("abc")), QString());
  panel.click("ib_admin_chkbox_nvkPort");
  EXPECT_EQ(note()->words(), QString());
}

TEST_F(PortNote, LeavesThePageWhereItIs) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  const QWidget* below = panel.widget("ib_admin_chkbox_nvkClipb");
  EXPECT_EQ(noteFor(QStringLiteral("5000")), QString());
  const QPoint before = below->mapTo(&panel.window, QPoint());
  EXPECT_NE(noteFor(QStringLiteral("65536")), QString());
  EXPECT_EQ(below->mapTo(&panel.window, QPoint()), before);
  EXPECT_FALSE(note()->visibleRegion().isEmpty());
}

TEST_F(PortNote, BreaksAWordThatIsWiderThanThePage) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  const QString typed(300, QLatin1Char('7'));
  EXPECT_TRUE(noteFor(typed).contains(typed));
  EXPECT_LE(panel.window.pages()[3]->width(), panel.as<QWidget>("ib_tview_confView")->width());
  EXPECT_GE(note()->width(), note()->minimumSizeHint().width());
}

class Ends : public SimulatedPanel {};

TEST_F(Ends, AreGreyedWithTheSlider) {
  panel.choosePage("user", "Image");
  const auto colorOf = [this](const QString& words) {
    for (const auto* label : panel.window.pages().front()->findChildren<QLabel*>()) {
      if (label->text().remove(QLatin1Char('&')) == words)
        return label->palette().color(label->foregroundRole());
    }
    return QColor();
  };
  const QString caption = QStringLiteral("Colour depth");
  const QString end = QStringLiteral("Fewer colours");
  ASSERT_TRUE(panel.widget("ib_user_slider_imgDept")->isEnabled());
  EXPECT_NE(colorOf(end), colorOf(caption));
  panel.click("ib_user_chkbox_imgDefs");
  ASSERT_FALSE(panel.widget("ib_user_slider_imgDept")->isEnabled());
  EXPECT_EQ(colorOf(end), colorOf(caption));
}

}  // namespace
}  // namespace norvik::desktop
