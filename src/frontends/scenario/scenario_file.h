// A scenario as text: its commands, each with the output that is expected of it, between lines that are kept
// as they are.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

// A malformed scenario and where: the number of the line, from 1.
struct MalformedAt : Malformed {
  MalformedAt(int at, const std::string& message) : Malformed(message), line(at) {}
  int line;
};

struct Command {
  int line = 0;                     // of the file, from 1
  std::string words;                // the line without "> " and "<<END"
  std::optional<std::string> body;  // the lines under it, each with a line feed
};

// A comment or a blank line; or a command with all that belongs to it.
struct Passage {
  std::vector<std::string> lines;  // the lines that stay, the body's and END among them
  std::optional<Command> command;
  std::vector<std::string> expected;  // the command's output
};

// Throws MalformedAt.
std::vector<Passage> parseScenario(std::string_view text);

// The lines of a text, without their line feeds; a last line need not have one.
std::vector<std::string> linesOf(std::string_view text);

}  // namespace norvik::scenario
