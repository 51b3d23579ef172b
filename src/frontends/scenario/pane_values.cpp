// The tables, in the order of the pane's header.
#include "src/frontends/scenario/pane_values.h"

#include "src/frontends/scenario/forms.h"

namespace norvik::scenario {

namespace {

using P = NVKServerPrefs;

template <auto member>
std::string field(const P& pane) {
  return form(pane.*member);
}

template <auto operation>
std::string accessor(const P& pane) {
  return form((pane.*operation)());
}

// clang-format off
constexpr PaneValue kFields[] = {
    {"m_authImage1",                           field<&P::m_authImage1>},
    {"m_authImage2",                           field<&P::m_authImage2>},
    {"m_uiTimer",                              field<&P::m_uiTimer>},
    {"m_isSelected",                           field<&P::m_isSelected>},
    {"m_trackState",                           field<&P::m_trackState>},
    {"m_needReboot",                           field<&P::m_needReboot>},
    {"m_serverPid",                            field<&P::m_serverPid>},
    {"m_authRef",                              field<&P::m_authRef>},
    {"m_user_Config",                          field<&P::m_user_Config>},
    {"m_user_imgDefs",                         field<&P::m_user_imgDefs>},
    {"m_user_imgMode",                         field<&P::m_user_imgMode>},
    {"m_user_imgDept",                         field<&P::m_user_imgDept>},
    {"m_user_imgShad",                         field<&P::m_user_imgShad>},
    {"m_user_imgCapt",                         field<&P::m_user_imgCapt>},
    {"m_user_imgBuff",                         field<&P::m_user_imgBuff>},
    {"m_user_mseSwap",                         field<&P::m_user_mseSwap>},
    {"m_admin_Config",                         field<&P::m_admin_Config>},
    {"m_admin_nvkPort",                        field<&P::m_admin_nvkPort>},
    {"m_admin_nvkState",                       field<&P::m_admin_nvkState>},
    {"m_admin_nvkSound",                       field<&P::m_admin_nvkSound>},
    {"m_admin_nvkPrint",                       field<&P::m_admin_nvkPrint>},
    {"m_admin_nvkClipb",                       field<&P::m_admin_nvkClipb>},
    {"m_admin_rdpPort",                        field<&P::m_admin_rdpPort>},
    {"m_admin_rdpState",                       field<&P::m_admin_rdpState>},
    {"m_admin_rdpSound",                       field<&P::m_admin_rdpSound>},
    {"m_admin_rdpPrint",                       field<&P::m_admin_rdpPrint>},
    {"m_admin_rdpClipb",                       field<&P::m_admin_rdpClipb>},
    {"m_admin_multiUser",                      field<&P::m_admin_multiUser>},
    {"m_admin_loginAct",                       field<&P::m_admin_loginAct>},
    {"m_admin_imgMode",                        field<&P::m_admin_imgMode>},
    {"m_admin_imgDept",                        field<&P::m_admin_imgDept>},
    {"m_admin_imgShad",                        field<&P::m_admin_imgShad>},
    {"m_admin_imgCapt",                        field<&P::m_admin_imgCapt>},
    {"m_admin_imgBuff",                        field<&P::m_admin_imgBuff>},
    {"m_admin_wakeUp",                         field<&P::m_admin_wakeUp>},
    {"m_admin_scrSaver",                       field<&P::m_admin_scrSaver>},
    {"m_admin_noQuartz",                       field<&P::m_admin_noQuartz>},
    {"m_admin_gldMode",                        field<&P::m_admin_gldMode>},
    {"m_admin_Ntf_Config",                     field<&P::m_admin_Ntf_Config>},
    {"m_admin_ntfShowNews",                    field<&P::m_admin_ntfShowNews>},
    {"m_admin_ntfShowNotices",                 field<&P::m_admin_ntfShowNotices>},
    {"m_admin_ntfShowUpdates",                 field<&P::m_admin_ntfShowUpdates>},
    {"m_admin_ntfShowWarnings",                field<&P::m_admin_ntfShowWarnings>},
    {"m_admin_ntfShowPrLow",                   field<&P::m_admin_ntfShowPrLow>},
    {"m_admin_ntfShowPrMedium",                field<&P::m_admin_ntfShowPrMedium>},
    {"m_admin_ntfShowPrHigh",                  field<&P::m_admin_ntfShowPrHigh>},
    {"m_admin_ntfRepeatTimeout",               field<&P::m_admin_ntfRepeatTimeout>},
    {"m_admin_ntfCloseTimeout",                field<&P::m_admin_ntfCloseTimeout>},
    {"m_admin_ntfShowTimeout",                 field<&P::m_admin_ntfShowTimeout>},
    {"m_admin_ntfShouldGenerateIntTest",       field<&P::m_admin_ntfShouldGenerateIntTest>},
    {"m_admin_ntfShouldAskTestMessFromServer", field<&P::m_admin_ntfShouldAskTestMessFromServer>},
    {"m_admin_maxFiles",                       field<&P::m_admin_maxFiles>},
    {"m_confBarRoots",                         field<&P::m_confBarRoots>},
    {"m_confBarItems",                         field<&P::m_confBarItems>},
};

constexpr PaneValue kAccessors[] = {
    {"new_user_imgDefs",        accessor<&P::new_user_imgDefs>},
    {"new_user_mseSwap",        accessor<&P::new_user_mseSwap>},
    {"new_user_imgMode",        accessor<&P::new_user_imgMode>},
    {"new_user_imgDept",        accessor<&P::new_user_imgDept>},
    {"new_user_imgCapt",        accessor<&P::new_user_imgCapt>},
    {"new_user_imgBuff",        accessor<&P::new_user_imgBuff>},
    {"new_user_imgShad",        accessor<&P::new_user_imgShad>},
    {"new_admin_nvkPort",       accessor<&P::new_admin_nvkPort>},
    {"new_admin_rdpPort",       accessor<&P::new_admin_rdpPort>},
    {"new_admin_nvkState",      accessor<&P::new_admin_nvkState>},
    {"new_admin_nvkSound",      accessor<&P::new_admin_nvkSound>},
    {"new_admin_nvkPrint",      accessor<&P::new_admin_nvkPrint>},
    {"new_admin_nvkClipb",      accessor<&P::new_admin_nvkClipb>},
    {"new_admin_rdpState",      accessor<&P::new_admin_rdpState>},
    {"new_admin_rdpSound",      accessor<&P::new_admin_rdpSound>},
    {"new_admin_rdpPrint",      accessor<&P::new_admin_rdpPrint>},
    {"new_admin_rdpClipb",      accessor<&P::new_admin_rdpClipb>},
    {"new_admin_multiUser",     accessor<&P::new_admin_multiUser>},
    {"new_admin_loginAct",      accessor<&P::new_admin_loginAct>},
    {"new_admin_gldMode",       accessor<&P::new_admin_gldMode>},
    {"new_admin_imgMode",       accessor<&P::new_admin_imgMode>},
    {"new_admin_imgDept",       accessor<&P::new_admin_imgDept>},
    {"new_admin_imgCapt",       accessor<&P::new_admin_imgCapt>},
    {"new_admin_imgBuff",       accessor<&P::new_admin_imgBuff>},
    {"new_admin_imgShad",       accessor<&P::new_admin_imgShad>},
    {"new_admin_noQuartz",      accessor<&P::new_admin_noQuartz>},
    {"new_admin_wakeUp",        accessor<&P::new_admin_wakeUp>},
    {"new_admin_scrSaver",      accessor<&P::new_admin_scrSaver>},
    {"new_admin_showNews",      accessor<&P::new_admin_showNews>},
    {"new_admin_showNotices",   accessor<&P::new_admin_showNotices>},
    {"new_admin_showUpdates",   accessor<&P::new_admin_showUpdates>},
    {"new_admin_showWarnings",  accessor<&P::new_admin_showWarnings>},
    {"new_admin_showLowPrior",  accessor<&P::new_admin_showLowPrior>},
    {"new_admin_showMedPrior",  accessor<&P::new_admin_showMedPrior>},
    {"new_admin_showHighPrior", accessor<&P::new_admin_showHighPrior>},
    {"new_admin_repeatTimeout", accessor<&P::new_admin_repeatTimeout>},
    {"new_admin_closeTimeout",  accessor<&P::new_admin_closeTimeout>},
    {"new_admin_showTimeout",   accessor<&P::new_admin_showTimeout>},
};
// clang-format on

}  // namespace

std::span<const PaneValue> paneFields() {
  return kFields;
}
std::span<const PaneValue> paneAccessors() {
  return kAccessors;
}

}  // namespace norvik::scenario
