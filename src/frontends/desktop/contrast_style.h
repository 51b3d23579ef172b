// Fusion, the toolkit's own style, with outlines of check boxes and radio buttons that stand out from the
// window.
#pragma once

#include <QProxyStyle>

namespace norvik::desktop {

class ContrastStyle : public QProxyStyle {
 public:
  ContrastStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace norvik::desktop
