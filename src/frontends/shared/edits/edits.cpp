// Words and profiles become edits; edits are made one by one, the one that disables others last.
#include "src/frontends/shared/edits/edits.h"

#include <algorithm>

#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/edits/defaults.h"
#include "src/frontends/shared/edits/editability.h"
#include "src/frontends/shared/edits/edited_shadow.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

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

ChangeError parseAssignment(EditedPane& edited, const Defaults& defaults, const std::string& word,
                            std::vector<Edit>& edits) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const PaneSetting* setting = edited.find(name);
  if (setting == nullptr) {
    return failure(FailureCode::usage,
                   sentence("unknown setting \"{1}\".", {name}) + suggestion(name, edited.settingNames()),
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
Requirement requirementOf(EditedPane& edited, const Edit& edit, const Defaults& defaults) {
  const SettingDescription& description = edited.find(edit.name)->description();
  const bool isNone = edit.value == kNoChoice;
  const std::size_t control = description.isChoice() && !isNone ? static_cast<std::size_t>(edit.value) : 0;
  Requirement requirement{edited.settingOf(description.controls[control]->requiresOutlet)};
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

ChangeError addRequired(EditedPane& edited, const Defaults& defaults, std::vector<Edit>& edits) {
  for (std::size_t i = 0; i < edits.size(); ++i) {
    const Requirement requirement = requirementOf(edited, edits[i], defaults);
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
bool contradicts(EditedPane& edited, const Defaults& defaults, const Edit& edit,
                 const std::vector<Edit>& edits) {
  const Requirement requirement = requirementOf(edited, edit, defaults);
  if (requirement.box == nullptr || requirement.mayBeOtherwise) return false;
  const Edit* given = find(edits, requirement.box->name());
  return given != nullptr && given->value != (requirement.on ? kOnState : kOffState);
}

// Whether the setting shows the server's value once the edits are made.
bool followsThen(EditedPane& edited, const PaneSetting& setting, const std::vector<Edit>& edits) {
  const Setting* row = rowOfSetting(edited.pane(), setting);
  if (row == nullptr || !row->followed) return false;
  const PaneSetting* box = edited.settingOf(edited.pane().ib_user_chkbox_imgDefs.name());
  const Edit* given = box != nullptr ? find(edits, box->name()) : nullptr;
  return given != nullptr && given->value == kOnState;
}

// The boxes come first, as they decide which other settings have a value of their own.
void addDefaults(EditedPane& edited, const Defaults& defaults, std::vector<Edit>& edits) {
  for (const bool boxes : {true, false}) {
    for (const PaneSetting& setting : edited.settings()) {
      const bool isBox = setting.description().first().kind == ControlKind::checkBox;
      const auto standard = defaults.find(setting.name());
      if (isBox != boxes || standard == defaults.end() || find(edits, setting.name()) != nullptr) continue;
      const Edit edit{setting.name(), standard->second, translated("not in the profile")};
      if (contradicts(edited, defaults, edit, edits) || followsThen(edited, setting, edits)) continue;
      edits.push_back(edit);
    }
  }
}

void inOrderOfPages(EditedPane& edited, std::vector<Edit>& edits) {
  std::ranges::stable_sort(edits, {}, [&](const Edit& edit) { return edited.find(edit.name); });
}

// The control that a person would click; null for a choice of which no button is to be on, which its box
// brings about.
Control* controlOf(EditedPane& edited, const Edit& edit) {
  return edit.value == kNoChoice ? nullptr : &edited.find(edit.name)->controlFor(edit.value);
}

bool holds(EditedPane& edited, const Edit& edit) {
  return edited.find(edit.name)->value().value_or(kNoChoice) == edit.value;
}

bool canBeMade(EditedPane& edited, const Edit& edit) {
  const Control* control = controlOf(edited, edit);
  return control != nullptr && control->isEnabled();
}

// Whether making the edit would disable the control of another one that can be made now.
bool standsInTheWay(EditedPane& edited, const Edit& edit, const std::vector<const Edit*>& open) {
  Control& control = *controlOf(edited, edit);
  if (control.kind() != ControlKind::checkBox) return false;
  return std::ranges::any_of(open, [&](const Edit* other) {
    return other != &edit && canBeMade(edited, *other) &&
           switchingDisables(edited, control, *controlOf(edited, *other));
  });
}

// The edit to make next; null where none of them can be made.
const Edit* nextOf(EditedPane& edited, const std::vector<const Edit*>& open) {
  const Edit* possible = nullptr;
  for (const Edit* edit : open) {
    if (!canBeMade(edited, *edit)) continue;
    if (!standsInTheWay(edited, *edit, open)) return edit;
    if (possible == nullptr) possible = edit;
  }
  return possible;
}

ChangeError notSettable(EditedPane& edited, const Edit& edit) {
  PaneSetting& setting = *edited.find(edit.name);
  const std::string value = setting.textOf(edit.value);
  if (edit.value == kNoChoice) {
    return failure(
        FailureCode::notSettable,
        sentence("{1} cannot be set to {2} now: it has a value. Nothing was changed.", {edit.name, value}),
        edit.name);
  }
  const Editability why = editabilityOf(edited, setting, edit.value);
  const char* pattern = why.obstacle == Obstacle::needsSwitches
                            ? english("{1} cannot be set to {2} now: it {3}. Nothing was changed.")
                            : english("{1} cannot be set to {2} now: it is {3}. Nothing was changed.");
  return failure(FailureCode::notSettable, sentence(pattern, {edit.name, value, why.remark}), edit.name);
}

void make(EditedPane& edited, const Edit& edit) {
  edited.find(edit.name)->put(edit.value);
  edited.click(*controlOf(edited, edit));
}

// Makes an edit whose control would be enabled if one box were on, and leaves the box off. Whether it holds
// then, as it does not where the box being off undoes it.
bool makeBehindBox(EditedPane& edited, const Edit& edit) {
  const Control* control = controlOf(edited, edit);
  const auto switches = control != nullptr ? switchesToEnable(edited, *control) : std::nullopt;
  if (!switches || switches->size() != 1 || !switches->front().on) return false;
  Control& box = *edited.find(switches->front().name)->controls().front();
  whileSwitched(edited, box, [&] { make(edited, edit); });
  return holds(edited, edit);
}

}  // namespace

Wish wishOf(Platform& computer, const InterfaceDescription& interface,
            const std::vector<std::string>& assignments) {
  const Defaults defaults = defaultValues(computer, interface);
  EditedShadow shadow(computer, interface);
  EditedPane& edited = shadow.edited();
  Wish wish;
  for (const std::string& word : assignments) {
    if (ChangeError error = parseAssignment(edited, defaults, word, wish.edits)) wish.errors.push_back(error);
  }
  if (ChangeError error = addRequired(edited, defaults, wish.edits)) wish.errors.push_back(error);
  inOrderOfPages(edited, wish.edits);
  return wish;
}

Wish wishOf(Platform& computer, const InterfaceDescription& interface, const ProfileSettings& profile,
            Unnamed unnamed) {
  const Defaults defaults = defaultValues(computer, interface);
  EditedShadow shadow(computer, interface);
  EditedPane& edited = shadow.edited();
  Wish wish;
  for (const ProfileSetting& setting : profile) {
    if (edited.find(setting.name) == nullptr) {
      wish.errors.push_back(
          failure(FailureCode::notSettable,
                  sentence("{1} is not available on this computer. Nothing was changed.", {setting.name}),
                  setting.name));
    } else {
      wish.edits.push_back({setting.name, setting.value, ""});
    }
  }
  if (ChangeError error = addRequired(edited, defaults, wish.edits)) wish.errors.push_back(error);
  if (unnamed == Unnamed::toDefaults) addDefaults(edited, defaults, wish.edits);
  inOrderOfPages(edited, wish.edits);
  return wish;
}

Wish wishToReturn(Platform& computer, const InterfaceDescription& interface,
                  const ProfileSettings& settings) {
  Wish wish = wishOf(computer, interface, settings, Unnamed::stay);
  EditedShadow shadow(computer, interface);
  std::erase_if(wish.edits, [&](const Edit& edit) {
    return followsThen(shadow.edited(), *shadow.edited().find(edit.name), wish.edits);
  });
  return wish;
}

ChangeError applyEdits(EditedPane& edited, const std::vector<Edit>& edits, BehindBoxes behindBoxes,
                       std::vector<std::string>& notes) {
  std::vector<const Edit*> declined;
  const auto openEdits = [&] {
    std::vector<const Edit*> open;
    for (const Edit& edit : edits) {
      if (!holds(edited, edit) && std::ranges::count(declined, &edit) == 0) open.push_back(&edit);
    }
    return open;
  };
  // Making one edit may undo another, which is then made again; more often than this they undo one another.
  std::size_t left = 2 * edits.size();
  for (auto open = openEdits(); !open.empty(); open = openEdits()) {
    const Edit* next = nextOf(edited, open);
    if (left-- == 0) return notSettable(edited, *open.front());
    const auto isMadeBehindBox = [&](const Edit* edit) { return makeBehindBox(edited, *edit); };
    if (next == nullptr && behindBoxes == BehindBoxes::edited && std::ranges::any_of(open, isMadeBehindBox))
      continue;
    if (next == nullptr) return notSettable(edited, *open.front());
    make(edited, *next);
    if (holds(edited, *next)) continue;
    declined.push_back(next);
    notes.push_back(sentence("{1} stays {2}.", {next->name, edited.find(next->name)->text()}));
  }
  return {};
}

}  // namespace norvik
