// The layout of the sentence and its button; copying to the clipboard.
#include "src/frontends/desktop/address_label.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/shared/interface/address_text.h"

namespace norvik::desktop {

AddressLabel::AddressLabel(const QString& name, const QString& copyTitle, QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), copy_(new QPushButton(withoutMnemonic(copyTitle), this)) {
  label_->setWordWrap(true);
  label_->setTextFormat(Qt::PlainText);
  label_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setObjectName(name);
  copy_->setObjectName(name + QStringLiteral("_copy"));
  copy_->setAutoDefault(false);
  clickAtMnemonic(copy_);
  copy_->setAccessibleName(copyTitle);
  copy_->hide();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(label_);
  column->addWidget(copy_, 0, Qt::AlignLeft);
  connect(copy_, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(address()); });
}

void AddressLabel::setText(const QString& text) {
  if (label_->text() == text) return;
  label_->setText(text);
  label_->setAccessibleName(text);
  showButton();
}

void AddressLabel::setCopyable(bool copyable) {
  if (std::exchange(copyable_, copyable) != copyable) showButton();
}

// The place of the button stays, so that the page does not jump at each key.
void AddressLabel::showButton() {
  QSizePolicy policy = copy_->sizePolicy();
  policy.setRetainSizeWhenHidden(!address().isEmpty());
  copy_->setSizePolicy(policy);
  copy_->setVisible(copyable_ && !address().isEmpty());
}

QString AddressLabel::text() const {
  return label_->text();
}

QString AddressLabel::address() const {
  return QString::fromStdString(addressIn(label_->text().toStdString()).value_or(""));
}

}  // namespace norvik::desktop
