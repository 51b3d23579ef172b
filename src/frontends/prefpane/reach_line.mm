// A dot, a label that gives way, and a small button.
#include "src/frontends/prefpane/reach_line.h"

#import "src/frontends/prefpane/accessibility.h"
#import "src/frontends/prefpane/call.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kReachGap = 6;

NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

// Centred in the height of the line.
void placeAt(NSView* view, CGFloat x, CGFloat lineHeight) {
  [view setFrameOrigin:NSMakePoint(x, std::floor((lineHeight - NSHeight([view frame])) / 2))];
}

}  // namespace

ReachLine::ReachLine(double width)
    : dot_([[[NVKDot alloc] initWithFrame:NSZeroRect] autorelease]), words_(makeCaption(@"")) {
  const Function press = [this] {
    if (pressed) pressed();
  };
  const Function place = [this] { this->place(); };
  target_ = Handle([[[NVKCall alloc] initWithCopyOf:&press] autorelease]);
  resized_ = Handle([[[NVKCall alloc] initWithCopyOf:&place] autorelease]);
  NSButton* button = makeSmallButton(translatedText(reach_texts::kTitle), static_cast<id>(target_.get()));
  [button setToolTip:translatedText(reach_texts::kHelp)];
  setAccessibility(button, translated(reach_texts::kTitle), translated(reach_texts::kHelp),
                   NSAccessibilityButtonRole);
  button_ = Handle(button);
  const CGFloat side = std::floor(lineHeight() * 2 / 3);
  [asView(dot_) setFrameSize:NSMakeSize(side, side)];
  view_ = Handle([[[NVKFlippedView alloc]
      initWithFrame:NSMakeRect(0, 0, width, std::max(lineHeight(), NSHeight([button frame])))] autorelease]);
  for (const Handle* part : {&dot_, &words_, &button_}) [asView(view_) addSubview:asView(*part)];
  [asView(view_) setPostsFrameChangedNotifications:YES];
  [[NSNotificationCenter defaultCenter] addObserver:static_cast<id>(resized_.get())
                                           selector:@selector(call:)
                                               name:NSViewFrameDidChangeNotification
                                             object:asView(view_)];
  this->place();
}

ReachLine::~ReachLine() {
  [[NSNotificationCenter defaultCenter] removeObserver:static_cast<id>(resized_.get())];
  [static_cast<NSButton*>(button_.get()) setTarget:nil];
}

void ReachLine::place() {
  const NSSize size = [asView(view_) frame].size;
  const CGFloat left = NSWidth([asView(dot_) frame]) + kReachGap;
  const CGFloat right = size.width - NSWidth([asView(button_) frame]);
  NSTextField* words = static_cast<NSTextField*>(words_.get());
  const CGFloat room = std::max<CGFloat>(0, right - kReachGap - left);
  [words setFrameSize:NSMakeSize(room, lineHeight())];
  [words setStringValue:fitted(text(line_), [words font], room, 1)];
  placeAt(asView(dot_), 0, size.height);
  placeAt(words, left, size.height);
  placeAt(asView(button_), right, size.height);
}

void ReachLine::showLine(const std::string& line) {
  if (line == line_) return;
  line_ = line;
  [asView(words_) setToolTip:text(line)];
  setAccessibility(asView(words_), line, "", NSAccessibilityStaticTextRole);
  place();
}

void ReachLine::showColor(const Color& color) {
  [static_cast<NVKDot*>(dot_.get()) setColor:toolkitColor(color)];
}

}  // namespace norvik::prefpane
