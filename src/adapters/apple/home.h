// The home folder of the user who runs the program.
#pragma once

#include <string>

namespace norvik {

// Without a "/" at its end; that of the container in a program that runs in one.
std::string homeFolder();

}  // namespace norvik
