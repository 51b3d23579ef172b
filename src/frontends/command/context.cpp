// The one form of JSON results, and of diagnostics.
#include "src/frontends/command/context.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace norvik::command {

void Context::print(const nlohmann::ordered_json& result) const {
  // A host name may be anything, so bytes that are no text must not end the program.
  out << result.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

void Context::complain(std::string_view sentence) const {
  err << "norvikctl: " << sentence << '\n';
}

}  // namespace norvik::command
