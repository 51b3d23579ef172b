// Files are read and written here; what they say is the shared profile's.
#include "src/frontends/desktop/window_profile.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

#include "src/frontends/desktop/export_dialog.h"
#include "src/frontends/desktop/import_dialog.h"
#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/shared/profile/pane_profile.h"
#include "src/frontends/shared/profile/profile_texts.h"

namespace norvik::desktop {

namespace {

constexpr const char* kSuggestedName = "norvik-settings.json";

// What is in a file, or why it could not be read.
struct ReadFile {
  QByteArray bytes;
  QString error;
};

ReadFile readFile(const QString& path) {
  if (QFileInfo(path).exists() && !QFileInfo(path).isFile())
    return {{}, text(translated(profile_texts::kNoFile))};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {{}, file.errorString()};
  return {file.read(static_cast<qint64>(kMaxProfileBytes) + 1), {}};
}

// Why it could not be written; empty where it was. The file is old or new, never half.
QString writeFile(const QString& path, const std::string& words) {
  QSaveFile file(path);
  const bool isWritten =
      file.open(QIODevice::WriteOnly) &&
      file.write(words.data(), static_cast<qint64>(words.size())) == static_cast<qint64>(words.size()) &&
      file.commit();
  return isWritten ? QString() : file.errorString();
}

}  // namespace

WindowProfile::WindowProfile(SettingsWindow& window, WindowChanges& changes, WindowBack& edits,
                             NVKServerPrefs& pane, SettingsChange& change, Platform& computer)
    : window_(window), changes_(changes), edits_(edits), pane_(pane), change_(change), computer_(computer) {
  window_.moreMenu().setEntry(MoreEntry::exportProfile, [this] { exportProfile(); });
  window_.moreMenu().setEntry(MoreEntry::importProfile, [this] { importProfile(); });
  chooseNew = [this] {
    return QFileDialog::getSaveFileName(&window_, text(translated(profile_texts::kExportTitle)),
                                        QString::fromLatin1(kSuggestedName),
                                        text(translated(profile_texts::kFileKind)));
  };
  chooseExisting = [this] {
    return QFileDialog::getOpenFileName(&window_, text(translated(profile_texts::kImportTitle)), {},
                                        text(translated(profile_texts::kFileKind)));
  };
}

void WindowProfile::say(MessageKind kind, std::string sentence, std::string details) {
  std::vector<MessageAction> actions;
  if (!details.empty()) actions.push_back(MessageAction::showDetails);
  changes_.say({kind, std::move(sentence), std::move(actions), std::move(details)}, {}, nullptr);
}

// ---- Export

std::string WindowProfile::pageTitle() const {
  if (edits_.settingsOnPage().empty()) return {};
  const auto page = std::ranges::find(window_.pages(), &window_.page()) - window_.pages().begin();
  return pageName(window_.interface().tabs[static_cast<std::size_t>(page)]).title;
}

// The pane takes a file that it cannot read as one with the defaults, which are nobody's settings.
void WindowProfile::exportProfile() {
  for (const FileFinding& finding : change_.findings()) {
    if (finding.damaged)
      return say(MessageKind::failure, sentence(profile_texts::kDamagedNotExported, {finding.file}));
  }
  ExportDialog dialog(&window_, pageTitle(), changes_.pendingCount());
  if (dialog.exec() != QDialog::Accepted) return;
  const QString path = chooseNew();
  if (!path.isEmpty()) write(path, dialog.isPageOnly(), dialog.isChangedOnly());
}

void WindowProfile::write(const QString& path, bool isPageOnly, bool isChangedOnly) {
  const std::vector<PaneSetting> all = paneSettings(window_.interface(), pane_);
  const std::vector<std::string> onPage = edits_.settingsOnPage();
  std::vector<const PaneSetting*> wanted;
  for (const PaneSetting& setting : all) {
    if (!isPageOnly || std::ranges::find(onPage, setting.name()) != onPage.end()) wanted.push_back(&setting);
  }
  const PaneProfile profile = profileOf(pane_, wanted, isChangedOnly);
  const std::string file = path.toStdString();
  if (const QString error = writeFile(path, profileText(profile.values)); !error.isEmpty())
    return say(MessageKind::failure, sentence(profile_texts::kNotWritten, {file, error.toStdString()}));
  std::string details;
  for (const auto& [name, why] : profile.leftOut) details += name + ": " + why + "\n";
  say(MessageKind::done, counted(profile_texts::kExported, profile.values.size(), {file}), details);
}

// ---- Import

void WindowProfile::importProfile() {
  const QString path = chooseExisting();
  if (path.isEmpty()) return;
  const ReadFile file = readFile(path);
  if (!file.error.isEmpty())
    return say(MessageKind::failure,
               sentence(profile_texts::kNotRead, {path.toStdString(), file.error.toStdString()}));
  const auto size = static_cast<std::size_t>(file.bytes.size());
  const ProfileReading reading = readProfile({file.bytes.constData(), size}, settingsOf(window_.interface()));
  if (!reading.faults.empty()) return sayFaults(path, reading.faults);
  takeOver(path, reading.settings);
}

void WindowProfile::sayFaults(const QString& path, const std::vector<ProfileFault>& faults) {
  const std::string file = path.toStdString();
  if (faults.size() == 1)
    return say(MessageKind::failure, sentence(profile_texts::kFault, {file, faults.front().withLine()}));
  std::string lines;
  for (const ProfileFault& fault : faults) lines += fault.withLine() + "\n";
  say(MessageKind::failure, counted(profile_texts::kFaults, faults.size(), {file}), lines);
}

void WindowProfile::takeOver(const QString& path, const ProfileSettings& profile) {
  const auto wish = [&](Unnamed unnamed) {
    Wish made = wishOf(computer_, window_.interface(), profile, unnamed);
    window_.refresh();
    return made;
  };
  const std::string file = QFileInfo(path).fileName().toStdString();
  ImportDialog dialog(&window_, file, [&](Unnamed unnamed) { return edits_.previewOf(wish(unnamed)); });
  if (dialog.exec() != QDialog::Accepted) return;
  if (edits_.enter(wish(dialog.unnamed()).edits))
    say(MessageKind::note, sentence(profile_texts::kTakenOver, {file}));
}

}  // namespace norvik::desktop
