// The five image settings that exist twice, the server's and the user's, side by side: a user page that
// follows the server's values is filled from the one, the agent's file from the other.
#pragma once

#include "src/server/mac/pane/pane.h"

namespace norvik {

struct ImageControl {
  int64_t NVKServerPrefs::*serverField;
  int64_t NVKServerPrefs::*userField;
  int64_t (NVKServerPrefs::*serverPending)() const;
  int64_t (NVKServerPrefs::*userPending)() const;
  Control NVKServerPrefs::*serverControl;
  Control NVKServerPrefs::*userControl;
};

// clang-format off
inline constexpr ImageControl kImageControls[] = {
    {&NVKServerPrefs::m_admin_imgMode, &NVKServerPrefs::m_user_imgMode, &NVKServerPrefs::new_admin_imgMode, &NVKServerPrefs::new_user_imgMode,
     &NVKServerPrefs::ib_admin_popup_imgMode, &NVKServerPrefs::ib_user_popup_imgMode},
    {&NVKServerPrefs::m_admin_imgDept, &NVKServerPrefs::m_user_imgDept, &NVKServerPrefs::new_admin_imgDept, &NVKServerPrefs::new_user_imgDept,
     &NVKServerPrefs::ib_admin_slider_imgDept, &NVKServerPrefs::ib_user_slider_imgDept},
    {&NVKServerPrefs::m_admin_imgCapt, &NVKServerPrefs::m_user_imgCapt, &NVKServerPrefs::new_admin_imgCapt, &NVKServerPrefs::new_user_imgCapt,
     &NVKServerPrefs::ib_admin_slider_imgCapt, &NVKServerPrefs::ib_user_slider_imgCapt},
    {&NVKServerPrefs::m_admin_imgBuff, &NVKServerPrefs::m_user_imgBuff, &NVKServerPrefs::new_admin_imgBuff, &NVKServerPrefs::new_user_imgBuff,
     &NVKServerPrefs::ib_admin_slider_imgBuff, &NVKServerPrefs::ib_user_slider_imgBuff},
    {&NVKServerPrefs::m_admin_imgShad, &NVKServerPrefs::m_user_imgShad, &NVKServerPrefs::new_admin_imgShad, &NVKServerPrefs::new_user_imgShad,
     &NVKServerPrefs::ib_admin_slider_imgShad, &NVKServerPrefs::ib_user_slider_imgShad},
};
// clang-format on

}  // namespace norvik
