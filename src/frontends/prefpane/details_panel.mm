// A text that cannot be edited, under its sentence.
#include "src/frontends/prefpane/panels.h"

#import "src/frontends/prefpane/modal_panel.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kDetailsWidth = 500;
constexpr CGFloat kDetailsHeight = 180;

}  // namespace

void showDetails(const WindowMessage& message) {
  NSTextField* sentence = makeCaption(@"");
  NSArray* lines = linesOf(text(message.sentence), [sentence font], kDetailsWidth);
  const CGFloat high = NSHeight([sentence frame]) * static_cast<CGFloat>([lines count]);
  const CGFloat below = message.details.empty() ? 0 : kDetailsHeight + 8;
  NSView* contents =
      [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, kDetailsWidth, below + high)] autorelease];
  [sentence setStringValue:[lines componentsJoinedByString:@"\n"]];
  [sentence setSelectable:YES];
  [sentence setFrame:NSMakeRect(0, below, kDetailsWidth, high)];
  [contents addSubview:sentence];
  if (!message.details.empty()) {
    [contents addSubview:makeTextBox(text(message.details), NSMakeRect(0, 0, kDetailsWidth, kDetailsHeight))];
  }
  ModalPanel panel(wordOf(message.kind), contents);
  panel.addAnswer(window_texts::kClose, ModalPanel::kEscaped);
  panel.run(nil);
}

}  // namespace norvik::prefpane
