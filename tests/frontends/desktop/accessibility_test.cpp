// What a screen reader says: every interactive widget has a name, which follows its words, and the role of
// its kind.
#include <QAccessible>
#include <QCheckBox>
#include <QLineEdit>
#include <QSet>
#include <map>

#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/collision_dialog.h"
#include "src/frontends/shared/interface/value_words.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

bool isInteractive(QAccessible::Role role) {
  static const QSet<QAccessible::Role> kRoles{
      QAccessible::PushButton, QAccessible::CheckBox,     QAccessible::RadioButton, QAccessible::Slider,
      QAccessible::ComboBox,   QAccessible::EditableText, QAccessible::List,        QAccessible::ListItem,
      QAccessible::ScrollBar,  QAccessible::SpinBox,      QAccessible::PageTab,     QAccessible::MenuItem,
      QAccessible::ButtonMenu, QAccessible::Table,        QAccessible::Tree};
  return kRoles.contains(role);
}

class Accessibility : public SimulatedPanel {
 protected:
  void walk(QAccessibleInterface* item) {
    if (item == nullptr || item->state().invisible) return;
    if (isInteractive(item->role())) {
      ++interactive;
      const QObject* object = item->object();
      EXPECT_FALSE(item->text(QAccessible::Name).isEmpty())
          << "role " << item->role() << " " << (object != nullptr ? object->objectName().toStdString() : "");
    }
    for (int i = 0; i < item->childCount(); ++i) walk(item->child(i));
  }

  QString name(const char* outlet) {
    return QAccessible::queryAccessibleInterface(panel.widget(outlet))->text(QAccessible::Name);
  }

  int interactive = 0;
};

TEST_F(Accessibility, NothingInteractiveIsWithoutAName) {
  openEverything();
  for (const QSize size : {panel.window.size(), panel.window.minimumSizeHint()}) {
    panel.window.resize(size);
    for (const TabDescription& tab : panel.interface.tabs) {
      SCOPED_TRACE(tab.label);
      const std::size_t colon = tab.label.find(':');
      panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
      interactive = 0;
      walk(QAccessible::queryAccessibleInterface(&panel.window));
      EXPECT_GE(interactive, 8);
    }
  }
}

TEST_F(Accessibility, NothingInMessagesAndDialogsIsWithoutAName) {
  openEverything();
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  MessageLine& outcome = panel.window.messages().line(MessageSubject::outcome);
  outcome.showMessage(
      {MessageKind::failure, "It failed.", {MessageAction::retry, MessageAction::showDetails}, "Why."});
  panel.settle();
  walk(QAccessible::queryAccessibleInterface(&outcome));
  EXPECT_EQ(interactive, 3) << "two actions and the close button";
  const Collision collision{"nvk.port", "Port number", "Norvik clients", "4074", "4600", "4500"};
  CollisionDialog asks(&panel.window, {collision});
  ChangesDialog lists(&panel.window, {[this] { return panel.change.preview(); }, {}, {}});
  for (QDialog* dialog : {static_cast<QDialog*>(&asks), static_cast<QDialog*>(&lists)}) {
    dialog->show();
    panel.settle();
    interactive = 0;
    walk(QAccessible::queryAccessibleInterface(dialog));
    EXPECT_GE(interactive, 4) << dialog->windowTitle().toStdString();
    EXPECT_FALSE(dialog->windowTitle().isEmpty());
    dialog->hide();
  }
}

TEST_F(Accessibility, TheDescriptionIsTheHelp) {
  for (const ControlDescription* control : panel.interface.controls()) {
    const QWidget* widget = panel.widget(control->outlet.c_str());
    if (control->outlet.find("tview") != std::string::npos) continue;
    EXPECT_EQ(widget->toolTip(), text(control->help)) << control->outlet;
    QString expected = text(control->help);
    if (control->kind == ControlKind::slider) {
      const int64_t value = panel.control(control->outlet.c_str()).truncatedValue();
      expected = text(spokenValue(*control, value)) + QStringLiteral(". ") + expected;
    }
    EXPECT_EQ(widget->accessibleDescription(), expected) << control->outlet;
  }
}

TEST_F(Accessibility, ALabelIsReadWithWhatItSays) {
  EXPECT_EQ(name("ib_admin_label_svrState"), QStringLiteral("Server state: Stopped"));
  EXPECT_EQ(name("ib_admin_edbox_maxFSoft"), QStringLiteral("Files for each program: 1024"));
}

TEST_F(Accessibility, AButtonIsReadAsItIsTitled) {
  const char* const start = "ib_admin_button_svrStart";
  const char* const adjust = "ib_admin_button_maxFAdjust";
  EXPECT_EQ(name(start), QStringLiteral("Start"));
  openEverything();
  EXPECT_EQ(name(start), QStringLiteral("Stop"));
  panel.choosePageOf(adjust);
  EXPECT_EQ(name(adjust), QStringLiteral("Adjust"));
  panel.click(adjust);
  EXPECT_EQ(name(adjust), QStringLiteral("Revert"));
  panel.control(adjust).setTitle("Reset");
  EXPECT_EQ(name(adjust), QStringLiteral("Reset"));
  EXPECT_EQ(name("ib_button_Help"), QStringLiteral("Help"));
}

TEST_F(Accessibility, EveryKindHasItsRole) {
  openEverything();
  const std::map<ControlKind, QAccessible::Role> roles{{ControlKind::checkBox, QAccessible::CheckBox},
                                                       {ControlKind::radioButton, QAccessible::RadioButton},
                                                       {ControlKind::slider, QAccessible::Slider},
                                                       {ControlKind::popUp, QAccessible::ComboBox},
                                                       {ControlKind::pushButton, QAccessible::PushButton},
                                                       {ControlKind::lockButton, QAccessible::PushButton}};
  for (const ControlDescription* control : panel.interface.controls()) {
    const auto role = roles.find(control->kind);
    if (role == roles.end()) continue;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(panel.widget(control->outlet.c_str()))->role(),
              role->second)
        << control->outlet;
  }
}

TEST_F(Accessibility, APanelOfAQuestionIsNamedToo) {
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  Answers answers(QStringLiteral("Discard"));
  panel.window.close();
  ASSERT_EQ(answers.seen.size(), 1u);
  EXPECT_EQ(answers.seen[0].buttons.size(), 3);
}

}  // namespace
}  // namespace norvik::desktop
