// A rounded rectangle between the colour of the window and that of its fields. Text on it has more contrast
// than on the window.
#include "src/frontends/desktop/section_panel.h"

#include <QPainter>

#include "src/frontends/desktop/contrast.h"

namespace norvik::desktop {

namespace {

constexpr double kPanelRadius = 6;
constexpr double kFillShare = 0.55;  // of the way from the window's colour to that of its fields
constexpr double kLineShare = 0.14;  // of the way to that of its text
constexpr double kHighContrast =
    20;  // between window and text: the desktop's colours are those of high contrast

}  // namespace

SectionPanel::SectionPanel(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("sectionPanel"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SectionPanel::paintEvent(QPaintEvent* /*event*/) {
  const QColor window = palette().color(QPalette::Window);
  const QColor words = palette().color(QPalette::Active, QPalette::WindowText);
  const bool isStrong = contrastRatio(window, words) >= kHighContrast;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(isStrong ? words : mixedColor(window, words, kLineShare), 1));
  painter.setBrush(mixedColor(window, palette().color(QPalette::Base), kFillShare));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kPanelRadius, kPanelRadius);
}

}  // namespace norvik::desktop
