// norvikctl validate: what is wrong with the stored settings, or with one file.
#include <algorithm>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/diagnostic.h"
#include "src/frontends/command/stored_faults.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

std::string counted(std::ptrdiff_t count, const std::string& one, const std::string& many) {
  return count == 1 ? "One " + one : std::to_string(count) + " " + many;
}

// A damaged file counts for more than a value that cannot be.
ChangeError errorOf(const StoredFaults& faults) {
  if (faults.empty()) return {};
  const auto damaged =
      std::ranges::count_if(faults, [](const StoredFault& each) { return each.finding.damaged; });
  if (damaged > 0) {
    return failure(FailureCode::damaged, counted(damaged, "file is", "files are") + " damaged.");
  }
  const auto count = static_cast<std::ptrdiff_t>(faults.size());
  return failure(FailureCode::wrongValue, counted(count, "stored value", "stored values") + " cannot be.",
                 faults.front().finding.setting);
}

Json impossibleJson(const StoredFaults& faults) {
  Json list = Json::array();
  for (const StoredFault& fault : faults) {
    const FileFinding& finding = fault.finding;
    if (finding.damaged) continue;
    list.push_back({{"file", finding.file},
                    {"key", finding.key},
                    {"setting", finding.setting.empty() ? Json(nullptr) : Json(finding.setting)},
                    {"reason", fault.reason}});
  }
  return list;
}

}  // namespace

ExitStatus validate(const Context& context, const CommandLine& line) {
  const StoredFaults faults =
      line.arguments.empty() ? storedFaults(context) : faultsOfFile(context, line.arguments.front());
  if (!context.json) {
    for (const StoredFault& fault : faults) context.out << printable(fault.finding.sentence) << '\n';
    if (faults.empty()) context.out << "Nothing is wrong with it.\n";
  }
  ChangeReport report;
  report.error = errorOf(faults);
  return finish(context.output(), report,
                {{"damaged", damagedJson(faults)}, {"impossible", impossibleJson(faults)}});
}

}  // namespace norvik::command
