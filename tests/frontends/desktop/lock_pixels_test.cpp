// The lock button pixel by pixel: the module's own image over the style's plain button with the same picture.
// With QT_SCALE_FACTOR the pixels are finer.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <QPushButton>

#include "resources/resources.h"
#include "src/frontends/desktop/lock_button.h"
#include "src/frontends/desktop/theme.h"
#include "tests/server/stub_computer.h"
#include "tests/support/pixels.h"

namespace norvik::desktop {
namespace {

constexpr QSize kSize(40, 36);
constexpr Color kTint{0.75, 0.7, 0.6, 1};

PictureRef lock() {
  return std::make_shared<const Picture>(
      Picture{"authlock", std::string(resourceFile("authlock", "tiff").value())});
}

struct Look {
  const char* name;
  void (*ofLock)(LockButton& button, NVKButton& model);
  void (*ofPlain)(QPushButton& button);
};
const Look kLooks[] = {
    {"Normal", [](LockButton&, NVKButton&) {}, [](QPushButton&) {}},
    {"Hovered", [](LockButton&, NVKButton& model) { model.mouseEntered(); },
     [](QPushButton& button) { button.setAttribute(Qt::WA_UnderMouse); }},
    {"Pressed", [](LockButton&, NVKButton& model) { model.mouseDown(); },
     [](QPushButton& button) { button.setDown(true); }},
    {"Disabled", [](LockButton& button, NVKButton&) { button.setEnabled(false); },
     [](QPushButton& button) { button.setEnabled(false); }},
};

Image shown(QWidget& widget) {
  const qreal ratio = widget.devicePixelRatioF();
  QImage canvas(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
  canvas.setDevicePixelRatio(ratio);
  canvas.fill(Qt::transparent);
  widget.render(&canvas, {}, {}, QWidget::RenderFlags());
  Image image(canvas.width(), canvas.height());
  image.setFlipped(true);
  for (int y = 0; y < canvas.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(canvas.constScanLine(y));
    for (int x = 0; x < canvas.width(); ++x) {
      image.setPixel(x, y,
                     {static_cast<uint8_t>(qRed(line[x])), static_cast<uint8_t>(qGreen(line[x])),
                      static_cast<uint8_t>(qBlue(line[x])), static_cast<uint8_t>(qAlpha(line[x]))});
    }
  }
  return image;
}

struct DrawnButton : ButtonPainter {
  explicit DrawnButton(const Image& look) : plain(look) {}
  void drawButton(const ButtonCell& /*cell*/, Image& image) override { image = plain; }
  const Image& plain;
};

class LockPixels : public testing::TestWithParam<Look> {
 protected:
  // The lock button with that tint.
  Image lockWith(const Color& color) {
    NVKButton model;
    model.setButtonColor(color);
    model.setImage(lock());
    LockButton button(model, nullptr);
    button.resize(kSize);
    GetParam().ofLock(button, model);
    Image image = shown(button);
    iconSize_ = button.iconSize();
    return image;
  }
  // What it is drawn on; after the lock.
  Image plain() {
    QPushButton button;
    button.setPalette(shadingPalette(button.palette()));
    button.setIcon(icon());
    button.setIconSize(iconSize_);
    button.resize(kSize);
    GetParam().ofPlain(button);
    return shown(button);
  }

 private:
  static QIcon icon() {
    QBuffer buffer;
    buffer.setData(QByteArray::fromStdString(lock()->bytes));
    QImageReader reader(&buffer, "TIFF");
    const int pages = reader.imageCount();
    QImage largest = reader.read();
    for (int page = 1; page < pages && reader.jumpToNextImage(); ++page) {
      const QImage next = reader.read();
      if (next.width() > largest.width()) largest = next;
    }
    EXPECT_EQ(largest.width(), 64);
    return QIcon(QPixmap::fromImage(largest));
  }

  StubComputer computer_;
  QSize iconSize_;
};

void expectSame(const Image& one, const Image& other) {
  ASSERT_EQ(one.width(), other.width());
  ASSERT_EQ(one.height(), other.height());
  int different = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (one.pixel(x, y) == other.pixel(x, y) || ++different > 5) continue;
      EXPECT_EQ(one.pixel(x, y), other.pixel(x, y)) << "at " << x << ", " << y;
    }
  }
  EXPECT_EQ(different, 0) << "pixels";
}

TEST_P(LockPixels, AreThoseOfTheModule) {
  const Image drawn = lockWith(kTint);
  const Image base = plain();
  Image wanted(base.width(), base.height());
  wanted.setFlipped(true);
  NVKButtonCell cell;
  cell.setButtonColor(kTint);
  DrawnButton painter(base);
  cell.drawWithFrame({0, 0, double(wanted.width()), double(wanted.height())}, wanted, painter);
  expectSame(drawn, wanted);
}

TEST_P(LockPixels, WithTheClearColourAreThoseOfAPlainButton) {
  const Image drawn = lockWith(kClearColor);
  expectSame(drawn, plain());
}

INSTANTIATE_TEST_SUITE_P(Each, LockPixels, testing::ValuesIn(kLooks),
                         [](const testing::TestParamInfo<Look>& row) { return row.param.name; });

}  // namespace
}  // namespace norvik::desktop
