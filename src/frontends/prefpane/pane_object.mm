// The preference pane as its host knows it: NVKServerPrefs, a subclass of NSPreferencePane that passes the
// host's calls, and the sidebar's queries, on to the pane module.
#include <memory>
#include <optional>
#include <string>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/main_view.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/shipped_interface.h"

@interface NVKServerPrefs : NSPreferencePane {
  norvik::NVKServerPrefs* pane_;  // both owned; not every compiler constructs and destroys such a field
  norvik::prefpane::MainView* view_;
  // The toolkit's objects for the sidebar's nodes, which it compares by identity.
  NSMutableDictionary* items_;
}
@end

namespace norvik::prefpane {
namespace {

// The first pane of a process installs the computer, for as long as the process lives.
PaneComputer& computer() {
  static PaneComputer installed;
  return installed;
}

const InterfaceDescription& interface() {
  static const InterfaceDescription shipped = [] {
    std::string error;
    const auto read = shippedInterface(error);
    if (!read) [NSException raise:NSGenericException format:@"Interface.plist: %s", error.c_str()];
    return *read;
  }();
  return shipped;
}

const ConfBarNode* nodeOf(id item) {
  return item != nil ? static_cast<const ConfBarNode*>([item pointerValue]) : nullptr;
}

}  // namespace
}  // namespace norvik::prefpane

using norvik::ConfBarNode;
using norvik::prefpane::computer;
using norvik::prefpane::interface;
using norvik::prefpane::MainView;
using norvik::prefpane::nodeOf;
using norvik::prefpane::text;

@implementation NVKServerPrefs

- (id)initWithBundle:(NSBundle*)bundle {
  if ((self = [super initWithBundle:bundle]) == nil) return nil;
  computer().bundles().setPaneBundle(bundle);
  pane_ = new norvik::NVKServerPrefs(interface());
  items_ = [NSMutableDictionary new];
  return self;
}

- (void)dealloc {
  if (norvik::__main_pane == pane_) {
    computer().drawing() = {};
    computer().runLoop().ticked = nullptr;
  }
  delete view_;
  delete pane_;
  [items_ release];
  [super dealloc];
}

// Only the pane that holds the state ticks and is drawn at once; the view of another one stays inert.
- (void)beMainPane {
  MainView* view = view_;
  computer().drawing().displayControl = [view](norvik::Control& control) { view->display(control); };
  computer().drawing().displayView = [view](norvik::View& drawn) {
    if (drawn.superview() == nullptr) view->displayIfNeeded();
  };
  computer().runLoop().ticked = [view] { view->ticked(); };
  view->edited();
}

// There is no nib: the view is made from the interface description.
- (NSView*)loadMainView {
  pane_->awakeFromNib();
  view_ = new MainView(*pane_, interface(), self);
  [self setMainView:static_cast<NSView*>(view_->view())];
  if (norvik::__main_pane == pane_) [self beMainPane];
  [self mainViewDidLoad];
  return [self mainView];
}

- (void)mainViewDidLoad {
  pane_->mainViewDidLoad();
}

- (void)willSelect {
  pane_->willSelect();
  view_->fit();
}

- (void)didSelect {
  pane_->didSelect();
}

- (void)willUnselect {
  pane_->willUnselect();
}

- (void)didUnselect {
  pane_->didUnselect();
}

// The host may always leave the pane, and may ask twice; a person is asked about pending changes afterwards.
- (NSPreferencePaneUnselectReply)shouldUnselect {
  return NSUnselectNow;
}

// The sidebar's queries.

- (id)itemOf:(const ConfBarNode&)node {
  NSValue* key = [NSValue valueWithPointer:&node];
  id item = [items_ objectForKey:key];
  if (item == nil) {
    item = key;
    [items_ setObject:item forKey:key];
  }
  return item;
}

- (NSInteger)outlineView:(NSOutlineView*)view numberOfChildrenOfItem:(id)item {
  return static_cast<NSInteger>(pane_->numberOfChildrenOfItem(pane_->ib_oview_confBar, nodeOf(item)));
}

- (id)outlineView:(NSOutlineView*)view child:(NSInteger)index ofItem:(id)item {
  return [self
      itemOf:pane_->childOfItem(pane_->ib_oview_confBar, static_cast<std::size_t>(index), nodeOf(item))];
}

- (BOOL)outlineView:(NSOutlineView*)view isItemExpandable:(id)item {
  return item == nil || pane_->isItemExpandable(pane_->ib_oview_confBar, *nodeOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)view shouldExpandItem:(id)item {
  return pane_->shouldExpandItem(pane_->ib_oview_confBar, *nodeOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)view shouldCollapseItem:(id)item {
  return pane_->shouldCollapseItem(pane_->ib_oview_confBar, *nodeOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)view isGroupItem:(id)item {
  return pane_->isGroupItem(pane_->ib_oview_confBar, *nodeOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)view shouldShowOutlineCellForItem:(id)item {
  return pane_->shouldShowOutlineCellForItem(pane_->ib_oview_confBar, *nodeOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)view shouldSelectItem:(id)item {
  return pane_->shouldSelectItem(pane_->ib_oview_confBar, *nodeOf(item));
}

- (id)outlineView:(NSOutlineView*)view objectValueForTableColumn:(NSTableColumn*)column byItem:(id)item {
  return text(pane_->viewForTableColumn(pane_->ib_oview_confBar, *nodeOf(item)).text);
}

// The three looks, drawn by the one cell of the column.
- (void)outlineView:(NSOutlineView*)view
    willDisplayCell:(id)cell
     forTableColumn:(NSTableColumn*)column
               item:(id)item {
  const ConfBarNode& node = *nodeOf(item);
  pane_->willDisplayCell(pane_->ib_oview_confBar, node);
  const auto look = pane_->viewForTableColumn(pane_->ib_oview_confBar, node).identifier;
  const bool heading = look == "RootItem";
  [cell setFont:heading ? [NSFont boldSystemFontOfSize:0] : [NSFont systemFontOfSize:0]];
  [cell
      setTextColor:look == "DisabledItem" ? [NSColor disabledControlTextColor] : [NSColor controlTextColor]];
}

// A toolkit that does not ask whether to draw a triangle gets an empty picture instead.
- (void)outlineView:(NSOutlineView*)view
    willDisplayOutlineCell:(id)cell
            forTableColumn:(NSTableColumn*)column
                      item:(id)item {
  if (![self outlineView:view shouldShowOutlineCellForItem:item]) [cell setImage:nil];
}

- (void)outlineViewSelectionDidChange:(NSNotification*)notification {
  if (view_ != nullptr) view_->rowChosen();  // none yet while it is being made
}

@end
