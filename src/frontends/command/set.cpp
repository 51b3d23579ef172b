// norvikctl set: NAME=VALUE arguments become edits in the order of the pages, as a person would make them,
// and are applied together.
#include <algorithm>

#include "src/frontends/command/change_transaction.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/editability.h"
#include "src/frontends/command/nearest.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

struct Edit {
  std::string name;
  int64_t value = 0;
  std::string neededBy;  // the setting that needs it; empty where the person named it
};

struct Parsed {
  std::vector<Edit> edits;
  std::vector<Error> errors;
};

const Edit* find(const std::vector<Edit>& edits, const std::string& name) {
  const auto found = std::ranges::find(edits, name, &Edit::name);
  return found != edits.end() ? &*found : nullptr;
}

Error parseAssignment(Session& session, const std::string& word, std::vector<Edit>& edits) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const PaneSetting* setting = session.find(name);
  if (setting == nullptr) {
    return {kExitUsage, "unknown setting \"" + name + "\"." + suggestion(name, session.settingNames())};
  }
  if (equals == std::string::npos) {
    return {kExitUsage, name + " has no value; write " + name + "=VALUE."};
  }
  if (find(edits, name) != nullptr) return {kExitUsage, name + " is given twice."};
  const std::string text = word.substr(equals + 1);
  const auto value = checkedValue(setting->description(), text);
  if (!value) {
    return {kExitData, name + " takes " + acceptedValues(setting->description()) + ", not \"" + text + "\"."};
  }
  edits.push_back({name, *value, ""});
  return {};
}

// Turns on the boxes that the edits require, as the description says, unless the person turns one off.
Error addRequired(Session& session, std::vector<Edit>& edits) {
  for (std::size_t i = 0; i < edits.size(); ++i) {
    const SettingDescription& description = session.find(edits[i].name)->description();
    const std::size_t control = description.isChoice() ? static_cast<std::size_t>(edits[i].value) : 0;
    const PaneSetting* box = session.settingOf(description.controls[control]->requiresOutlet);
    if (box == nullptr) continue;
    const Edit* given = find(edits, box->name());
    if (given == nullptr) {
      edits.push_back({box->name(), kOnState, edits[i].name});
    } else if (given->value != kOnState) {
      return {kExitUsage, edits[i].name + " needs " + box->name() + "=on."};
    }
  }
  return {};
}

void sortByPage(Session& session, std::vector<Edit>& edits) {
  std::ranges::stable_sort(edits, {}, [&](const Edit& edit) { return session.find(edit.name); });
}

Parsed parse(const Context& context, const Arguments& assignments) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  Parsed parsed;
  for (const std::string& word : assignments) {
    if (Error error = parseAssignment(session, word, parsed.edits)) parsed.errors.push_back(error);
  }
  if (Error error = addRequired(session, parsed.edits)) parsed.errors.push_back(error);
  sortByPage(session, parsed.edits);
  return parsed;
}

Error notEditable(const PaneSetting& setting, int64_t value, const Editability& why) {
  const bool isState = why.obstacle != Obstacle::needsSwitches;
  return {kExitUsage, setting.name() + " cannot be set to " + setting.textOf(value) + " now: it " +
                          (isState ? "is " : "") + why.remark + ". Nothing was changed."};
}

Error applyEdit(Session& session, const Edit& edit) {
  PaneSetting& setting = *session.find(edit.name);
  if (setting.value() == edit.value) return {};
  Control& control = setting.controlFor(edit.value);
  if (!control.isEnabled()) {
    return notEditable(setting, edit.value, editabilityOf(session, setting, edit.value));
  }
  setting.put(edit.value);
  session.click(control);
  return {};
}

// Declining a question keeps the old value, which is no failure.
void noteKeptValues(Session& session, const std::vector<Edit>& edits, std::vector<std::string>& notes) {
  for (const Edit& edit : edits) {
    const PaneSetting& setting = *session.find(edit.name);
    if (setting.value() == edit.value) continue;
    notes.push_back(edit.name + " stays " + setting.text() + ".");
  }
}

ChangeRequest changeRequestFor(const Context& context, const std::vector<Edit>& edits) {
  ChangeRequest result;
  result.requiresUnlock = false;
  const auto descriptions = settingsOf(context.interface);
  for (const Edit& edit : edits) {
    if (edit.neededBy.empty()) {
      result.requested.push_back(edit.name);
    } else {
      result.reasons[edit.name] = "needed by " + edit.neededBy;
    }
    const auto found = std::ranges::find(descriptions, edit.name, &SettingDescription::name);
    if (found->isAdministrators()) result.requiresUnlock = true;
  }
  result.edit = [edits](Session& session, std::vector<std::string>& notes) {
    for (const Edit& edit : edits) {
      if (Error error = applyEdit(session, edit)) return error;
    }
    noteKeptValues(session, edits, notes);
    return Error();
  };
  return result;
}

}  // namespace

ExitStatus setSettings(const Context& context, const CommandLine& line) {
  const Parsed parsed = parse(context, line.arguments);
  if (parsed.errors.empty()) {
    return change(context, changeRequestFor(context, parsed.edits), line.dryRun);
  }
  for (const Error& error : parsed.errors) context.complain(error.sentence);
  const bool usage =
      std::ranges::any_of(parsed.errors, [](const Error& error) { return error.status == kExitUsage; });
  return usage ? kExitUsage : kExitData;
}

}  // namespace norvik::command
