// The outline view, kept in step with the model.
#include "src/frontends/prefpane/sidebar.h"

#include <algorithm>
#include <cmath>

#import "src/frontends/prefpane/accessibility.h"
#import "src/frontends/prefpane/page_cell.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/sidebar_source.h"
#include "src/frontends/prefpane/text.h"

// Arrow keys pass over the rows that cannot be selected, where the toolkit's stop.
@interface NVKOutlineView : NSOutlineView
@end

@implementation NVKOutlineView

- (NSInteger)selectableRowFrom:(NSInteger)row by:(NSInteger)step {
  for (; row >= 0 && row < [self numberOfRows]; row += step) {
    if ([[self delegate] outlineView:self shouldSelectItem:[self itemAtRow:row]]) return row;
  }
  return -1;
}

- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  NSInteger row = -1;
  switch ([keys length] == 1 ? [keys characterAtIndex:0] : 0) {
    case NSUpArrowFunctionKey:
      row = [self selectableRowFrom:[self selectedRow] - 1 by:-1];
      break;
    case NSDownArrowFunctionKey:
      row = [self selectableRowFrom:[self selectedRow] + 1 by:1];
      break;
    case NSHomeFunctionKey:
      row = [self selectableRowFrom:0 by:1];
      break;
    case NSEndFunctionKey:
      row = [self selectableRowFrom:[self numberOfRows] - 1 by:-1];
      break;
    default:
      [super keyDown:event];
      return;
  }
  if (row < 0) return;
  [self selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)] byExtendingSelection:NO];
  [self scrollRowToVisible:row];
}

@end

namespace norvik::prefpane {

namespace {

constexpr CGFloat kWidth = 160;
constexpr CGFloat kRowHeight = 22;
constexpr CGFloat kIndent = 10;  // of a page under its heading

NSOutlineView* asOutline(const Handle& handle) {
  return static_cast<NSOutlineView*>(handle.get());
}

// As wide as the widest row, headings bold and pages with their mark.
CGFloat widthOfRows(NVKServerPrefs& pane) {
  constexpr CGFloat kAround = 14;
  CGFloat widest = kWidth;
  for (const auto& row : pane.ib_oview_confBar.rows()) {
    NSString* words = translatedText(row.view.text);
    const bool heading = row.view.identifier == "RootItem";
    NSFont* font = heading ? [NSFont boldSystemFontOfSize:0] : [NSFont systemFontOfSize:0];
    if (!heading) words = [words stringByAppendingString:@"  \u2022"];
    const NSSize size = [words sizeWithAttributes:[NSDictionary dictionaryWithObject:font
                                                                              forKey:NSFontAttributeName]];
    widest = std::max(widest, std::ceil(size.width) + kAround + (heading ? 0 : kIndent + pageIconWidth()));
  }
  return widest;
}

NSOutlineView* madeOutline(CGFloat width) {
  NVKOutlineView* outline = [[[NVKOutlineView alloc] initWithFrame:NSMakeRect(0, 0, width, 100)] autorelease];
  NSTableColumn* column = [[[NSTableColumn alloc] initWithIdentifier:@"title"] autorelease];
  NVKPageCell* cell = [[[NVKPageCell alloc] initTextCell:@""] autorelease];
  [column setDataCell:cell];
  [column setEditable:NO];
  [column setWidth:width];
  [outline addTableColumn:column];
  [outline setOutlineTableColumn:column];
  [outline setHeaderView:nil];
  [outline setCornerView:nil];
  [outline setDrawsGrid:NO];
  [outline setRowHeight:std::max(kRowHeight, lineHeight() + 7)];
  [outline setIndentationPerLevel:kIndent];
  [outline setAllowsMultipleSelection:NO];
  [outline setAllowsEmptySelection:YES];
  return outline;
}

}  // namespace

Sidebar::Sidebar(NVKServerPrefs& pane, const InterfaceDescription& interface)
    : pane_(pane),
      interface_(interface),
      source_([[[NVKSidebarSource alloc] initWithPane:&pane sidebar:this] autorelease]) {
  const CGFloat width = widthOfRows(pane);
  NSOutlineView* outline = madeOutline(width);
  outline_ = Handle(outline);
  showing_ = true;
  [outline setDataSource:static_cast<id>(source_.get())];
  [outline setDelegate:static_cast<id>(source_.get())];
  showing_ = false;
  NSScrollView* scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, width, 100)] autorelease];
  [scroll setDocumentView:outline];
  if (const ControlDescription* described = interface.find(pane.ib_oview_confBar.name())) {
    setAccessibility(outline, described->label, described->help, NSAccessibilityOutlineRole);
  }
  [scroll setBorderType:NSBezelBorder];
  scroll_ = Handle(scroll);
  pane_.ib_oview_confBar.setObserver(this);
  showRows();
}

Sidebar::~Sidebar() {
  [asOutline(outline_) setDelegate:nil];  // first, as removing the source changes the selection
  [asOutline(outline_) setDataSource:nil];
  pane_.ib_oview_confBar.setObserver(nullptr);
}

void Sidebar::controlChanged(Control& /*control*/) {
  showRows();
}

void Sidebar::showRows() {
  showing_ = true;
  NSOutlineView* outline = asOutline(outline_);
  NVKSidebarSource* source = static_cast<NVKSidebarSource*>(source_.get());
  [outline reloadData];
  for (std::size_t i = 0; i < pane_.numberOfChildrenOfItem(pane_.ib_oview_confBar, nullptr); ++i) {
    [outline expandItem:[source outlineView:outline child:static_cast<NSInteger>(i) ofItem:nil]];
  }
  const int row = pane_.ib_oview_confBar.selectedRow();
  if (row < 0) {
    [outline deselectAll:nil];
  } else if ([outline selectedRow] != row) {
    [outline selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
         byExtendingSelection:NO];
  }
  showing_ = false;
}

void Sidebar::rowChosen() {
  if (showing_) return;
  const NSInteger row = [asOutline(outline_) selectedRow];
  if (row >= 0) pane_.ib_oview_confBar.clickRow(static_cast<int>(row));
  if (row != pane_.ib_oview_confBar.selectedRow()) showRows();
}

bool Sidebar::choosePage(std::size_t tab) {
  const auto& rows = pane_.ib_oview_confBar.rows();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (rows[row].node->page != &pane_.ib_tview_confView.items()[tab]) continue;
    pane_.ib_oview_confBar.clickRow(static_cast<int>(row));
    return pane_.ib_oview_confBar.selectedRow() == static_cast<int>(row);
  }
  return false;
}

void Sidebar::markPages(const std::vector<std::size_t>& changes) {
  if (changes_ == changes) return;
  changes_ = changes;
#ifdef __APPLE__
  showRows();  // a row is a view that has its text
#else
  [asOutline(outline_) setNeedsDisplay:YES];
#endif
}

std::size_t Sidebar::changesOf(const ConfBarNode& node) const {
  for (std::size_t tab = 0; tab < changes_.size(); ++tab) {
    if (&pane_.ib_tview_confView.items()[tab] == node.page) return changes_[tab];
  }
  return 0;
}

const LineDrawing* Sidebar::iconOf(const ConfBarNode& node) const {
  for (std::size_t tab = 0; tab < interface_.tabs.size(); ++tab) {
    if (&pane_.ib_tview_confView.items()[tab] == node.page) return pageIcon(interface_.tabs[tab].icon);
  }
  return nullptr;
}

}  // namespace norvik::prefpane
