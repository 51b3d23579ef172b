// A QR code on the screen, black on white in every theme, as cameras want it.
#pragma once

#include <QWidget>
#include <optional>
#include <string>

#include "src/frontends/shared/qr/qr_code.h"

namespace norvik::desktop {

class QrView : public QWidget {
 public:
  explicit QrView(QWidget* parent);

  // Nothing is drawn for an empty text.
  void showCode(const std::string& code);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<QrCode> code_;
};

}  // namespace norvik::desktop
