// Layout of the main view, and its pages kept in step with the model.
#include "src/frontends/prefpane/main_view.h"

#include <algorithm>

#import "src/frontends/prefpane/call.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/window_messages.h"
#include "src/frontends/shared/search/search_texts.h"

// The keys that begin a search come here from every view of the pane that has no use for them.
@interface NVKPaneView : NSView {
  NVKCall* search_;
}
- (void)setSearch:(NVKCall*)search;
@end

@implementation NVKPaneView

- (void)dealloc {
  [search_ release];
  [super dealloc];
}

- (void)setSearch:(NVKCall*)search {
  [search_ autorelease];
  search_ = [search retain];
}

- (BOOL)isKey:(NSString*)key with:(NSUInteger)modifiers in:(NSEvent*)event {
  constexpr NSUInteger kAll = NSCommandKeyMask | NSControlKeyMask | NSAlternateKeyMask;
  return [[event charactersIgnoringModifiers] isEqualToString:key] &&
         ([event modifierFlags] & kAll) == modifiers;
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
  if (![self isKey:@"f" with:NSCommandKeyMask in:event]) return [super performKeyEquivalent:event];
  [search_ call];
  return YES;
}

- (void)keyDown:(NSEvent*)event {
  if ([self isKey:@"f" with:NSControlKeyMask in:event] || [self isKey:@"/" with:0 in:event]) {
    [search_ call];
  } else {
    [super keyDown:event];
  }
}

@end

namespace norvik::prefpane {

namespace {

constexpr CGFloat kMargin = 12;
constexpr CGFloat kPaneWidth = 568;  // the narrowest host has no more
constexpr CGFloat kHintWidth = 200;  // of the lock; two lines of it are as high as the lock
constexpr int kHintLines = 2;
constexpr CGFloat kBetweenLines = 4;  // of the hint and the state under it
constexpr CGFloat kBelowSearch = 6;
constexpr int kTicksBetweenRefreshes = 8;  // two seconds

NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

}  // namespace

MainView::MainView(NVKServerPrefs& pane, const InterfaceDescription& interface, PortInUse portInUse)
    : pane_(pane),
      interface_(interface),
      sidebar_(pane, interface),
      view_([[[NVKPaneView alloc] initWithFrame:NSZeroRect] autorelease]) {
  NSView* sidebar = static_cast<NSView*>(sidebar_.view());
  const CGFloat list = NSWidth([sidebar frame]);
  makePages(portInUse, kPaneWidth - list - 3 * kMargin);
  const CGFloat width = list + NSWidth([asView(tabs_) frame]) + 3 * kMargin;
  below_ = makeFrame(width) + kMargin;
  [asView(tabs_) setFrameOrigin:NSMakePoint(2 * kMargin + list, 0)];
  makeSearch(list);
  messages_ = std::make_unique<MessageArea>(width - 2 * kMargin);
  messages_->shownChanged = [this] { placePages(); };
  NSView* messages = static_cast<NSView*>(messages_->view());
  [messages setFrameOrigin:NSMakePoint(kMargin, below_ + pageHeight_ + kMargin / 2)];
  const CGFloat height = below_ + pageHeight_ + kMargin + messages_->height();
  [asView(view_) setFrameSize:NSMakeSize(width, height)];
  for (NSView* part : {sidebar, asView(tabs_), messages}) [asView(view_) addSubview:part];
  for (NSView* rows : {sidebar, static_cast<NSView*>(search_->view())})
    [rows setAutoresizingMask:NSViewHeightSizable];
  [static_cast<NSView*>(search_->field()) setAutoresizingMask:NSViewMinYMargin];
  [static_cast<NSView*>(reachLine_->view()) setAutoresizingMask:NSViewWidthSizable];
  [asView(tabs_) setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [messages setAutoresizingMask:NSViewWidthSizable | NSViewMinYMargin];
  placePages();
  placeButtons(width);
  makeChangesButton();
  pane_.mainView().setFrame({0, 0, width, height});
  pane_.ib_tview_confView.setObserver(this);
  showPage();
}

// While there is no message, the sidebar and the pages have its space: a host's window does not grow with the
// pane that it shows.
void MainView::placePages() {
  NSView* sidebar = static_cast<NSView*>(sidebar_.view());
  NSView* field = static_cast<NSView*>(search_->field());
  const CGFloat message = messages_->isShown() ? messages_->height() : 0;
  const CGFloat high = std::max<CGFloat>(0, NSHeight([asView(view_) frame]) - kMargin - message - below_);
  const CGFloat fieldHigh = NSHeight([field frame]);
  const NSRect list = NSMakeRect(kMargin, below_, NSWidth([sidebar frame]),
                                 std::max<CGFloat>(0, high - fieldHigh - kBelowSearch));
  for (NSView* one : {sidebar, static_cast<NSView*>(search_->view())}) [one setFrame:list];
  [field setFrameOrigin:NSMakePoint(kMargin, below_ + high - fieldHigh)];
  const NSRect tabs = [asView(tabs_) frame];
  [asView(tabs_) setFrame:NSMakeRect(NSMinX(tabs), below_, NSWidth(tabs), high)];
  [asView(view_) setNeedsDisplay:YES];
}

MainView::~MainView() {
  pane_.ib_tview_confView.setObserver(nullptr);
  [static_cast<NVKPaneView*>(view_.get()) setSearch:nil];
  [static_cast<NSButton*>(changes_.get()) setTarget:nil];
}

// All pages get the width of the widest, and scroll in a host that is too low for them.
void MainView::makePages(const PortInUse& portInUse, double width) {
  for (const TabDescription& tab : interface_.tabs) {
    pages_.push_back(std::make_unique<PageView>(pane_, interface_, tab, portInUse, width));
    for (const auto& binding : pages_.back()->bindings()) followEdits(*binding);
    const NSSize needed = [static_cast<NSView*>(pages_.back()->view()) frame].size;
    width = std::max(width, double(needed.width));
    pageHeight_ = std::max(pageHeight_, double(needed.height));
  }
  for (const auto& page : pages_) page->addPreviewWithin(pageHeight_);
  const NSRect whole = NSMakeRect(0, 0, width, pageHeight_);
  NSTabView* tabs = [[[NSTabView alloc] initWithFrame:whole] autorelease];
  [tabs setTabViewType:NSNoTabsNoBorder];
  for (const auto& page : pages_) {
    NSView* one = static_cast<NSView*>(page->view());
    [one setFrameSize:NSMakeSize(width, NSHeight([one frame]))];
    NVKPageScroll* sheet = [[[NVKPageScroll alloc] initWithFrame:whole] autorelease];
    [sheet setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [sheet setDocumentView:one];
    NSTabViewItem* item = [[[NSTabViewItem alloc] initWithIdentifier:@"page"] autorelease];
    [item setView:sheet];
    [tabs addTabViewItem:item];
  }
  tabs_ = Handle(tabs);
}

// The lock and its hint, from the left, in the order of the description, and under the hint the server's
// state. Returns the height of both lines.
double MainView::makeFrame(double width) {
  CGFloat left = kMargin;
  CGFloat height = 0, beside = kMargin;
  NSView* lock = nil;
  for (const ControlDescription& description : interface_.frame) {
    if (description.kind == ControlKind::outlineView || description.kind == ControlKind::tabView) continue;
    frame_.push_back(std::make_unique<Binding>(pane_, *pane_.outlet(description.outlet), description));
    followEdits(*frame_.back());
    NSView* one = static_cast<NSView*>(frame_.back()->view());
    if (description.kind == ControlKind::label) {
      [one setFrameSize:NSMakeSize(std::round(kHintWidth * fontScale()), kHintLines * lineHeight())];
    }
    [one setFrameOrigin:NSMakePoint(left, 0)];
    [asView(view_) addSubview:one];
    left = NSMaxX([one frame]) + kMargin;
    if (description.kind == ControlKind::lockButton) {
      lock = one;
      beside = left;
    } else {
      height = std::max(height, NSHeight([one frame]));
    }
  }
  reachLine_ = std::make_unique<ReachLine>(width - beside - kMargin);
  NSView* reach = static_cast<NSView*>(reachLine_->view());
  [reach setFrameOrigin:NSMakePoint(beside, kMargin)];
  [asView(view_) addSubview:reach];
  const CGFloat bottom = NSMaxY([reach frame]) + kBetweenLines;
  for (const auto& binding : frame_) {
    NSView* one = static_cast<NSView*>(binding->view());
    const CGFloat from = one == lock ? kMargin : bottom;
    const CGFloat centred = std::floor((bottom + height - from - NSHeight([one frame])) / 2);
    [one setFrameOrigin:NSMakePoint(NSMinX([one frame]), from + centred)];
  }
  return bottom + height;
}

void MainView::makeSearch(double width) {
  search_ = std::make_unique<SearchPanel>(pane_, interface_, width);
  search_->chosen = [this](const SearchHit& hit) { showHit(hit); };
  search_->shownChanged = [this] {
    [static_cast<NSView*>(sidebar_.view()) setHidden:search_->isSearching()];
    linkKeyViews();
  };
  for (void* one : {search_->field(), search_->view()}) [asView(view_) addSubview:static_cast<NSView*>(one)];
  const Function begin = [this] { search_->begin(); };
  [static_cast<NVKPaneView*>(view_.get()) setSearch:[[[NVKCall alloc] initWithCopyOf:&begin] autorelease]];
}

// The push buttons at the right, in their order.
void MainView::placeButtons(double width) {
  CGFloat right = width - kMargin;
  for (auto binding = frame_.rbegin(); binding != frame_.rend(); ++binding) {
    if ((*binding)->description().kind != ControlKind::pushButton) continue;
    NSView* one = static_cast<NSView*>((*binding)->view());
    [one setFrameOrigin:NSMakePoint(right - NSWidth([one frame]), NSMinY([one frame]))];
    [one setAutoresizingMask:NSViewMinXMargin];
    right = NSMinX([one frame]) - kMargin;
    firstButton_ = Handle(one);
  }
}

// Before the other buttons; its width follows the number.
void MainView::makeChangesButton() {
  const Function press = [this] {
    if (showChanges) showChanges();
  };
  NVKCall* target = [[[NVKCall alloc] initWithCopyOf:&press] autorelease];
  NSButton* button = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
  [button setBezelStyle:NSRoundedBezelStyle];
  [button setToolTip:text(window_texts::kChangesHelp)];
  [button setTarget:target];
  [button setAction:@selector(call:)];
  [button setHidden:YES];
  [button setAutoresizingMask:NSViewMinXMargin];
  [asView(view_) addSubview:button];
  changes_ = Handle(button);
  changesTarget_ = Handle(target);
}

void MainView::showPending(const std::vector<SettingChange>& changes) {
  std::vector<std::size_t> byPage(pages_.size());
  for (const SettingChange& change : changes) {
    if (const auto page = pageOf(change.outlet)) ++byPage[*page];
  }
  sidebar_.markPages(byPage);
  NSButton* button = static_cast<NSButton*>(changes_.get());
  NSString* title = text(countedChanges(changes.size()));
  if (![[button title] isEqualToString:title]) {
    [button setTitle:title];
    [button sizeToFit];
    const NSRect beside = [asView(firstButton_) frame];
    const CGFloat y = NSMidY(beside) - NSHeight([button frame]) / 2;
    [button setFrameOrigin:NSMakePoint(NSMinX(beside) - kMargin - NSWidth([button frame]), std::floor(y))];
    [asView(view_) setNeedsDisplay:YES];
  }
  if ([button isHidden] != changes.empty()) [button setHidden:changes.empty()];
  if (changes.empty()) {
    pending_.reset();
  } else if (!pending_) {
    pending_.emplace();
  }
}

void MainView::setCommand(const Control& button, std::function<void()> command) {
  const auto set = [&](const std::vector<std::unique_ptr<Binding>>& bindings) {
    for (const auto& binding : bindings) {
      if (&binding->control() == &button) binding->command = command;
    }
  };
  set(frame_);
  for (const auto& page : pages_) set(page->bindings());
}

void MainView::setOffered(const Control& control, bool isOffered) {
  for (const auto& page : pages_) {
    for (const auto& binding : page->bindings()) {
      if (&binding->control() == &control) binding->setOffered(isOffered);
    }
  }
}

std::optional<std::size_t> MainView::pageOf(const std::string& outlet) const {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (pages_[i]->find(outlet) != nullptr) return i;
  }
  return std::nullopt;
}

void* MainView::viewOf(const std::string& outlet) const {
  for (const auto& binding : frame_) {
    if (binding->control().name() == outlet) return binding->view();
  }
  const auto page = pageOf(outlet);
  return page ? pages_[*page]->find(outlet)->view() : nullptr;
}

bool MainView::showSetting(const std::string& outlet) {
  const auto page = pageOf(outlet);
  if (!page || !sidebar_.choosePage(*page)) return false;
  NSView* control = static_cast<NSView*>(viewOf(outlet));
  [[control window] makeFirstResponder:control];
  return true;
}

void MainView::showHit(const SearchHit& hit) {
  behindLock_.reset();
  ring_.reset();
  if (isLocked(hit, pane_)) {
    behindLock_ = hit;
    messages_->show(MessageSubject::outcome, {MessageKind::note, lockedSentence(hit), {}, ""});
    NSView* lock = static_cast<NSView*>(viewOf(std::string(pane_.ib_button_Auth.name())));
    [[lock window] makeFirstResponder:lock];
  } else if (!hit.outlet.empty()) {
    if (!showSetting(hit.outlet)) return;
    const PageView& page = *pages_[*pageOf(hit.outlet)];
    ring_ = std::make_unique<SearchRing>(page.find(hit.outlet)->view(), page.view());
  } else {
    for (std::size_t i = 0; i < interface_.tabs.size(); ++i) {
      const PageName page = pageName(interface_.tabs[i]);
      if (page.group == hit.page.group && page.title == hit.page.title) sidebar_.choosePage(i);
    }
    [[asView(view_) window] makeFirstResponder:static_cast<NSView*>(sidebar_.outline())];
  }
}

void MainView::showHitBehindLock() {
  if (!behindLock_ || isLocked(*behindLock_, pane_)) return;
  messages_->clear(MessageSubject::outcome);
  showHit(SearchHit(*behindLock_));
}

// The search, the sidebar or what was found, the message, the page, the lines below, and again from the
// beginning.
void MainView::linkKeyViews() {
  std::vector<NSView*> loop{
      static_cast<NSView*>(search_->field()),
      static_cast<NSView*>(search_->isSearching() ? search_->results() : sidebar_.outline())};
  const auto add = [&loop](const std::vector<Handle>& views) {
    for (const Handle& one : views) loop.push_back(asView(one));
  };
  add(messages_->keyViews());
  if (const PageView* page = shownPage()) add(page->keyViews());
  for (const auto& binding : frame_) {
    if (binding->view() == firstButton_.get()) loop.push_back(asView(changes_));
    if (binding->description().kind != ControlKind::label)
      loop.push_back(static_cast<NSView*>(binding->view()));
  }
  loop.push_back(static_cast<NSView*>(reachLine_->button()));
  for (std::size_t i = 0; i < loop.size(); ++i) [loop[i] setNextKeyView:loop[(i + 1) % loop.size()]];
}

void MainView::takeFocus() {
  NSWindow* window = [asView(view_) window];
  NSView* outline = static_cast<NSView*>(sidebar_.outline());
  [window setInitialFirstResponder:outline];
  id now = [window firstResponder];
  // The toolkit itself may have chosen the search field, as it is the first.
  const bool isFirst = !search_->isSearching() && search_->hasKeyboard();
  if (!isFirst && [now isKindOfClass:[NSView class]] && [now isDescendantOf:asView(view_)]) return;
  [window makeFirstResponder:outline];
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
  if (&control == &pane_.ib_admin_label_svrState) {
    if (serverTextChanged) serverTextChanged();
    for (const auto& page : pages_) page->refreshDot();
    [asView(view_) displayIfNeeded];
  }
  [[asView(view_) window] flushWindow];
}

void MainView::displayIfNeeded() {
  [asView(view_) displayIfNeeded];
  [[asView(view_) window] flushWindow];
}

// Of the pages only the visible one: another one is updated when it is shown.
void MainView::refresh() {
  ticksToRefresh_ = kTicksBetweenRefreshes;
  if (PageView* page = shownPage()) {
    page->refreshMarks();
    page->refreshNotes();
  }
  if (refreshed) refreshed();
  if (ring_ != nullptr && !ring_->follow()) ring_.reset();
  showHitBehindLock();
  linkKeyViews();
}

void MainView::ticked() {
  if (serverTextChanged) serverTextChanged();
  if (--ticksToRefresh_ <= 0) return refresh();
  if (PageView* page = shownPage()) page->refreshMarks();
  if (ring_ != nullptr && !ring_->follow()) ring_.reset();
  showHitBehindLock();
}

PageView* MainView::shownPage() const {
  NSTabView* tabs = static_cast<NSTabView*>(tabs_.get());
  const NSInteger index = [tabs indexOfTabViewItem:[tabs selectedTabViewItem]];
  return index == NSNotFound ? nullptr : pages_[static_cast<std::size_t>(index)].get();
}

void MainView::followEdits(Binding& binding) {
  Binding* one = &binding;
  binding.edited = [=, this] { edited(*one); };
}

// What follows from an edit is seen at once, as the pane gets its next tick now.
void MainView::edited(const Binding& binding) {
  if (!binding.command) messages_->edited();  // a command has just said what came of it
  pane_.onStateTimer();
  refresh();
}

void MainView::controlChanged(Control& /*control*/) {
  showPage();
}

void MainView::showPage() {
  const auto& items = pane_.ib_tview_confView.items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (&items[i] != pane_.ib_tview_confView.selectedItem()) continue;
    [static_cast<NSTabView*>(tabs_.get()) selectTabViewItemAtIndex:static_cast<NSInteger>(i)];
  }
  refresh();
}

}  // namespace norvik::prefpane
