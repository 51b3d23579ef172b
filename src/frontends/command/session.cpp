// Opens and closes the pane as its host does.
#include "src/frontends/command/session.h"

#include <algorithm>

#include "src/frontends/command/progress.h"

namespace norvik::command {

Session::Session(Platform& computer, const InterfaceDescription& interface, AlertPanels& alerts,
                 Drawing& drawing, RecordingMode mode, Opening opening)
    : recording_(computer, alerts, drawing, mode), pane_(interface), edited_(pane_, interface) {
  if (opening == Opening::now) open();
}

void Session::open() {
  pane_.awakeFromNib();
  pane_.onStateTimer();
  edited_.update();
}

Session::~Session() {
  pane_.destroy();
}

bool Session::unlock() {
  if (!pane_.authorized()) click(pane_.ib_button_Auth);
  return pane_.authorized();
}

std::vector<std::string> pendingSettings(Session& session) {
  const auto isPending = [&](const Control* control) { return session.pane().differsFromStored(*control); };
  std::vector<std::string> names;
  for (const PaneSetting& setting : session.settings()) {
    if (std::ranges::any_of(setting.controls(), isPending)) names.push_back(setting.name());
  }
  return names;
}

std::vector<SettingDescription> shownSettings(const Context& context) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  std::vector<SettingDescription> settings;
  for (const PaneSetting& setting : session.settings()) settings.push_back(setting.description());
  return settings;
}

}  // namespace norvik::command
