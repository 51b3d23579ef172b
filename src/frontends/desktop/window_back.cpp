// Who is asked for what: the transaction for what is stored, the shared edits for the defaults.
#include "src/frontends/desktop/window_back.h"

#include <QApplication>
#include <QClipboard>
#include <algorithm>

#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/shared/edits/copied_command.h"
#include "src/frontends/shared/edits/defaults.h"
#include "src/frontends/shared/edits/pending_edits.h"
#include "src/frontends/shared/edits/take_back_texts.h"

namespace norvik::desktop {

WindowBack::WindowBack(SettingsWindow& window, WindowChanges& changes, NVKServerPrefs& pane,
                       SettingsChange& change, Platform& computer)
    : window_(window),
      changes_(changes),
      pane_(pane),
      change_(change),
      computer_(computer),
      edited_(pane, window.interface()) {
  for (const Page* page : window_.pages()) {
    for (RowBack* row : page->rowBacks()) connectRow(*row);
  }
  changes_.counted = [this](const std::vector<SettingChange>& pending) { offer(pending); };
  MoreMenu& menu = window_.moreMenu();
  menu.setEntry(MoreEntry::takeBackPage, [this] { takeBack(pendingOnPage()); });
  menu.setEntry(MoreEntry::takeBackAll, [this] { takeBackAll(); });
  menu.setEntry(MoreEntry::pageToDefaults, [this] { toDefaults(settingsOnPage()); });
  menu.setEntry(MoreEntry::allToDefaults, [this] { toDefaults(edited_.settingNames()); });
  menu.setEntry(MoreEntry::copyCommand, [this] { copyCommand(); });
  changes_.copyCommand = [this] { copyCommand(); };
  menu.whenOpening([this] { offerEntries(); });
  window_.refresh();
}

WindowBack::~WindowBack() {
  changes_.counted = nullptr;
  changes_.copyCommand = nullptr;
}

void WindowBack::connectRow(RowBack& row) {
  row.ways = [this, &row] { return waysOf(row); };
  row.toStored = [this, &row] { takeBackRow(row); };
  row.toDefault = [this, &row] {
    enter(defaultsOf(editedTogether(edited_.settings(), pane_, row.settings()), defaults()));
  };
}

WaysBack WindowBack::waysOf(const RowBack& row) {
  return waysBack(edited_.settings(), pane_, row.settings(), pending_, defaults());
}

// Opening a shadow takes longer than a menu should, so that happens once.
const std::map<std::string, int64_t>& WindowBack::defaults() {
  if (!defaults_) {
    defaults_ = defaultValues(computer_, window_.interface());
    window_.refresh();
  }
  return *defaults_;
}

void WindowBack::offer(const std::vector<SettingChange>& pending) {
  pending_ = pending;
  for (const Page* page : window_.pages()) {
    for (RowBack* row : page->rowBacks())
      row->offer(text(buttonName(edited_.settings(), pane_, row->settings(), pending_)));
  }
}

// ---- To what is stored

// The keyboard focus goes from the button, which disappears, to what it was about.
void WindowBack::takeBackRow(const RowBack& row) {
  const auto together = editedTogether(edited_.settings(), pane_, row.settings());
  if (together.empty()) return;
  const bool hasFocus = row.button() != nullptr && row.button()->hasFocus();
  takeBack({together.back()->name()});
  if (hasFocus) window_.showSetting(std::string(together.front()->controls().front()->name()));
}

void WindowBack::takeBack(const std::vector<std::string>& settings) {
  for (const std::string& setting : settings) change_.takeBack(setting);
  window_.messages().edited();
  window_.refresh();
}

void WindowBack::takeBackAll() {
  change_.takeBackAll();
  window_.messages().edited();
  window_.refresh();
}

std::vector<std::string> WindowBack::pendingOnPage() {
  std::vector<std::string> names;
  for (const SettingChange& change : pending_) {
    const auto page = window_.pageOf(change.outlet);
    if (page && window_.pages()[*page] == &window_.page()) names.push_back(change.name);
  }
  return names;
}

std::vector<Edit> WindowBack::pendingEdits() {
  return norvik::pendingEdits(edited_, change_.pending());
}

// ---- To the defaults

std::vector<std::string> WindowBack::settingsOnPage() {
  std::vector<std::string> names;
  for (const PaneSetting& setting : edited_.settings()) {
    const auto page = window_.pageOf(std::string(setting.controls().front()->name()));
    if (page && window_.pages()[*page] == &window_.page()) names.push_back(setting.name());
  }
  return names;
}

void WindowBack::toDefaults(const std::vector<std::string>& names) {
  const auto edits = defaultsOf(computer_, window_.interface(), names);
  enter(possibleNow(edited_, edits));
  const bool leavesSome = std::ranges::any_of(edits, [this](const Edit& edit) {
    return !pane_.authorized() && edited_.find(edit.name)->description().isAdministrators();
  });
  if (leavesSome)
    changes_.say({MessageKind::note, translated(take_back_texts::kLockedStay), {}, {}}, {}, nullptr);
}

bool WindowBack::enter(const std::vector<Edit>& edits) {
  if (needsLock(edited_, edits) && !changes_.unlocked()) return false;
  std::vector<std::string> notes;
  return entered(makePending(edited_, edits, notes));
}

bool WindowBack::enter(const Reversal& reversal, std::vector<std::string>& notes) {
  const bool isLocked = needsLock(edited_, reversal.edits) || (reversal.limit && !pane_.authorized());
  if (isLocked && !changes_.unlocked()) return false;
  ChangeError error = makePending(edited_, reversal.edits, notes);
  if (!error && reversal.limit) error = takeLimitStep(edited_, *reversal.limit, notes);
  return entered(error);
}

bool WindowBack::entered(const ChangeError& error) {
  window_.messages().edited();
  window_.refresh();
  if (error) changes_.say({MessageKind::failure, error.sentence, {}, {}}, error.outlet, nullptr);
  return !error;
}

ImportDialog::Preview WindowBack::previewOf(const Wish& wish) {
  if (!wish.errors.empty()) return {{}, false, wish.errors.front().sentence};
  return {changesBy(edited_, window_.interface(), wish.edits), needsLock(edited_, wish.edits), {}};
}

// ---- As a command

void WindowBack::copyCommand() {
  const std::string command = commandOfPending(edited_);
  if (command.empty()) return;
  QApplication::clipboard()->setText(text(command));
  // The command is shown as it is, without the labels that messages have in place of names.
  window_.messages()
      .line(MessageSubject::outcome)
      .showMessage({MessageKind::note, sentence(take_back_texts::kCommandCopied, {command}), {}, {}});
}

// ---- The menu beside Help

void WindowBack::offerEntries() {
  MoreMenu& menu = window_.moreMenu();
  menu.setOffered(MoreEntry::takeBackPage, !pendingOnPage().empty());
  menu.setOffered(MoreEntry::takeBackAll, !pending_.empty());
  menu.setOffered(MoreEntry::copyCommand, !pending_.empty());
  menu.setOffered(MoreEntry::pageToDefaults, hasOtherThanDefault(settingsOnPage()));
  menu.setOffered(MoreEntry::allToDefaults, hasOtherThanDefault(edited_.settingNames()));
}

bool WindowBack::hasOtherThanDefault(const std::vector<std::string>& names) {
  return std::ranges::any_of(names, [this](const std::string& name) {
    return waysBack(edited_.settings(), pane_, {name}, pending_, defaults()).standard.isOffered;
  });
}

}  // namespace norvik::desktop
