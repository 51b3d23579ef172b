// The keys of the field work on the results, so that nobody has to leave it.
#include "src/frontends/prefpane/search_panel.h"

#include <algorithm>

#import "src/frontends/prefpane/accessibility.h"
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/border.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/search/search_texts.h"

using norvik::prefpane::atBorder;
using norvik::prefpane::SearchPanel;

namespace {

constexpr CGFloat kResultInset = 4;
constexpr std::size_t kPlaceLines = 2;

// Smaller than the line above it.
NSFont* placeFont() {
  constexpr CGFloat kSmaller = 0.85;
  return [NSFont systemFontOfSize:std::round([[NSFont systemFontOfSize:0] pointSize] * kSmaller)];
}

}  // namespace

// What a person reads on one line, and where it is on up to two, each shortened where there is no room.
@interface NVKResultCell : NSTextFieldCell
@end

@implementation NVKResultCell
- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view {
  NSColor* color = norvik::prefpane::textColorOfRow([self isHighlighted]);
  NSArray* parts = [[self stringValue] componentsSeparatedByString:@"\n"];
  NSFont* const fonts[] = {[NSFont systemFontOfSize:0], placeFont()};
  const std::size_t lines[] = {1, kPlaceLines};
  CGFloat y = NSMinY(frame) + kResultInset / 2;
  for (NSUInteger i = 0; i < std::min<NSUInteger>([parts count], std::size(fonts)); ++i) {
    NSDictionary* look = [NSDictionary dictionaryWithObjectsAndKeys:fonts[i], NSFontAttributeName, color,
                                                                    NSForegroundColorAttributeName, nil];
    NSString* words =
        norvik::prefpane::fitted([parts objectAtIndex:i], fonts[i], NSWidth(frame) - kResultInset, lines[i]);
    [words drawAtPoint:NSMakePoint(NSMinX(frame) + kResultInset, y) withAttributes:look];
    y += std::ceil([words sizeWithAttributes:look].height);
  }
}
@end

// What field and list ask and report. Untyped, as not every compiler can describe a class of C++.
@interface NVKSearchSource : NSObject {
  void* panel_;  // a SearchPanel, borrowed
}
- (id)initWithPanel:(void*)panel;
- (void)choose:(id)sender;
@end

@implementation NVKSearchSource

- (id)initWithPanel:(void*)panel {
  if ((self = [super init]) != nil) panel_ = panel;
  return self;
}

- (void)choose:(id)sender {
  auto* panel = static_cast<SearchPanel*>(panel_);
  atBorder("choose:", [panel] { panel->chooseSelected(); });
}

- (void)wordsChanged:(id)sender {
  auto* panel = static_cast<SearchPanel*>(panel_);
  atBorder("wordsChanged:", [panel] { panel->wordsChanged(); });
}

- (void)controlTextDidChange:(NSNotification*)notification {
  [self wordsChanged:nil];
}

// Escape ends a search; without one it is the window's.
- (BOOL)does:(SEL)command {
  auto* panel = static_cast<SearchPanel*>(panel_);
  if (!panel->isSearching()) return NO;
  NSString* name = NSStringFromSelector(command);
  if ([name isEqualToString:@"moveUp:"]) {
    panel->moveBy(-1);
  } else if ([name isEqualToString:@"moveDown:"]) {
    panel->moveBy(1);
  } else if ([name isEqualToString:@"insertNewline:"]) {
    panel->chooseSelected();
  } else if ([name isEqualToString:@"cancelOperation:"] || [name isEqualToString:@"complete:"]) {
    panel->end();
  } else {
    return NO;
  }
  return YES;
}

- (BOOL)control:(NSControl*)control textView:(NSTextView*)editor doCommandBySelector:(SEL)command {
  return atBorder("doCommandBySelector:", false, [&] { return [self does:command] == YES; });
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)view {
  auto* panel = static_cast<SearchPanel*>(panel_);
  return atBorder("numberOfRowsInTableView:", NSInteger{0},
                  [panel] { return static_cast<NSInteger>(panel->rows()); });
}

- (id)tableView:(NSTableView*)view objectValueForTableColumn:(NSTableColumn*)column row:(NSInteger)row {
  auto* panel = static_cast<SearchPanel*>(panel_);
  return atBorder<NSString*>("objectValueForTableColumn:row:", @"", [&] {
    return norvik::prefpane::text(panel->rowText(static_cast<std::size_t>(row)));
  });
}

- (BOOL)tableView:(NSTableView*)view shouldSelectRow:(NSInteger)row {
  return !static_cast<SearchPanel*>(panel_)->hits().empty();
}

@end

// Return and Escape do in the list what they do in the field.
@interface NVKResultsTable : NSTableView
@end

@implementation NVKResultsTable
- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  const unichar key = [keys length] == 1 ? [keys characterAtIndex:0] : 0;
  NVKSearchSource* source = (NVKSearchSource*)[self delegate];
  if (key == NSCarriageReturnCharacter || key == NSEnterCharacter) {
    [source choose:nil];
  } else if (key == 033) {
    [source control:nil textView:nil doCommandBySelector:@selector(cancelOperation:)];
  } else {
    [super keyDown:event];
  }
}
@end

namespace norvik::prefpane {

namespace {

NSTextField* asField(const Handle& handle) {
  return static_cast<NSTextField*>(handle.get());
}
NSTableView* asTable(const Handle& handle) {
  return static_cast<NSTableView*>(handle.get());
}

NSTextField* madeField(CGFloat width) {
  NSTextField* field = [[[NSSearchField alloc] initWithFrame:NSMakeRect(0, 0, width, 0)] autorelease];
  [field setStringValue:@"Ag"];
  [field sizeToFit];
  [field setStringValue:@""];
  [field setFrameSize:NSMakeSize(width, std::max(NSHeight([field frame]), lineHeight() + kResultInset))];
  [(NSTextFieldCell*)[field cell] setPlaceholderString:translatedText(search_texts::kSearch)];
  [field setToolTip:translatedText(search_texts::kHelp)];
  setAccessibility(field, translated(search_texts::kSearch), translated(search_texts::kHelp),
                   NSAccessibilityTextFieldRole);
  return field;
}

NSTableView* madeTable(CGFloat width) {
  NVKResultsTable* table = [[[NVKResultsTable alloc] initWithFrame:NSMakeRect(0, 0, width, 100)] autorelease];
  NSTableColumn* column = [[[NSTableColumn alloc] initWithIdentifier:@"result"] autorelease];
  NVKResultCell* cell = [[[NVKResultCell alloc] initTextCell:@""] autorelease];
  [column setDataCell:cell];
  [column setEditable:NO];
  [column setWidth:width];
  [table addTableColumn:column];
  [table setHeaderView:nil];
  [table setCornerView:nil];
  [table setDrawsGrid:NO];
  [table setIntercellSpacing:NSMakeSize(0, 2)];
  [table setAllowsMultipleSelection:NO];
  NSDictionary* small = [NSDictionary dictionaryWithObject:placeFont() forKey:NSFontAttributeName];
  const CGFloat place = kPlaceLines * std::ceil([@"Ag" sizeWithAttributes:small].height);
  [table setRowHeight:lineHeight() + place + kResultInset];
  setAccessibility(table, translated(search_texts::kResults), "", NSAccessibilityTableRole);
  return table;
}

}  // namespace

SearchPanel::SearchPanel(NVKServerPrefs& pane, const InterfaceDescription& interface, double width)
    : pane_(pane),
      interface_(interface),
      source_([[[NVKSearchSource alloc] initWithPanel:this] autorelease]),
      field_(madeField(width)) {
  NSScrollView* scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, width, 100)] autorelease];
  [scroll setBorderType:NSBezelBorder];
  [scroll setHasVerticalScroller:YES];
  [scroll setAutohidesScrollers:YES];
  [scroll setHidden:YES];
  NSTableView* table = madeTable([scroll contentSize].width);
  [scroll setDocumentView:table];
  table_ = Handle(table);
  scroll_ = Handle(scroll);
  const id source = static_cast<id>(source_.get());
  [asField(field_) setDelegate:source];
  [asField(field_) setTarget:source];
  [asField(field_) setAction:@selector(wordsChanged:)];
  [table setDataSource:source];
  [table setDelegate:source];
  [table setTarget:source];
  [table setAction:@selector(choose:)];
}

SearchPanel::~SearchPanel() {
  [asField(field_) setDelegate:nil];
  [asField(field_) setTarget:nil];
  [asTable(table_) setDelegate:nil];
  [asTable(table_) setDataSource:nil];
  [asTable(table_) setTarget:nil];
}

bool SearchPanel::isSearching() const {
  return [shownText(asField(field_)) length] > 0;
}

bool SearchPanel::hasKeyboard() const {
  return [asField(field_) currentEditor] != nil;
}

void SearchPanel::begin() {
  [asField(field_) selectText:nil];
}

void SearchPanel::end() {
  [asField(field_) abortEditing];
  [asField(field_) setStringValue:@""];
  wordsChanged();
}

// The field's action comes again when the keyboard leaves it.
void SearchPanel::wordsChanged() {
  const std::string words = utf8(shownText(asField(field_)));
  hits_ = findShown(pane_, interface_, words);
  [asTable(table_) reloadData];
  if (hits_.empty()) {
    [asTable(table_) deselectAll:nil];
  } else {
    [asTable(table_) selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
    [asTable(table_) scrollRowToVisible:0];
  }
  NSView* list = static_cast<NSView*>(scroll_.get());
  const BOOL hidden = !isSearching();
  if ([list isHidden] == hidden) return;
  [list setHidden:hidden];
  if (shownChanged) shownChanged();
}

std::size_t SearchPanel::rows() const {
  return std::max<std::size_t>(1, hits_.size());
}

std::string SearchPanel::rowText(std::size_t row) const {
  if (row >= hits_.size()) return std::string(search_texts::kNothing);
  return hits_[row].label + "\n" + placeOf(hits_[row], pane_);
}

void SearchPanel::moveBy(int rows) {
  if (hits_.empty()) return;
  const auto last = static_cast<NSInteger>(hits_.size()) - 1;
  const NSInteger row = std::clamp<NSInteger>([asTable(table_) selectedRow] + rows, 0, last);
  [asTable(table_) selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
               byExtendingSelection:NO];
  [asTable(table_) scrollRowToVisible:row];
}

void SearchPanel::chooseSelected() {
  const NSInteger row = [asTable(table_) selectedRow];
  if (row < 0 || static_cast<std::size_t>(row) >= hits_.size()) return;
  const SearchHit hit = hits_[static_cast<std::size_t>(row)];
  end();
  if (chosen) chosen(hit);
}

}  // namespace norvik::prefpane
