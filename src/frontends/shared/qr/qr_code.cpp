// libqrencode makes the code.
#include "src/frontends/shared/qr/qr_code.h"

#include <qrencode.h>

#include <memory>

namespace norvik {

bool QrCode::isDark(int column, int row) const {
  if (column < 0 || row < 0 || column >= size_ || row >= size_) return false;
  return dark_[static_cast<std::size_t>(row) * static_cast<std::size_t>(size_) +
               static_cast<std::size_t>(column)];
}

std::optional<QrCode> qrCodeOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const std::unique_ptr<QRcode, decltype(&QRcode_free)> made(
      QRcode_encodeString8bit(text.c_str(), 0, QR_ECLEVEL_M), &QRcode_free);
  if (!made) return std::nullopt;
  const auto width = static_cast<std::size_t>(made->width);
  std::vector<bool> dark(width * width);
  for (std::size_t i = 0; i < dark.size(); ++i) dark[i] = (made->data[i] & 1U) != 0;
  return QrCode(made->width, std::move(dark));
}

std::string inBlocks(const QrCode& code) {
  std::string lines;
  for (int row = -kQrMargin; row < code.size() + kQrMargin; row += 2) {
    for (int column = -kQrMargin; column < code.size() + kQrMargin; ++column) {
      const bool upper = !code.isDark(column, row);
      const bool lower = !code.isDark(column, row + 1);
      lines += upper && lower ? "\u2588" : upper ? "\u2580" : lower ? "\u2584" : " ";
    }
    lines += '\n';
  }
  return lines;
}

}  // namespace norvik
