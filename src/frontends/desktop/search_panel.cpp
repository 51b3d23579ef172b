// The keys of the field work on the results, so that nobody has to leave it.
#include "src/frontends/desktop/search_panel.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/search_result.h"
#include "src/frontends/shared/search/search_texts.h"

namespace norvik::desktop {

SearchPanel::SearchPanel(NVKServerPrefs& pane, const InterfaceDescription& interface, QWidget* sidebar,
                         QWidget* parent)
    : QWidget(parent),
      pane_(pane),
      interface_(interface),
      field_(new QLineEdit(this)),
      lists_(new QStackedWidget(this)),
      results_(new QListWidget(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  field_->setObjectName(QStringLiteral("searchField"));
  field_->setPlaceholderText(translatedText(search_texts::kSearch));
  field_->setAccessibleName(translatedText(search_texts::kSearch));
  field_->setAccessibleDescription(translatedText(search_texts::kHelp));
  field_->setToolTip(translatedText(search_texts::kHelp));
  field_->setClearButtonEnabled(true);
  field_->installEventFilter(this);
  results_->setObjectName(QStringLiteral("searchResults"));
  results_->setAccessibleName(translatedText(search_texts::kResults));
  results_->setItemDelegate(new SearchResult(results_));
  results_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  results_->installEventFilter(this);
  // The panel is as wide as the sidebar.
  field_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  results_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  column->addWidget(field_);
  column->addWidget(lists_, 1);
  lists_->addWidget(sidebar);
  lists_->addWidget(results_);
  setSizePolicy(sidebar->sizePolicy());
  connect(field_, &QLineEdit::textChanged, this, [this] { search(); });
  connect(results_, &QListWidget::itemClicked, this, [this] { choose(results_->currentRow()); });
}

void SearchPanel::begin() {
  field_->setFocus(Qt::ShortcutFocusReason);
  field_->selectAll();
}

void SearchPanel::end() {
  field_->clear();
}

void SearchPanel::search() {
  const std::string words = field_->text().trimmed().toStdString();
  hits_ = findShown(pane_, interface_, words);
  results_->clear();
  for (const SearchHit& hit : hits_) {
    const QString label = text(hit.label);
    const QString place = text(placeOf(hit, pane_));
    auto* item = new QListWidgetItem(label, results_);
    item->setData(kPlaceRole, place);
    item->setData(Qt::AccessibleTextRole, QString(label + QStringLiteral(", ") + place));
  }
  if (hits_.empty()) {
    auto* item = new QListWidgetItem(translatedText(search_texts::kNothing), results_);
    item->setFlags(Qt::NoItemFlags);
  } else {
    results_->setCurrentRow(0);
  }
  lists_->setCurrentIndex(words.empty() ? 0 : 1);
}

void SearchPanel::choose(int row) {
  if (row < 0 || static_cast<std::size_t>(row) >= hits_.size()) return;
  const SearchHit hit = hits_[static_cast<std::size_t>(row)];
  end();
  if (chosen) chosen(hit);
}

// Whether the key was one for the results. Escape ends a search; without one it is the window's.
bool SearchPanel::keyPressed(int key) {
  if (field_->text().isEmpty()) return false;
  const int rows = results_->count();
  switch (key) {
    case Qt::Key_Down:
      results_->setCurrentRow(std::min(results_->currentRow() + 1, rows - 1));
      return true;
    case Qt::Key_Up:
      results_->setCurrentRow(std::max(results_->currentRow() - 1, 0));
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      choose(results_->currentRow());
      return true;
    case Qt::Key_Escape:
      end();
      return true;
    default:
      return false;
  }
}

bool SearchPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && keyPressed(static_cast<QKeyEvent*>(event)->key())) return true;
  return QWidget::eventFilter(watched, event);
}

}  // namespace norvik::desktop
