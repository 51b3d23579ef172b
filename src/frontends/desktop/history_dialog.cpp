// Two lists: a row is marked as different by its word and by bold letters.
#include "src/frontends/desktop/history_dialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/note_label.h"

namespace norvik::desktop {

namespace {

constexpr int kHistoryLetters = 100;
constexpr int kEntryLines = 10;
constexpr int kSettingLines = 8;

QTreeWidget* makeList(const char* name, std::string_view title, int lines,
                      std::initializer_list<std::string_view> columns, QWidget* parent) {
  auto* list = new QTreeWidget(parent);
  list->setObjectName(QString::fromLatin1(name));
  list->setAccessibleName(text(translated(title)));
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  QStringList headings;
  for (const std::string_view column : columns) headings += text(translated(column));
  list->setHeaderLabels(headings);
  list->setMinimumHeight(lines * list->fontMetrics().height());
  return list;
}

void addRow(QTreeWidget& list, const QStringList& words, bool isBold) {
  auto* item = new QTreeWidgetItem(&list, words);
  QFont font = list.font();
  font.setBold(isBold);
  for (int i = 0; i < static_cast<int>(words.size()); ++i) {
    item->setToolTip(i, words[i]);
    item->setFont(i, font);
  }
}

void fitColumns(QTreeWidget& list) {
  for (int i = 0; i < list.columnCount(); ++i) list.resizeColumnToContents(i);
}

// In the person's time and format; as it is written where it is no time.
QString localTime(const std::string& time) {
  const QDateTime when = QDateTime::fromString(text(time), Qt::ISODate);
  return when.isValid() ? QLocale().toString(when.toLocalTime(), QLocale::ShortFormat) : text(time);
}

QLabel* titleOver(QTreeWidget& list, std::string_view title) {
  auto* label = new QLabel(text(translated(title)), list.parentWidget());
  label->setBuddy(&list);
  return label;
}

}  // namespace

HistoryDialog::HistoryDialog(QWidget* window, const InterfaceDescription& interface, Source source)
    : QDialog(window, Qt::Sheet), source_(std::move(source)), note_(new NoteLabel(this)) {
  setObjectName(QStringLiteral("historyDialog"));
  setWindowTitle(text(translated(history_texts::kTitle)));
  setWindowModality(Qt::WindowModal);
  entries_ = makeList("historyEntries", history_texts::kEntries, kEntryLines,
                      {history_texts::kWhenColumn, history_texts::kFrontEndColumn, history_texts::kWhatColumn,
                       history_texts::kOutcomeColumn},
                      this);
  settings_ = makeList("historySettings", history_texts::kSettings, kSettingLines,
                       {window_texts::kSettingColumn, window_texts::kPageColumn, history_texts::kThenColumn,
                        history_texts::kNowColumn, history_texts::kSinceColumn},
                       this);
  note_->setObjectName(QStringLiteral("historyNote"));
  auto* column = new QVBoxLayout(this);
  column->addWidget(titleOver(*entries_, history_texts::kEntries));
  column->addWidget(entries_, 1);
  column->addWidget(titleOver(*settings_, history_texts::kSettings));
  column->addWidget(settings_, 1);
  column->addWidget(note_);
  auto* box = new QDialogButtonBox(this);
  undo_ = box->addButton(text(translated(history_texts::kUndo)), QDialogButtonBox::AcceptRole);
  undo_->setObjectName(QStringLiteral("historyUndo"));
  undo_->setToolTip(text(translated(history_texts::kUndoHelp)));
  undo_->setAccessibleDescription(undo_->toolTip());
  undo_->setAutoDefault(false);
  box->addButton(translatedText(window_texts::kClose), QDialogButtonBox::RejectRole)->setDefault(true);
  column->addWidget(box);
  QSet<QChar> taken;
  addMnemonics(*this, taken);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  showEntries(interface);
  connect(entries_, &QTreeWidget::itemSelectionChanged, this, [this] { showChosen(); });
  showChosen();
  entries_->setFocus();
  resize(kHistoryLetters * fontMetrics().averageCharWidth(), sizeHint().height());
}

void HistoryDialog::showEntries(const InterfaceDescription& interface) {
  for (const HistoryEntry& entry : source_.entries) {
    addRow(*entries_,
           {localTime(entry.time), text(frontEndWords(entry.frontEnd)), text(whatWords(entry, interface)),
            text(outcomeWords(entry))},
           false);
  }
  fitColumns(*entries_);
  if (!source_.entries.empty()) entries_->setCurrentItem(entries_->topLevelItem(0));
}

const HistoryEntry* HistoryDialog::chosen() const {
  const int row = entries_->indexOfTopLevelItem(entries_->currentItem());
  return row >= 0 ? &source_.entries[static_cast<std::size_t>(row)] : nullptr;
}

void HistoryDialog::showChosen() {
  const HistoryEntry* entry = chosen();
  const Chosen now = entry != nullptr ? source_.look(*entry) : Chosen();
  settings_->clear();
  for (const HistoryRow& row : now.rows) {
    addRow(*settings_,
           {text(row.label), translatedText(row.page), translatedText(row.then), translatedText(row.now),
            translatedText(row.since)},
           row.differs);
  }
  fitColumns(*settings_);
  undo_->setEnabled(now.canUndo);
  const std::string both = source_.note + (source_.note.empty() || now.note.empty() ? "" : "\n") + now.note;
  note_->setNote(text(both), source_.note.empty() ? MessageKind::note : MessageKind::warning);
}

}  // namespace norvik::desktop
