// The outline view, kept in step with the model.
#include "src/frontends/prefpane/sidebar.h"

#import "src/frontends/prefpane/sidebar_source.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kWidth = 160;
constexpr CGFloat kRowHeight = 22;
constexpr CGFloat kIndent = 10;  // of a page under its heading

NSOutlineView* asOutline(const Handle& handle) {
  return static_cast<NSOutlineView*>(handle.get());
}

NSOutlineView* madeOutline() {
  NSOutlineView* outline = [[[NSOutlineView alloc] initWithFrame:NSMakeRect(0, 0, kWidth, 100)] autorelease];
  NSTableColumn* column = [[[NSTableColumn alloc] initWithIdentifier:@"title"] autorelease];
  [column setEditable:NO];
  [column setWidth:kWidth];
  [outline addTableColumn:column];
  [outline setOutlineTableColumn:column];
  [outline setHeaderView:nil];
  [outline setCornerView:nil];
  [outline setDrawsGrid:NO];
  [outline setRowHeight:kRowHeight];
  [outline setIndentationPerLevel:kIndent];
  [outline setAllowsMultipleSelection:NO];
  [outline setAllowsEmptySelection:YES];
  return outline;
}

}  // namespace

Sidebar::Sidebar(NVKServerPrefs& pane)
    : pane_(pane), source_([[[NVKSidebarSource alloc] initWithPane:&pane sidebar:this] autorelease]) {
  NSOutlineView* outline = madeOutline();
  outline_ = Handle(outline);
  showing_ = true;
  [outline setDataSource:static_cast<id>(source_.get())];
  [outline setDelegate:static_cast<id>(source_.get())];
  showing_ = false;
  NSScrollView* scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, kWidth, 100)] autorelease];
  [scroll setDocumentView:outline];
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

}  // namespace norvik::prefpane
