// Lies over the page and lets every click through.
#include "src/frontends/prefpane/search_ring.h"

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/status_icon.h"

namespace {
constexpr CGFloat kRingGap = 3;
constexpr CGFloat kRingWidth = 2;
}  // namespace

@interface NVKSearchRing : NSView
@end

@implementation NVKSearchRing
- (NSView*)hitTest:(NSPoint)point {
  return nil;
}
- (void)drawRect:(NSRect)rect {
  [norvik::prefpane::statusColor(norvik::MessageKind::note) set];
  NSBezierPath* ring =
      [NSBezierPath bezierPathWithRect:NSInsetRect([self bounds], kRingWidth / 2, kRingWidth / 2)];
  [ring setLineWidth:kRingWidth];
  [ring stroke];
}
@end

namespace norvik::prefpane {

namespace {

NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

}  // namespace

SearchRing::SearchRing(void* control, void* page)
    : control_(control), view_([[[NVKSearchRing alloc] initWithFrame:NSZeroRect] autorelease]) {
  [static_cast<NSView*>(page) addSubview:asView(view_)];
  focus_ = [[asView(control_) window] firstResponder];
  follow();
  [asView(control_) scrollRectToVisible:NSInsetRect([asView(control_) bounds], -kRingGap, -kRingGap)];
}

SearchRing::~SearchRing() {
  NSView* page = [asView(view_) superview];
  [page setNeedsDisplayInRect:[asView(view_) frame]];
  [asView(view_) removeFromSuperview];
}

bool SearchRing::follow() {
  NSView* control = asView(control_);
  if ([control isHiddenOrHasHiddenAncestor] || [[control window] firstResponder] != focus_) return false;
  const CGFloat reach = kRingGap + kRingWidth;
  const NSRect place = NSInsetRect([control frame], -reach, -reach);
  if (!NSEqualRects(place, [asView(view_) frame])) {
    [asView(view_) setFrame:place];
    [[asView(view_) superview] setNeedsDisplay:YES];
  }
  return true;
}

}  // namespace norvik::prefpane
