// How every command ends: its result as one JSON object where that is asked for, its warnings and its error
// on standard error, and the exit status.
#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/command/exit_status.h"
#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/stored_files.h"

namespace norvik::command {

// The version of the JSON objects. docs/norvikctl-schema.json describes them; the number changes with any
// change that is more than a new field.
inline constexpr int kSchemaVersion = 1;

// Something wrong with what is stored: a damaged file, or a value that cannot be.
struct StoredFault {
  FileFinding finding;
  std::string reason;  // why the file cannot be read, without its name; of a value, the whole sentence
};
using StoredFaults = std::vector<StoredFault>;

// Where a result goes, and in which form.
struct Output {
  std::ostream& out;  // results
  std::ostream& err;  // everything else
  bool json = false;
  std::string_view command;  // its name; empty where the line names none
  // What was found before the command began, and written to standard error then; null where nobody looked.
  const StoredFaults* faults = nullptr;
};

// Ends a command. With JSON, writes the object: what is the same for all commands, from the report, and the
// command's own `fields`. Without JSON, the command has written its result itself before. Warnings, the error
// and what to do about it go to standard error in both cases.
ExitStatus finish(const Output& output, const ChangeReport& report,
                  const nlohmann::ordered_json& fields = {});
// The same for a command that failed and has nothing else to show.
ExitStatus finish(const Output& output, const ChangeError& error);

// {"file": ..., "reason": ..., "copy": ...} for each damaged file; the copy is the time when it was kept, or
// null.
nlohmann::ordered_json damagedJson(const StoredFaults& faults);

// A setting's value in JSON, with its type.
nlohmann::ordered_json jsonOf(const SettingValue& value);

}  // namespace norvik::command
