// Rows as items: a heading is bold and cannot be chosen, a page is indented under it, a greyed page cannot be
// chosen either.
#include "src/frontends/desktop/sidebar.h"

#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/contrast.h"
#include "src/frontends/desktop/line_icon.h"
#include "src/frontends/shared/interface/window_messages.h"

namespace norvik::desktop {

namespace {

constexpr int kHeadingRole = Qt::UserRole;
constexpr int kChangesRole = Qt::UserRole + 1;  // how many changes the page holds
constexpr int kIconRole = Qt::UserRole + 2;     // the name of the page's icon

constexpr double kHeadingLines = 2.2;  // heights, in lines of text
constexpr double kPageLines = 1.6;

constexpr int kFocusWidth = 2;     // in pixels
constexpr double kDotLines = 0.4;  // the dot of a page that holds changes
constexpr double kIconLines = 1.1;
constexpr double kAfterIcon = 0.45;

// What each of the interface's cell views means for a row.
struct RowKind {
  std::string_view identifier;
  bool heading;
  Qt::ItemFlags flags;
};
const RowKind kRowKinds[] = {
    {"RootItem", true, Qt::NoItemFlags},
    {"EnabledItem", false, Qt::ItemIsEnabled | Qt::ItemIsSelectable},
    {"DisabledItem", false, Qt::NoItemFlags},
};

void showRow(QListWidgetItem& item, const CellView& view) {
  for (const RowKind& kind : kRowKinds) {
    if (kind.identifier != view.identifier) continue;
    if (item.flags() != kind.flags) item.setFlags(kind.flags);
    item.setData(kHeadingRole, kind.heading);
    item.setText(translatedText(view.text));
  }
}

class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(const OutlineView& outline, QObject* parent) : QStyledItemDelegate(parent), outline_(outline) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const double lines = index.data(kHeadingRole).toBool() ? kHeadingLines : kPageLines;
    return {row.fontMetrics.horizontalAdvance(row.text) + iconWidth(row, index) + 2 * indent(row, index) +
                dotSide(row),
            static_cast<int>(row.fontMetrics.height() * lines)};
  }

  // The whole row is filled; its words are indented as deep as the row is.
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
    const int before = indent(row, index);
    const int in = before + iconWidth(row, index);
    const QRect words = QStyle::visualRect(row.direction, row.rect, row.rect.adjusted(in, 0, -before / 2, 0));
    style.drawItemText(
        painter, words,
        static_cast<int>(QStyle::visualAlignment(row.direction, Qt::AlignVCenter | Qt::AlignLeading) |
                         Qt::AlignAbsolute),
        row.palette, true, row.fontMetrics.elidedText(row.text, Qt::ElideRight, words.width()),
        selected ? QPalette::HighlightedText : QPalette::Text);
    drawIcon(painter, row, index, selected);
    if (index.data(kChangesRole).toInt() > 0) drawDot(painter, row, selected);
    painter->restore();
    drawFocus(painter, row);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* row, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(row, index);
    if (index.data(kHeadingRole).toBool()) {
      row->font.setBold(true);
      row->fontMetrics = QFontMetrics(row->font);
      row->state |= QStyle::State_Enabled;  // it cannot be chosen, but it is not greyed either
    }
    row->state.setFlag(QStyle::State_Selected, index.row() == outline_.selectedRow());
  }

 private:
  static const LineDrawing* icon(const QModelIndex& index) {
    return pageIcon(index.data(kIconRole).toString().toStdString());
  }

  static int iconSide(const QStyleOptionViewItem& row) {
    return static_cast<int>(row.fontMetrics.height() * kIconLines);
  }

  // With the space after it.
  static int iconWidth(const QStyleOptionViewItem& row, const QModelIndex& index) {
    if (icon(index) == nullptr) return 0;
    return iconSide(row) + static_cast<int>(row.fontMetrics.height() * kAfterIcon);
  }

  // In the colour of the row's words; a greyed one as much darker or lighter as a shape needs.
  static void drawIcon(QPainter* painter, const QStyleOptionViewItem& row, const QModelIndex& index,
                       bool selected) {
    const LineDrawing* drawing = icon(index);
    if (drawing == nullptr) return;
    const QColor color =
        selected ? row.palette.color(QPalette::HighlightedText)
                 : madeLegible(row.palette.color(QPalette::Text),
                               row.palette.color(QPalette::Active, QPalette::Base),
                               row.palette.color(QPalette::Active, QPalette::Text), kGraphicContrast);
    const int side = iconSide(row);
    const QRect square(row.rect.left() + indent(row, index), row.rect.center().y() - side / 2, side, side);
    drawLineIcon(*painter, QStyle::visualRect(row.direction, row.rect, square), *drawing, color);
  }

  static int indent(const QStyleOptionViewItem& row, const QModelIndex& index) {
    return row.fontMetrics.averageCharWidth() * (index.data(kHeadingRole).toBool() ? 1 : 2);
  }

  static int dotSide(const QStyleOptionViewItem& row) {
    return static_cast<int>(row.fontMetrics.height() * kDotLines);
  }

  // In the colour of the marks beside changed settings; on the chosen row in that of its words.
  static void drawDot(QPainter* painter, const QStyleOptionViewItem& row, bool selected) {
    const int side = dotSide(row);
    const int right = row.rect.right() - row.fontMetrics.averageCharWidth() / 2;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(selected ? row.palette.highlightedText() : row.palette.highlight());
    const QRect dot(right - side, row.rect.center().y() - side / 2, side, side);
    painter->drawEllipse(QStyle::visualRect(row.direction, row.rect, dot));
  }

  // A frame in the colour of the chosen row's words; those of the styles are hardly visible on that row.
  static void drawFocus(QPainter* painter, const QStyleOptionViewItem& row) {
    if (!row.state.testFlag(QStyle::State_HasFocus)) return;
    const QRect frame = row.rect.adjusted(1, 1, -1, -1);
    const QRegion inside = frame.adjusted(kFocusWidth, kFocusWidth, -kFocusWidth, -kFocusWidth);
    for (const QRect& side : QRegion(frame).subtracted(inside))
      painter->fillRect(side, row.palette.highlightedText());
  }

  const OutlineView& outline_;
};

}  // namespace

Sidebar::Sidebar(OutlineView& outline, const TabView& tabs, const InterfaceDescription& interface,
                 QWidget* parent)
    : QListWidget(parent), outline_(outline), tabs_(tabs), interface_(interface) {
  const ControlDescription& description = *interface.find(outline.name());
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
    chooseRow(row);
    showSelection();  // a refused click leaves the model's selection unchanged
  });
}

Sidebar::~Sidebar() {
  outline_.setObserver(nullptr);
}

void Sidebar::controlChanged(Control& /*control*/) {
  const int before = currentRow();
  const bool wasOpen = canBeChosen(before);
  showRows();
  if (wasOpen && !canBeChosen(before)) rowToReturnTo_ = before;  // it was locked while it was shown
}

void Sidebar::chooseRow(int row) {
  outline_.clickRow(row);
  if (outline_.selectedRow() == row) rowToReturnTo_ = -1;
}

void Sidebar::choosePage(int step) {
  const int rows = count();
  for (int i = 1; i <= rows; ++i) {
    const int row = (outline_.selectedRow() + i * step + i * rows) % rows;
    if (canBeChosen(row)) return chooseRow(row);
  }
}

bool Sidebar::chooseTab(std::size_t tab) {
  const auto& rows = outline_.rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const int row = static_cast<int>(i);
    if (rows[i].node->page != &tabs_.items()[tab]) continue;
    if (canBeChosen(row)) chooseRow(row);
    return outline_.selectedRow() == row;
  }
  return false;
}

void Sidebar::markPages(const std::vector<std::size_t>& changes) {
  if (changes_ == changes) return;
  changes_ = changes;
  const QSignalBlocker quiet(this);
  showMarks();
}

std::size_t Sidebar::changesOf(int row) const {
  const TabViewItem* page = outline_.rows()[static_cast<std::size_t>(row)].node->page;
  for (std::size_t tab = 0; tab < changes_.size(); ++tab) {
    if (&tabs_.items()[tab] == page) return changes_[tab];
  }
  return 0;
}

// The name of its page's icon; empty for a heading.
QString Sidebar::iconOf(int row) const {
  const TabViewItem* page = outline_.rows()[static_cast<std::size_t>(row)].node->page;
  for (std::size_t tab = 0; tab < interface_.tabs.size(); ++tab) {
    if (&tabs_.items()[tab] == page) return text(interface_.tabs[tab].icon);
  }
  return {};
}

// A screen reader reads the number with the page's name.
void Sidebar::showMarks() {
  for (int row = 0; row < count(); ++row) {
    const std::size_t changes = changesOf(row);
    const QString words = text(countedChanges(changes));
    QListWidgetItem& shown = *item(row);
    shown.setData(kChangesRole, static_cast<int>(changes));
    shown.setData(Qt::AccessibleTextRole,
                  changes > 0 ? shown.text() + QStringLiteral(", ") + words : QVariant());
    shown.setToolTip(changes > 0 ? words : QString());
  }
  viewport()->update();
}

void Sidebar::restoreRow(int row) {
  chooseRow(row);
  if (outline_.selectedRow() != row) rowToReturnTo_ = row;
}

int Sidebar::rowToRestore() const {
  return rowToReturnTo_ != -1 ? rowToReturnTo_ : outline_.selectedRow();
}

void Sidebar::returnToPage() {
  if (rowToReturnTo_ != -1 && canBeChosen(rowToReturnTo_)) chooseRow(rowToReturnTo_);
}

bool Sidebar::canBeChosen(int row) const {
  return row >= 0 && row < count() && item(row)->flags().testFlag(Qt::ItemIsEnabled);
}

void Sidebar::showRows() {
  const QSignalBlocker quiet(this);
  const auto& rows = outline_.rows();
  const int count = static_cast<int>(rows.size());
  if (this->count() != count) updateGeometry();
  while (this->count() > count) delete takeItem(this->count() - 1);
  while (this->count() < count) addItem(QString());
  for (int i = 0; i < count; ++i) {
    showRow(*item(i), rows[static_cast<std::size_t>(i)].view);
    item(i)->setData(kIconRole, iconOf(i));
  }
  showMarks();
  showSelection();
}

void Sidebar::showSelection() {
  const QSignalBlocker quiet(this);
  if (currentRow() != outline_.selectedRow()) setCurrentRow(outline_.selectedRow());
}

// To the first or last page that can be chosen; QListWidget would stop at a heading.
QModelIndex Sidebar::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome || action == MovePageUp) return firstFrom(0, 1);
  if (action == MoveEnd || action == MovePageDown) return firstFrom(count() - 1, -1);
  return QListWidget::moveCursor(action, modifiers);
}

QModelIndex Sidebar::firstFrom(int row, int step) const {
  while (row >= 0 && row < count() && !canBeChosen(row)) row += step;
  return model()->index(row, 0);
}

// A scroll bar gets a width of its own, beside that of the words.
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
