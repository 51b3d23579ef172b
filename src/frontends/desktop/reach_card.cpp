// A line for each service, and under it what to do.
#include "src/frontends/desktop/reach_card.h"

#include <QGridLayout>
#include <QLabel>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/secondary_label.h"
#include "src/frontends/desktop/status_icon.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::desktop {

namespace {

MessageKind kindOfReach(Reach reach) {
  switch (reach) {
    case Reach::reachable:
      return MessageKind::done;
    case Reach::notReachable:
      return MessageKind::failure;
    case Reach::notKnown:
      return MessageKind::progress;
    case Reach::switchedOff:
      return MessageKind::note;
  }
  return MessageKind::note;
}

QString adviceOf(const ServiceReach& service) {
  const RungResult* failed = service.failed();
  return failed != nullptr && service.reach == Reach::notReachable ? text(failed->advice) : QString();
}

}  // namespace

ReachCard::ReachCard(QWidget* parent)
    : QWidget(parent),
      lines_(new QVBoxLayout),
      button_(new QPushButton(text(translated(reach_texts::kSteps)), this)) {
  setObjectName(QStringLiteral("reachCard"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(lines_);
  column->addWidget(button_, 0, Qt::AlignLeft);
  button_->setObjectName(QStringLiteral("reachSteps"));
  button_->setAutoDefault(false);
  button_->setToolTip(translatedText(reach_texts::kHelp));
  button_->setAccessibleDescription(translatedText(reach_texts::kHelp));
  clickAtMnemonic(button_);
}

void ReachCard::addLine() {
  auto* line = new QWidget(this);
  auto* grid = new QGridLayout(line);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(1, 1);
  Line& added = shown_.emplace_back();
  added.icon = new StatusIcon(line);
  grid->addWidget(added.icon, 0, 0, Qt::AlignTop);
  added.sentence = new QLabel(line);
  added.sentence->setObjectName(QStringLiteral("reachResult"));
  added.sentence->setTextFormat(Qt::PlainText);
  added.sentence->setWordWrap(true);
  added.sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
  grid->addWidget(added.sentence, 0, 1);
  added.advice = new SecondaryLabel(QString(), line);
  added.advice->setObjectName(QStringLiteral("reachAdvice"));
  added.advice->setWordWrap(true);
  grid->addWidget(added.advice, 1, 1);
  lines_->addWidget(line);
}

void ReachCard::showLine(const Line& line, MessageKind kind, const QString& words, const QString& advice) {
  line.icon->setKind(kind);
  if (line.sentence->text() != words) line.sentence->setText(words);
  if (line.advice->text() != advice) line.advice->setText(advice);
  line.advice->setVisible(!advice.isEmpty());
}

void ReachCard::showServices(const std::vector<ServiceReach>& services) {
  const std::size_t count = std::max<std::size_t>(services.size(), 1);
  while (shown_.size() < count) addLine();
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    shown_[i].sentence->parentWidget()->setVisible(i < count);
    if (i < services.size())
      showLine(shown_[i], kindOfReach(services[i].reach), text(reachSentence(services[i])),
               adviceOf(services[i]));
  }
  if (services.empty())
    showLine(shown_.front(), MessageKind::progress, text(translated(reach_texts::kLooking)), QString());
}

}  // namespace norvik::desktop
