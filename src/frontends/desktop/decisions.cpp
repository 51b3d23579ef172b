// Panels and the collision dialog.
#include "src/frontends/desktop/decisions.h"

#include "src/frontends/desktop/collision_dialog.h"
#include "src/frontends/shared/interface/window_messages.h"

namespace norvik::desktop {

namespace {

namespace texts = window_texts;

constexpr std::size_t kMostChanges = 12;  // that a question lists

int ask(AlertPanels& panels, std::string_view title, const std::string& message, std::string_view first,
        std::string_view second, std::string_view third) {
  return panels.NSRunAlertPanel(title.data(), message.c_str(), first.data(), second.data(), third.data());
}

}  // namespace

std::optional<std::vector<Side>> DialogDecisions::resolve(const std::vector<Collision>& collisions) {
  CollisionDialog dialog(&window_, collisions);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.sides();
}

DamagedAnswer DialogDecisions::decideDamaged(const FileFinding& file) {
  const DamagedAnswer answer = askAboutDamaged(file);
  givenUp_ = answer == DamagedAnswer::cancel;
  return answer;
}

// Writing over a damaged file is never the default.
DamagedAnswer DialogDecisions::askAboutDamaged(const FileFinding& file) {
  const std::string words = damagedQuestion(file);
  if (file.copyTime.empty()) {
    const int answer = ask(panels_, texts::kDamagedTitle, words, texts::kCancel, texts::kReplaceFile, {});
    return answer == NSAlertAlternateReturn ? DamagedAnswer::replace : DamagedAnswer::cancel;
  }
  const int answer =
      ask(panels_, texts::kDamagedTitle, words, texts::kRestoreCopy, texts::kReplaceFile, texts::kCancel);
  if (answer == NSAlertDefaultReturn) return DamagedAnswer::restore;
  return answer == NSAlertAlternateReturn ? DamagedAnswer::replace : DamagedAnswer::cancel;
}

DialogDecisions::Leave DialogDecisions::decideLeaving(const std::vector<SettingChange>& changes) {
  const std::string words = leaveQuestion(changes) + "\n\n" + changeLines(changes, kMostChanges);
  const int answer = ask(panels_, texts::kLeaveTitle, words, texts::kApply, texts::kDiscard, texts::kCancel);
  if (answer == NSAlertDefaultReturn) return Leave::apply;
  return answer == NSAlertAlternateReturn ? Leave::discard : Leave::stay;
}

}  // namespace norvik::desktop
