// Opens and closes the pane as its host does.
#include "src/frontends/command/session.h"

#include <algorithm>

#include "src/frontends/command/progress.h"

namespace norvik::command {

Session::Session(Platform& computer, const InterfaceDescription& interface, AlertPanels& alerts,
                 Drawing& drawing, RecordingMode mode, Opening opening)
    : interface_(interface), recording_(computer, alerts, drawing, mode), pane_(interface) {
  if (opening == Opening::now) open();
}

void Session::open() {
  pane_.awakeFromNib();
  pane_.onStateTimer();
  settings_ = paneSettings(interface_, pane_);
}

Session::~Session() {
  pane_.destroy();
}

PaneSetting* Session::find(std::string_view name) {
  const auto found = std::ranges::find_if(settings_, [&](PaneSetting& s) { return s.name() == name; });
  return found != settings_.end() ? &*found : nullptr;
}

PaneSetting* Session::settingOf(std::string_view outlet) {
  for (PaneSetting& setting : settings_) {
    for (const Control* control : setting.controls()) {
      if (control->name() == outlet) return &setting;
    }
  }
  return nullptr;
}

std::vector<std::string> Session::settingNames() const {
  std::vector<std::string> names;
  for (const PaneSetting& setting : settings_) names.push_back(setting.name());
  return names;
}

bool Session::unlock() {
  if (!pane_.authorized()) click(pane_.ib_button_Auth);
  return pane_.authorized();
}

void Session::click(Control& control) {
  pane_.buttonClicked(control);
  pane_.onStateTimer();
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
