// Words and profiles become edits; edits are made one by one, the one that disables others last.
#include "src/frontends/command/edits.h"

#include <algorithm>

#include "src/frontends/command/defaults.h"
#include "src/frontends/command/editability.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

constexpr std::string_view kDefaultWord = "default";
constexpr std::string_view kNoneWord = "none";

using Defaults = std::map<std::string, int64_t>;

const Edit* find(const std::vector<Edit>& edits, const std::string& name) {
  const auto found = std::ranges::find(edits, name, &Edit::name);
  return found != edits.end() ? &*found : nullptr;
}

std::optional<int64_t> valueOf(const SettingDescription& setting, const std::string& text,
                               const Defaults& defaults) {
  if (folded(text) == kDefaultWord) {
    const auto found = defaults.find(setting.name);
    return found != defaults.end() ? found->second : kNoChoice;
  }
  if (setting.isChoice() && folded(text) == kNoneWord) return kNoChoice;
  return checkedValue(setting, text);
}

ChangeError parseAssignment(Session& session, const Defaults& defaults, const std::string& word,
                            std::vector<Edit>& edits) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const PaneSetting* setting = session.find(name);
  if (setting == nullptr) {
    return failure(FailureCode::usage,
                   sentence("unknown setting \"{1}\".", {name}) + suggestion(name, session.settingNames()),
                   name);
  }
  if (equals == std::string::npos) {
    return failure(FailureCode::usage, sentence("{1} has no value; write {1}=VALUE.", {name}), name);
  }
  if (find(edits, name) != nullptr)
    return failure(FailureCode::usage, sentence("{1} is given twice.", {name}), name);
  const std::string text = word.substr(equals + 1);
  const auto value = valueOf(setting->description(), text, defaults);
  if (!value) {
    return failure(
        FailureCode::wrongValue,
        sentence("{1} takes {2}, not \"{3}\".", {name, acceptedValues(setting->description()), text}), name);
  }
  edits.push_back({name, *value, ""});
  return {};
}

// The box that the value requires, and the state that it then has.
struct Requirement {
  const PaneSetting* box = nullptr;  // null where none is required
  bool on = true;
  bool mayBeOtherwise = false;  // the person may want the box in the other state nevertheless
};

// A value that needs a box is the default where that box is off by default: then the box says it better.
Requirement requirementOf(Session& session, const Edit& edit, const Defaults& defaults) {
  const SettingDescription& description = session.find(edit.name)->description();
  const bool isNone = edit.value == kNoChoice;
  const std::size_t control = description.isChoice() && !isNone ? static_cast<std::size_t>(edit.value) : 0;
  Requirement requirement{session.settingOf(description.controls[control]->requiresOutlet)};
  if (requirement.box == nullptr) return requirement;
  const auto isDefault = [&](const std::string& name, int64_t value) {
    const auto found = defaults.find(name);
    return found != defaults.end() && found->second == value;
  };
  requirement.mayBeOtherwise =
      isDefault(edit.name, edit.value) && isDefault(requirement.box->name(), kOffState);
  requirement.on = !isNone && !requirement.mayBeOtherwise;
  return requirement;
}

ChangeError addRequired(Session& session, const Defaults& defaults, std::vector<Edit>& edits) {
  for (std::size_t i = 0; i < edits.size(); ++i) {
    const Requirement requirement = requirementOf(session, edits[i], defaults);
    if (requirement.box == nullptr) continue;
    const std::string name = edits[i].name, box = requirement.box->name();
    const int64_t state = requirement.on ? kOnState : kOffState;
    const Edit* given = find(edits, box);
    if (given == nullptr) {
      edits.push_back({box, state,
                       requirement.mayBeOtherwise ? sentence("{1} is the default", {name})
                                                  : sentence("needed by {1}", {name})});
    } else if (given->value != state && !requirement.mayBeOtherwise) {
      const std::string value = edits[i].value == kNoChoice ? "=" + std::string(kNoneWord) : "";
      return failure(FailureCode::usage,
                     sentence("{1} needs {2}.", {name + value, box + (requirement.on ? "=on" : "=off")}),
                     name);
    }
  }
  return {};
}

// Whether a default value is one that its setting cannot have while a box is as an edit has it.
bool contradicts(Session& session, const Defaults& defaults, const Edit& edit,
                 const std::vector<Edit>& edits) {
  const Requirement requirement = requirementOf(session, edit, defaults);
  if (requirement.box == nullptr || requirement.mayBeOtherwise) return false;
  const Edit* given = find(edits, requirement.box->name());
  return given != nullptr && given->value != (requirement.on ? kOnState : kOffState);
}

// Whether the setting shows the server's value once the edits are made.
bool followsThen(Session& session, const PaneSetting& setting, const std::vector<Edit>& edits) {
  const Setting* row = rowOfSetting(session.pane(), setting);
  if (row == nullptr || !row->followed) return false;
  const PaneSetting* box = session.settingOf(session.pane().ib_user_chkbox_imgDefs.name());
  const Edit* given = box != nullptr ? find(edits, box->name()) : nullptr;
  return given != nullptr && given->value == kOnState;
}

// The boxes come first, as they decide which other settings have a value of their own.
void addDefaults(Session& session, const Defaults& defaults, std::vector<Edit>& edits) {
  for (const bool boxes : {true, false}) {
    for (const PaneSetting& setting : session.settings()) {
      const bool isBox = setting.description().first().kind == ControlKind::checkBox;
      const auto standard = defaults.find(setting.name());
      if (isBox != boxes || standard == defaults.end() || find(edits, setting.name()) != nullptr) continue;
      const Edit edit{setting.name(), standard->second, translated("not in the profile")};
      if (contradicts(session, defaults, edit, edits) || followsThen(session, setting, edits)) continue;
      edits.push_back(edit);
    }
  }
}

void inOrderOfPages(Session& session, std::vector<Edit>& edits) {
  std::ranges::stable_sort(edits, {}, [&](const Edit& edit) { return session.find(edit.name); });
}

// The control that a person would click; null for a choice of which no button is to be on, which its box
// brings about.
Control* controlOf(Session& session, const Edit& edit) {
  return edit.value == kNoChoice ? nullptr : &session.find(edit.name)->controlFor(edit.value);
}

bool holds(Session& session, const Edit& edit) {
  return session.find(edit.name)->value().value_or(kNoChoice) == edit.value;
}

bool canBeMade(Session& session, const Edit& edit) {
  const Control* control = controlOf(session, edit);
  return control != nullptr && control->isEnabled();
}

// Whether making the edit would disable the control of another one that can be made now.
bool standsInTheWay(Session& session, const Edit& edit, const std::vector<const Edit*>& open) {
  Control& control = *controlOf(session, edit);
  if (control.kind() != ControlKind::checkBox) return false;
  return std::ranges::any_of(open, [&](const Edit* other) {
    return other != &edit && canBeMade(session, *other) &&
           switchingDisables(session, control, *controlOf(session, *other));
  });
}

// The edit to make next; null where none of them can be made.
const Edit* nextOf(Session& session, const std::vector<const Edit*>& open) {
  const Edit* possible = nullptr;
  for (const Edit* edit : open) {
    if (!canBeMade(session, *edit)) continue;
    if (!standsInTheWay(session, *edit, open)) return edit;
    if (possible == nullptr) possible = edit;
  }
  return possible;
}

ChangeError notSettable(Session& session, const Edit& edit) {
  PaneSetting& setting = *session.find(edit.name);
  const std::string value = setting.textOf(edit.value);
  if (edit.value == kNoChoice) {
    return failure(
        FailureCode::notSettable,
        sentence("{1} cannot be set to {2} now: it has a value. Nothing was changed.", {edit.name, value}),
        edit.name);
  }
  const Editability why = editabilityOf(session, setting, edit.value);
  const char* pattern = why.obstacle == Obstacle::needsSwitches
                            ? english("{1} cannot be set to {2} now: it {3}. Nothing was changed.")
                            : english("{1} cannot be set to {2} now: it is {3}. Nothing was changed.");
  return failure(FailureCode::notSettable, sentence(pattern, {edit.name, value, why.remark}), edit.name);
}

void make(Session& session, const Edit& edit) {
  session.find(edit.name)->put(edit.value);
  session.click(*controlOf(session, edit));
}

// Makes an edit whose control would be enabled if one box were on, and leaves the box off. Whether it holds
// then, as it does not where the box being off undoes it.
bool makeBehindBox(Session& session, const Edit& edit) {
  const Control* control = controlOf(session, edit);
  const auto switches = control != nullptr ? switchesToEnable(session, *control) : std::nullopt;
  if (!switches || switches->size() != 1 || !switches->front().on) return false;
  Control& box = *session.find(switches->front().name)->controls().front();
  whileSwitched(session, box, [&] { make(session, edit); });
  return holds(session, edit);
}

}  // namespace

Wish wishOf(const Context& context, const Arguments& assignments) {
  const Defaults defaults = defaultValues(context);
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  Wish wish;
  for (const std::string& word : assignments) {
    if (ChangeError error = parseAssignment(session, defaults, word, wish.edits))
      wish.errors.push_back(error);
  }
  if (ChangeError error = addRequired(session, defaults, wish.edits)) wish.errors.push_back(error);
  inOrderOfPages(session, wish.edits);
  return wish;
}

Wish wishOf(const Context& context, const ProfileSettings& profile, Unnamed unnamed) {
  const Defaults defaults = defaultValues(context);
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  Wish wish;
  for (const ProfileSetting& setting : profile) {
    if (session.find(setting.name) == nullptr) {
      wish.errors.push_back(
          failure(FailureCode::notSettable,
                  sentence("{1} is not available on this computer. Nothing was changed.", {setting.name}),
                  setting.name));
    } else {
      wish.edits.push_back({setting.name, setting.value, ""});
    }
  }
  if (ChangeError error = addRequired(session, defaults, wish.edits)) wish.errors.push_back(error);
  if (unnamed == Unnamed::toDefaults) addDefaults(session, defaults, wish.edits);
  inOrderOfPages(session, wish.edits);
  return wish;
}

ChangeError applyEdits(Session& session, const std::vector<Edit>& edits, BehindBoxes behindBoxes,
                       std::vector<std::string>& notes) {
  std::vector<const Edit*> declined;
  const auto openEdits = [&] {
    std::vector<const Edit*> open;
    for (const Edit& edit : edits) {
      if (!holds(session, edit) && std::ranges::count(declined, &edit) == 0) open.push_back(&edit);
    }
    return open;
  };
  // Making one edit may undo another, which is then made again; more often than this they undo one another.
  std::size_t left = 2 * edits.size();
  for (auto open = openEdits(); !open.empty(); open = openEdits()) {
    const Edit* next = nextOf(session, open);
    if (left-- == 0) return notSettable(session, *open.front());
    const auto isMadeBehindBox = [&](const Edit* edit) { return makeBehindBox(session, *edit); };
    if (next == nullptr && behindBoxes == BehindBoxes::edited && std::ranges::any_of(open, isMadeBehindBox))
      continue;
    if (next == nullptr) return notSettable(session, *open.front());
    make(session, *next);
    if (holds(session, *next)) continue;
    declined.push_back(next);
    notes.push_back(sentence("{1} stays {2}.", {next->name, session.find(next->name)->text()}));
  }
  return {};
}

}  // namespace norvik::command
