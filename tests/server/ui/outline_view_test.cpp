// The sidebar's two views against a delegate of the test: rows, opening and closing, selection, pages.
#include "src/server/mac/ui/outline_view.h"
#include "tests/server/change_counter.h"

#include <gtest/gtest.h>

namespace norvik {
namespace {

// Two groups, the second of which has two pages.
struct Tree : OutlineViewDelegate {
  std::vector<ConfBarNode> groups = {{{"user", "Current User"}}, {{"admin", "Server Administrator"}}};
  std::vector<ConfBarNode> pages = {{{"admin", "General"}}, {{"admin", "Image"}}};
  bool closes = true;
  bool opens = true;
  bool selects = true;
  int selections = 0;

  bool isGroup(const ConfBarNode& node) const { return &node == &groups[0] || &node == &groups[1]; }
  std::size_t numberOfChildrenOfItem(const OutlineView&, const ConfBarNode* node) override {
    if (node == nullptr) return groups.size();
    return node == &groups[1] ? pages.size() : 0;
  }
  const ConfBarNode& childOfItem(const OutlineView&, std::size_t index, const ConfBarNode* node) override {
    return node == nullptr ? groups[index] : pages[index];
  }
  bool isItemExpandable(const OutlineView&, const ConfBarNode& node) override { return isGroup(node); }
  bool shouldExpandItem(const OutlineView&, const ConfBarNode&) override { return opens; }
  bool shouldCollapseItem(const OutlineView&, const ConfBarNode&) override { return closes; }
  bool isGroupItem(const OutlineView&, const ConfBarNode& node) override { return isGroup(node); }
  bool shouldShowOutlineCellForItem(const OutlineView&, const ConfBarNode&) override { return false; }
  bool shouldSelectItem(const OutlineView&, const ConfBarNode&) override { return selects; }
  void willDisplayCell(OutlineView&, const ConfBarNode&) override {}
  CellView viewForTableColumn(const OutlineView&, const ConfBarNode& node) override {
    CellView cell = OutlineView::makeViewWithIdentifier("EnabledItem", this);
    cell.text = node.texts[1];
    return cell;
  }
  void outlineViewSelectionDidChange(OutlineView&) override { ++selections; }
};

std::vector<std::string> textsOf(const OutlineView& view) {
  std::vector<std::string> texts;
  for (const OutlineView::Row& row : view.rows()) texts.push_back(row.view.text);
  return texts;
}

using Texts = std::vector<std::string>;
const Texts kClosed = {"Current User", "Server Administrator"};
const Texts kOpen = {"Current User", "Server Administrator", "General", "Image"};

struct OutlineViewTest : testing::Test {
  Tree tree;
  OutlineView view;
  OutlineViewTest() {
    view.setDelegate(&tree);
    view.reloadData();
  }
};

TEST_F(OutlineViewTest, WithoutADelegateHasNoRowsAndAnswersNothing) {
  OutlineView lone;
  lone.reloadData();
  lone.expandItem(nullptr);
  lone.collapseItem(tree.groups[0]);
  lone.clickRow(0);
  lone.selectRow(0);
  EXPECT_TRUE(lone.rows().empty());
  EXPECT_EQ(lone.selectedRow(), -1);
  EXPECT_EQ(lone.itemAtRow(0), nullptr);
}

TEST_F(OutlineViewTest, OpensOneGroupOrAllAndClosesThemAgain) {
  EXPECT_EQ(textsOf(view), kClosed);
  view.expandItem(&tree.groups[0]);
  EXPECT_TRUE(view.isItemExpanded(tree.groups[0]));
  EXPECT_FALSE(view.isItemExpanded(tree.groups[1]));
  EXPECT_EQ(textsOf(view), kClosed);
  view.expandItem(nullptr);
  EXPECT_EQ(textsOf(view), kOpen);
  view.collapseItem(tree.groups[1]);
  EXPECT_EQ(textsOf(view), kClosed);
}

TEST_F(OutlineViewTest, ADelegateMayKeepGroupsClosedOrOpen) {
  tree.opens = false;
  view.expandItem(nullptr);
  EXPECT_EQ(textsOf(view), kClosed);
  tree.opens = true;
  view.expandItem(nullptr);
  tree.closes = false;
  view.collapseItem(tree.groups[1]);
  EXPECT_EQ(textsOf(view), kOpen);
}

TEST_F(OutlineViewTest, OpensNothingThatIsNoGroup) {
  view.expandItem(nullptr);
  view.expandItem(&tree.pages[0]);
  EXPECT_FALSE(view.isItemExpanded(tree.pages[0]));
}

TEST_F(OutlineViewTest, RowsKnowTheirParentAndTheirLook) {
  view.expandItem(nullptr);
  EXPECT_EQ(view.parentForItem(tree.pages[1]), &tree.groups[1]);
  EXPECT_EQ(view.parentForItem(tree.groups[1]), nullptr);
  const ConfBarNode stranger{{"admin", "General"}};
  EXPECT_EQ(view.parentForItem(stranger), nullptr);
  EXPECT_EQ(view.rows()[3].view.identifier, "EnabledItem");
  EXPECT_EQ(view.rows()[3].view.owner, &tree);
  EXPECT_EQ(view.itemAtRow(3), &tree.pages[1]);
  EXPECT_EQ(view.itemAtRow(4), nullptr);
  EXPECT_EQ(view.itemAtRow(-1), nullptr);
}

TEST_F(OutlineViewTest, SelectsOnceARowThatThereIs) {
  view.selectRow(1);
  view.selectRow(1);
  view.selectRow(2);
  view.selectRow(-1);
  EXPECT_EQ(view.selectedRow(), 1);
  EXPECT_EQ(tree.selections, 1);
}

TEST_F(OutlineViewTest, AClickAsksFirst) {
  tree.selects = false;
  view.clickRow(1);
  EXPECT_EQ(view.selectedRow(), -1);
  tree.selects = true;
  view.clickRow(7);
  EXPECT_EQ(view.selectedRow(), -1);
  view.clickRow(1);
  EXPECT_EQ(view.selectedRow(), 1);
}

TEST_F(OutlineViewTest, SelectsWithNobodyToTell) {
  OutlineView lone;
  lone.setDelegate(&tree);
  lone.reloadData();
  lone.setDelegate(nullptr);
  lone.clickRow(0);
  EXPECT_EQ(lone.selectedRow(), -1);
  lone.selectRow(1);
  EXPECT_EQ(lone.selectedRow(), 1);
  EXPECT_EQ(tree.selections, 0);
}

TEST_F(OutlineViewTest, AReloadKeepsTheRowNumberWhileThereIsSuchARow) {
  view.expandItem(nullptr);
  view.selectRow(3);
  view.reloadData();
  EXPECT_EQ(view.selectedRow(), 3);
  tree.pages.pop_back();
  view.reloadData();
  EXPECT_EQ(view.selectedRow(), -1);
}

TEST_F(OutlineViewTest, TellsItsObserverOfRowsAndSelection) {
  ChangeCounter count;
  view.setObserver(&count);
  view.reloadData();
  view.selectRow(1);
  view.selectRow(1);
  EXPECT_EQ(count.changes, 2);
}

TEST(TabViewTest, ShowsTheFirstPageThenTheOneThatWasSelected) {
  TabView tabs;
  EXPECT_EQ(tabs.selectedItem(), nullptr);
  tabs.setItems({{"user:Image"}, {"admin:General"}});
  EXPECT_EQ(tabs.selectedItem(), &tabs.items()[0]);
  ChangeCounter count;
  tabs.setObserver(&count);
  tabs.selectItem(tabs.items()[1]);
  tabs.selectItem(tabs.items()[1]);
  EXPECT_EQ(tabs.selectedItem(), &tabs.items()[1]);
  EXPECT_EQ(count.changes, 1);
  tabs.setItems({});
  EXPECT_EQ(tabs.selectedItem(), nullptr);
}

TEST(ConfBarNodeTest, CountsItsPageAsAnElement) {
  const TabViewItem page{"user:Image"};
  EXPECT_EQ((ConfBarNode{{"user", "Current User"}}.count()), 2u);
  EXPECT_EQ((ConfBarNode{{"user", "Image"}, &page}.count()), 3u);
}

}  // namespace
}  // namespace norvik
