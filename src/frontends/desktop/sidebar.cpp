// Rows into items: a heading stands out and cannot be chosen, a page stands under its heading, a greyed one
// cannot be chosen either.
#include "src/frontends/desktop/sidebar.h"

#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>

#include "src/frontends/desktop/binding.h"

namespace norvik::desktop {

namespace {

constexpr int kHeadingRole = Qt::UserRole;

constexpr double kHeadingLines = 2.2;  // heights, in lines of text
constexpr double kPageLines = 1.6;

struct RowLook {
  std::string_view identifier;
  bool heading;
  Qt::ItemFlags flags;
};
const RowLook kLooks[] = {
    {"RootItem", true, Qt::NoItemFlags},
    {"EnabledItem", false, Qt::ItemIsEnabled | Qt::ItemIsSelectable},
    {"DisabledItem", false, Qt::NoItemFlags},
};

void look(QListWidgetItem& item, const CellView& view) {
  for (const RowLook& row : kLooks) {
    if (row.identifier != view.identifier) continue;
    if (item.flags() != row.flags) item.setFlags(row.flags);
    item.setData(kHeadingRole, row.heading);
    item.setText(text(view.text));
  }
}

class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(const OutlineView& outline, QObject* parent) : QStyledItemDelegate(parent), outline_(outline) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const double lines = index.data(kHeadingRole).toBool() ? kHeadingLines : kPageLines;
    return {row.fontMetrics.horizontalAdvance(row.text) + 2 * indent(row, index),
            static_cast<int>(row.fontMetrics.height() * lines)};
  }

  // The row is filled as a whole; its words stand apart, as far in as the row is deep.
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QStyle& style = *row.widget->style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &row, painter, row.widget);
    const bool selected = row.state.testFlag(QStyle::State_Selected);
    const auto group = row.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    row.palette.setCurrentColorGroup(group);
    painter->save();
    painter->setFont(row.font);
    const int in = indent(row, index);
    style.drawItemText(painter, row.rect.adjusted(in, 0, -in / 2, 0), Qt::AlignVCenter | Qt::AlignLeading,
                       row.palette, true,
                       row.fontMetrics.elidedText(row.text, Qt::ElideRight, row.rect.width() - in),
                       selected ? QPalette::HighlightedText : QPalette::Text);
    painter->restore();
    drawFocus(painter, row);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* row, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(row, index);
    if (index.data(kHeadingRole).toBool()) {
      row->font.setBold(true);
      row->fontMetrics = QFontMetrics(row->font);
      row->state |= QStyle::State_Enabled;  // it cannot be chosen, but it is not off either
    }
    row->state.setFlag(QStyle::State_Selected, index.row() == outline_.selectedRow());
  }

 private:
  static int indent(const QStyleOptionViewItem& row, const QModelIndex& index) {
    return row.fontMetrics.averageCharWidth() * (index.data(kHeadingRole).toBool() ? 1 : 2);
  }

  static void drawFocus(QPainter* painter, const QStyleOptionViewItem& row) {
    if (!row.state.testFlag(QStyle::State_HasFocus)) return;
    QStyleOptionFocusRect frame;
    frame.QStyleOption::operator=(row);
    frame.backgroundColor = row.palette.color(QPalette::Highlight);
    frame.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
    row.widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, row.widget);
  }

  const OutlineView& outline_;
};

}  // namespace

Sidebar::Sidebar(OutlineView& outline, const ControlDescription& description, QWidget* parent)
    : QListWidget(parent), outline_(outline) {
  setObjectName(text(outline.name()));
  setAccessibleName(text(description.label));
  for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()})
    bar->setAccessibleName(text(description.label));
  setAccessibleDescription(text(description.help));
  setToolTip(text(description.help));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  setItemDelegate(new RowDelegate(outline, this));
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { updateGeometry(); });
  outline_.setObserver(this);
  showRows();
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    outline_.clickRow(row);
    showSelection();  // a refused click leaves the model's row, and so ours
  });
}

Sidebar::~Sidebar() {
  outline_.setObserver(nullptr);
}

void Sidebar::controlChanged(Control& /*control*/) {
  showRows();
}

void Sidebar::showRows() {
  const QSignalBlocker quiet(this);
  const auto& rows = outline_.rows();
  const int count = static_cast<int>(rows.size());
  if (this->count() != count) updateGeometry();
  while (this->count() > count) delete takeItem(this->count() - 1);
  while (this->count() < count) addItem(QString());
  for (int i = 0; i < count; ++i) look(*item(i), rows[static_cast<std::size_t>(i)].view);
  showSelection();
}

void Sidebar::showSelection() {
  const QSignalBlocker quiet(this);
  if (currentRow() != outline_.selectedRow()) setCurrentRow(outline_.selectedRow());
}

// To the first or last page that can be chosen; the list itself would stop at a heading.
QModelIndex Sidebar::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome || action == MovePageUp) return firstFrom(0, 1);
  if (action == MoveEnd || action == MovePageDown) return firstFrom(count() - 1, -1);
  return QListWidget::moveCursor(action, modifiers);
}

QModelIndex Sidebar::firstFrom(int row, int step) const {
  while (row >= 0 && row < count() && !item(row)->flags().testFlag(Qt::ItemIsEnabled)) row += step;
  return model()->index(row, 0);
}

// A scroll bar stands beside the words and takes nothing from them.
QSize Sidebar::sizeHint() const {
  const QScrollBar& bar = *verticalScrollBar();
  const int beside = bar.maximum() > bar.minimum() ? bar.sizeHint().width() : 0;
  const int width = sizeHintForColumn(0) + fontMetrics().averageCharWidth() + 2 * frameWidth();
  return {width + beside, QListWidget::sizeHint().height()};
}

QSize Sidebar::minimumSizeHint() const {
  return {sizeHint().width(), QListWidget::minimumSizeHint().height()};
}

}  // namespace norvik::desktop
