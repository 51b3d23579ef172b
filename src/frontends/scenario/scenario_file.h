// A scenario as text: its commands, each with its expected output, and other lines, which are kept unchanged.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

// A malformed scenario, and the number of the line, from 1.
struct MalformedAt : Malformed {
  MalformedAt(int at, const std::string& message) : Malformed(message), line(at) {}
  int line;
};

struct Command {
  int line = 0;                     // of the file, from 1
  std::string words;                // the line without "> " and "<<END"
  std::optional<std::string> body;  // the lines below it, each with a line feed
};

// A comment or a blank line, or a command with everything that belongs to it.
struct Passage {
  std::vector<std::string> lines;  // the lines that are kept, including the body and END
  std::optional<Command> command;
  std::vector<std::string> expected;  // the command's output
};

// Throws MalformedAt.
std::vector<Passage> parseScenario(std::string_view text);

// The lines of a text, without their line feeds; the last line may lack one.
std::vector<std::string> linesOf(std::string_view text);

}  // namespace norvik::scenario
