// The helper on the system bus, for those who call it and for the helper itself.
//
//   Run(s tool, as arguments, ah lock) -> u number
//     Carries out a line of the tool command table. The reply comes when polkit has granted it, before it is
//     carried out; an error means that it was refused and nothing is done. `lock` is empty, or a descriptor
//     of the folder that is locked for changes: the helper keeps it open until the line has ended, so that
//     the lock outlives a caller that is killed. Nothing else is done with it.
//   RunWithOutput(s tool, as arguments, ah lock) -> u number, h output
//     The same for a line that only reports; what it says is read from the descriptor.
//   Ended(u number, b killed, i status, ay words)
//     A signal to the caller alone: the line of that number has ended, with that exit status or by that
//     signal, and said these words on its standard error, at most 4 KiB.
//
// The lines of one caller are carried out in the order of the calls, one after another, and in the order of
// the tools; one that only reports waits for none and none waits for it, as nothing here changes what it
// says. A call may allow interaction by its message flag; polkit may then ask a person.
#pragma once

namespace norvik {

// Where the helper is installed, to be started directly where there is no bus.
inline constexpr const char* kHelperProgram = "/usr/libexec/norvik/norvik-helper";
inline constexpr const char* kHelperLineOption = "--line";

inline constexpr const char* kHelperName = "com.veltrane.norvik.Helper";
inline constexpr const char* kHelperPath = "/com/veltrane/norvik/Helper";
inline constexpr const char* kHelperInterface = "com.veltrane.norvik.Helper";

// What polkit is asked for when the lock opens. It implies what the helper asks for.
inline constexpr const char* kUnlockAction = "com.veltrane.norvik.unlock";

// Errors of a call that was refused.
inline constexpr const char* kHelperNotAllowed = "com.veltrane.norvik.Error.NotAllowed";  // no such line
inline constexpr const char* kHelperNotAuthorized = "com.veltrane.norvik.Error.NotAuthorized";  // by polkit
inline constexpr const char* kHelperNoAuthority = "com.veltrane.norvik.Error.NoAuthority";      // no polkit
inline constexpr const char* kHelperTooMany = "com.veltrane.norvik.Error.TooMany";  // lines that wait

// polkit itself.
inline constexpr const char* kPolkitName = "org.freedesktop.PolicyKit1";
inline constexpr const char* kPolkitPath = "/org/freedesktop/PolicyKit1/Authority";
inline constexpr const char* kPolkitInterface = "org.freedesktop.PolicyKit1.Authority";
inline constexpr unsigned kPolkitMayAsk = 1;  // a flag of CheckAuthorization: a person may be asked

}  // namespace norvik
