// The panel's window, which the application runs modally.
#import "src/frontends/prefpane/modal_panel.h"

#import "src/frontends/prefpane/call.h"
#include "src/frontends/prefpane/text.h"

// Escape is the panel's wherever the keyboard is in it, as a button can have only one key.
@interface NVKModalWindow : NSPanel {
  NVKCall* escaped_;
}
- (void)setEscaped:(NVKCall*)escaped;
@end

@implementation NVKModalWindow

- (void)dealloc {
  [escaped_ release];
  [super dealloc];
}

- (void)setEscaped:(NVKCall*)escaped {
  [escaped_ autorelease];
  escaped_ = [escaped retain];
}

- (void)cancelOperation:(id)sender {
  [escaped_ call];
}

- (void)sendEvent:(NSEvent*)event {
  if ([event type] == NSKeyDown && [[event charactersIgnoringModifiers] isEqualToString:@"\033"]) {
    [self cancelOperation:nil];
  } else {
    [super sendEvent:event];
  }
}

@end

namespace norvik::prefpane {

namespace {

constexpr CGFloat kMargin = 14;
constexpr CGFloat kButtonHeight = 26;
constexpr CGFloat kGap = 8;
constexpr CGFloat kReturnMark = 24;  // that the toolkit draws on a button which Return presses

NVKModalWindow* asPanel(const Handle& handle) {
  return static_cast<NVKModalWindow*>(handle.get());
}

}  // namespace

ModalPanel::ModalPanel(std::string_view title, NSView* contents)
    : left_(kMargin), right_(NSWidth([contents frame]) + kMargin) {
  const NSSize inner = [contents frame].size;
  const NSRect frame =
      NSMakeRect(0, 0, inner.width + 2 * kMargin, inner.height + 3 * kMargin + kButtonHeight);
  NVKModalWindow* panel = [[[NVKModalWindow alloc] initWithContentRect:frame
                                                             styleMask:NSTitledWindowMask
                                                               backing:NSBackingStoreBuffered
                                                                 defer:NO] autorelease];
  const Function escape = [this] { close(kEscaped); };
  [panel setEscaped:[[[NVKCall alloc] initWithCopyOf:&escape] autorelease]];
  [panel setReleasedWhenClosed:NO];
  [panel setTitle:text(title)];
  [contents setFrameOrigin:NSMakePoint(kMargin, 2 * kMargin + kButtonHeight)];
  [[panel contentView] addSubview:contents];
  window_ = Handle(panel);
}

ModalPanel::~ModalPanel() {
  for (const Handle& button : buttons_) [static_cast<NSButton*>(button.get()) setTarget:nil];
  [asPanel(window_) setEscaped:nil];
  [asPanel(window_) orderOut:nil];
}

NSButton* ModalPanel::add(std::string_view title, const std::function<void()>& press) {
  NVKCall* target = [[[NVKCall alloc] initWithCopyOf:&press] autorelease];
  targets_.emplace_back(target);
  NSButton* button = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
  [button setTitle:text(title)];
  [button setBezelStyle:NSRoundedBezelStyle];
  [button sizeToFit];
  [button setFrameSize:NSMakeSize(NSWidth([button frame]) + kGap, kButtonHeight)];
  [button setTarget:target];
  [button setAction:@selector(call:)];
  [[asPanel(window_) contentView] addSubview:button];
  buttons_.emplace_back(button);
  return button;
}

NSButton* ModalPanel::addCommand(std::string_view title, const std::function<void()>& press) {
  NSButton* button = add(title, press);
  [button setFrameOrigin:NSMakePoint(left_, kMargin)];
  left_ = NSMaxX([button frame]) + kGap;
  return button;
}

NSButton* ModalPanel::addAnswer(std::string_view title, int result) {
  NSButton* button = add(title, [=, this] { close(result); });
  if (!hasDefault_) {
    [button setKeyEquivalent:@"\r"];
    [button setFrameSize:NSMakeSize(NSWidth([button frame]) + kReturnMark, kButtonHeight)];
  }
  hasDefault_ = true;
  right_ -= NSWidth([button frame]);
  [button setFrameOrigin:NSMakePoint(right_, kMargin)];
  right_ -= kGap;
  return button;
}

int ModalPanel::run(NSView* first) {
  [asPanel(window_) center];
  [asPanel(window_) makeFirstResponder:first];
  [NSApp runModalForWindow:asPanel(window_)];
  [asPanel(window_) orderOut:nil];
  return result_;
}

void ModalPanel::close(int result) {
  result_ = result;
  [NSApp stopModal];
}

}  // namespace norvik::prefpane
