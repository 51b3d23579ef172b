// The language of the host's user: System Preferences may have another one than the programs of a
// terminal.
#pragma once

namespace norvik::prefpane {

// Speaks the language that the user has chosen for programs with windows, or else that of the environment. To
// be called once, before a text is shown.
void choosePaneLanguage();

}  // namespace norvik::prefpane
