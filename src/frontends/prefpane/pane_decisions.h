// What only a person can decide while a change is applied, asked in panels. A plain C++ header.
#pragma once

#include "src/frontends/shared/change/settings_change.h"
#include "src/server/mac/platform/application.h"

namespace norvik::prefpane {

class PanelDecisions : public ChangeDecisions {
 public:
  // The panels outlive it.
  explicit PanelDecisions(AlertPanels& panels) : panels_(panels) {}

  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& collisions) override;
  DamagedAnswer decideDamaged(const FileFinding& file) override;

 private:
  AlertPanels& panels_;
};

}  // namespace norvik::prefpane
