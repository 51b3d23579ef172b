// How a result of the search is drawn: what a person reads at the setting, and smaller under it where it is.
#pragma once

#include <QStyledItemDelegate>

namespace norvik::desktop {

// The role of the second line; the first is the item's text.
inline constexpr int kPlaceRole = Qt::UserRole;

class SearchResult : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace norvik::desktop
