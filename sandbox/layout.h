// What a new root holds: folders, sample files, programs. Writes nothing outside the root.
#pragma once

#include <filesystem>

#include "sandbox/root.h"

namespace norvik::sandbox {

// Lays out a sandbox in a folder, which is made when it is not there, or completes one that is: what there is
// stays as it is. The programs are copied from `programs`. Throws std::runtime_error for a folder that holds
// anything else, or that cannot be written.
Root layOut(const std::filesystem::path& folder, const std::filesystem::path& programs);

}  // namespace norvik::sandbox
