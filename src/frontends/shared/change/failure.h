// Why a change, or an order to the server, did not come about: one list for all front ends. The command line
// has an exit status for each, the windows an icon and a next step.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvik {

enum class FailureCode {
  none,
  usage,        // a wrong line, an unknown name, a question that nobody can answer
  wrongValue,   // a value of another kind or out of its range, or two that exclude each other
  damaged,      // a settings file is there and cannot be read
  server,       // the server did not start, stop or take up its settings; a tool of the server failed
  software,     // a fault of the program's own, and too little memory
  notWritten,   // a file does not hold what was to be saved
  output,       // the program's output could not be written
  tryAgain,     // somebody else changes settings, or a tool has not ended in time
  notAllowed,   // not authorized, or the system refused to run a tool
  notSettable,  // a setting that cannot be changed as things are
  cancelled,    // a person chose not to go on; nothing was changed
  interrupted,  // the program was told to end before it was done
};

// The word for scripts: "wrong-value"; "" for none.
std::string_view codeWord(FailureCode code);
// Nothing for another word.
std::optional<FailureCode> codeOfWord(std::string_view word);

// A failure with what a person reads. None where the code is none.
struct ChangeError {
  FailureCode code = FailureCode::none;
  std::string sentence;  // what went wrong: "The server's settings file could not be written: no space left."
  std::string setting;   // its name, where one setting is the reason
  std::string outlet;    // the control to show for it; may be empty
  std::string advice;    // what to do next; may be empty

  explicit operator bool() const { return code != FailureCode::none; }
};

// A failure whose reason is no setting, or the setting of that name.
ChangeError failure(FailureCode code, std::string sentence, std::string setting = "");

}  // namespace norvik
