// The sidebar: two groups of pages, the administrator's greyed while locked. The tree is built once and kept.
#include <algorithm>

#include "src/server/mac/pane/pane.h"

namespace norvik {

namespace {

constexpr std::string_view kGroupLabels[] = {"user:Current User", "admin:Server Administrator"};
constexpr std::string_view kAdminGroup = "admin";

// Row 0 is the first group's heading, so this is the first page.
constexpr int kFirstPageRow = 1;

std::vector<std::string> splitAtColons(std::string_view label) {
  std::vector<std::string> parts;
  for (std::size_t colon = 0; colon != std::string_view::npos;) {
    colon = label.find(':');
    parts.emplace_back(label.substr(0, colon));
    if (colon != std::string_view::npos) label.remove_prefix(colon + 1);
  }
  return parts;
}

bool isAdminPage(const ConfBarNode& node) {
  return node.texts[0] == kAdminGroup;
}

}  // namespace

void NVKServerPrefs::buildConfBar() {
  m_confBarRoots.emplace();
  for (const std::string_view label : kGroupLabels) m_confBarRoots->push_back({splitAtColons(label)});
  m_confBarItems.emplace();
  for (const TabViewItem& page : ib_tview_confView.items()) {
    ConfBarNode node{splitAtColons(page.label), &page};
    if (node.texts.size() == 2) (*m_confBarItems)[node.texts[0]].push_back(std::move(node));
  }
}

void NVKServerPrefs::loadConfBar() {
  const int remembered = ib_oview_confBar.selectedRow();
  ib_oview_confBar.reloadData();
  ib_oview_confBar.expandItem(nullptr);
  const int row = remembered == -1 || !authorized() ? kFirstPageRow : remembered;
  if (ib_oview_confBar.selectedRow() != row) ib_oview_confBar.selectRow(row);
}

const std::vector<ConfBarNode>* NVKServerPrefs::_childrenForItem(const ConfBarNode* node) const {
  if (node == nullptr) return m_confBarRoots ? &*m_confBarRoots : nullptr;
  if (!m_confBarItems) return nullptr;
  const auto pages = m_confBarItems->find(node->texts[0]);
  return pages != m_confBarItems->end() ? &pages->second : nullptr;
}

std::size_t NVKServerPrefs::numberOfChildrenOfItem(const OutlineView& /*view*/, const ConfBarNode* node) {
  const auto* children = _childrenForItem(node);
  return children != nullptr ? children->size() : 0;
}

const ConfBarNode& NVKServerPrefs::childOfItem(const OutlineView& /*view*/, std::size_t index,
                                               const ConfBarNode* node) {
  return (*_childrenForItem(node))[index];
}

bool NVKServerPrefs::isItemExpandable(const OutlineView& view, const ConfBarNode& node) {
  return view.parentForItem(node) == nullptr;
}

bool NVKServerPrefs::shouldExpandItem(const OutlineView& view, const ConfBarNode& node) {
  return view.parentForItem(node) == nullptr;
}

bool NVKServerPrefs::shouldCollapseItem(const OutlineView& /*view*/, const ConfBarNode& /*node*/) {
  return false;
}

bool NVKServerPrefs::isGroupItem(const OutlineView& /*view*/, const ConfBarNode& node) {
  return m_confBarRoots &&
         std::find(m_confBarRoots->begin(), m_confBarRoots->end(), node) != m_confBarRoots->end();
}

bool NVKServerPrefs::shouldShowOutlineCellForItem(const OutlineView& /*view*/, const ConfBarNode& /*node*/) {
  return false;
}

bool NVKServerPrefs::shouldSelectItem(const OutlineView& view, const ConfBarNode& node) {
  if (view.parentForItem(node) == nullptr) return false;
  return !isAdminPage(node) || authorized();
}

// A safety net: a group that was closed opens again before it is drawn.
void NVKServerPrefs::willDisplayCell(OutlineView& view, const ConfBarNode& node) {
  if (isItemExpandable(view, node) && !view.isItemExpanded(node)) view.expandItem(&node);
}

CellView NVKServerPrefs::viewForTableColumn(const OutlineView& view, const ConfBarNode& node) {
  const char* identifier = "RootItem";
  if (view.parentForItem(node) != nullptr) {
    identifier = isAdminPage(node) && !authorized() ? "DisabledItem" : "EnabledItem";
  }
  CellView cell = OutlineView::makeViewWithIdentifier(identifier, this);
  cell.text = node.texts[1];
  return cell;
}

void NVKServerPrefs::outlineViewSelectionDidChange(OutlineView& view) {
  const ConfBarNode* node = view.itemAtRow(view.selectedRow());
  if (node == nullptr || (isAdminPage(*node) && !authorized())) return;
  if (node->count() > 2) ib_tview_confView.selectItem(*node->page);
}

}  // namespace norvik
