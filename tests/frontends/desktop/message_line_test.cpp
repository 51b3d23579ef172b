// The line above the pages: what it says and in which role, its buttons, what goes by itself and what stays,
// and that it never takes the keyboard focus.
#include "src/frontends/desktop/message_line.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "src/frontends/desktop/contrast.h"
#include "src/frontends/desktop/message_area.h"
#include "src/frontends/desktop/status_icon.h"
#include "src/frontends/desktop/theme.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

constexpr MessageKind kKinds[] = {MessageKind::done, MessageKind::note, MessageKind::warning,
                                  MessageKind::failure};

WindowMessage message(MessageKind kind, std::vector<MessageAction> actions = {}) {
  return {kind, "The file could not be written.", std::move(actions), {}};
}

class Messages : public SimulatedPanel {
 protected:
  MessageLine& outcome() { return panel.window.messages().line(MessageSubject::outcome); }

  QStringList visibleButtons() {
    QStringList words;
    for (const auto* button : outcome().findChildren<QAbstractButton*>()) {
      if (button->isVisible()) words += button->accessibleName();
    }
    return words;
  }
  QAbstractButton* button(std::string_view words) {
    for (auto* candidate : outcome().findChildren<QAbstractButton*>()) {
      if (candidate->accessibleName() == text(words) && candidate->isVisible()) return candidate;
    }
    ADD_FAILURE() << "no button " << words;
    return nullptr;
  }
  QAccessibleInterface* accessible() { return QAccessible::queryAccessibleInterface(&outcome()); }
};

TEST_F(Messages, NoneIsShownAtFirst) {
  for (const auto subject :
       {MessageSubject::files, MessageSubject::inForce, MessageSubject::others, MessageSubject::outcome})
    EXPECT_FALSE(panel.window.messages().line(subject).isVisible());
}

// All at once, and the window as small as it can be: it grows.
TEST_F(Messages, NothingOfTheirWordsIsCutOffInASmallWindow) {
  const QString words = QStringLiteral(
      "The server's settings file, /etc/norvik/svr.cfg, could not be written: No space left on device. Make "
      "sure that there is room on the disk and that you may write there, then apply again.");
  panel.window.resize(panel.window.minimumSizeHint());
  for (const auto subject :
       {MessageSubject::files, MessageSubject::inForce, MessageSubject::others, MessageSubject::outcome}) {
    panel.window.messages().line(subject).showMessage(
        {MessageKind::failure, words.toStdString(), {MessageAction::retry}, {}});
  }
  panel.settle();
  int lines = 0;
  for (const auto* label : panel.window.messages().findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    ++lines;
  }
  EXPECT_EQ(lines, 4);
}

TEST_F(Messages, AreShownWithWordsAndReadInTheirRole) {
  outcome().showMessage(message(MessageKind::failure));
  panel.settle();
  EXPECT_TRUE(outcome().isVisible());
  EXPECT_EQ(accessible()->text(QAccessible::Name), QStringLiteral("Failed: The file could not be written."));
  EXPECT_EQ(accessible()->role(), QAccessible::AlertMessage);
  outcome().showMessage(message(MessageKind::done));
  EXPECT_EQ(accessible()->text(QAccessible::Name), QStringLiteral("Done: The file could not be written."));
  EXPECT_EQ(accessible()->role(), QAccessible::StatusBar);
}

TEST_F(Messages, EachKindHasAShapeOfItsOwnThatStandsOut) {
  for (const bool dark : {false, true}) {
    dark ? useDarkTheme(*qApp) : useDesktopTheme(*qApp);
    QList<QImage> shapes;
    for (const MessageKind kind : kKinds) {
      QImage picture(32, 32, QImage::Format_ARGB32_Premultiplied);
      picture.fill(Qt::transparent);
      {
        QPainter painter(&picture);
        drawStatusIcon(painter, QRectF(0, 0, 32, 32), kind, panel.window.palette());
      }
      EXPECT_GE(contrastRatio(statusColor(kind, panel.window.palette()),
                              panel.window.palette().color(QPalette::Window)),
                desktop::kTextContrast);
      for (QRgb* pixel = reinterpret_cast<QRgb*>(picture.bits());
           pixel != reinterpret_cast<QRgb*>(picture.bits()) + 32 * 32; ++pixel)
        *pixel =
            qGray(*pixel) > 127 && qAlpha(*pixel) > 127 ? 1 : 0;  // the sign or the shape, without its colour
      EXPECT_FALSE(shapes.contains(picture));
      shapes += picture;
    }
  }
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication::setPalette(QPalette());
}

TEST_F(Messages, DoNotTakeTheFocus) {
  panel.widget("ib_button_Help")->setFocus();
  outcome().showMessage(message(MessageKind::failure, {MessageAction::retry}));
  panel.settle();
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_button_Help"));
}

TEST_F(Messages, TheButtonsAreThoseOfTheMessageAndActByMouseAndKey) {
  std::vector<MessageAction> acts;
  outcome().acted = [&acts](MessageAction action) { acts.push_back(action); };
  outcome().showMessage(message(MessageKind::failure, {MessageAction::retry, MessageAction::showDetails}));
  panel.settle();
  EXPECT_EQ(visibleButtons().size(), 3);
  QTest::mouseClick(button(titleOf(MessageAction::retry)), Qt::LeftButton);
  button(titleOf(MessageAction::showDetails))->setFocus();
  panel.press(Qt::Key_Return);
  EXPECT_EQ(acts, (std::vector<MessageAction>{MessageAction::retry, MessageAction::showDetails}));
  EXPECT_TRUE(outcome().isVisible());
}

TEST_F(Messages, AreReachedByTabFromTheSidebarAndClosedByAKey) {
  panel.choosePage("user", "Mouse");
  outcome().showMessage(message(MessageKind::failure, {MessageAction::retry}));
  panel.settle();
  panel.widget("ib_oview_confBar")->setFocus();
  panel.press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), button(titleOf(MessageAction::retry)));
  panel.press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), button(window_texts::kCloseMessage));
  panel.press(Qt::Key_Space);
  EXPECT_FALSE(outcome().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_user_chkbox_mseSwap"));
}

TEST_F(Messages, StayOutOfTheWayBackFromTheLockToTheSidebar) {
  outcome().showMessage(message(MessageKind::failure, {MessageAction::retry}));
  panel.settle();
  panel.widget("ib_button_Auth")->setFocus();
  for (const char* next :
       {"reachButton", "ib_button_Help", "moreButton", "searchField", "ib_oview_confBar"}) {
    panel.press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), panel.widget(next));
  }
}

TEST_F(Messages, OfSuccessGoAtTheNextEditAndOthersStay) {
  panel.choosePage("user", "Mouse");
  for (const MessageKind kind : kKinds) {
    const bool passing = kind == MessageKind::done || kind == MessageKind::note;
    outcome().showMessage(message(kind));
    panel.click("ib_user_chkbox_mseSwap");
    EXPECT_EQ(outcome().isVisible(), !passing) << wordOf(kind);
  }
}

TEST_F(Messages, OfSuccessGoAfterAWhile) {
  outcome().showMessage(message(MessageKind::done));
  auto* timer = outcome().findChild<QTimer*>();
  ASSERT_TRUE(timer->isActive());
  EXPECT_GE(timer->interval(), 10000);
  timer->start(1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !outcome().isVisible(); }));
  outcome().showMessage(message(MessageKind::failure));
  EXPECT_FALSE(timer->isActive());
}

TEST_F(Messages, ALongSentenceWraps) {
  WindowMessage lengthy = message(MessageKind::warning);
  for (int i = 0; i < 8; ++i)
    lengthy.sentence += " The server's settings file, /etc/norvik/svr.cfg, is damaged.";
  outcome().showMessage(lengthy);
  panel.settle();
  auto* sentence = outcome().findChild<QLabel*>(QStringLiteral("message_outcome_sentence"));
  EXPECT_GE(sentence->height(), 3 * sentence->fontMetrics().height());
  EXPECT_GE(sentence->height(), sentence->heightForWidth(sentence->width()));
  EXPECT_LE(outcome().width(), panel.window.width());
}

TEST_F(Messages, ProgressHasABarAndNoButtons) {
  outcome().showProgress(QStringLiteral("Starting the server."), 3, 25);
  panel.settle();
  auto* bar = outcome().findChild<QProgressBar*>();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(bar->maximum(), 25);
  EXPECT_EQ(bar->value(), 3);
  EXPECT_EQ(visibleButtons(), QStringList());
  EXPECT_FALSE(bar->accessibleName().isEmpty());
  outcome().showMessage(message(MessageKind::done));
  EXPECT_FALSE(bar->isVisible());
}

}  // namespace
}  // namespace norvik::desktop
