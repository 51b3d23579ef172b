// The helper on the system bus, for the helper and those who call it.
//
//   Run(s tool, as arguments) -> u number
//     Carries out a line of the tool command table. The reply comes when polkit has granted it, before it is
//     carried out; an error means that it was refused and nothing is done.
//   RunWithOutput(s tool, as arguments) -> u number, h output
//     The same; what the line writes to its standard output is read from the descriptor.
//   Ended(u number, b killed, i status, ay words)
//     A signal to the caller alone: the line of that number has ended, with that exit status or by that
//     signal, and said these words on its standard error, at most 4 KiB.
//
// The lines of one caller are carried out in the order of the calls, one after another. A call may allow
// interaction by its message flag; polkit may then ask a person.
#pragma once

namespace norvik::helper {

inline constexpr const char* kBusName = "com.veltrane.norvik.Helper";
inline constexpr const char* kObjectPath = "/com/veltrane/norvik/Helper";
inline constexpr const char* kInterface = "com.veltrane.norvik.Helper";

// Errors of a call that was refused.
inline constexpr const char* kNotAllowed = "com.veltrane.norvik.Error.NotAllowed";        // not in the table
inline constexpr const char* kNotAuthorized = "com.veltrane.norvik.Error.NotAuthorized";  // polkit refused
inline constexpr const char* kNoAuthority = "com.veltrane.norvik.Error.NoAuthority";      // no polkit
inline constexpr const char* kTooMany = "com.veltrane.norvik.Error.TooMany";  // too many lines wait

}  // namespace norvik::helper
