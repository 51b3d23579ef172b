// Drawing the lock button through the module's cell, and passing the pointer's events on to it.
#include "src/frontends/desktop/lock_button.h"

#include <QBuffer>
#include <QEnterEvent>
#include <QFontMetrics>
#include <QImageReader>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/theme.h"
#include "src/server/mac/platform/platform.h"

namespace norvik::desktop {

namespace {

// The largest picture of a TIFF that may hold the same one in several sizes.
QImage decoded(const PictureRef& picture) {
  if (picture == nullptr) return {};
  QByteArray bytes = QByteArray::fromStdString(picture->bytes);
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, "TIFF");
  QImage largest;
  const int pages =
      reader.imageCount();  // asked for one too many, the reader writes a warning to the terminal
  for (int page = 0; page < pages; ++page) {
    if (page > 0 && !reader.jumpToNextImage()) break;
    const QImage image = reader.read();
    if (image.width() > largest.width()) largest = image;
  }
  return largest;
}

// The rows of both begin at the top.
Image toModule(const QImage& from) {
  Image image(from.width(), from.height());
  image.setFlipped(true);
  for (int y = 0; y < from.height(); ++y) {
    const QRgb* line = reinterpret_cast<const QRgb*>(from.constScanLine(y));
    for (int x = 0; x < from.width(); ++x) {
      const QRgb p = line[x];
      image.setPixel(x, y,
                     {static_cast<uint8_t>(qRed(p)), static_cast<uint8_t>(qGreen(p)),
                      static_cast<uint8_t>(qBlue(p)), static_cast<uint8_t>(qAlpha(p))});
    }
  }
  return image;
}

QImage fromModule(const Image& from) {
  QImage image(from.width(), from.height(), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < from.height(); ++y) {
    QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < from.width(); ++x) {
      const Pixel p = from.pixel(x, y);
      line[x] = qRgba(p.red, p.green, p.blue, p.alpha);
    }
  }
  return image;
}

// The plain button as the widget's style draws it, picture included, in device pixels.
class StylePainter : public ButtonPainter {
 public:
  StylePainter(const QAbstractButton& widget, const QIcon& icon) : widget_(widget), icon_(icon) {}

  void drawButton(const ButtonCell& cell, Image& image) override {
    QImage canvas(image.width(), image.height(), QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(widget_.devicePixelRatioF());
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    QStyleOptionButton option;
    option.initFrom(&widget_);
    option.palette = shadingPalette(option.palette);
    option.state &= ~QStyle::State_MouseOver;
    option.state |= cell.pressed ? QStyle::State_Sunken : QStyle::State_Raised;
    if (cell.hovered) option.state |= QStyle::State_MouseOver;
    if (widget_.hasFocus()) option.state |= QStyle::State_KeyboardFocusChange;
    option.icon = icon_;
    option.iconSize = widget_.iconSize();
    widget_.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &widget_);
    painter.end();
    image = toModule(canvas);
  }

 private:
  const QAbstractButton& widget_;
  const QIcon& icon_;
};

}  // namespace

LockButton::LockButton(NVKButton& model, QWidget* parent) : QAbstractButton(parent), model_(model) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void LockButton::showModel() {
  if (!model_.needsDisplay()) return;
  update();
}

QSize LockButton::sizeHint() const {
  const int side = fontMetrics().height() * 5 / 2;
  return {side, side};
}

void LockButton::paintEvent(QPaintEvent* /*event*/) {
  model_.setNeedsDisplay(false);
  const qreal ratio = devicePixelRatioF();
  const QSize pixels = size() * ratio;
  Image view(pixels.width(), pixels.height());
  view.setFlipped(true);
  StylePainter plain(*this, picture());
  model_.cell().drawWithFrame({0, 0, double(pixels.width()), double(pixels.height())}, view, plain);
  QImage image = fromModule(view);
  image.setDevicePixelRatio(ratio);
  QPainter(this).drawImage(0, 0, image);
}

const QIcon& LockButton::picture() {
  if (decoded_ != model_.image()) {
    decoded_ = model_.image();
    icon_ = QIcon(QPixmap::fromImage(decoded(decoded_)));
  }
  return icon_;
}

void LockButton::enterEvent(QEnterEvent* event) {
  model_.mouseEntered();
  showModel();
  QAbstractButton::enterEvent(event);
}

void LockButton::leaveEvent(QEvent* event) {
  model_.mouseExited();
  showModel();
  QAbstractButton::leaveEvent(event);
}

void LockButton::mousePressEvent(QMouseEvent* event) {
  model_.mouseDown();
  showModel();
  QAbstractButton::mousePressEvent(event);
}

void LockButton::mouseReleaseEvent(QMouseEvent* event) {
  model_.mouseUp();
  showModel();
  QAbstractButton::mouseReleaseEvent(event);
}

void LockButton::resizeEvent(QResizeEvent* event) {
  const int side = std::min(width(), height()) * 3 / 4;
  setIconSize({side, side});
  model_.viewDidMoveToWindow({0, 0, double(width()), double(height())});
  QAbstractButton::resizeEvent(event);
}

// The button's tint, where it has one, follows the window's colour when the desktop turns dark.
void LockButton::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() != QEvent::PaletteChange || !model_.buttonColor()) return;
  model_.setButtonColor(platform().application.windowBackgroundColor());
  update();
}

}  // namespace norvik::desktop
