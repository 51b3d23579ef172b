// How every command writes diagnostics.
#include "src/frontends/command/context.h"

#include "src/frontends/command/diagnostic.h"

namespace norvik::command {

void Context::complain(std::string_view sentence) const {
  writeDiagnostic(err, sentence);
}

}  // namespace norvik::command
