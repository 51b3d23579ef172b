// The short loops that every settings group consists of.
#include "src/server/mac/stores/settings.h"

#include <string>

#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

namespace {
constexpr int64_t kUnknown = -1;
}  // namespace

int64_t Setting::baseline(const NVKServerPrefs& pane) const {
  if (const Flag* flag = std::get_if<Flag>(&field.member)) return pane.**flag ? 1 : 0;
  return pane.*std::get<Number>(field.member);
}

void Setting::setBaseline(NVKServerPrefs& pane, int64_t value) const {
  if (const Flag* flag = std::get_if<Flag>(&field.member)) {
    pane.** flag = value != 0;
  } else {
    pane.*std::get<Number>(field.member) = value;
  }
}

int64_t Setting::pendingValue(const NVKServerPrefs& pane) const {
  if (const PendingFlag* flag = std::get_if<PendingFlag>(&pending.operation)) return (pane.**flag)() ? 1 : 0;
  return (pane.*std::get<PendingNumber>(pending.operation))();
}

int64_t Setting::valueIn(const PropertyList& dictionary) const {
  const PropertyList* home = service != nullptr ? dictionary.find(service) : &dictionary;
  const PropertyList* found = home != nullptr ? home->find(key) : nullptr;
  int64_t value = missing;
  if (found != nullptr) {
    switch (stored) {
      case StoredAs::boolean:
        value = boolValue(found) ? 1 : 0;
        break;
      case StoredAs::invertedBoolean:
      case StoredAs::invertedUnlessUnknown:
        value = boolValue(found) ? 0 : 1;
        break;
      case StoredAs::integer32:
        value = intValue(found);
        break;
      case StoredAs::integer64:
        value = integerValue(found);
        break;
      case StoredAs::nowhere:
        break;
    }
  }
  if (value < least || value > most) value = missing;
  return value == 0 ? standard : value;
}

void Setting::storeIn(PropertyList& dictionary, int64_t value) const {
  auto* home = dictionary.as<PropertyList::Dictionary>();
  if (service != nullptr) {
    PropertyList& inner = (*home)[service];
    if (inner.as<PropertyList::Dictionary>() == nullptr) inner = PropertyList();
    home = inner.as<PropertyList::Dictionary>();
  }
  switch (stored) {
    case StoredAs::boolean:
      home->insert_or_assign(key, value != 0);
      break;
    case StoredAs::invertedBoolean:
      home->insert_or_assign(key, value == 0);
      break;
    case StoredAs::invertedUnlessUnknown:
      if (value != kUnknown) home->insert_or_assign(key, value == 0);
      break;
    case StoredAs::integer32:
    case StoredAs::integer64:
      home->insert_or_assign(key, value);
      break;
    case StoredAs::nowhere:
      break;
  }
}

void Setting::show(NVKServerPrefs& pane) const {
  Control& control = pane.*controls[0];
  const int64_t value = baseline(pane);
  switch (shown) {
    case Shown::value:
      return control.setIntegerValue(value);
    case Shown::on:
      return control.setState(value != 0 ? kOnState : kOffState);
    case Shown::onPositive:
      return control.setState(value > 0 ? kOnState : kOffState);
    case Shown::onZero:
      return control.setState(value == 0 ? kOnState : kOffState);
    case Shown::item:
      // In unsigned numbers, as the least number has none below it.
      return control.selectItemAtIndex(static_cast<int64_t>(static_cast<uint64_t>(value) - 1));
    case Shown::elsewhere:
      return;
  }
}

void loadSettings(NVKServerPrefs& pane, SettingsTable table, const PropertyList& dictionary) {
  for (const Setting& setting : table) {
    if (setting.stored != StoredAs::nowhere) setting.setBaseline(pane, setting.valueIn(dictionary));
  }
}

bool settingsDiffer(const NVKServerPrefs& pane, SettingsTable table) {
  for (const Setting& setting : table) {
    if (setting.differs(pane)) return true;
  }
  return false;
}

void storeSettings(const NVKServerPrefs& pane, SettingsTable table, PropertyList& dictionary) {
  for (const Setting& setting : table) setting.storeIn(dictionary, setting.pendingValue(pane));
}

void adoptSettings(NVKServerPrefs& pane, SettingsTable table) {
  for (const Setting& setting : table) setting.setBaseline(pane, setting.pendingValue(pane));
}

bool writeSettingsFile(const PropertyList& dictionary, const std::string& path, const char* failure) {
  if (platform().propertyLists.writeToFile(dictionary, path)) return true;
  logFailure(failure, path);
  return false;
}

namespace {

const Setting* settingIn(SettingsTable table, const NVKServerPrefs& pane, const Control& control) {
  for (const Setting& setting : table) {
    for (Control NVKServerPrefs::*edits : setting.controls) {
      if (edits != nullptr && &(pane.*edits) == &control) return &setting;
    }
  }
  return nullptr;
}

const Setting* settingOf(const NVKServerPrefs& pane, const Control& control) {
  for (const SettingsTable table : {userSettings(), serverSettings(), notificationSettings()}) {
    if (const Setting* setting = settingIn(table, pane, control)) return setting;
  }
  return nullptr;
}

bool isOpenFilesControl(const NVKServerPrefs& pane, const Control& control) {
  return &control == &pane.ib_admin_edbox_maxFSoft || &control == &pane.ib_admin_edbox_maxFHard ||
         &control == &pane.ib_admin_button_maxFAdjust;
}

}  // namespace

bool NVKServerPrefs::differsFromStored(const Control& control) const {
  if (isOpenFilesControl(*this, control)) return authorized() && maxFilesChanged();
  if (const Setting* setting = settingIn(userSettings(), *this, control)) {
    const bool isFollowing = setting->followed && new_user_imgDefs() == 1;
    return !isFollowing && setting->differs(*this);
  }
  const Setting* setting = settingOf(*this, control);
  return setting != nullptr && authorized() && setting->differs(*this);
}

bool NVKServerPrefs::differsFromDefault(const Control& control) const {
  const Setting* setting = settingOf(*this, control);
  return setting != nullptr && setting->pendingValue(*this) != setting->valueIn(PropertyList());
}

}  // namespace norvik
