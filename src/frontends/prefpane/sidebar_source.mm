// The sidebar's queries.
#import "src/frontends/prefpane/sidebar_source.h"

#include "src/frontends/prefpane/border.h"
#import "src/frontends/prefpane/page_cell.h"
#include "src/frontends/prefpane/sidebar.h"
#include "src/frontends/prefpane/text.h"

using norvik::ConfBarNode;
using norvik::prefpane::atBorder;
using norvik::prefpane::Sidebar;
using norvik::prefpane::translatedText;

namespace {

const ConfBarNode* nodeOf(id item) {
  return item != nil ? static_cast<const ConfBarNode*>([item pointerValue]) : nullptr;
}

norvik::NVKServerPrefs& paneOf(void* pane) {
  return *static_cast<norvik::NVKServerPrefs*>(pane);
}

}  // namespace

@implementation NVKSidebarSource

- (id)initWithPane:(void*)pane sidebar:(void*)sidebar {
  if ((self = [super init]) == nil) return nil;
  pane_ = pane;
  sidebar_ = sidebar;
  items_ = [NSMutableDictionary new];
  return self;
}

- (void)dealloc {
  [items_ release];
  [super dealloc];
}

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
  auto& pane = paneOf(pane_);
  return atBorder("numberOfChildrenOfItem:", NSInteger{0}, [&] {
    return static_cast<NSInteger>(pane.numberOfChildrenOfItem(pane.ib_oview_confBar, nodeOf(item)));
  });
}

- (id)outlineView:(NSOutlineView*)view child:(NSInteger)index ofItem:(id)item {
  auto& pane = paneOf(pane_);
  const ConfBarNode* node = atBorder<const ConfBarNode*>("child:ofItem:", nullptr, [&] {
    return &pane.childOfItem(pane.ib_oview_confBar, static_cast<std::size_t>(index), nodeOf(item));
  });
  return node != nullptr ? [self itemOf:*node] : nil;
}

- (BOOL)outlineView:(NSOutlineView*)view isItemExpandable:(id)item {
  auto& pane = paneOf(pane_);
  return item == nil || atBorder("isItemExpandable:", false,
                                 [&] { return pane.isItemExpandable(pane.ib_oview_confBar, *nodeOf(item)); });
}

- (BOOL)outlineView:(NSOutlineView*)view shouldExpandItem:(id)item {
  auto& pane = paneOf(pane_);
  return atBorder("shouldExpandItem:", false,
                  [&] { return pane.shouldExpandItem(pane.ib_oview_confBar, *nodeOf(item)); });
}

- (BOOL)outlineView:(NSOutlineView*)view shouldCollapseItem:(id)item {
  auto& pane = paneOf(pane_);
  return atBorder("shouldCollapseItem:", false,
                  [&] { return pane.shouldCollapseItem(pane.ib_oview_confBar, *nodeOf(item)); });
}

- (BOOL)outlineView:(NSOutlineView*)view isGroupItem:(id)item {
  auto& pane = paneOf(pane_);
  return atBorder("isGroupItem:", false,
                  [&] { return pane.isGroupItem(pane.ib_oview_confBar, *nodeOf(item)); });
}

- (BOOL)outlineView:(NSOutlineView*)view shouldShowOutlineCellForItem:(id)item {
  auto& pane = paneOf(pane_);
  return atBorder("shouldShowOutlineCellForItem:", false,
                  [&] { return pane.shouldShowOutlineCellForItem(pane.ib_oview_confBar, *nodeOf(item)); });
}

- (BOOL)outlineView:(NSOutlineView*)view shouldSelectItem:(id)item {
  auto& pane = paneOf(pane_);
  return atBorder("shouldSelectItem:", false,
                  [&] { return pane.shouldSelectItem(pane.ib_oview_confBar, *nodeOf(item)); });
}

// The same mark as before a changed setting.
- (id)outlineView:(NSOutlineView*)view objectValueForTableColumn:(NSTableColumn*)column byItem:(id)item {
  auto& pane = paneOf(pane_);
  auto* sidebar = static_cast<Sidebar*>(sidebar_);
  return atBorder<NSString*>("objectValueForTableColumn:byItem:", @"", [&] {
    const ConfBarNode& node = *nodeOf(item);
    NSString* title = translatedText(pane.viewForTableColumn(pane.ib_oview_confBar, node).text);
    return sidebar->changesOf(node) > 0 ? [title stringByAppendingString:@"  \u2022"] : title;
  });
}

// The three looks, drawn by the one cell of the column.
- (void)outlineView:(NSOutlineView*)view
    willDisplayCell:(id)cell
     forTableColumn:(NSTableColumn*)column
               item:(id)item {
  auto& pane = paneOf(pane_);
  auto* sidebar = static_cast<Sidebar*>(sidebar_);
  atBorder("willDisplayCell:", [&] {
    const ConfBarNode& node = *nodeOf(item);
    pane.willDisplayCell(pane.ib_oview_confBar, node);
    const auto look = pane.viewForTableColumn(pane.ib_oview_confBar, node).identifier;
    const bool heading = look == "RootItem";
    [cell setFont:heading ? [NSFont boldSystemFontOfSize:0] : [NSFont systemFontOfSize:0]];
    [cell setTextColor:look == "DisabledItem" ? [NSColor disabledControlTextColor]
                                              : [NSColor controlTextColor]];
    [static_cast<NVKPageCell*>(cell) setIcon:sidebar->iconOf(node)];
  });
}

// A toolkit that does not ask whether to draw a triangle gets an empty picture instead.
- (void)outlineView:(NSOutlineView*)view
    willDisplayOutlineCell:(id)cell
            forTableColumn:(NSTableColumn*)column
                      item:(id)item {
  if (![self outlineView:view shouldShowOutlineCellForItem:item]) [cell setImage:nil];
}

- (void)outlineViewSelectionDidChange:(NSNotification*)notification {
  auto* sidebar = static_cast<Sidebar*>(sidebar_);
  atBorder("outlineViewSelectionDidChange:", [sidebar] { sidebar->rowChosen(); });
}

@end
