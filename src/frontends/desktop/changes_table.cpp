// A row for each change; the column of reasons is there where one has a reason.
#include "src/frontends/desktop/changes_table.h"

#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/shared/interface/window_texts.h"

namespace norvik::desktop {

namespace {

enum ListColumn { kSetting, kPage, kOld, kNew, kWhy, kListColumns };

constexpr int kRowsHigh = 8;

}  // namespace

ChangesTable::ChangesTable(const QString& name, QWidget* parent) : QTreeWidget(parent) {
  setObjectName(name);
  setAccessibleName(translatedText(window_texts::kChangesTitle));
  setAccessibleDescription(translatedText(window_texts::kChangesHelp));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setHeaderLabels({translatedText(window_texts::kSettingColumn), translatedText(window_texts::kPageColumn),
                   translatedText(window_texts::kOldColumn), translatedText(window_texts::kNewColumn),
                   translatedText(window_texts::kReasonColumn)});
  setMinimumHeight(kRowsHigh * fontMetrics().height());
}

void ChangesTable::showChanges(const std::vector<SettingChange>& changes) {
  const int before = std::max(0, chosen());
  clear();
  for (const SettingChange& change : changes) {
    const QStringList words{text(change.label), translatedText(change.page), translatedText(change.from),
                            translatedText(change.to), text(change.because)};
    auto* item = new QTreeWidgetItem(this, words);
    for (int i = 0; i < kListColumns; ++i) item->setToolTip(i, words[i]);
  }
  const int rows = topLevelItemCount();
  if (rows > 0) setCurrentItem(topLevelItem(std::min(before, rows - 1)));
  for (int i = 0; i < kListColumns; ++i) resizeColumnToContents(i);
  setColumnHidden(kWhy, std::ranges::all_of(changes, [](const auto& c) { return c.because.empty(); }));
}

}  // namespace norvik::desktop
