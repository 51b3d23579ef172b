// The list follows the choice at once.
#include "src/frontends/desktop/import_dialog.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/changes_table.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/shared/profile/profile_texts.h"

namespace norvik::desktop {

namespace {

constexpr int kImportLetters = 96;

}  // namespace

ImportDialog::ImportDialog(QWidget* window, const std::string& file, Source source)
    : QDialog(window, Qt::Sheet),
      file_(file),
      source_(std::move(source)),
      sentence_(new QLabel(this)),
      list_(new ChangesTable(QStringLiteral("importList"), this)),
      note_(new NoteLabel(this)) {
  setObjectName(QStringLiteral("importDialog"));
  setWindowTitle(text(translated(profile_texts::kImportTitle)));
  setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(this);
  sentence_->setObjectName(QStringLiteral("importSentence"));
  sentence_->setTextFormat(Qt::PlainText);
  sentence_->setWordWrap(true);
  column->addWidget(sentence_);
  list_->setAccessibleDescription(text(translated(profile_texts::kImportHelp)));
  column->addWidget(list_, 1);
  auto* group = new QGroupBox(text(translated(profile_texts::kUnnamed)), this);
  auto* choices = new QVBoxLayout(group);
  auto* stay = new QRadioButton(text(translated(profile_texts::kUnnamedStay)), group);
  toDefaults_ = new QRadioButton(text(translated(profile_texts::kUnnamedToDefaults)), group);
  stay->setObjectName(QStringLiteral("importStay"));
  toDefaults_->setObjectName(QStringLiteral("importToDefaults"));
  stay->setChecked(true);
  for (QRadioButton* choice : {stay, toDefaults_}) {
    choice->setAccessibleDescription(text(translated(profile_texts::kUnnamed)));
    choices->addWidget(choice);
  }
  column->addWidget(group);
  note_->setObjectName(QStringLiteral("importNote"));
  column->addWidget(note_);
  auto* box = new QDialogButtonBox(this);
  takeOver_ = box->addButton(text(translated(profile_texts::kTakeOver)), QDialogButtonBox::AcceptRole);
  takeOver_->setObjectName(QStringLiteral("importTakeOver"));
  takeOver_->setDefault(true);
  box->addButton(translatedText(window_texts::kCancel), QDialogButtonBox::RejectRole);
  column->addWidget(box);
  QSet<QChar> taken;
  addMnemonics(*group, taken);
  addMnemonics(*box, taken);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(toDefaults_, &QRadioButton::toggled, this, [this] { showPreview(); });
  showPreview();
  list_->setFocus();
  resize(kImportLetters * fontMetrics().averageCharWidth(), sizeHint().height());
}

Unnamed ImportDialog::unnamed() const {
  return toDefaults_->isChecked() ? Unnamed::toDefaults : Unnamed::stay;
}

void ImportDialog::showPreview() {
  const Preview preview = source_(unnamed());
  list_->showChanges(preview.changes);
  const bool any = !preview.changes.empty();
  sentence_->setText(
      text(sentence(any ? profile_texts::kImportText : profile_texts::kNothingDiffers, {file_})));
  const std::string lock = preview.needsLock ? translated(profile_texts::kNeedsLock) : std::string();
  note_->setNote(text(preview.error.empty() ? lock : preview.error),
                 preview.error.empty() ? MessageKind::note : MessageKind::failure);
  takeOver_->setEnabled(any && preview.error.empty());
}

}  // namespace norvik::desktop
