// Which control edits which of those files.
#include "src/frontends/shared/interface/unread_settings.h"

#include <algorithm>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

struct FileControl {
  const char* file;
  std::string_view outlet;
};

// Those of the files that a computer may not read.
constexpr FileControl kFileControls[] = {{kScreenSaverFile, "ib_admin_chkbox_scrSaver"},
                                         {kWindowServerFile, "ib_admin_chkbox_noQuartz"},
                                         {kLaunchdConfigFile, "ib_admin_edbox_maxFSoft"},
                                         {kLaunchdConfigFile, "ib_admin_edbox_maxFHard"},
                                         {kLaunchdConfigFile, "ib_admin_button_maxFAdjust"}};

void add(std::string& words, std::string_view more) {
  words = joinedSentences(words, more);
}

std::string sentenceAbout(const ControlDescription& control) {
  return sentence("\"{1}\": {2}", {control.label, translated(kUnreadSentence)});
}

void sayIn(SectionDescription& section, const std::vector<std::string>& unreadFiles) {
  std::vector<const ControlDescription*> unread;
  bool isWhole = true;
  for (RowDescription& row : section.rows) {
    for (ControlDescription& control : row.controls) {
      if (!isUnread(control.outlet, unreadFiles)) {
        isWhole = false;
        continue;
      }
      add(control.help, translated(kUnreadSentence));
      unread.push_back(&control);
    }
  }
  if (isWhole && !unread.empty()) return add(section.note, translated(kUnreadSentence));
  for (const ControlDescription* control : unread) add(section.note, sentenceAbout(*control));
}

}  // namespace

bool isUnread(std::string_view outlet, const std::vector<std::string>& unreadFiles) {
  return std::ranges::any_of(kFileControls, [&](const FileControl& row) {
    return row.outlet == outlet && std::ranges::find(unreadFiles, row.file) != unreadFiles.end();
  });
}

InterfaceDescription withUnreadSaid(InterfaceDescription interface,
                                    const std::vector<std::string>& unreadFiles) {
  for (TabDescription& tab : interface.tabs) {
    for (SectionDescription& section : tab.sections) sayIn(section, unreadFiles);
  }
  return interface;
}

}  // namespace norvik
