// A new pane, given the same values again, should have nothing left to save.
#include "src/frontends/command/read_back.h"

#include <algorithm>

#include "src/frontends/command/progress.h"

namespace norvik::command {

namespace {

bool wasChanged(const ChangeReport& report, const std::string& name) {
  return std::ranges::count(report.changes, name, &SettingChange::name) > 0;
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

std::vector<std::string> notSaved(const Context& context, const Expected& expected,
                                  const ChangeReport& report) {
  Questions questions({{}, true, nullptr}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  session.unlock();
  for (const auto& [name, value] : expected.values) {
    if (PaneSetting* setting = session.find(name)) setting->put(value);
  }
  auto missing = pendingSettings(session);
  std::erase_if(missing, [&](const std::string& name) { return !wasChanged(report, name); });
  const bool limitCounts = std::ranges::count(report.saved, kOpenFilesLimit) > 0;
  if (limitCounts && !limitWasSaved(session.pane().m_admin_maxFiles.launchd, expected)) {
    missing.push_back("the " + std::string(kOpenFilesLimit));
  }
  return missing;
}

}  // namespace norvik::command
