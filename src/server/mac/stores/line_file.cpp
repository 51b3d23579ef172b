// Reading and writing of line files.
#include "src/server/mac/stores/line_file.h"

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/open_file.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/text/trim.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

// A larger file counts as unreadable, as a larger property list does: there might not be memory for it.
constexpr int64_t kMaxLineFileBytes = int64_t{64} << 20;

// Splits at every line end; a line end as the very last character begins no further line.
StringsArray linesOf(std::string_view text) {
  StringsArray lines(1);
  while (!text.empty()) {
    const Character character = *firstCharacter(text);
    if (isLineEnd(character.code)) {
      lines.emplace_back();
    } else {
      lines.back() += text.substr(0, character.length);
    }
    text.remove_prefix(character.length);
  }
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

bool writeLine(OpenFile& file, const std::string& line) {
  // As many bytes as the line has UTF-16 units, which cuts a line that is not plain ASCII short. That is
  // intentional: readers of the files expect ASCII.
  if (!line.empty() && !file.write(std::string_view(line).substr(0, utf16Length(line)))) return false;
  return file.write("\n");
}

}  // namespace

std::vector<std::string_view> piecesOf(std::string_view line) {
  std::vector<std::string_view> pieces;
  std::size_t begin = 0;
  for (std::size_t at = 0; at <= line.size();) {
    const Character character = firstCharacter(line.substr(at)).value_or(Character{0, 1});
    if (at == line.size() || isWhiteSpace(character.code)) {
      const std::string_view piece = trimmed(line.substr(begin, at - begin));
      if (!piece.empty()) pieces.push_back(piece);
      begin = at + character.length;
    }
    at += character.length;
  }
  return pieces;
}

std::optional<StringsArray> NVKServerPrefs::loadStringsArray(const char* path) {
  if (path == nullptr) return std::nullopt;
  OpenFile file(path, FileMode::readBinary);
  const std::optional<int64_t> size = file.size();
  if (!size || *size > kMaxLineFileBytes) return std::nullopt;
  if (*size == 0) return StringsArray();
  std::string text(static_cast<std::size_t>(*size), '\0');
  if (file.read(text.data(), text.size()) != text.size() || !isUtf8(text)) return std::nullopt;
  return linesOf(text);
}

bool NVKServerPrefs::saveStringsArray(const char* path, const StringsArray* array) {
  if (path == nullptr || array == nullptr) return false;
  OpenFile file(path, FileMode::writeBinary);
  if (!file.isOpen()) return false;
  for (const std::string& line : *array) {
    if (!writeLine(file, line)) return false;
  }
  return true;
}

}  // namespace norvik
