// Settings of one row of the pane's tables have one stored value, so they are taken back together or not at
// all.
#include "src/frontends/shared/history/reversal.h"

#include <algorithm>
#include <set>
#include <variant>

#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/edits/edited_shadow.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

constexpr std::string_view kNoneText = "none";

std::string textOf(const SettingValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<int64_t>(&value)) return std::to_string(*number);
  return std::get<bool>(value) ? "on" : "off";
}

// As PaneSetting has it; nothing for a value that the setting cannot have.
std::optional<int64_t> numberOf(const SettingDescription& setting, const SettingValue& value) {
  const std::string text = textOf(value);
  if (setting.isChoice() && folded(text) == kNoneText) return kNoChoice;
  return checkedValue(setting, text);
}

// A recorded setting beside what is stored now.
struct Compared {
  const RecordedSetting& recorded;
  const PaneSetting& setting;
  const Setting* row = nullptr;
  int64_t now = 0;
  std::optional<int64_t> before, after;

  bool isBack() const { return before == now; }
  bool wasChangedAgain() const { return !isBack() && after != now; }
};

std::string leftAlone(const Compared& each) {
  return sentence("{1} stays {2}, as it was changed again since: the change had made it {3}.",
                  {each.recorded.name, each.setting.textOf(each.now), textOf(each.recorded.after)});
}

std::string leftWith(const Compared& each) {
  return sentence("{1} stays {2}, as it belongs to a setting that was changed again since.",
                  {each.recorded.name, each.setting.textOf(each.now)});
}

class Comparison {
 public:
  Comparison(EditedPane& fresh, const std::vector<RecordedSetting>& settings, ChangedAgain again,
             Reversal& reversal)
      : fresh_(fresh), again_(again), reversal_(reversal) {
    for (const RecordedSetting& setting : settings) add(setting);
  }

  ProfileSettings wanted() {
    std::set<const Setting*> touched;
    for (const Compared& each : compared_) {
      if (again_ == ChangedAgain::leftAlone && each.wasChangedAgain() && each.row != nullptr)
        touched.insert(each.row);
    }
    ProfileSettings wanted;
    for (const Compared& each : compared_) take(each, touched, wanted);
    return wanted;
  }

 private:
  void add(const RecordedSetting& setting) {
    if (setting.name == kOpenFilesLimitName) return addLimit(setting);
    const PaneSetting* known = fresh_.find(setting.name);
    if (known == nullptr) {
      reversal_.errors.push_back(
          failure(FailureCode::notSettable,
                  sentence("{1} is not available on this computer. Nothing was changed.", {setting.name}),
                  setting.name));
      return;
    }
    const SettingDescription& description = known->description();
    compared_.push_back({setting, *known, rowOfSetting(fresh_.pane(), *known),
                         storedValueOf(fresh_.pane(), *known), numberOf(description, setting.before),
                         numberOf(description, setting.after)});
  }

  void take(const Compared& each, const std::set<const Setting*>& touched, ProfileSettings& wanted) {
    if (each.isBack()) return;
    if (again_ == ChangedAgain::leftAlone && each.wasChangedAgain()) return leave(leftAlone(each));
    if (touched.contains(each.row)) return leave(leftWith(each));
    if (each.before) {
      wanted.push_back({each.recorded.name, *each.before});
      return;
    }
    reversal_.errors.push_back(
        failure(FailureCode::notSettable,
                sentence("{1} was {2} before, which it cannot be given. Nothing was changed.",
                         {each.recorded.name, textOf(each.recorded.before)}),
                each.recorded.name));
  }

  void leave(std::string note) {
    reversal_.notes.push_back(std::move(note));
    reversal_.leavesSome = true;
  }

  void addLimit(const RecordedSetting& setting) {
    const std::string now = limitText(wholeLimit(fresh_.pane().m_admin_maxFiles.launchd));
    const std::string before = textOf(setting.before), after = textOf(setting.after);
    if (now == before) return;
    if (now != after && again_ == ChangedAgain::leftAlone) {
      return leave(sentence("The open files limit stays {1}, as it was changed again since.", {now}));
    }
    reversal_.limit = before == limitText({}) ? LimitStep::reset : LimitStep::adjust;
    reversal_.limitBefore = before;
  }

  EditedPane& fresh_;
  ChangedAgain again_;
  Reversal& reversal_;
  std::vector<Compared> compared_;
};

ProfileSettings wantedNow(Platform& computer, const InterfaceDescription& interface,
                          const std::vector<RecordedSetting>& settings, ChangedAgain again,
                          Reversal& reversal) {
  EditedShadow shadow(computer, interface);
  return Comparison(shadow.edited(), settings, again, reversal).wanted();
}

}  // namespace

Reversal reversalOf(Platform& computer, const InterfaceDescription& interface,
                    const std::vector<RecordedSetting>& settings, ChangedAgain again) {
  Reversal reversal;
  const ProfileSettings wanted = wantedNow(computer, interface, settings, again, reversal);
  if (!reversal.errors.empty() || wanted.empty()) return reversal;
  Wish wish = wishToReturn(computer, interface, wanted);
  reversal.edits = std::move(wish.edits);
  reversal.errors = std::move(wish.errors);
  return reversal;
}

ChangeError applyReversal(EditedPane& edited, const Reversal& reversal, std::vector<std::string>& notes) {
  if (ChangeError error = applyEdits(edited, reversal.edits, BehindBoxes::edited, notes)) return error;
  if (!reversal.limit) return {};
  if (ChangeError error = takeLimitStep(edited, *reversal.limit, notes)) return error;
  const std::string now = limitText(wholeLimit(edited.pane().m_admin_maxFiles.launchd));
  if (now == reversal.limitBefore) return {};
  notes.push_back(
      sentence("The open files limit becomes {1}, not {2}: it can only be reset or made the current one.",
               {now, reversal.limitBefore}));
  return {};
}

}  // namespace norvik
