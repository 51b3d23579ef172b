// The system log: one line for each privileged line that was carried out or refused.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

#include "src/helper/allowed_lines.h"

namespace norvik::helper {

// Who asked: "uid 1000 (:1.42)", or "uid unknown (:1.42)". Without a name on the bus the super-user started
// the helper directly.
std::string nameOf(std::optional<uid_t> user, std::string_view busName);

// The tool and its arguments, each in quotation marks with whatever is not printable escaped, so that nobody
// can write lines of his own into the log. Cut where it is longer than any allowed line is.
std::string textOf(std::string_view tool, const Words& arguments);

void openJournal();
void writeJournal(std::string_view who, std::string_view line, std::string_view result);

}  // namespace norvik::helper
