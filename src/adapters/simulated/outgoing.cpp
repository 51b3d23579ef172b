// One line for each call.
#include "src/adapters/simulated/outgoing.h"

#include "src/adapters/simulated/text_form.h"
#include "src/server/mac/text/escape.h"
#include "src/server/mac/ui/control.h"

namespace norvik {

void SimulatedWorkspace::openURL(std::string_view url) {
  effects_.report(EffectKind::openUrl, "open-url " + quoted(url));
}

void SimulatedNotificationCenter::postNotificationName(const char* name, const char* object,
                                                       unsigned options) {
  lastWasDelivered_ = delivers_;
  effects_.report(EffectKind::post, "post " + quoted(name) + " object=" + quotedOrNull(object) +
                                        " options=" + std::to_string(options));
}

void SimulatedDrawing::display(Control& control) {
  effects_.report(EffectKind::display,
                  "display " + std::string(control.name()) + ' ' + quoted(control.stringValue()));
}

void SimulatedDrawing::displayIfNeeded(View& view) {
  if (dynamic_cast<Control*>(&view) == nullptr) effects_.report(EffectKind::display, "display main-view");
}

void SimulatedLog::syslog(int priority, std::string_view line) {
  effects_.report(EffectKind::log, "log " + std::to_string(priority) + ' ' + quoted(line));
}

void SimulatedAssertionHandler::handleFailureInFunction(std::string_view function, std::string_view file,
                                                        int line, std::string_view description) {
  failures_.push_back({std::string(function), std::string(file), line, std::string(description)});
}

}  // namespace norvik
