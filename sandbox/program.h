// What every stand-in needs: its root, a log, and distinct exit statuses. Also how one of them starts
// another.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/root.h"

namespace norvik::sandbox {

// Exit statuses beside 0 and 1, with their usual numbers.
inline constexpr int kExitUsage = 64;
inline constexpr int kExitNoRoot = 78;

using Arguments = std::vector<std::string>;

// Finds the root and runs the body with the arguments after the program's name. Reports what the body throws
// on standard error and returns 1; without a root, runs nothing and returns kExitNoRoot.
int runProgram(int argc, char** argv, const std::function<int(const Root&, const Arguments&)>& body);

// Prints on standard error how a program is called; returns kExitUsage.
int usage(std::string_view text);

// Adds a line, with the time before it, to the log of this name (".norvik/log/NAME.log").
void logLine(const Root& root, std::string_view log, std::string_view line);

// Runs a program with NORVIK_ROOT set and waits for it; returns its exit status, 1 when it was killed, 127
// when it could not be started.
int runAndWait(const Root& root, const std::filesystem::path& program, const Arguments& arguments = {});

}  // namespace norvik::sandbox
