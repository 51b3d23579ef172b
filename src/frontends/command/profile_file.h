// A profile in a file, and its faults as failures: for the commands that take one.
#pragma once

#include <string>

#include "src/frontends/command/context.h"
#include "src/frontends/command/typed_file.h"
#include "src/frontends/shared/profile/profile.h"

namespace norvik::command {

struct ProfileFile {
  std::string name;  // for a person: its path, or "standard input"
  ProfileReading reading;
};

// Whether a file is to be read as a profile: by its name's ending, or by how it begins.
bool isProfileFile(const std::string& path, const TypedFile& file);

// Reads the profile in a file that was read, or that a person names; "-" is the standard input. A file that
// cannot be read has that as its fault.
ProfileFile profileIn(const Context& context, const std::string& path, const TypedFile& file);
ProfileFile readProfileFile(const Context& context, const std::string& path);

// "office.json, line 3: unknown setting \"nvk.prot\"."
ChangeError errorOf(const ProfileFile& profile, const ProfileFault& fault);

}  // namespace norvik::command
