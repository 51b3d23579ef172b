// A text as a QR code, for a phone or a tablet to scan from the screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace norvik {

// A square of dark and light fields. Whoever shows it leaves kQrMargin light fields on each side.
class QrCode {
 public:
  QrCode(int size, std::vector<bool> dark) : size_(size), dark_(std::move(dark)) {}

  int size() const { return size_; }
  // Whether the field is dark; false outside of the square.
  bool isDark(int column, int row) const;

 private:
  int size_;
  std::vector<bool> dark_;  // row by row
};

// As the standard asks.
inline constexpr int kQrMargin = 4;

// Nothing for an empty text, and for one that no code can hold (above about 2,300 bytes).
std::optional<QrCode> qrCodeOf(const std::string& text);

// The code for a terminal, with its margin, two fields of a column in one character: light is drawn and dark
// is left, as most terminals are dark. Each line ends in a line break.
std::string inBlocks(const QrCode& code);

}  // namespace norvik
