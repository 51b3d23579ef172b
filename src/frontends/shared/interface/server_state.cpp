// The three colours, by what the pane holds.
#include "src/frontends/shared/interface/server_state.h"

namespace norvik {

namespace {

constexpr Color fromBytes(int red, int green, int blue) {
  return {red / 255.0, green / 255.0, blue / 255.0, 1.0};
}

constexpr Color kRunning = fromBytes(0x34, 0xa8, 0x53);
constexpr Color kChanging = fromBytes(0xe8, 0xa3, 0x17);
constexpr Color kStopped = fromBytes(0x8a, 0x8d, 0x91);

}  // namespace

bool isServerChanging(const NVKServerPrefs& pane) {
  return pane.isServerChanging();
}

Color stateColor(const NVKServerPrefs& pane) {
  if (isServerChanging(pane)) return kChanging;
  return pane.m_serverPid == -1 ? kStopped : kRunning;
}

}  // namespace norvik
