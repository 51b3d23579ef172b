// Each field is a square of whole pixels, so that the edges are sharp.
#include "src/frontends/desktop/qr_view.h"

#include <QPainter>
#include <algorithm>

#include "src/frontends/desktop/binding.h"

namespace norvik::desktop {

namespace {
constexpr int kPixelsPerField = 4;
}  // namespace

QrView::QrView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("reachCode"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void QrView::showCode(const std::string& code) {
  code_ = qrCodeOf(code);
  setAccessibleName(text(code));
  setVisible(code_.has_value());
  updateGeometry();
  update();
}

QSize QrView::sizeHint() const {
  const int side = code_ ? (code_->size() + 2 * kQrMargin) * kPixelsPerField : 0;
  return {side, side};
}

void QrView::paintEvent(QPaintEvent* /*event*/) {
  if (!code_) return;
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  const int field = std::max(1, std::min(width(), height()) / (code_->size() + 2 * kQrMargin));
  for (int row = 0; row < code_->size(); ++row) {
    for (int column = 0; column < code_->size(); ++column) {
      const QRect square((column + kQrMargin) * field, (row + kQrMargin) * field, field, field);
      if (code_->isDark(column, row)) painter.fillRect(square, Qt::black);
    }
  }
}

}  // namespace norvik::desktop
