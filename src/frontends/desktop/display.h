// The screen that the window comes up on, looked for before Qt does, which aborts where there is none.
// Touches the environment of the process.
#pragma once

namespace norvik::desktop {

// Makes what needs no screen, as --picture and --help, do without one. False where a window is wanted and no
// screen is named anywhere. To be called before there is an application.
bool prepareDisplay(int argc, const char* const* argv);

}  // namespace norvik::desktop
