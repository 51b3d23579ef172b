// Separates commands, bodies, expected output, comments and blank lines.
#include "src/frontends/scenario/scenario_file.h"

#include <cstddef>

#include "src/server/mac/text/trim.h"

namespace norvik::scenario {

namespace {

constexpr std::string_view kPrompt = "> ";
constexpr std::string_view kBodyMark = " <<END";
constexpr std::string_view kBodyEnd = "END";

bool isBlank(std::string_view line) {
  return withoutLeading(line, " \t").empty();
}

// Reads the passages one after the other.
class Reader {
 public:
  explicit Reader(std::string_view text) : lines_(linesOf(text)) {}

  std::vector<Passage> read() {
    std::vector<Passage> passages;
    while (next_ < lines_.size()) passages.push_back(passage());
    return passages;
  }

 private:
  Passage passage() {
    const std::string& line = lines_[next_];
    if (line.starts_with(kPrompt)) return command();
    if (!isBlank(line) && !line.starts_with('#')) throw MalformedAt(number(), complaint(line));
    ++next_;
    return {{line}, std::nullopt, {}};
  }

  static std::string complaint(std::string_view line) {
    return line.starts_with('>') ? "a command begins with \"> \"" : "output without a command before it";
  }

  Passage command() {
    Passage passage;
    Command command;
    command.line = number();
    passage.lines.push_back(lines_[next_++]);
    std::string_view words = withoutTrailing(std::string_view(passage.lines[0]).substr(kPrompt.size()), " ");
    const bool hasBody = words.ends_with(kBodyMark);
    if (hasBody) words.remove_suffix(kBodyMark.size());
    command.words = words;
    if (hasBody) command.body = body(passage);
    for (; next_ < lines_.size() && isOutput(lines_[next_]); ++next_)
      passage.expected.push_back(lines_[next_]);
    passage.command = command;
    return passage;
  }

  static bool isOutput(std::string_view line) {
    return !isBlank(line) && !line.starts_with('>') && !line.starts_with('#');
  }

  std::string body(Passage& passage) {
    const int begin = number() - 1;
    std::string text;
    for (; next_ < lines_.size(); ++next_) {
      passage.lines.push_back(lines_[next_]);
      if (lines_[next_] != kBodyEnd) {
        text += lines_[next_] + '\n';
        continue;
      }
      ++next_;
      return text;
    }
    throw MalformedAt(begin, "the lines below the command do not end with a line END");
  }

  int number() const { return static_cast<int>(next_) + 1; }

  std::vector<std::string> lines_;
  std::size_t next_ = 0;
};

}  // namespace

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::vector<Passage> parseScenario(std::string_view text) {
  return Reader(text).read();
}

}  // namespace norvik::scenario
