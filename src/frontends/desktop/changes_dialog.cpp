// The list, the effects under it, and the buttons.
#include "src/frontends/desktop/changes_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/changes_table.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/edits/take_back_texts.h"
#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/trial/trial_texts.h"

namespace norvik::desktop {

namespace {

namespace texts = window_texts;

constexpr double kListLetters = 96;  // the dialog, in average letters
constexpr int kLinesHigh = 17;       // of the effects

// Rich text takes margins in pixels alone.
QString headed(std::string_view heading, const QStringList& lines) {
  if (lines.isEmpty()) return {};
  QString block = QStringLiteral("<p style=\"margin:0 0 2px 0\"><b>") +
                  translatedText(heading).toHtmlEscaped() + QStringLiteral("</b></p>");
  for (const QString& line : lines)
    block +=
        QStringLiteral("<p style=\"margin:0 0 0 12px\">") + line.toHtmlEscaped() + QStringLiteral("</p>");
  return block;
}

template <typename Values, typename Words>
QStringList linesOf(const Values& values, Words words) {
  QStringList lines;
  for (const auto& value : values) lines += text(words(value));
  return lines;
}

}  // namespace

QString effectsOf(const Preview& preview) {
  const auto itself = [](const std::string& words) { return words; };
  QStringList consequences;
  if (preview.endsConnections) consequences += translatedText(texts::kEndsConnections);
  if (preview.needsRestart) consequences += translatedText(texts::kNeedsRestart);
  QStringList blocks{headed(texts::kConsequencesHeading, consequences),
                     headed(texts::kFilesHeading, linesOf(preview.files, itself)),
                     headed(texts::kCommandsHeading, linesOf(preview.commands, commandLine)),
                     headed(texts::kToldHeading, linesOf(preview.told, itself))};
  blocks.removeAll(QString());
  return blocks.join(QStringLiteral("<p style=\"margin:0; font-size:6px\">&nbsp;</p>"));
}

ChangesDialog::ChangesDialog(QWidget* window, Source source)
    : QDialog(window, Qt::Sheet),
      source_(std::move(source)),
      list_(new ChangesTable(QStringLiteral("changesList"), this)),
      effects_(new QLabel),
      copied_(new NoteLabel(this)) {
  setObjectName(QStringLiteral("changesDialog"));
  setWindowTitle(translatedText(texts::kChangesTitle));
  setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(this);
  column->addWidget(list_, 1);
  column->addLayout(makeActions());
  copied_->setObjectName(QStringLiteral("changesCopied"));
  column->addWidget(copied_);
  effects_->setObjectName(QStringLiteral("changesEffects"));
  effects_->setTextFormat(Qt::RichText);
  effects_->setWordWrap(true);
  effects_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  effects_->setAlignment(Qt::AlignTop | Qt::AlignLeading);
  effects_->setMargin(fontMetrics().averageCharWidth());
  auto* area = new QScrollArea(this);
  area->setWidget(effects_);
  area->setWidgetResizable(true);
  area->setMinimumHeight(kLinesHigh * fontMetrics().height());
  area->setAccessibleName(translatedText(texts::kChangesHelp));
  column->addWidget(area, 1);
  addButtons(*column);
  connect(list_, &QTreeWidget::itemDoubleClicked, this, [this] { done(kGoToSetting); });
  connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] {
    goTo_->setEnabled(chosen() != nullptr);
    takeBack_->setEnabled(chosen() != nullptr);
  });
  showPreview();
  resize(static_cast<int>(kListLetters * fontMetrics().averageCharWidth()), sizeHint().height());
}

QPushButton* ChangesDialog::addButton(std::string_view words, const char* name) {
  auto* button = new QPushButton(withoutMnemonic(translatedText(words)), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(translatedText(words));
  button->setAutoDefault(false);
  clickAtMnemonic(button);
  return button;
}

// What is done with the list, right under it.
QLayout* ChangesDialog::makeActions() {
  auto* actions = new QHBoxLayout;
  goTo_ = addButton(texts::kGoToSetting, "changesGoTo");
  takeBack_ = addButton(texts::kTakeBack, "changesTakeBack");
  takeBackAll_ = addButton(texts::kTakeBackAll, "changesTakeBackAll");
  copy_ = addButton(take_back_texts::kCopyCommandButton, "changesCopyCommand");
  copy_->setToolTip(text(translated(take_back_texts::kCopyCommandHelp)));
  copy_->setAccessibleDescription(copy_->toolTip());
  copy_->setVisible(source_.copyCommand != nullptr);
  for (QPushButton* button : {goTo_, takeBack_, takeBackAll_}) actions->addWidget(button);
  actions->addStretch();
  actions->addWidget(copy_);
  connect(copy_, &QPushButton::clicked, this, [this] {
    source_.copyCommand();
    copied_->setNote(text(translated(take_back_texts::kCopied)), MessageKind::done);
  });
  return actions;
}

void ChangesDialog::addButtons(QVBoxLayout& column) {
  auto* box = new QDialogButtonBox(this);
  applyOnTrial_ = addButton(trial_texts::kApplyOnTrial, "changesApplyOnTrial");
  applyOnTrial_->setToolTip(text(translated(trial_texts::kApplyOnTrialHelp)));
  applyOnTrial_->setAccessibleDescription(applyOnTrial_->toolTip());
  apply_ = addButton(texts::kApply, "changesApply");
  auto* close = addButton(texts::kClose, "changesClose");
  box->addButton(apply_, QDialogButtonBox::AcceptRole);
  box->addButton(applyOnTrial_, QDialogButtonBox::AcceptRole);
  box->addButton(close, QDialogButtonBox::RejectRole);
  apply_->setDefault(true);
  column.addWidget(box);
  QSet<QChar> taken;
  addMnemonics(*this, taken);
  connect(goTo_, &QPushButton::clicked, this, [this] { done(kGoToSetting); });
  connect(takeBack_, &QPushButton::clicked, this, [this] { takeBackChosen(); });
  connect(takeBackAll_, &QPushButton::clicked, this, [this] {
    source_.takeBackAll();
    showPreview();
  });
  connect(applyOnTrial_, &QPushButton::clicked, this, [this] { done(kApplyOnTrial); });
  connect(apply_, &QPushButton::clicked, this, [this] { done(kApply); });
  connect(close, &QPushButton::clicked, this, [this] { done(kClose); });
}

void ChangesDialog::showPreview() {
  preview_ = source_.preview();
  showChanges();
  const bool any = !preview_.changes.empty();
  effects_->setText(any ? effectsOf(preview_) : translatedText(texts::kNoChanges).toHtmlEscaped());
  takeBackAll_->setEnabled(any);
  apply_->setEnabled(any);
  copy_->setEnabled(any);
  copied_->setNote(QString(), MessageKind::done);
  applyOnTrial_->setVisible(source_.isTrialOffered && source_.isTrialOffered());
  if (!any) list_->parentWidget()->setFocus();
}

void ChangesDialog::showChanges() {
  list_->showChanges(preview_.changes);
  goTo_->setEnabled(chosen() != nullptr);
  takeBack_->setEnabled(chosen() != nullptr);
}

const SettingChange* ChangesDialog::chosen() const {
  const int row = list_->chosen();
  if (row < 0 || static_cast<std::size_t>(row) >= preview_.changes.size()) return nullptr;
  return &preview_.changes[static_cast<std::size_t>(row)];
}

void ChangesDialog::takeBackChosen() {
  const SettingChange* change = chosen();
  if (change == nullptr) return;
  source_.takeBack(std::string(change->name));
  showPreview();
}

std::string ChangesDialog::outlet() const {
  const SettingChange* change = chosen();
  return change != nullptr ? change->outlet : std::string();
}

}  // namespace norvik::desktop
