// All the tables together.
#include "src/frontends/scenario/commands.h"

#include <vector>

#include "src/frontends/scenario/known_words.h"

namespace norvik::scenario {

CommandFunction commandNamed(std::string_view name) {
  std::vector<CommandRow> all;
  for (const auto rows : {fileCommands(), processCommands(), computerCommands(), lifeCommands(),
                          controlCommands(), callCommands(), questionCommands()}) {
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return rowNamed<CommandRow>("command", name, all).run;
}

}  // namespace norvik::scenario
