// A row for each setting: the value before, and one button each for theirs and for the person's own.
#include "src/frontends/prefpane/panels.h"

#import "src/frontends/prefpane/call.h"
#import "src/frontends/prefpane/modal_panel.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::prefpane {

namespace {

namespace texts = window_texts;

constexpr CGFloat kSettingWidth = 200;
constexpr CGFloat kValueWidth = 110;
constexpr CGFloat kCollisionWidth = kSettingWidth + 3 * kValueWidth;
constexpr CGFloat kCollisionRow = 24;
constexpr std::size_t kMostRows = 10;  // that are seen at once

enum SidesAnswer { kCancelled = ModalPanel::kEscaped, kContinued };

NSTextField* placed(NSTextField* words, CGFloat x, CGFloat y, CGFloat width) {
  [words setFrame:NSMakeRect(x, y, width - 4, NSHeight([words frame]))];
  return words;
}

NSButton* choice(const std::string& value, std::string_view side, CGFloat x, CGFloat y) {
  NSButton* button = [[[NSButton alloc] initWithFrame:NSMakeRect(x, y, kValueWidth, 18)] autorelease];
  [button setButtonType:NSRadioButton];
  [button setTitle:translatedText(value)];
  [button setToolTip:text(sentence("{1}: {2}", {translated(side), translated(value)}))];
  return button;
}

// One row, in which one of two buttons is on.
struct SideRow {
  NSButton* theirs;
  NSButton* mine;
  Handle targets[2];
};

// Not every toolkit makes a group of the buttons in one view.
Handle switches(NSButton* pressed, NSButton* other) {
  const Function press = [=] {
    [pressed setState:NSOnState];
    [other setState:NSOffState];
  };
  NVKCall* target = [[[NVKCall alloc] initWithCopyOf:&press] autorelease];
  [pressed setTarget:target];
  [pressed setAction:@selector(call:)];
  return Handle(target);
}

SideRow addRow(NSView* table, const Collision& collision, CGFloat y) {
  NVKFlippedView* row =
      [[[NVKFlippedView alloc] initWithFrame:NSMakeRect(0, y, kCollisionWidth, kCollisionRow)] autorelease];
  const std::string place = collision.page.empty()
                                ? collision.label
                                : sentence("{1}, {2}", {translated(collision.page), collision.label});
  NSTextField* setting = placed(makeCaption(text(place)), 0, 3, kSettingWidth);
  [setting setToolTip:text(place)];
  [row addSubview:setting];
  [row addSubview:placed(makeCaption(translatedText(collision.loaded)), kSettingWidth, 3, kValueWidth)];
  SideRow made{choice(collision.theirs, texts::kTakeTheirs, kSettingWidth + kValueWidth, 3),
               choice(collision.yours, texts::kKeepMine, kSettingWidth + 2 * kValueWidth, 3),
               {}};
  made.targets[0] = switches(made.theirs, made.mine);
  made.targets[1] = switches(made.mine, made.theirs);
  [made.mine setState:NSOnState];
  [row addSubview:made.theirs];
  [row addSubview:made.mine];
  [table addSubview:row];
  return made;
}

NSTextField* boldCaption(std::string_view words) {
  NSTextField* made = makeCaption(translatedText(words));
  [made setFont:[NSFont boldSystemFontOfSize:0]];
  return made;
}

void addHeadings(NSView* contents, CGFloat y) {
  const std::string_view values[] = {texts::kLoadedColumn, texts::kTheirsColumn, texts::kMineColumn};
  [contents addSubview:placed(boldCaption(texts::kSettingColumn), 0, y, kSettingWidth)];
  CGFloat x = kSettingWidth;
  for (const std::string_view value : values) {
    [contents addSubview:placed(boldCaption(value), x, y, kValueWidth)];
    x += kValueWidth;
  }
}

// The rows, which scroll where there are many.
NSView* makeRows(const std::vector<Collision>& collisions, std::vector<SideRow>& rows) {
  const CGFloat high = kCollisionRow * static_cast<CGFloat>(collisions.size());
  NVKFlippedView* table =
      [[[NVKFlippedView alloc] initWithFrame:NSMakeRect(0, 0, kCollisionWidth, high)] autorelease];
  CGFloat y = 0;
  for (const Collision& collision : collisions) {
    rows.push_back(addRow(table, collision, y));
    y += kCollisionRow;
  }
  if (collisions.size() <= kMostRows) return table;
  constexpr CGFloat kScroller = 22;
  const NSRect frame = NSMakeRect(0, 0, kCollisionWidth + kScroller, kCollisionRow * kMostRows);
  NSScrollView* scroll = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [scroll setHasVerticalScroller:YES];
  [scroll setDrawsBackground:NO];
  [scroll setDocumentView:table];
  return scroll;
}

}  // namespace

std::optional<std::vector<Side>> chooseSides(const std::vector<Collision>& collisions) {
  std::vector<SideRow> rows;
  NSView* table = makeRows(collisions, rows);
  const CGFloat width = NSWidth([table frame]);
  NSTextField* explanation = makeCaption(@"");
  NSArray* lines = linesOf(translatedText(texts::kCollisionText), [explanation font], width);
  const CGFloat line = NSHeight([explanation frame]);
  const CGFloat words = line * static_cast<CGFloat>([lines count]);
  const CGFloat head = words + 10 + line + 6;
  NVKFlippedView* contents = [[[NVKFlippedView alloc]
      initWithFrame:NSMakeRect(0, 0, width, head + NSHeight([table frame]))] autorelease];
  [explanation setStringValue:[lines componentsJoinedByString:@"\n"]];
  [explanation setFrame:NSMakeRect(0, 0, width, words)];
  [contents addSubview:explanation];
  addHeadings(contents, words + 10);
  [table setFrameOrigin:NSMakePoint(0, head)];
  [contents addSubview:table];
  ModalPanel panel(texts::kCollisionTitle, contents);
  panel.addAnswer(texts::kContinue, kContinued);
  panel.addAnswer(texts::kCancel, kCancelled);
  if (panel.run(nil) != kContinued) return std::nullopt;
  std::vector<Side> sides;
  for (const SideRow& row : rows)
    sides.push_back([row.theirs state] == NSOnState ? Side::theirs : Side::mine);
  return sides;
}

}  // namespace norvik::prefpane
