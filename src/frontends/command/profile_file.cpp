// The names that a profile may use are those of the interface description; what of it this computer shows is
// looked at later.
#include "src/frontends/command/profile_file.h"

#include "src/frontends/shared/language/language.h"

namespace norvik::command {

bool isProfileFile(const std::string& path, const TypedFile& file) {
  return path.ends_with(".json") || isProfileText(file.bytes);
}

ProfileFile profileIn(const Context& context, const std::string& path, const TypedFile& file) {
  ProfileFile profile{path == "-" ? translated("standard input") : path, {}};
  if (file.damage.empty()) {
    profile.reading = readProfile(file.bytes, settingsOf(context.interface));
  } else {
    profile.reading.faults.push_back({true, 0, "", sentence("{1}.", {file.damage})});
  }
  return profile;
}

ProfileFile readProfileFile(const Context& context, const std::string& path) {
  return profileIn(context, path, readTypedFile(path, kMaxProfileBytes));
}

ChangeError errorOf(const ProfileFile& profile, const ProfileFault& fault) {
  const std::string words =
      fault.line > 0
          ? sentence("{1}, line {2}: {3}", {profile.name, std::to_string(fault.line), fault.sentence})
          : sentence("{1}: {2}", {profile.name, fault.sentence});
  return failure(fault.unreadable ? FailureCode::damaged : FailureCode::wrongValue, words, fault.key);
}

}  // namespace norvik::command
