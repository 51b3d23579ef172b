// How every command writes JSON results and diagnostics.
#include "src/frontends/command/context.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/diagnostic.h"

namespace norvik::command {

void Context::print(const nlohmann::ordered_json& result) const {
  // A host name may be anything, and bytes that are no text must not end the program.
  out << result.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

void Context::complain(std::string_view sentence) const {
  writeDiagnostic(err, sentence);
}

nlohmann::ordered_json jsonOf(const SettingValue& value) {
  return std::visit([](const auto& held) { return nlohmann::ordered_json(held); }, value);
}

}  // namespace norvik::command
