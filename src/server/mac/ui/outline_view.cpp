// Rows, selection and page switching of the sidebar's two views.
#include "src/server/mac/ui/outline_view.h"

#include <algorithm>
#include <utility>

namespace norvik {

void TabView::setItems(std::vector<TabViewItem> items) {
  items_ = std::move(items);
  selected_ = items_.empty() ? nullptr : &items_.front();
}

void TabView::selectItem(const TabViewItem& item) {
  if (selected_ == &item) return;
  selected_ = &item;
  notifyObserver();
}

void OutlineView::reloadData() {
  rows_.clear();
  if (delegate_ != nullptr) appendRows(nullptr);
  if (selected_ >= static_cast<int>(rows_.size())) selected_ = -1;
  notifyObserver();
}

void OutlineView::appendRows(const ConfBarNode* parent) {
  const std::size_t count = delegate_->numberOfChildrenOfItem(*this, parent);
  for (std::size_t i = 0; i < count; ++i) {
    const ConfBarNode& node = delegate_->childOfItem(*this, i, parent);
    rows_.push_back({&node, parent, {}});
    rows_.back().view = delegate_->viewForTableColumn(*this, node);
    if (delegate_->isItemExpandable(*this, node) && isItemExpanded(node)) appendRows(&node);
  }
}

void OutlineView::expandItem(const ConfBarNode* node) {
  std::vector<const ConfBarNode*> groups;
  for (const Row& row : rows_) {
    const bool meant = node == nullptr || row.node == node;
    if (meant && delegate_->isItemExpandable(*this, *row.node)) groups.push_back(row.node);
  }
  for (const ConfBarNode* group : groups) {
    if (!isItemExpanded(*group) && delegate_->shouldExpandItem(*this, *group)) expanded_.push_back(group);
  }
  reloadData();
}

void OutlineView::collapseItem(const ConfBarNode& node) {
  if (delegate_ == nullptr || !delegate_->shouldCollapseItem(*this, node)) return;
  std::erase(expanded_, &node);
  reloadData();
}

bool OutlineView::isItemExpanded(const ConfBarNode& node) const {
  return std::find(expanded_.begin(), expanded_.end(), &node) != expanded_.end();
}

const ConfBarNode* OutlineView::parentForItem(const ConfBarNode& node) const {
  const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row& r) { return r.node == &node; });
  return row == rows_.end() ? nullptr : row->parent;
}

CellView OutlineView::makeViewWithIdentifier(std::string_view identifier, const void* owner) {
  return {identifier, {}, owner};
}

const ConfBarNode* OutlineView::itemAtRow(int row) const {
  if (row < 0 || row >= static_cast<int>(rows_.size())) return nullptr;
  return rows_[static_cast<std::size_t>(row)].node;
}

void OutlineView::selectRow(int row) {
  if (itemAtRow(row) == nullptr || row == selected_) return;
  selected_ = row;
  notifyObserver();
  if (delegate_ != nullptr) delegate_->outlineViewSelectionDidChange(*this);
}

void OutlineView::clickRow(int row) {
  const ConfBarNode* node = itemAtRow(row);
  if (node == nullptr || delegate_ == nullptr || !delegate_->shouldSelectItem(*this, *node)) return;
  selectRow(row);
}

}  // namespace norvik
