// Measures the columns, then writes them.
#include "src/frontends/command/table.h"

#include <algorithm>

namespace norvik::command {

namespace {

// Characters, not bytes: continuation bytes of UTF-8 do not count.
std::size_t width(const std::string& text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace

void writeTable(std::ostream& out, const std::vector<TableRow>& rows, std::size_t indent) {
  std::vector<std::size_t> widths;
  for (const TableRow& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size());
    for (std::size_t i = 0; i < row.size() && row.size() > 1; ++i) {
      widths[i] = std::max(widths[i], width(row[i]));
    }
  }
  for (const TableRow& row : rows) {
    std::string line(indent, ' ');
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i] + std::string(std::max(widths[i], width(row[i])) - width(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }
}

}  // namespace norvik::command
