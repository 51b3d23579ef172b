// The sidebar's rows on the Mac, where a row is a view of its own. With this question answered the outline
// view asks for no cell, and what colours the cells elsewhere is not called.
#include "src/frontends/prefpane/sidebar_source.h"
#include "src/frontends/prefpane/text.h"
#include "src/server/mac/pane/pane.h"

namespace {

// The three cell views of the interface.
struct RowLook {
  const char* identifier;
  bool bold, enabled;
};
constexpr RowLook kLooks[] = {
    {"RootItem", true, true}, {"EnabledItem", false, true}, {"DisabledItem", false, false}};

// A row's text over its whole height, as wide as the row is.
NSTableCellView* madeRow(const RowLook& look, NSRect frame) {
  NSTableCellView* row = [[[NSTableCellView alloc] initWithFrame:frame] autorelease];
  NSTextField* label = [[[NSTextField alloc] initWithFrame:[row bounds]] autorelease];
  [label setBezeled:NO];
  [label setDrawsBackground:NO];
  [label setEditable:NO];
  [label setSelectable:NO];
  [label setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [label setFont:look.bold ? [NSFont boldSystemFontOfSize:0] : [NSFont systemFontOfSize:0]];
  [label setTextColor:look.enabled ? [NSColor controlTextColor] : [NSColor disabledControlTextColor]];
  [row addSubview:label];
  [row setTextField:label];
  [row setIdentifier:norvik::prefpane::text(look.identifier)];
  return row;
}

}  // namespace

@interface NVKSidebarSource (Questions)
- (id)outlineView:(NSOutlineView*)view objectValueForTableColumn:(NSTableColumn*)column byItem:(id)item;
@end

@implementation NVKSidebarSource (Rows)

- (NSView*)outlineView:(NSOutlineView*)view viewForTableColumn:(NSTableColumn*)column item:(id)item {
  auto& pane = *static_cast<norvik::NVKServerPrefs*>(pane_);
  const auto& node = *static_cast<const norvik::ConfBarNode*>([item pointerValue]);
  const auto wanted = pane.viewForTableColumn(pane.ib_oview_confBar, node).identifier;
  for (const RowLook& look : kLooks) {
    if (look.identifier != wanted) continue;
    NSTableCellView* row = [view makeViewWithIdentifier:norvik::prefpane::text(wanted) owner:self];
    if (row == nil) row = madeRow(look, NSMakeRect(0, 0, [column width], [view rowHeight]));
    [[row textField] setStringValue:[self outlineView:view objectValueForTableColumn:column byItem:item]];
    return row;
  }
  return nil;
}

@end
