// The style draws the row without words; the two lines are shortened where there is no room.
#include "src/frontends/desktop/search_result.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <utility>

namespace norvik::desktop {

namespace {

constexpr double kPlaceFontSize = 0.85;  // of the list's font
constexpr double kResultMargin = 0.35;   // of a line's height

QFont placeFont(QFont font) {
  if (font.pixelSize() > 0) {
    font.setPixelSize(static_cast<int>(font.pixelSize() * kPlaceFontSize));
  } else {
    font.setPointSizeF(font.pointSizeF() * kPlaceFontSize);
  }
  return font;
}

int marginOf(const QStyleOptionViewItem& option) {
  return static_cast<int>(option.fontMetrics.height() * kResultMargin);
}

}  // namespace

QSize SearchResult::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem own = option;
  initStyleOption(&own, index);
  const QFontMetrics place(placeFont(own.font));
  return {own.fontMetrics.horizontalAdvance(own.text) + 2 * marginOf(own),
          own.fontMetrics.height() + place.height() + marginOf(own)};
}

void SearchResult::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem own = option;
  initStyleOption(&own, index);
  const QString label = std::exchange(own.text, QString());
  QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &own, painter, own.widget);
  const bool isSelected = (own.state & QStyle::State_Selected) != 0;
  const auto role = isSelected ? QPalette::HighlightedText : QPalette::Text;
  const int margin = marginOf(own);
  QRect line = own.rect.adjusted(margin, margin / 2, -margin, -margin / 2);
  painter->save();
  painter->setPen(own.palette.color(role));
  painter->setFont(own.font);
  const auto side =
      QStyle::visualAlignment(own.direction, Qt::AlignTop | Qt::AlignLeading) | Qt::AlignAbsolute;
  painter->drawText(line, static_cast<int>(side),
                    own.fontMetrics.elidedText(label, Qt::ElideRight, line.width()));
  line.setTop(line.top() + own.fontMetrics.height());
  const QFont smaller = placeFont(own.font);
  painter->setFont(smaller);
  painter->drawText(
      line, static_cast<int>(side),
      QFontMetrics(smaller).elidedText(index.data(kPlaceRole).toString(), Qt::ElideRight, line.width()));
  painter->restore();
}

}  // namespace norvik::desktop
