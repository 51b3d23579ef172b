// What a new root holds: folders, sample files, programs. Writes nothing outside the root.
#pragma once

#include <filesystem>

#include "sandbox/root.h"

namespace norvik::sandbox {

// Creates a sandbox in a folder, which is made if it is missing, or completes the sandbox that is there:
// existing files stay as they are. The programs are copied from `programs`. Throws std::runtime_error for a
// folder that holds anything else, or that cannot be written.
Root createSandbox(const std::filesystem::path& folder, const std::filesystem::path& programs);

}  // namespace norvik::sandbox
