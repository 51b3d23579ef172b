// The window while the system asks a person for a password: it paints, nothing is clicked or typed, and the
// answer arrives.
#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>

#include "src/frontends/desktop/desktop_computer.h"
#include "tests/support/polkit_stand_in.h"

namespace norvik::desktop {
namespace {

class PaintedButton : public QPushButton {
 public:
  int painted = 0;

 private:
  void paintEvent(QPaintEvent* event) override {
    ++painted;
    QPushButton::paintEvent(event);
  }
};

struct Asking : testing::Test {
  PolkitStandIn polkit;
  DesktopComputer computer{options()};
  AuthorizationService& service = computer.platform().authorization;

  static LinuxComputerOptions options() {
    LinuxComputerOptions options;
    options.systemRights = true;
    options.superUser = false;
    return options;
  }
  OSStatus unlock() {
    const AuthorizationItem right{"system.privilege.admin", "", 0};
    AuthorizationRef reference = nullptr;
    service.AuthorizationCreate({}, 0, reference);
    return service.AuthorizationCopyRights(reference, {&right, 1}, kAuthorizationFlagInteractionAllowed);
  }
  AuthorizationRefusal refusal() { return computer.services().refusals.lastRefusal(); }
};

void click(QWidget* widget) {
  const QPointF at = widget->rect().center();
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
    QCoreApplication::postEvent(widget, new QMouseEvent(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                                                        Qt::LeftButton, Qt::NoModifier));
}

TEST_F(Asking, TheWindowPaintsAndClicksAreDropped) {
  PaintedButton button;
  int clicks = 0;
  QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
  button.show();
  int passes = 0;
  QTimer pass;
  QObject::connect(&pass, &QTimer::timeout, [&] {
    button.update();
    click(&button);
    if (++passes == 10) polkit.answer(PolkitStandIn::Answer::granted);
  });
  pass.start(10);
  button.painted = 0;
  EXPECT_EQ(unlock(), errAuthorizationSuccess);
  pass.stop();
  EXPECT_EQ(polkit.questions(), 1);
  EXPECT_GE(passes, 10);
  EXPECT_GE(button.painted, 3);
  EXPECT_EQ(clicks, 0);
  click(&button);
  QCoreApplication::processEvents();
  EXPECT_EQ(clicks, 1);
}

TEST_F(Asking, EachReasonIsKnownToTheWindow) {
  using Answer = PolkitStandIn::Answer;
  polkit.answer(Answer::dismissed);
  EXPECT_EQ(unlock(), errAuthorizationDenied);
  EXPECT_EQ(refusal(), AuthorizationRefusal::dismissed);
  polkit.answer(Answer::noAgent);
  EXPECT_EQ(unlock(), errAuthorizationDenied);
  EXPECT_EQ(refusal(), AuthorizationRefusal::noAgent);
  polkit.answer(Answer::refused);
  EXPECT_EQ(unlock(), errAuthorizationDenied);
  EXPECT_EQ(refusal(), AuthorizationRefusal::refused);
  polkit.answer(Answer::granted);
  EXPECT_EQ(unlock(), errAuthorizationSuccess);
  EXPECT_EQ(refusal(), AuthorizationRefusal::none);
}

}  // namespace
}  // namespace norvik::desktop
