// A tab for each service: its sentence, the answers as a grid, and the addresses beside the code.
#include "src/frontends/desktop/reach_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/qr_view.h"
#include "src/frontends/desktop/secondary_label.h"
#include "src/frontends/desktop/status_icon.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::desktop {

namespace {

constexpr int kLadderLetters = 100;
constexpr int kLadderLines = 36;

QLabel* wrapped(const QString& words, QWidget* parent) {
  auto* label = new QLabel(words, parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

void addAnswer(QGridLayout& grid, const RungResult& rung, QWidget* parent) {
  const int row = grid.rowCount();
  const bool isLookedAt = rung.verdict != Verdict::notLookedAt;
  if (isLookedAt) {
    auto* icon = new StatusIcon(parent);
    icon->setKind(kindOf(rung.verdict));
    grid.addWidget(icon, row, 0, Qt::AlignTop);
  }
  QLabel* answer = wrapped(text(answerOf(rung)), parent);
  answer->setObjectName(QStringLiteral("reachAnswer"));
  answer->setAccessibleName(text(sentence("{1}: {2}", {wordOf(rung.verdict), answerOf(rung)})));
  answer->setEnabled(isLookedAt);
  grid.addWidget(answer, row, 1);
  if (rung.advice.empty()) return;
  auto* advice = new SecondaryLabel(text(rung.advice), parent);
  advice->setWordWrap(true);
  grid.addWidget(advice, row + 1, 1);
}

void addAddress(QGridLayout& grid, const OfferedAddress& offered, QWidget* parent) {
  const int row = grid.rowCount();
  QLabel* address = wrapped(text(offered.text), parent);
  address->setWordWrap(false);
  grid.addWidget(address, row, 0);
  grid.addWidget(
      wrapped(text(sentence("{1}, {2}", {offered.address.network, offered.address.device})), parent), row, 1);
  auto* copy = new QPushButton(translatedText(reach_texts::kCopy), parent);
  copy->setAutoDefault(false);
  copy->setAccessibleName(text(sentence("{1} {2}", {translated(reach_texts::kCopy), offered.text})));
  QObject::connect(copy, &QPushButton::clicked, copy,
                   [words = address->text()] { QApplication::clipboard()->setText(words); });
  grid.addWidget(copy, row, 2);
}

// The addresses, and at their right the code of the best one.
void addAddresses(QVBoxLayout& column, const ServiceReach& service, QWidget* parent) {
  const auto isUsable = [](const OfferedAddress& offered) { return offered.isUsable; };
  if (std::ranges::none_of(service.addresses, isUsable)) return;
  column.addSpacing(parent->fontMetrics().height() / 2);
  auto* row = new QHBoxLayout;
  auto* list = new QVBoxLayout;
  QLabel* heading = wrapped(translatedText(reach_texts::kAddresses), parent);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  list->addWidget(heading);
  auto* grid = new QGridLayout;
  for (const OfferedAddress& offered : service.addresses) {
    if (offered.isUsable) addAddress(*grid, offered, parent);
  }
  grid->setColumnStretch(1, 1);
  list->addLayout(grid);
  list->addStretch(1);
  row->addLayout(list, 1);
  if (service.reach == Reach::reachable) {
    auto* code = new QrView(parent);
    code->showCode(service.address);
    code->setToolTip(translatedText(reach_texts::kScan));
    row->addWidget(code, 0, Qt::AlignTop);
  }
  column.addLayout(row);
}

}  // namespace

ReachDialog::ReachDialog(QWidget* window)
    : QDialog(window, Qt::Sheet), tabs_(new QTabWidget(this)), again_(new QPushButton(this)) {
  setObjectName(QStringLiteral("reachDialog"));
  setWindowTitle(translatedText(reach_texts::kTitle));
  setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(this);
  tabs_->setObjectName(QStringLiteral("reachTabs"));
  column->addWidget(tabs_, 1);
  auto* box = new QDialogButtonBox(this);
  again_->setObjectName(QStringLiteral("reachAgain"));
  again_->setAutoDefault(false);
  box->addButton(again_, QDialogButtonBox::ActionRole);
  box->addButton(translatedText(window_texts::kClose), QDialogButtonBox::RejectRole)->setDefault(true);
  column->addWidget(box);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(again_, &QPushButton::clicked, this, [this] {
    if (lookAgain) lookAgain();
  });
  setLooking(false);
  resize(kLadderLetters * fontMetrics().averageCharWidth(), kLadderLines * fontMetrics().lineSpacing());
}

void ReachDialog::setLooking(bool looking) {
  again_->setText(translatedText(looking ? reach_texts::kLooking : reach_texts::kLookAgain));
  again_->setEnabled(!looking);
}

QWidget* ReachDialog::makeTab(const ServiceReach& service) {
  auto* area = new QScrollArea(tabs_);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  QLabel* outcome = wrapped(text(reachSentence(service)), content);
  outcome->setObjectName(QStringLiteral("reachSentence"));
  QFont bold = outcome->font();
  bold.setBold(true);
  outcome->setFont(bold);
  column->addWidget(outcome);
  auto* answers = new QGridLayout;
  answers->setColumnStretch(1, 1);
  for (const RungResult& rung : service.rungs) addAnswer(*answers, rung, content);
  column->addLayout(answers);
  addAddresses(*column, service, content);
  column->addStretch(1);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidget(content);
  return area;
}

void ReachDialog::showServices(const std::vector<ServiceReach>& services) {
  int chosen = tabs_->currentIndex();
  const auto failed = std::ranges::find(services, Reach::notReachable, &ServiceReach::reach);
  if (chosen == -1) chosen = failed != services.end() ? static_cast<int>(failed - services.begin()) : 0;
  while (tabs_->count() > 0) delete tabs_->widget(0);
  for (const ServiceReach& service : services) tabs_->addTab(makeTab(service), translatedText(service.title));
  tabs_->setCurrentIndex(chosen);
}

}  // namespace norvik::desktop
