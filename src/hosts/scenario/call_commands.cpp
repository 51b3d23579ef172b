// `call`.
#include "commands.h"
#include "known_words.h"
#include "operations.h"

namespace norvik::scenario {

namespace {

void call(Session& session, Arguments& arguments) {
  rowNamed<CommandRow>("operation", arguments.word(), operations()).run(session, arguments);
}

constexpr CommandRow kCommands[] = {{"call", call}};

}  // namespace

std::span<const CommandRow> callCommands() {
  return kCommands;
}

}  // namespace norvik::scenario
