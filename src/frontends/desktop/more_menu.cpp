// A table of entries.
#include "src/frontends/desktop/more_menu.h"

#include <QMenu>
#include <utility>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/shared/edits/take_back_texts.h"
#include "src/frontends/shared/trial/trial_texts.h"

namespace norvik::desktop {

namespace {

struct EntryRow {
  MoreEntry entry;
  std::string_view words;
  const char* name;
  bool beginsGroup = false;
  QKeyCombination keys = QKeyCombination(Qt::Key_unknown);
};

constexpr EntryRow kEntries[] = {
    {MoreEntry::takeBackPage, take_back_texts::kTakeBackPage, "moreTakeBackPage"},
    {MoreEntry::takeBackAll, take_back_texts::kTakeBackAll, "moreTakeBackAll"},
    {MoreEntry::pageToDefaults, take_back_texts::kPageToDefaults, "morePageToDefaults", true},
    {MoreEntry::allToDefaults, take_back_texts::kAllToDefaults, "moreAllToDefaults"},
    {MoreEntry::applyOnTrial, trial_texts::kApplyEntry, "moreApplyOnTrial", true},
    {MoreEntry::stopOnTrial, trial_texts::kStopEntry, "moreStopOnTrial"},
    {MoreEntry::history, take_back_texts::kHistory, "moreHistory", true, Qt::CTRL | Qt::Key_H},
    {MoreEntry::exportProfile, take_back_texts::kExport, "moreExport", true},
    {MoreEntry::importProfile, take_back_texts::kImport, "moreImport"},
    {MoreEntry::copyCommand, take_back_texts::kCopyCommand, "moreCopyCommand", true},
};

}  // namespace

MoreMenu::MoreMenu(QWidget* parent)
    : QPushButton(withoutMnemonic(desktop::text(translated(take_back_texts::kMore))), parent),
      menu_(new QMenu(this)) {
  setObjectName(QStringLiteral("moreButton"));
  setAccessibleName(desktop::text(translated(take_back_texts::kMore)));
  setAccessibleDescription(desktop::text(translated(take_back_texts::kMoreHelp)));
  setToolTip(desktop::text(translated(take_back_texts::kMoreHelp)));
  setAutoDefault(false);
  clickAtMnemonic(this);
  menu_->setObjectName(QStringLiteral("moreMenu"));
  for (const EntryRow& row : kEntries) {
    if (row.beginsGroup) menu_->addSeparator();
    QAction* action = menu_->addAction(withoutMnemonic(desktop::text(translated(row.words))));
    action->setObjectName(QString::fromLatin1(row.name));
    action->setVisible(false);
    if (row.keys.key() != Qt::Key_unknown) action->setShortcut(row.keys);
    connect(action, &QAction::triggered, this, [this, entry = row.entry] {
      if (const auto act = acts_[entry]) act();
    });
    entries_[row.entry] = action;
  }
  connect(menu_, &QMenu::aboutToShow, this, [this] {
    for (const auto& act : opening_) act();
  });
  setMenu(menu_);
}

void MoreMenu::setEntry(MoreEntry entry, std::function<void()> act) {
  acts_[entry] = std::move(act);
  entries_[entry]->setVisible(true);
}

void MoreMenu::setOffered(MoreEntry entry, bool isOffered) {
  entries_[entry]->setEnabled(isOffered);
}

}  // namespace norvik::desktop
