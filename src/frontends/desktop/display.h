// The screen that the window appears on. Looked for before Qt does, which aborts if there is none. Changes
// the environment of the process.
#pragma once

namespace norvik::desktop {

// Lets what needs no screen, such as --picture and --help, do without one. False if a window is wanted and no
// screen is named anywhere. To be called before there is an application.
bool prepareDisplay(int argc, const char* const* argv);

}  // namespace norvik::desktop
