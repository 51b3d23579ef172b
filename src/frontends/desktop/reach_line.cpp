// A dot and a label that gives way.
#include "src/frontends/desktop/reach_line.h"

#include <QHBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::desktop {

ReachLine::ReachLine(const NVKServerPrefs& pane, QWidget* parent)
    : QWidget(parent),
      dot_(new StateDot(pane, this)),
      label_(new QLabel(this)),
      button_(new QPushButton(translatedText(reach_texts::kTitle), this)) {
  setObjectName(QStringLiteral("reachLine"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  dot_->setObjectName(QStringLiteral("reachDot"));
  label_->setObjectName(QStringLiteral("reachText"));
  label_->setTextFormat(Qt::PlainText);
  label_->setMinimumWidth(1);
  button_->setObjectName(QStringLiteral("reachButton"));
  button_->setAutoDefault(false);
  button_->setToolTip(translatedText(reach_texts::kHelp));
  clickAtMnemonic(button_);
  row->addWidget(dot_);
  row->addWidget(label_, 1);
  showLine(text(paneText(pane.ib_admin_label_svrState.stringValue())));  // until somebody has looked
}

void ReachLine::showLine(const QString& line) {
  dot_->showModel();
  if (line == line_) return;
  line_ = line;
  label_->setToolTip(line);
  button_->setAccessibleDescription(
      text(sentence("{1}. {2}", {line.toStdString(), translated(reach_texts::kHelp)})));
  fit();
}

void ReachLine::fit() {
  label_->setText(label_->fontMetrics().elidedText(line_, Qt::ElideRight, label_->width()));
}

void ReachLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layout()->activate();
  fit();
}

}  // namespace norvik::desktop
