// The table view, its rows and its clicks.
#include "src/frontends/prefpane/changes_table.h"

#include <algorithm>

#include "src/frontends/prefpane/border.h"
#import "src/frontends/prefpane/call.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/window_texts.h"

// Rows of texts. Untyped, as not every compiler can describe a class of C++.
@interface NVKChangesSource : NSObject {
  NSArray* rows_;  // of arrays of strings
  void* table_;    // a ChangesTable, borrowed
}
- (id)initWithTable:(void*)table;
- (void)setRows:(NSArray*)rows;
@end

@implementation NVKChangesSource

- (id)initWithTable:(void*)table {
  if ((self = [super init]) != nil) table_ = table;
  return self;
}

- (void)dealloc {
  [rows_ release];
  [super dealloc];
}

- (void)setRows:(NSArray*)rows {
  [rows_ release];
  rows_ = [rows copy];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)view {
  return static_cast<NSInteger>([rows_ count]);
}

- (id)tableView:(NSTableView*)view objectValueForTableColumn:(NSTableColumn*)column row:(NSInteger)row {
  return [[rows_ objectAtIndex:static_cast<NSUInteger>(row)]
      objectAtIndex:static_cast<NSUInteger>([[column identifier] integerValue])];
}

- (void)tableViewSelectionDidChange:(NSNotification*)notification {
  auto* table = static_cast<norvik::prefpane::ChangesTable*>(table_);
  norvik::prefpane::atBorder("tableViewSelectionDidChange:", [table] {
    if (table->chosenChanged) table->chosenChanged();
  });
}

@end

namespace norvik::prefpane {

namespace {

namespace texts = window_texts;

struct ChangesColumn {
  std::string_view title;
  CGFloat share;  // of the width
  std::string SettingChange::*words;
};
constexpr ChangesColumn kColumns[] = {
    {texts::kSettingColumn, 0.34, &SettingChange::label},
    {texts::kPageColumn, 0.22, &SettingChange::page},
    {texts::kOldColumn, 0.2, &SettingChange::from},
    {texts::kNewColumn, 0.24, &SettingChange::to},
};

constexpr CGFloat kTableRow = 20;

NSTableView* asTable(const Handle& handle) {
  return static_cast<NSTableView*>(handle.get());
}

void addColumn(NSTableView* table, NSInteger index, CGFloat width) {
  NSString* name = [NSString stringWithFormat:@"%ld", static_cast<long>(index)];
  NSTableColumn* column = [[[NSTableColumn alloc] initWithIdentifier:name] autorelease];
  [[column headerCell] setStringValue:translatedText(kColumns[index].title)];
  [column setWidth:width];
  [column setEditable:NO];
  [table addTableColumn:column];
}

}  // namespace

ChangesTable::ChangesTable(double width, double height)
    : source_([[[NVKChangesSource alloc] initWithTable:this] autorelease]),
      table_([[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease]),
      scroll_([[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease]) {
  const Function open = [this] {
    if (opened) opened();
  };
  target_ = Handle([[[NVKCall alloc] initWithCopyOf:&open] autorelease]);
  NSTableView* table = asTable(table_);
  NSScrollView* scroll = static_cast<NSScrollView*>(scroll_.get());
  [scroll setBorderType:NSBezelBorder];
  [scroll setHasVerticalScroller:YES];
  const CGFloat inner = [scroll contentSize].width;
  for (NSInteger i = 0; i < static_cast<NSInteger>(std::size(kColumns)); ++i)
    addColumn(table, i, inner * kColumns[i].share - [table intercellSpacing].width - 1);
  [table setRowHeight:kTableRow];
  [table setAllowsColumnReordering:NO];
  [table setAllowsMultipleSelection:NO];
  [table setDataSource:static_cast<id>(source_.get())];
  [table setDelegate:static_cast<id>(source_.get())];
  [table setTarget:static_cast<id>(target_.get())];
  [table setDoubleAction:@selector(call:)];
  [scroll setDocumentView:table];
}

ChangesTable::~ChangesTable() {
  [asTable(table_) setDelegate:nil];
  [asTable(table_) setDataSource:nil];
  [asTable(table_) setTarget:nil];
}

void ChangesTable::show(const std::vector<SettingChange>& changes) {
  NSMutableArray* rows = [NSMutableArray array];
  for (const SettingChange& change : changes) {
    NSMutableArray* row = [NSMutableArray array];
    for (const ChangesColumn& column : kColumns) [row addObject:translatedText(change.*column.words)];
    [rows addObject:row];
  }
  const NSInteger before = std::max<NSInteger>(0, [asTable(table_) selectedRow]);
  [static_cast<NVKChangesSource*>(source_.get()) setRows:rows];
  [asTable(table_) reloadData];
  const auto count = static_cast<NSInteger>([rows count]);
  if (count == 0) return [asTable(table_) deselectAll:nil];
  const auto row = static_cast<NSUInteger>(std::min(before, count - 1));
  [asTable(table_) selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
}

int ChangesTable::chosen() const {
  const NSInteger row = [asTable(table_) selectedRow];
  return row < [asTable(table_) numberOfRows] ? static_cast<int>(row) : -1;
}

}  // namespace norvik::prefpane
