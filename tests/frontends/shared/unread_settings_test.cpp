// What is said beside settings that nothing on the computer reads.
#include "src/frontends/shared/interface/unread_settings.h"

#include <gtest/gtest.h>

#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

const std::vector<std::string> kFiles = {"/etc/launchd.conf",
                                         "/Library/Preferences/com.apple.screensaver.plist",
                                         "/Library/Preferences/com.apple.windowserver.plist"};

const SectionDescription& sectionWith(const InterfaceDescription& interface, const std::string& outlet) {
  for (const TabDescription& tab : interface.tabs) {
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& control : row.controls) {
          if (control.outlet == outlet) return section;
        }
      }
    }
  }
  throw std::out_of_range(outlet);
}

TEST(UnreadSettings, TheirControlsAndSectionsSayIt) {
  const std::string sentence(kUnreadSentence);
  const InterfaceDescription interface = withUnreadSaid(shippedInterface(), kFiles);
  for (const char* outlet :
       {"ib_admin_chkbox_scrSaver", "ib_admin_chkbox_noQuartz", "ib_admin_button_maxFAdjust"}) {
    const ControlDescription& control = *interface.find(outlet);
    EXPECT_TRUE(control.help.ends_with(". " + sentence)) << control.help;
    EXPECT_TRUE(sectionWith(interface, outlet).note.ends_with(sentence)) << outlet;
  }
  EXPECT_EQ(sectionWith(interface, "ib_admin_chkbox_scrSaver").note,
            "\"Turn off the screen saver at the login window\": " + sentence);
  const std::string& limits = sectionWith(interface, "ib_admin_edbox_maxFSoft").note;
  EXPECT_EQ(limits.find(sentence), limits.rfind(sentence)) << "said once for the whole section";
}

TEST(UnreadSettings, NothingElseIsDifferent) {
  const InterfaceDescription shipped = shippedInterface();
  const InterfaceDescription interface = withUnreadSaid(shipped, kFiles);
  std::size_t said = 0;
  for (const ControlDescription* control : shipped.controls()) {
    ControlDescription changed = *interface.find(control->outlet);
    EXPECT_EQ(isUnread(control->outlet, kFiles), changed.help != control->help) << control->outlet;
    said += changed.help != control->help ? 1 : 0;
    changed.help = control->help;
    EXPECT_EQ(changed, *control);
  }
  EXPECT_EQ(said, 5U);
  for (const TabDescription& tab : withUnreadSaid(shipped, {}).tabs) {
    for (const SectionDescription& section : tab.sections)
      EXPECT_EQ(section.note.find(kUnreadSentence), std::string::npos);
  }
}

}  // namespace
}  // namespace norvik
