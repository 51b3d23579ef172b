// Layout of the main view, and its sidebar and pages kept in step with the model.
#include "src/frontends/prefpane/main_view.h"

#include <algorithm>

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kMargin = 12;
constexpr CGFloat kSidebarWidth = 160;
constexpr CGFloat kRowHeight = 22;
constexpr CGFloat kIndent = 10;  // of a page under its heading
constexpr CGFloat kHintWidth = 300;
constexpr int kTicksBetweenNotes = 8;  // two seconds

NSOutlineView* asOutline(const Handle& handle) {
  return static_cast<NSOutlineView*>(handle.get());
}
NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

}  // namespace

MainView::MainView(NVKServerPrefs& pane, const InterfaceDescription& interface, void* outlineSource)
    : pane_(pane), interface_(interface), view_([[[NSView alloc] initWithFrame:NSZeroRect] autorelease]) {
  makeSidebar(outlineSource);
  makePages();
  const CGFloat below = makeFrame();
  NSSize page = NSZeroSize;
  for (const auto& one : pages_) {
    const NSSize needed = [static_cast<NSView*>(one->view()) frame].size;
    page = NSMakeSize(std::max(page.width, needed.width), std::max(page.height, needed.height));
  }
  const CGFloat width = kSidebarWidth + page.width + 3 * kMargin;
  const CGFloat height = below + page.height + 2 * kMargin;
  const CGFloat high = height - below - 2 * kMargin;
  [asView(scroll_) setFrame:NSMakeRect(kMargin, below + kMargin, kSidebarWidth, high)];
  [asView(tabs_) setFrame:NSMakeRect(2 * kMargin + kSidebarWidth, below + kMargin, page.width, high)];
  [asView(view_) setFrameSize:NSMakeSize(width, height)];
  [asView(view_) addSubview:asView(scroll_)];
  [asView(view_) addSubview:asView(tabs_)];
  placeButtons(width);
  pane_.mainView().setFrame({0, 0, width, height});
  pane_.ib_oview_confBar.setObserver(this);
  pane_.ib_tview_confView.setObserver(this);
  showRows();
  showPage();
}

MainView::~MainView() {
  [asOutline(outline_) setDelegate:nil];  // first, as removing the source changes the selection
  [asOutline(outline_) setDataSource:nil];
  pane_.ib_oview_confBar.setObserver(nullptr);
  pane_.ib_tview_confView.setObserver(nullptr);
}

void MainView::makeSidebar(void* outlineSource) {
  NSOutlineView* outline =
      [[[NSOutlineView alloc] initWithFrame:NSMakeRect(0, 0, kSidebarWidth, 100)] autorelease];
  NSTableColumn* column = [[[NSTableColumn alloc] initWithIdentifier:@"title"] autorelease];
  [column setEditable:NO];
  [column setWidth:kSidebarWidth];
  [outline addTableColumn:column];
  [outline setOutlineTableColumn:column];
  [outline setHeaderView:nil];
  [outline setCornerView:nil];
  [outline setDrawsGrid:NO];
  [outline setRowHeight:kRowHeight];
  [outline setIndentationPerLevel:kIndent];
  [outline setAllowsMultipleSelection:NO];
  [outline setAllowsEmptySelection:YES];
  [outline setDataSource:static_cast<id>(outlineSource)];
  [outline setDelegate:static_cast<id>(outlineSource)];
  NSScrollView* scroll = [[[NSScrollView alloc] initWithFrame:NSZeroRect] autorelease];
  [scroll setDocumentView:outline];
  [scroll setBorderType:NSBezelBorder];
  outline_ = Handle(outline);
  scroll_ = Handle(scroll);
}

void MainView::makePages() {
  NSTabView* tabs = [[[NSTabView alloc] initWithFrame:NSZeroRect] autorelease];
  [tabs setTabViewType:NSNoTabsNoBorder];
  for (const TabDescription& tab : interface_.tabs) {
    pages_.push_back(std::make_unique<PageView>(pane_, interface_, tab));
    for (const auto& binding : pages_.back()->bindings()) binding->edited = [this] { edited(); };
    NSTabViewItem* item = [[[NSTabViewItem alloc] initWithIdentifier:text(tab.label)] autorelease];
    NVKFlippedView* sheet = [[[NVKFlippedView alloc] initWithFrame:NSZeroRect] autorelease];
    [sheet addSubview:static_cast<NSView*>(pages_.back()->view())];
    [item setView:sheet];
    [tabs addTabViewItem:item];
  }
  tabs_ = Handle(tabs);
}

// The lock and its hint, from the left, in the order of the description. Returns the height of the line.
double MainView::makeFrame() {
  CGFloat left = kMargin;
  CGFloat height = 0;
  for (const ControlDescription& description : interface_.frame) {
    if (description.kind == ControlKind::outlineView || description.kind == ControlKind::tabView) continue;
    frame_.push_back(std::make_unique<Binding>(pane_, *pane_.outlet(description.outlet), description));
    frame_.back()->edited = [this] { edited(); };
    NSView* one = static_cast<NSView*>(frame_.back()->view());
    if (description.kind == ControlKind::label) {
      [one setFrameSize:NSMakeSize(kHintWidth, NSHeight([makeCaption(@"Ag") frame]))];
    }
    height = std::max(height, NSHeight([one frame]));
    [one setFrameOrigin:NSMakePoint(left, 0)];
    [asView(view_) addSubview:one];
    left = NSMaxX([one frame]) + kMargin;
  }
  for (const auto& binding : frame_) {
    NSView* one = static_cast<NSView*>(binding->view());
    const CGFloat centred = std::floor((height - NSHeight([one frame])) / 2);
    [one setFrameOrigin:NSMakePoint(NSMinX([one frame]), kMargin + centred)];
  }
  return height + kMargin;
}

// The push buttons at the right, in their order.
void MainView::placeButtons(double width) {
  CGFloat right = width - kMargin;
  for (auto binding = frame_.rbegin(); binding != frame_.rend(); ++binding) {
    if ((*binding)->description().kind != ControlKind::pushButton) continue;
    NSView* one = static_cast<NSView*>((*binding)->view());
    [one setFrameOrigin:NSMakePoint(right - NSWidth([one frame]), NSMinY([one frame]))];
    right = NSMinX([one frame]) - kMargin;
  }
}

void MainView::fit() {
  const Rect& frame = pane_.mainView().frame();
  [asView(view_) setFrame:NSMakeRect(frame.x, frame.y, frame.width, frame.height)];
}

void MainView::display(const Control& control) {
  const auto draw = [&control](const std::vector<std::unique_ptr<Binding>>& bindings) {
    for (const auto& binding : bindings) {
      if (&binding->control() == &control) [static_cast<NSView*>(binding->view()) display];
    }
  };
  draw(frame_);
  for (const auto& page : pages_) draw(page->bindings());
  [[asView(view_) window] flushWindow];
}

void MainView::displayIfNeeded() {
  [asView(view_) displayIfNeeded];
  [[asView(view_) window] flushWindow];
}

// Only the visible page: another one is updated when it is shown.
void MainView::ticked() {
  PageView* page = shownPage();
  if (page == nullptr) return;
  page->refreshMarks();
  if (--ticksToNotes_ > 0) return;
  ticksToNotes_ = kTicksBetweenNotes;
  page->refreshNotes();
}

PageView* MainView::shownPage() const {
  NSTabView* tabs = static_cast<NSTabView*>(tabs_.get());
  const NSInteger index = [tabs indexOfTabViewItem:[tabs selectedTabViewItem]];
  return index == NSNotFound ? nullptr : pages_[static_cast<std::size_t>(index)].get();
}

void MainView::refreshPage() {
  ticksToNotes_ = 0;
  ticked();
}

// What follows from an edit is seen at once, as the pane gets its next tick now.
void MainView::edited() {
  pane_.onStateTimer();
  refreshPage();
}

void MainView::controlChanged(Control& control) {
  if (&control == &pane_.ib_oview_confBar) return showRows();
  showPage();
}

void MainView::showRows() {
  showing_ = true;
  NSOutlineView* outline = asOutline(outline_);
  [outline reloadData];
  for (std::size_t i = 0; i < pane_.numberOfChildrenOfItem(pane_.ib_oview_confBar, nullptr); ++i) {
    [outline expandItem:[[outline dataSource] outlineView:outline
                                                    child:static_cast<NSInteger>(i)
                                                   ofItem:nil]];
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

void MainView::showPage() {
  const auto& items = pane_.ib_tview_confView.items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (&items[i] != pane_.ib_tview_confView.selectedItem()) continue;
    [static_cast<NSTabView*>(tabs_.get()) selectTabViewItemAtIndex:static_cast<NSInteger>(i)];
  }
  refreshPage();
}

void MainView::rowChosen() {
  if (showing_) return;
  const NSInteger row = [asOutline(outline_) selectedRow];
  if (row >= 0) pane_.ib_oview_confBar.clickRow(static_cast<int>(row));
  if (row != pane_.ib_oview_confBar.selectedRow()) showRows();
}

}  // namespace norvik::prefpane
