// norvikctl validate: what is wrong with the stored settings, or with one file, which may be a profile.
#include <algorithm>
#include <ostream>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/diagnostic.h"
#include "src/frontends/command/profile_file.h"
#include "src/frontends/command/stored_faults.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// A damaged file counts for more than a value that cannot be.
ChangeError errorOf(const StoredFaults& faults) {
  if (faults.empty()) return {};
  const auto damaged =
      std::ranges::count_if(faults, [](const StoredFault& each) { return each.finding.damaged; });
  if (damaged > 0) {
    return failure(FailureCode::damaged, counted("One file is damaged.", "{1} files are damaged.",
                                                 static_cast<std::size_t>(damaged)));
  }
  return failure(FailureCode::wrongValue,
                 counted("One stored value cannot be.", "{1} stored values cannot be.", faults.size()),
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

// The faults of a profile in the form of those of a settings file.
StoredFaults faultsOfProfile(const Context& context, const ProfileFile& profile) {
  const auto settings = settingsOf(context.interface);
  StoredFaults faults;
  for (const ProfileFault& fault : profile.reading.faults) {
    FileFinding finding;
    finding.file = profile.name;
    finding.damaged = fault.unreadable;
    finding.sentence = errorOf(profile, fault).sentence;
    finding.key = fault.key;
    const bool isKnown = std::ranges::count(settings, fault.key, &SettingDescription::name) > 0;
    if (isKnown) finding.setting = fault.key;
    faults.push_back({std::move(finding), fault.withLine()});
  }
  return faults;
}

// A profile may have keys that are unknown or given twice, which are no stored values.
ChangeError errorOfProfile(const StoredFaults& faults) {
  if (faults.empty() || faults.front().finding.damaged) return errorOf(faults);
  return failure(FailureCode::wrongValue,
                 counted("One mistake is in the profile.", "{1} mistakes are in the profile.", faults.size()),
                 faults.front().finding.setting);
}

// What was found, and what the command ends with.
struct Verdict {
  StoredFaults faults;
  ChangeError error;
};

Verdict verdictOn(const Context& context, const std::string& path) {
  const TypedFile file = readTypedFile(path, kMaxPropertyListBytes);
  if (isProfileFile(path, file)) {
    StoredFaults faults = faultsOfProfile(context, profileIn(context, path, file));
    ChangeError error = errorOfProfile(faults);
    return {std::move(faults), std::move(error)};
  }
  StoredFaults faults = faultsOfFile(context, path, file);
  ChangeError error = errorOf(faults);
  return {std::move(faults), std::move(error)};
}

Verdict verdictOnStored(const Context& context) {
  StoredFaults faults = storedFaults(context);
  ChangeError error = errorOf(faults);
  return {std::move(faults), std::move(error)};
}

}  // namespace

ExitStatus validate(const Context& context, const CommandLine& line) {
  const auto [faults, error] =
      line.arguments.empty() ? verdictOnStored(context) : verdictOn(context, line.arguments.front());
  if (!context.json) {
    for (const StoredFault& fault : faults) context.out << printable(fault.finding.sentence) << '\n';
    if (faults.empty()) context.out << translated("Nothing is wrong with it.") << '\n';
  }
  ChangeReport report;
  report.error = error;
  return finish(context.output(), report,
                {{"damaged", damagedJson(faults)}, {"impossible", impossibleJson(faults)}});
}

}  // namespace norvik::command
