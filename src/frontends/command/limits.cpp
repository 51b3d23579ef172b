// norvikctl limits: the open files limit, shown, and changed through its one button.
#include <ostream>

#include "src/frontends/command/change.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/edits/limit_step.h"
#include "src/frontends/shared/interface/unread_settings.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

const char* hintFor(int32_t action) {
  switch (action) {
    case kLimitAdjust:
      return english("\"norvikctl limits adjust\" raises the limits for the next start to the current ones.");
    case kLimitReset:
      return english("\"norvikctl limits reset\" restores the default limits for the next start.");
    default:
      return english("The limits cannot be changed, as the current ones are not known.");
  }
}

const char* actionWord(int32_t action) {
  return action == kLimitAdjust ? "adjust" : action == kLimitReset ? "reset" : "none";
}

std::string currentText(int32_t limit) {
  return limit > 0 ? std::to_string(limit) : translated("not known");
}

Json limitJson(const NVKServerLimit& limit) {
  const auto number = [](int32_t value) { return value > 0 ? Json(value) : Json(nullptr); };
  return {{"program", number(limit.soft)}, {"system", number(limit.hard)}};
}

ExitStatus show(const Context& context) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  // The pane reads the current limits only while the lock is open. The others are shown in any case.
  session.unlock();
  NVKServerPrefs& pane = session.pane();
  const NVKServerLimits& limits = pane.m_admin_maxFiles;
  const bool unread = isUnread(pane.ib_admin_button_maxFAdjust.name(), context.services.computer.unreadFiles);
  if (context.json) {
    Json json{{"now", limitJson(limits.system)},
              {"nextStart", limitJson(limits.launchd)},
              {"action", actionWord(limits.action)}};
    if (unread) json["notes"] = {translated(kUnreadSentence)};
    return finish(context.output(), ChangeReport(), json);
  }
  const auto label = [&](const Control& field) { return context.interface.find(field.name())->label; };
  const Control& soft = pane.ib_admin_edbox_maxFSoft;
  const Control& hard = pane.ib_admin_edbox_maxFHard;
  writeTable(context.out, {{"", translated("Now"), translated("At the next start")},
                           {label(soft), currentText(limits.system.soft), translated(soft.stringValue())},
                           {label(hard), currentText(limits.system.hard), translated(hard.stringValue())}});
  context.out << '\n' << translated(hintFor(limits.action)) << '\n';
  if (unread) context.out << translated(kUnreadSentence) << '\n';
  return finish(context.output(), ChangeReport());
}

}  // namespace

ExitStatus openFilesLimit(const Context& context, const CommandLine& line) {
  if (line.arguments.empty()) return show(context);
  const LimitStep wanted = line.arguments.front() == kAdjustStep ? LimitStep::adjust : LimitStep::reset;
  ChangeRequest request;
  request.previewsWhileLocked = false;
  request.edit = [wanted](Session& session, std::vector<std::string>& notes) {
    return takeLimitStep(session.edited(), wanted, notes);
  };
  for (const ControlDescription* control : context.interface.controls()) {
    if (control->displayOnly) request.requested.push_back(control->label);
  }
  return change(context, request, false);
}

}  // namespace norvik::command
