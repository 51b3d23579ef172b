// Which command lines the helper carries out: the rows of the tool command table, to the letter. Pure
// functions; touches nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/control/tool_commands.h"

namespace norvik::helper {

using Words = std::vector<std::string>;

// How the helper carries out a row.
enum class Work {
  startTool,     // starts the tool itself; everything else is done inside
  installList,   // moves a property list from its temporary path into place
  installLines,  // moves a text file, in the same way
  setMode,
  setOwner,
  writePreference,  // writes a key of a preference file
  readKernelValue,
};

// A row of the tool command table as the helper sees it.
struct AllowedRow {
  const ToolCommand& command;
  Work work;
  const char* action;          // what polkit is asked for; all are implied by "unlock"
  const char* temporaryName;   // the name in the temporary path, where that is the row's free place
  const char* const* choices;  // the two texts that may be in the free place otherwise; null for none
};

// Every row, in the order of the tool command table.
std::span<const AllowedRow> allowedRows();

struct AllowedLine {
  const AllowedRow* row;
  Words arguments;
};

// The row that the line equals, argument by argument. Nothing for any other line. Where a row has its free
// place twice, both must hold the same.
std::optional<AllowedLine> allowedLine(std::string_view tool, const Words& arguments);

// A process id in decimal digits as the system writes it, without a sign and without zeros in front; nothing
// for any other text.
std::optional<int32_t> processIdIn(std::string_view text);

// Whether the path is the temporary path of that name, for some process id.
bool isTemporaryPath(std::string_view path, std::string_view name);

}  // namespace norvik::helper
