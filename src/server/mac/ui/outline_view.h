// The sidebar's outline view and the tab view whose pages it lists, as models: which rows there are, which
// one is selected, which page is shown. All questions about the tree go to a delegate.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/ui/control.h"

namespace norvik {

struct TabViewItem {
  std::string label;  // "user:Image"
};

// Shows one of its pages; the tabs themselves are not shown.
class TabView : public Control {
 public:
  // To be called once, before anything points at an item.
  void setItems(std::vector<TabViewItem> items);
  const std::vector<TabViewItem>& items() const { return items_; }
  // The page that is shown, at first the first one; null if there are no pages.
  const TabViewItem* selectedItem() const { return selected_; }
  void selectItem(const TabViewItem& item);

 private:
  std::vector<TabViewItem> items_;
  const TabViewItem* selected_ = nullptr;
};

// A node of the sidebar: an ordered list of texts, and for a page the tab view's item as one more element.
struct ConfBarNode {
  std::vector<std::string> texts;  // group key, title
  const TabViewItem* page = nullptr;

  std::size_t count() const { return texts.size() + (page != nullptr ? 1 : 0); }
  bool operator==(const ConfBarNode&) const = default;
};

// How one row looks: one of the interface's cell views, and its text.
struct CellView {
  std::string_view identifier;  // "RootItem", "EnabledItem" or "DisabledItem"
  std::string text;
  const void* owner = nullptr;
};

class OutlineView;

// Answers the outline view's questions. A null node means the invisible root of the tree.
class OutlineViewDelegate {
 public:
  virtual ~OutlineViewDelegate() = default;
  virtual std::size_t numberOfChildrenOfItem(const OutlineView& view, const ConfBarNode* node) = 0;
  virtual const ConfBarNode& childOfItem(const OutlineView& view, std::size_t index,
                                         const ConfBarNode* node) = 0;
  virtual bool isItemExpandable(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual bool shouldExpandItem(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual bool shouldCollapseItem(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual bool isGroupItem(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual bool shouldShowOutlineCellForItem(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual bool shouldSelectItem(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual void willDisplayCell(OutlineView& view, const ConfBarNode& node) = 0;
  virtual CellView viewForTableColumn(const OutlineView& view, const ConfBarNode& node) = 0;
  virtual void outlineViewSelectionDidChange(OutlineView& view) = 0;
};

class OutlineView : public Control {
 public:
  struct Row {
    const ConfBarNode* node = nullptr;
    const ConfBarNode* parent = nullptr;
    CellView view;
  };

  // Borrowed. With null for none, the view has no rows after the next reload.
  void setDelegate(OutlineViewDelegate* delegate) { delegate_ = delegate; }

  // Asks for the whole tree again. The selected row number is kept as long as there is such a row.
  void reloadData();
  // Opens a group if the delegate allows it; null opens every group.
  void expandItem(const ConfBarNode* node);
  // Closes a group if the delegate allows it.
  void collapseItem(const ConfBarNode& node);
  bool isItemExpanded(const ConfBarNode& node) const;
  const ConfBarNode* parentForItem(const ConfBarNode& node) const;
  // A cell view of the interface, with no text yet.
  static CellView makeViewWithIdentifier(std::string_view identifier, const void* owner);

  const std::vector<Row>& rows() const { return rows_; }
  // -1 when nothing is selected.
  int selectedRow() const { return selected_; }
  // Null if there is no such row.
  const ConfBarNode* itemAtRow(int row) const;
  // Selects that row alone, without asking the delegate; does nothing if there is no such row. Notifies the
  // delegate if the selection changed.
  void selectRow(int row);
  // What a person's click on a row does: selects it if the delegate allows it.
  void clickRow(int row);

 private:
  void appendRows(const ConfBarNode* parent);

  OutlineViewDelegate* delegate_ = nullptr;
  std::vector<Row> rows_;
  std::vector<const ConfBarNode*> expanded_;
  int selected_ = -1;
};

}  // namespace norvik
