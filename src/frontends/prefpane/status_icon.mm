// Shapes in a square from 0 to 16, drawn from the top.
#import "src/frontends/prefpane/status_icon.h"

#include <algorithm>

namespace norvik::prefpane {

namespace {

constexpr CGFloat kSide = 16;
constexpr CGFloat kStroke = 1.8;

struct StatusLook {
  MessageKind kind;
  CGFloat red, green, blue;
};
constexpr StatusLook kLooks[] = {
    {MessageKind::done, 0.04, 0.26, 0.10},     {MessageKind::note, 0.07, 0.25, 0.47},
    {MessageKind::warning, 0.32, 0.21, 0},     {MessageKind::failure, 0.48, 0.04, 0.08},
    {MessageKind::progress, 0.07, 0.25, 0.47},
};

NSBezierPath* closed(std::initializer_list<NSPoint> corners) {
  NSBezierPath* path = [NSBezierPath bezierPath];
  [path moveToPoint:*corners.begin()];
  for (const NSPoint& corner : corners) [path lineToPoint:corner];
  [path closePath];
  return path;
}

NSBezierPath* outlineOf(MessageKind kind) {
  if (kind == MessageKind::warning) return closed({{8, 1}, {15.4, 14.4}, {0.6, 14.4}});
  if (kind == MessageKind::failure) {
    return closed({{5, 0.6}, {11, 0.6}, {15.4, 5}, {15.4, 11}, {11, 15.4}, {5, 15.4}, {0.6, 11}, {0.6, 5}});
  }
  return [NSBezierPath bezierPathWithOvalInRect:NSMakeRect(0.6, 0.6, kSide - 1.2, kSide - 1.2)];
}

void addLine(NSBezierPath* sign, NSPoint from, NSPoint to) {
  [sign moveToPoint:from];
  [sign lineToPoint:to];
}

void addDot(NSBezierPath* sign, CGFloat x, CGFloat y) {
  addLine(sign, NSMakePoint(x, y), NSMakePoint(x, y + 0.1));
}

// A check mark, an i, an exclamation mark, a cross, three dots.
NSBezierPath* signOf(MessageKind kind) {
  NSBezierPath* sign = [NSBezierPath bezierPath];
  switch (kind) {
    case MessageKind::done:
      addLine(sign, {4.6, 8.4}, {7, 10.8});
      addLine(sign, {7, 10.8}, {11.4, 5.6});
      break;
    case MessageKind::note:
      addDot(sign, 8, 4.6);
      addLine(sign, {8, 7.6}, {8, 11.6});
      break;
    case MessageKind::warning:
      addLine(sign, {8, 5.8}, {8, 9.4});
      addDot(sign, 8, 12);
      break;
    case MessageKind::failure:
      addLine(sign, {5.4, 5.4}, {10.6, 10.6});
      addLine(sign, {10.6, 5.4}, {5.4, 10.6});
      break;
    case MessageKind::progress:
      for (const CGFloat x : {4.8, 8.0, 11.2}) addDot(sign, x, 8);
      break;
  }
  [sign setLineWidth:kStroke];
  [sign setLineCapStyle:NSRoundLineCapStyle];
  return sign;
}

}  // namespace

NSColor* statusColor(MessageKind kind) {
  const auto* look = std::find_if(std::begin(kLooks), std::end(kLooks),
                                  [kind](const StatusLook& row) { return row.kind == kind; });
  return [NSColor colorWithCalibratedRed:look->red green:look->green blue:look->blue alpha:1];
}

}  // namespace norvik::prefpane

@implementation NVKStatusIcon

- (BOOL)isFlipped {
  return YES;
}

- (void)setKind:(norvik::MessageKind)kind {
  if (kind_ == kind) return;
  kind_ = kind;
  [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)rect {
  const CGFloat scale = NSWidth([self bounds]) / norvik::prefpane::kSide;
  NSAffineTransform* larger = [NSAffineTransform transform];
  [larger scaleBy:scale];
  [norvik::prefpane::statusColor(kind_) set];
  [[larger transformBezierPath:norvik::prefpane::outlineOf(kind_)] fill];
  [[NSColor whiteColor] set];
  NSBezierPath* sign = [larger transformBezierPath:norvik::prefpane::signOf(kind_)];
  [sign setLineWidth:norvik::prefpane::kStroke * scale];
  [sign setLineCapStyle:NSRoundLineCapStyle];
  [sign stroke];
}

@end
