// What the pane answers the sidebar's outline view where a scenario cannot see it: about opening, closing and
// headings, and about nodes that are not in the tree.
#include "tests/server/pane_fixture.h"

namespace norvik {
namespace {

struct SidebarTest : PaneTest {
  NVKServerPrefs pane{interface};
  OutlineView& view = pane.ib_oview_confBar;

  const ConfBarNode& heading() { return *view.rows()[0].node; }
  const ConfBarNode& page() { return *view.rows()[1].node; }
};

TEST_F(SidebarTest, BeforeTheTreeIsBuiltThereIsNothing) {
  const ConfBarNode stranger{{"user", "Current User"}};
  EXPECT_EQ(pane._childrenForItem(nullptr), nullptr);
  EXPECT_EQ(pane._childrenForItem(&stranger), nullptr);
  EXPECT_EQ(pane.numberOfChildrenOfItem(view, nullptr), 0u);
  EXPECT_FALSE(pane.isGroupItem(view, stranger));
  pane.outlineViewSelectionDidChange(view);
  EXPECT_EQ(pane.ib_tview_confView.selectedItem(), &pane.ib_tview_confView.items()[0]);
}

TEST_F(SidebarTest, GroupsStayOpenWithoutTriangles) {
  pane.awakeFromNib();
  for (const OutlineView::Row& row : view.rows()) {
    EXPECT_FALSE(pane.shouldCollapseItem(view, *row.node));
    EXPECT_FALSE(pane.shouldShowOutlineCellForItem(view, *row.node));
    EXPECT_EQ(pane.shouldExpandItem(view, *row.node), row.parent == nullptr);
    EXPECT_EQ(pane.isItemExpandable(view, *row.node), row.parent == nullptr);
  }
}

TEST_F(SidebarTest, AHeadingIsKnownByItsTextsAndAPageIsNone) {
  pane.awakeFromNib();
  EXPECT_TRUE(pane.isGroupItem(view, heading()));
  EXPECT_TRUE(pane.isGroupItem(view, ConfBarNode{{"admin", "Server Administrator"}}));
  EXPECT_FALSE(pane.isGroupItem(view, ConfBarNode{{"admin", "Server administrator"}}));
  EXPECT_FALSE(pane.isGroupItem(view, page()));
}

TEST_F(SidebarTest, AGroupThatIsClosedAllTheSameOpensBeforeItIsDrawn) {
  pane.awakeFromNib();
  OutlineView closed;
  closed.setDelegate(&pane);
  closed.reloadData();
  ASSERT_EQ(closed.rows().size(), 2u);
  const ConfBarNode& group = *closed.rows()[0].node;
  pane.willDisplayCell(closed, group);
  EXPECT_TRUE(closed.isItemExpanded(group));
  const std::size_t rows = closed.rows().size();
  EXPECT_GT(rows, 2u);
  pane.willDisplayCell(closed, group);
  pane.willDisplayCell(closed, *closed.rows()[1].node);  // a page
  EXPECT_EQ(closed.rows().size(), rows);
}

TEST_F(SidebarTest, AnUnknownGroupHasNoPages) {
  pane.awakeFromNib();
  const ConfBarNode stranger{{"guest", "Guests"}};
  EXPECT_EQ(pane._childrenForItem(&stranger), nullptr);
  EXPECT_EQ(pane.numberOfChildrenOfItem(view, &stranger), 0u);
}

TEST_F(SidebarTest, ASelectedHeadingChangesNoPage) {
  pane.awakeFromNib();
  const TabViewItem* shown = pane.ib_tview_confView.selectedItem();
  view.selectRow(0);
  EXPECT_EQ(view.selectedRow(), 0);
  EXPECT_EQ(pane.ib_tview_confView.selectedItem(), shown);
}

TEST_F(SidebarTest, AnAdministratorsPageSelectedWhileLockedIsNotShown) {
  pane.awakeFromNib();
  const TabViewItem* shown = pane.ib_tview_confView.selectedItem();
  const int last = static_cast<int>(view.rows().size()) - 1;
  view.clickRow(last);
  EXPECT_EQ(view.selectedRow(), 1);
  view.selectRow(last);  // without asking whether it may be selected
  EXPECT_EQ(view.selectedRow(), last);
  EXPECT_EQ(pane.ib_tview_confView.selectedItem(), shown);
}

}  // namespace
}  // namespace norvik
