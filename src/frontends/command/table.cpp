// Measures the columns, then writes the rows.
#include "src/frontends/command/table.h"

#include <algorithm>

#include "src/frontends/command/display_width.h"
#include "src/server/mac/text/trim.h"

namespace norvik::command {

void appendList(std::vector<TableRow>& rows, const std::string& heading,
                const std::vector<std::string>& list) {
  for (const std::string& word : list) rows.push_back({&word == &list.front() ? heading : "", word});
}

void writeTable(std::ostream& out, const std::vector<TableRow>& rows, std::size_t indent) {
  std::vector<std::size_t> widths;
  for (const TableRow& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size());
    for (std::size_t i = 0; i < row.size() && row.size() > 1; ++i) {
      widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
  }
  for (const TableRow& row : rows) {
    std::string line(indent, ' ');
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i] + std::string(std::max(widths[i], displayWidth(row[i])) - displayWidth(row[i]) + 2, ' ');
    }
    out << withoutTrailing(line, " ") << '\n';
  }
}

}  // namespace norvik::command
