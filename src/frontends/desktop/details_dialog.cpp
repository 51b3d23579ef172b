// A text that cannot be edited, under its sentence.
#include "src/frontends/desktop/details_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"

namespace norvik::desktop {

namespace {
constexpr int kDetailLetters = 84;
constexpr int kDetailLines = 12;
}  // namespace

void showDetails(QWidget* window, const WindowMessage& message) {
  QDialog dialog(window, Qt::Sheet);
  dialog.setObjectName(QStringLiteral("detailsDialog"));
  dialog.setWindowTitle(text(wordOf(message.kind)));
  dialog.setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(&dialog);
  auto* sentence = new QLabel(text(message.sentence), &dialog);
  sentence->setTextFormat(Qt::PlainText);
  sentence->setWordWrap(true);
  column->addWidget(sentence);
  auto* lines = new QPlainTextEdit(text(message.details), &dialog);
  lines->setReadOnly(true);
  lines->setTabChangesFocus(true);
  lines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  lines->setAccessibleName(text(titleOf(MessageAction::showDetails)));
  column->addWidget(lines, 1);
  auto* box = new QDialogButtonBox(&dialog);
  box->addButton(translatedText(window_texts::kClose), QDialogButtonBox::RejectRole)->setDefault(true);
  column->addWidget(box);
  QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  dialog.resize(kDetailLetters * dialog.fontMetrics().averageCharWidth(),
                kDetailLines * dialog.fontMetrics().lineSpacing() + sentence->sizeHint().height());
  dialog.exec();
}

}  // namespace norvik::desktop
