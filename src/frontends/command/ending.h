// How every command ends: its result as one JSON object where that is asked for, its warnings and its error
// on standard error, and the exit status.
#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "src/frontends/command/exit_status.h"
#include "src/frontends/shared/change/change_report.h"

namespace norvik::command {

// The version of the JSON objects. docs/norvikctl-schema.json describes them; the number changes with any
// change that is more than a new field.
inline constexpr int kSchemaVersion = 1;

// Where a result goes, and in which form.
struct Output {
  std::ostream& out;  // results
  std::ostream& err;  // everything else
  bool json = false;
  std::string_view command;  // its name; empty where the line names none
};

// Ends a command. With JSON, writes the object: what is the same for all commands, from the report, and the
// command's own `fields`. Without JSON, the command has written its result itself before. Warnings, the error
// and what to do about it go to standard error in both cases.
ExitStatus finish(const Output& output, const ChangeReport& report,
                  const nlohmann::ordered_json& fields = {});
// The same for a command that failed and has nothing else to show.
ExitStatus finish(const Output& output, const ChangeError& error);

// A failure whose reason is no setting, or the setting of that name.
ChangeError failure(FailureCode code, std::string sentence, std::string setting = "");

// A setting's value in JSON, with its type.
nlohmann::ordered_json jsonOf(const SettingValue& value);

// A command line as it would be typed, words with spaces in quotes.
std::string commandLine(const Launch& launch);

}  // namespace norvik::command
