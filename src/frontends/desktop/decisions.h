// What only a person can decide while a change is applied or left, asked by sheets of the window.
#pragma once

#include <QWidget>
#include <utility>

#include "src/frontends/shared/change/settings_change.h"
#include "src/server/mac/platform/application.h"

namespace norvik::desktop {

// Both outlive it.
class DialogDecisions : public ChangeDecisions {
 public:
  DialogDecisions(QWidget& window, AlertPanels& panels) : window_(window), panels_(panels) {}

  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& collisions) override;
  DamagedAnswer decideDamaged(const FileFinding& file) override;

  // Whether the person has given up the question about a damaged file since this was called last.
  bool takeGivenUp() { return std::exchange(givenUp_, false); }

  enum class Leave { apply, discard, stay };
  // Escape and the close button mean stay.
  Leave decideLeaving(const std::vector<SettingChange>& changes);

 private:
  DamagedAnswer askAboutDamaged(const FileFinding& file);

  QWidget& window_;
  AlertPanels& panels_;
  bool givenUp_ = false;
};

}  // namespace norvik::desktop
