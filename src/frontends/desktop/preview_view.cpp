// Computed in whole multiples of its size, drawn in the size that the font gives it.
#include "src/frontends/desktop/preview_view.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "src/frontends/desktop/accessible_role.h"

namespace norvik::desktop {

namespace {

constexpr double kPictureLinesHigh = 10;
constexpr double kPictureRadius = 4;

}  // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("preview"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleRole(*this, QAccessible::Graphic);
}

void PreviewView::showSettings(const SampleSettings& settings, const QString& name) {
  if (accessibleName() != name) setAccessibleName(name);
  if (settings == settings_) return;
  settings_ = settings;
  image_ = QImage();
  update();
}

QSize PreviewView::sizeHint() const {
  const double height = std::max<double>(fontMetrics().height() * kPictureLinesHigh, kSampleHeight);
  return QSizeF(height * kSampleWidth / kSampleHeight, height).toSize();
}

void PreviewView::compute() {
  const int needed = static_cast<int>(std::ceil(width() * devicePixelRatioF() / kSampleWidth - 0.25));
  if (!image_.isNull() && needed == scale_) return;
  scale_ = needed;
  const SamplePicture picture = drawSampleScreen(settings_, scale_);
  image_ = QImage(picture.bytes.data(), picture.width, picture.height, QImage::Format_RGBX8888).copy();
}

void PreviewView::paintEvent(QPaintEvent* /*event*/) {
  compute();
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath frame;
  frame.addRoundedRect(rect(), kPictureRadius, kPictureRadius);
  painter.setClipPath(frame);
  painter.drawImage(rect(), image_);
}

}  // namespace norvik::desktop
