// Two choices and a box.
#include "src/frontends/desktop/export_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/shared/profile/profile_texts.h"

namespace norvik::desktop {

ExportDialog::ExportDialog(QWidget* window, const std::string& page, std::size_t unapplied)
    : QDialog(window, Qt::Sheet), page_(new QRadioButton(this)), changedOnly_(new QCheckBox(this)) {
  setObjectName(QStringLiteral("exportDialog"));
  setWindowTitle(text(translated(profile_texts::kExportTitle)));
  setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(this);
  auto* words = new QLabel(text(translated(profile_texts::kExportText)), this);
  words->setWordWrap(true);
  column->addWidget(words);
  auto* all = new QRadioButton(text(translated(profile_texts::kAllSettings)), this);
  all->setObjectName(QStringLiteral("exportAll"));
  all->setChecked(true);
  page_->setObjectName(QStringLiteral("exportPage"));
  page_->setText(withoutMnemonic(text(sentence(profile_texts::kThisPage, {page}))));
  page_->setVisible(!page.empty());
  changedOnly_->setObjectName(QStringLiteral("exportChangedOnly"));
  changedOnly_->setText(text(translated(profile_texts::kChangedOnly)));
  column->addWidget(all);
  column->addWidget(page_);
  column->addWidget(changedOnly_);
  if (unapplied > 0) {
    auto* note = new NoteLabel(this);
    note->setNote(text(counted(profile_texts::kUnapplied, unapplied)), MessageKind::note);
    column->addWidget(note);
  }
  column->addStretch(1);
  auto* box = new QDialogButtonBox(this);
  auto* go = box->addButton(text(translated(profile_texts::kExport)), QDialogButtonBox::AcceptRole);
  go->setObjectName(QStringLiteral("exportGo"));
  go->setDefault(true);
  box->addButton(translatedText(window_texts::kCancel), QDialogButtonBox::RejectRole);
  column->addWidget(box);
  QSet<QChar> taken;
  addMnemonics(*this, taken);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

bool ExportDialog::isPageOnly() const {
  return page_->isChecked();
}

bool ExportDialog::isChangedOnly() const {
  return changedOnly_->isChecked();
}

}  // namespace norvik::desktop
