// The drawing's shapes as paths, in the row's own coordinates, which go down.
#import "src/frontends/prefpane/page_cell.h"

#include <cmath>

#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/shared/icons/line_drawing.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kAfterIcon = 5;

CGFloat iconSide() {
  return std::round(lineHeight());
}

NSBezierPath* pathOf(const LineShape& shape) {
  NSBezierPath* path = [NSBezierPath bezierPath];
  const auto at = [](const LinePoint& point) { return NSMakePoint(point.x, point.y); };
  for (const Segment& segment : shape.segments) {
    switch (segment.stroke) {
      case Stroke::move:
        [path moveToPoint:at(segment.points[0])];
        break;
      case Stroke::line:
        [path lineToPoint:at(segment.points[0])];
        break;
      case Stroke::curve:
        [path curveToPoint:at(segment.points[2])
             controlPoint1:at(segment.points[0])
             controlPoint2:at(segment.points[1])];
        break;
      case Stroke::close:
        [path closePath];
        break;
    }
  }
  return path;
}

void drawLines(const LineDrawing& drawing, NSRect square, NSColor* color) {
  NSAffineTransform* place = [NSAffineTransform transform];
  [place translateXBy:NSMinX(square) yBy:NSMinY(square)];
  [place scaleBy:NSWidth(square) / drawing.side];
  [color set];
  for (const LineShape& shape : drawing.shapes) {
    NSBezierPath* path = [place transformBezierPath:pathOf(shape)];
    [path setLineWidth:drawing.width * NSWidth(square) / drawing.side];
    [path setLineCapStyle:NSRoundLineCapStyle];
    [path setLineJoinStyle:NSRoundLineJoinStyle];
    if (shape.isFilled) [path fill];
    if (shape.isOutlined) [path stroke];
  }
}

}  // namespace

CGFloat pageIconWidth() {
  return iconSide() + kAfterIcon;
}

}  // namespace norvik::prefpane

@implementation NVKPageCell

- (void)setIcon:(const void*)icon {
  icon_ = icon;
}

- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view {
  if (icon_ != nullptr) {
    const CGFloat side = norvik::prefpane::iconSide();
    const CGFloat above = std::floor((NSHeight(frame) - side) / 2);
    const NSRect square = NSMakeRect(NSMinX(frame) + 1, NSMinY(frame) + above, side, side);
    norvik::prefpane::drawLines(*static_cast<const norvik::LineDrawing*>(icon_), square, [self textColor]);
    const CGFloat taken = norvik::prefpane::pageIconWidth();
    frame.origin.x += taken;
    frame.size.width -= taken;
  }
  [super drawInteriorWithFrame:frame inView:view];
}

@end
