// The layout of a message: icon, sentence, and a column of buttons at the right.
#include "src/frontends/prefpane/message_line.h"

#include <algorithm>

#import "src/frontends/prefpane/call.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/status_icon.h"
#include "src/frontends/prefpane/text.h"

// A tinted field with a bar of the kind's colour at its beginning.
@interface NVKMessageView : NVKFlippedView {
  norvik::MessageKind kind_;
}
- (void)setKind:(norvik::MessageKind)kind;
@end

@implementation NVKMessageView

- (void)setKind:(norvik::MessageKind)kind {
  kind_ = kind;
  [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)rect {
  constexpr CGFloat kBar = 4;
  constexpr CGFloat kTint = 0.12;  // of the way from white to the kind's colour
  NSColor* color = norvik::prefpane::statusColor(kind_);
  NSColor* tint = [[NSColor whiteColor] blendedColorWithFraction:kTint ofColor:color];
  [tint set];
  NSRectFill([self bounds]);
  [color set];
  NSFrameRect([self bounds]);
  NSRectFill(NSMakeRect(0, 0, kBar, NSHeight([self bounds])));
}

@end

namespace norvik::prefpane {

namespace {

constexpr CGFloat kInset = 5;
constexpr CGFloat kIconLeft = 10;
constexpr CGFloat kIconSide = 18;
constexpr CGFloat kSentenceLeft = kIconLeft + kIconSide + 8;
constexpr CGFloat kBetween = 8;
constexpr CGFloat kBarHeight = 14;
constexpr std::size_t kLines = 3;
constexpr std::size_t kButtonsHigh = 2;  // in a column

NSTextField* asField(const Handle& handle) {
  return static_cast<NSTextField*>(handle.get());
}
NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}
NVKMessageView* asMessage(const Handle& handle) {
  return static_cast<NVKMessageView*>(handle.get());
}

}  // namespace

MessageLine::MessageLine(double width)
    : view_([[[NVKMessageView alloc] initWithFrame:NSMakeRect(0, 0, width, 0)] autorelease]),
      icon_([[[NVKStatusIcon alloc] initWithFrame:NSMakeRect(kIconLeft, kInset + 1, kIconSide, kIconSide)]
          autorelease]),
      sentence_(makeCaption(@"")),
      bar_([[[NSProgressIndicator alloc] initWithFrame:NSZeroRect] autorelease]) {
  [asView(view_) setFrameSize:NSMakeSize(width, height())];
  [[asField(sentence_) cell] setWraps:YES];
  [asField(sentence_) setTextColor:[NSColor blackColor]];
  NSProgressIndicator* bar = static_cast<NSProgressIndicator*>(bar_.get());
  [bar setIndeterminate:NO];
  [bar setFrame:NSMakeRect(kSentenceLeft, kInset + lineHeight() + kInset, width - kSentenceLeft - kBetween,
                           kBarHeight)];
  for (const Handle* part : {&icon_, &sentence_, &bar_}) [asView(view_) addSubview:asView(*part)];
  for (const Handle* part : {&sentence_, &bar_}) [asView(*part) setAutoresizingMask:NSViewWidthSizable];
  hide();
}

MessageLine::~MessageLine() {
  removeButtons();
}

double MessageLine::height() const {
  return kLines * lineHeight() + 2 * kInset;
}

void MessageLine::hide() {
  [asView(view_) setHidden:YES];
}

// What a press does may remove the button itself.
void MessageLine::removeButtons() {
  for (const Handle& button : buttons_) {
    [[asView(button) retain] autorelease];
    [static_cast<NSButton*>(button.get()) setTarget:nil];
    [asView(button) removeFromSuperview];
  }
  buttons_.clear();
  targets_.clear();
}

void MessageLine::addButton(const std::string& title, const std::string& help,
                            const std::function<void()>& press) {
  NVKCall* target = [[[NVKCall alloc] initWithCopyOf:&press] autorelease];
  NSButton* button = makeSmallButton(text(title), target);
  [button setToolTip:text(help)];
  [button setAutoresizingMask:NSViewMinXMargin];
  [asView(view_) addSubview:button];
  buttons_.emplace_back(button);
  targets_.emplace_back(target);
}

// From the right: a column with "close" and the number of messages, then columns with the message's own.
// Returns where the first column begins.
double MessageLine::addButtons(const WindowMessage& message, std::size_t waiting) {
  removeButtons();
  addButton("\u00d7", std::string(window_texts::kCloseMessage), [this] {
    if (closed) closed();
  });
  if (waiting > 1) {
    addButton("1/" + std::to_string(waiting), "Show the next message", [this] {
      if (next) next();
    });
  }
  const std::size_t first = buttons_.size();
  for (const MessageAction action : message.actions) {
    addButton(std::string(titleOf(action)), "", [=, this] {
      if (acted) acted(action);
    });
  }
  CGFloat right = NSWidth([asView(view_) frame]) - kInset;
  const auto placeColumn = [&](std::size_t from, std::size_t to) {
    CGFloat wide = 0;
    for (std::size_t i = from; i < to; ++i) wide = std::max(wide, NSWidth([asView(buttons_[i]) frame]));
    const CGFloat high = (height() - 2 * 2) / kButtonsHigh;
    for (std::size_t i = from; i < to; ++i) {
      [asView(buttons_[i]) setFrame:NSMakeRect(right - wide, 2 + high * CGFloat(i - from), wide, high)];
    }
    right -= wide + 2;
  };
  placeColumn(0, first);
  for (std::size_t from = first; from < buttons_.size(); from += kButtonsHigh)
    placeColumn(from, std::min(from + kButtonsHigh, buttons_.size()));
  return right;
}

bool MessageLine::fits(const std::string& sentence, double width) {
  return [linesOf(text(sentence), [asField(sentence_) font], width) count] <= kLines;
}

void MessageLine::present(MessageKind kind, const std::string& sentence, double width) {
  const std::string words = std::string(wordOf(kind)) + ": " + sentence;
  NSTextField* shown = asField(sentence_);
  [shown setFrame:NSMakeRect(kSentenceLeft, kInset, width, kLines * lineHeight())];
  [shown setStringValue:fitted(text(sentence), [shown font], width, kLines)];
  [shown setToolTip:text(words)];
  [static_cast<NVKStatusIcon*>(icon_.get()) setKind:kind];
  [asView(icon_) setToolTip:text(std::string(wordOf(kind)))];
  [asMessage(view_) setKind:kind];
  [asView(view_) setHidden:NO];
}

void MessageLine::showMessage(const WindowMessage& message, std::size_t waiting) {
  [asView(bar_) setHidden:YES];
  CGFloat width = addButtons(message, waiting) - kBetween - kSentenceLeft;
  const bool offersDetails = std::ranges::count(message.actions, MessageAction::showDetails) > 0;
  if (!offersDetails && !fits(message.sentence, width)) {
    WindowMessage longer = message;
    longer.actions.push_back(MessageAction::showDetails);
    width = addButtons(longer, waiting) - kBetween - kSentenceLeft;
  }
  present(message.kind, message.sentence, width);
}

void MessageLine::showProgress(const std::string& sentence, int done, int total) {
  removeButtons();
  present(MessageKind::progress, sentence, NSMinX([asView(view_) bounds]) + NSWidth([asView(bar_) frame]));
  NSProgressIndicator* bar = static_cast<NSProgressIndicator*>(bar_.get());
  [bar setMinValue:0];
  [bar setMaxValue:total];
  [bar setDoubleValue:done];
  [bar setHidden:NO];
}

}  // namespace norvik::prefpane
