// Counts what was added to the label since it was first drawn.
#include "src/frontends/shared/server/server_progress.h"

#include <algorithm>

#include "src/frontends/shared/language/language.h"

namespace norvik {

std::optional<ServerProgress> ServerProgressMeter::read(const NVKServerPrefs& pane) {
  if (!pane.isServerChanging()) {
    *this = {};
    return std::nullopt;
  }
  const bool runs = nvkd_pid() != -1;
  const std::string& label = pane.ib_admin_label_svrState.stringValue();
  if (begun_.empty() || !label.starts_with(begun_)) {
    begun_ = label;
    starts_ = !runs;  // the pane starts a server that is stopped, and stops one that runs
    waited_.reset();
  }
  const int dots = static_cast<int>(label.size() - begun_.size());
  // The pane looks right before it counts a dot, so the dot that is drawn now is already one for settling.
  if (!waited_ && dots > 0 && (runs == starts_ || dots > kWaitingDots)) waited_ = dots - 1;
  constexpr int kTotal = kWaitingDots + kSettlingDots;
  if (waited_)
    return ServerProgress{std::min(kWaitingDots + dots - *waited_, kTotal), kTotal,
                          translated("Waiting for the server to settle")};
  return ServerProgress{
      dots, kTotal,
      starts_ ? translated("Waiting for the server to start") : translated("Waiting for the server to stop")};
}

}  // namespace norvik
