// Text in aligned columns, for a person to read.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace norvik::command {

using TableRow = std::vector<std::string>;

// Adds a row for each word of the list, with the heading in front of the first.
void appendList(std::vector<TableRow>& rows, const std::string& heading,
                const std::vector<std::string>& list);

// Writes the rows with two spaces between the columns, each as wide as its widest cell, behind `indent`
// spaces. A line never ends in spaces. Rows may have fewer cells than others.
void writeTable(std::ostream& out, const std::vector<TableRow>& rows, std::size_t indent = 0);

}  // namespace norvik::command
