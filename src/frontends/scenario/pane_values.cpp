// The fields and accessors of the settings come from the settings tables; the other fields are listed here.
#include "src/frontends/scenario/pane_values.h"

#include "src/frontends/scenario/forms.h"
#include "src/server/mac/pane/member_name.h"
#include "src/server/mac/stores/settings.h"

namespace norvik::scenario {

namespace {

using P = NVKServerPrefs;

template <auto member>
PaneValue field() {
  return {memberName<member>(), [](const P& pane) { return form(pane.*member); }};
}

PaneValue fieldOfSetting(const Setting& setting) {
  return {setting.field.name, [&setting](const P& pane) {
            return std::visit([&](auto member) { return form(pane.*member); }, setting.field.member);
          }};
}

PaneValue accessorOfSetting(const Setting& setting) {
  return {setting.pending.name, [&setting](const P& pane) {
            return std::visit([&](auto operation) { return form((pane.*operation)()); },
                              setting.pending.operation);
          }};
}

std::vector<PaneValue> ofSettings(PaneValue (*valueOf)(const Setting&)) {
  std::vector<PaneValue> values;
  for (const SettingsTable table : {userSettings(), serverSettings(), notificationSettings()}) {
    for (const Setting& setting : table) values.push_back(valueOf(setting));
  }
  return values;
}

std::vector<PaneValue> allFields() {
  std::vector<PaneValue> values{
      field<&P::m_authImage1>(),
      field<&P::m_authImage2>(),
      field<&P::m_uiTimer>(),
      field<&P::m_isSelected>(),
      field<&P::m_trackState>(),
      field<&P::m_needReboot>(),
      field<&P::m_serverPid>(),
      field<&P::m_authRef>(),
      field<&P::m_user_Config>(),
      field<&P::m_admin_Config>(),
      field<&P::m_admin_Ntf_Config>(),
      field<&P::m_admin_ntfShouldGenerateIntTest>(),
      field<&P::m_admin_ntfShouldAskTestMessFromServer>(),
      field<&P::m_admin_maxFiles>(),
      field<&P::m_confBarRoots>(),
      field<&P::m_confBarItems>(),
  };
  const std::vector<PaneValue> settings = ofSettings(fieldOfSetting);
  values.insert(values.end(), settings.begin(), settings.end());
  return values;
}

}  // namespace

std::span<const PaneValue> paneFields() {
  static const std::vector<PaneValue> values = allFields();
  return values;
}
std::span<const PaneValue> paneAccessors() {
  static const std::vector<PaneValue> values = ofSettings(accessorOfSetting);
  return values;
}

}  // namespace norvik::scenario
