// A new pane, given the same values again, should have nothing left to save.
#include "src/frontends/command/read_back.h"

#include <algorithm>

#include "src/frontends/command/progress.h"

namespace norvik::command {

namespace {

bool wasChanged(const Outcome& outcome, const std::string& name) {
  return std::ranges::any_of(outcome.changes, [&](const Change& change) { return change.name == name; });
}

bool limitWasSaved(const NVKServerLimit& limit, const Expected& expected) {
  return limit.soft == expected.limit.soft && limit.hard == expected.limit.hard;
}

}  // namespace

Expected expectedOf(Session& session) {
  Expected expected{{}, session.pane().m_admin_maxFiles.launchd};
  for (const PaneSetting& setting : session.settings()) {
    if (const auto value = setting.value()) expected.values[setting.name()] = *value;
  }
  return expected;
}

std::vector<std::string> notSaved(const Context& context, const Expected& expected, const Outcome& outcome) {
  Questions questions({NSAlertDefaultReturn, nullptr}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  session.unlock();
  for (const auto& [name, value] : expected.values) {
    if (PaneSetting* setting = session.find(name)) setting->put(value);
  }
  auto missing = pendingSettings(session);
  std::erase_if(missing, [&](const std::string& name) { return !wasChanged(outcome, name); });
  const bool limitCounts = std::ranges::count(outcome.saved, kOpenFilesLimit) > 0;
  if (limitCounts && !limitWasSaved(session.pane().m_admin_maxFiles.launchd, expected)) {
    missing.push_back("the " + std::string(kOpenFilesLimit));
  }
  return missing;
}

}  // namespace norvik::command
