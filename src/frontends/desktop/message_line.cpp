// The layout of a message, its buttons, and how it is read.
#include "src/frontends/desktop/message_line.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/desktop/status_icon.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::desktop {

namespace {

// How long a message of success can be read.
constexpr std::chrono::seconds kPassingTime{12};
// Each kind of button once.
constexpr MessageAction kActions[] = {MessageAction::keep,        MessageAction::revert,
                                      MessageAction::showSetting, MessageAction::takeUp,
                                      MessageAction::restoreCopy, MessageAction::chooseValues,
                                      MessageAction::retry,       MessageAction::showDetails};
// Of the way from the window's colour to that of the kind.
constexpr double kTint = 0.12;
constexpr int kBarWidth = 3;
constexpr int kMargin = 6;

QColor tinted(const QColor& window, const QColor& color) {
  const auto mix = [](float from, float to) { return from + (to - from) * float(kTint); };
  return QColor::fromRgbF(mix(window.redF(), color.redF()), mix(window.greenF(), color.greenF()),
                          mix(window.blueF(), color.blueF()));
}

// Its role follows the message.
class AccessibleLine : public QAccessibleWidget {
 public:
  explicit AccessibleLine(MessageLine& line) : QAccessibleWidget(&line), line_(line) {}
  QAccessible::Role role() const override { return line_.accessibleRole(); }

 private:
  MessageLine& line_;
};

// The toolkit asks for a widget's accessible object by the names of its classes.
QAccessibleInterface* accessibleOf(const QString& /*className*/, QObject* object) {
  auto* line = dynamic_cast<MessageLine*>(object);
  return line != nullptr ? new AccessibleLine(*line) : nullptr;
}

}  // namespace

MessageLine::MessageLine(const QString& name, QWidget* parent)
    : QFrame(parent),
      icon_(new StatusIcon(this)),
      sentence_(new NoteLabel(this)),
      bar_(new QProgressBar(this)),
      passing_(new QTimer(this)) {
  static const bool kInstalled = (QAccessible::installFactory(accessibleOf), true);
  static_cast<void>(kInstalled);
  setObjectName(name);
  sentence_->setObjectName(name + QStringLiteral("_sentence"));
  sentence_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  bar_->setObjectName(name + QStringLiteral("_bar"));
  auto* row = new QHBoxLayout(this);
  auto* column = new QVBoxLayout;
  auto* actions = new QHBoxLayout;
  auto* beside = new QVBoxLayout;
  row->addLayout(beside);
  beside->addWidget(icon_);
  beside->addStretch();
  row->addLayout(column, 1);
  column->addWidget(sentence_);
  column->addWidget(bar_);
  column->addLayout(actions);
  column->addStretch();  // the sentence begins beside the icon
  for (const MessageAction action : kActions) {
    auto* button = buttons_.emplace_back(new QPushButton(withoutMnemonic(text(titleOf(action))), this));
    button->setObjectName(name + QStringLiteral("_") + QString::number(static_cast<int>(action)));
    button->setAccessibleName(text(titleOf(action)));
    button->setAutoDefault(false);
    actions->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, action] {
      if (acted) acted(action);
    });
  }
  actions->addStretch();
  close_ = new QToolButton(this);  // after the others in the order of the Tab key
  close_->setObjectName(name + QStringLiteral("_close"));
  row->addWidget(close_, 0, Qt::AlignTop);
  close_->setText(QStringLiteral("×"));
  close_->setAutoRaise(true);
  close_->setFocusPolicy(Qt::StrongFocus);
  close_->setAccessibleName(translatedText(window_texts::kCloseMessage));
  close_->setToolTip(translatedText(window_texts::kCloseMessage));
  // The first line is in the middle of the close button's height, and so is the icon.
  const int above = std::max(0, (close_->sizeHint().height() - fontMetrics().height()) / 2);
  beside->setContentsMargins(0, above, 0, 0);
  sentence_->setContentsMargins(0, above, 0, above);
  row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  connect(close_, &QToolButton::clicked, this, [this] {
    clear();
    if (closed) closed();
  });
  passing_->setSingleShot(true);
  connect(passing_, &QTimer::timeout, this, &MessageLine::clearPassing);
  hide();
}

void MessageLine::showMessage(const WindowMessage& message) {
  if (message.isEmpty()) return clear();
  message_ = message;
  bar_->hide();
  close_->show();
  present();
  passing_->stop();
  if (message_.isPassing()) passing_->start(kPassingTime);
}

void MessageLine::showLasting(const WindowMessage& message) {
  showMessage(message);
  close_->hide();
  sentence_->setAccessibleName(text(message.sentence));
}

void MessageLine::showSilently(const std::string& sentence) {
  message_.sentence = sentence;
  sentence_->setWords(text(sentence));
}

void MessageLine::showProgress(const QString& sentence, int done, int all) {
  message_ = {MessageKind::progress, sentence.toStdString(), {}, {}};
  bar_->setRange(0, all);
  bar_->setValue(done);
  bar_->setAccessibleName(sentence);
  bar_->setTextVisible(false);
  bar_->show();
  close_->hide();
  passing_->stop();
  present();
}

void MessageLine::present() {
  icon_->setKind(message_.kind);
  sentence_->setAccessibleName(QString());
  sentence_->setWords(text(message_.sentence));
  showButtons();
  show();
  announce();
  update();
}

void MessageLine::showButtons() {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const bool offered = std::ranges::find(message_.actions, kActions[i]) != message_.actions.end();
    buttons_[i]->setVisible(offered);
  }
}

void MessageLine::clear() {
  passing_->stop();
  if (isEmpty()) return;
  message_ = {};
  hide();
  setAccessibleName(QString());
}

void MessageLine::clearPassing() {
  if (message_.isPassing()) clear();
}

// The name says it all, as a screen reader may read nothing else.
void MessageLine::announce() {
  const QString name = text(norvik::sentence("{1}: {2}", {wordOf(message_.kind), message_.sentence}));
  if (name == accessibleName()) return;
  setAccessibleName(name);
  QAccessibleEvent event(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

QAccessible::Role MessageLine::accessibleRole() const {
  const bool alarms = message_.kind == MessageKind::warning || message_.kind == MessageKind::failure;
  return alarms ? QAccessible::AlertMessage : QAccessible::StatusBar;
}

void MessageLine::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) update();
}

// A tinted field with a bar of the kind's colour at its beginning.
void MessageLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QColor color = statusColor(message_.kind, palette());
  painter.fillRect(rect(), tinted(palette().color(QPalette::Window), color));
  const int x = layoutDirection() == Qt::RightToLeft ? width() - kBarWidth : 0;
  painter.fillRect(QRect(x, 0, kBarWidth, height()), color);
}

}  // namespace norvik::desktop
