// Text in aligned columns, for a person to read.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace norvik::command {

using TableRow = std::vector<std::string>;

// Writes the rows with two spaces between the columns, each as wide as its widest cell, behind `indent`
// spaces. A line never ends in spaces. Rows may have fewer cells than others.
void writeTable(std::ostream& out, const std::vector<TableRow>& rows, std::size_t indent = 0);

}  // namespace norvik::command
