// `call`.
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/known_words.h"
#include "src/frontends/scenario/operations.h"

namespace norvik::scenario {

namespace {

void call(Session& session, Arguments& arguments) {
  rowNamed<CommandRow>("operation", arguments.word(), operations()).run(session, arguments);
}

constexpr CommandRow kCallCommands[] = {{"call", call}};

}  // namespace

std::span<const CommandRow> callCommands() {
  return kCallCommands;
}

}  // namespace norvik::scenario
