// norvikctl export, import and diff: the settings as a profile, made here and taken up elsewhere.
#include <algorithm>
#include <optional>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/profile_file.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/report.h"
#include "src/frontends/command/selection.h"
#include "src/frontends/command/trial.h"
#include "src/frontends/command/wish_change.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/profile/pane_profile.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// The pane takes a file that it cannot read as one with the defaults, which are nobody's settings.
ChangeError damagedFor(const Context& context, const char* pattern) {
  for (const StoredFault& fault : context.faults.value_or(StoredFaults())) {
    if (fault.finding.damaged) return failure(FailureCode::damaged, sentence(pattern, {fault.finding.file}));
  }
  return {};
}

// The settings that the words mean, each once, in the order of the pages.
std::vector<const PaneSetting*> selected(Session& session, const Arguments& words, ChangeError& error) {
  std::vector<const PaneSetting*> settings;
  for (const std::string& word : words.empty() ? Arguments{""} : words) {
    const auto meant = meantSettings(session, word);
    if (meant.empty() && !error) error = unknownPage(session, word);
    settings.insert(settings.end(), meant.begin(), meant.end());
  }
  std::ranges::sort(settings);
  settings.erase(std::unique(settings.begin(), settings.end()), settings.end());
  return settings;
}

// The profile of a line as a change; nothing, with the errors, where it cannot be one.
std::optional<ChangeRequest> requestOf(const Context& context, const CommandLine& line,
                                       std::vector<ChangeError>& errors) {
  const ProfileFile profile = readProfileFile(context, line.arguments.front());
  if (!profile.reading.faults.empty()) {
    for (const ProfileFault& fault : profile.reading.faults) {
      errors.push_back(errorOf(profile, fault));
    }
    return std::nullopt;
  }
  const Wish wish = wishOf(context.computer, context.interface, profile.reading.settings,
                           line.exact ? Unnamed::toDefaults : Unnamed::stay);
  errors = wish.errors;
  if (!errors.empty()) return std::nullopt;
  return changeRequestFor(context, wish.edits, BehindBoxes::edited);
}

}  // namespace

ExitStatus exportProfile(const Context& context, const CommandLine& line) {
  if (const ChangeError error = damagedFor(context, english("{1} is damaged. Nothing was exported.")))
    return finish(context.output(), error);
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  ChangeError error;
  const auto settings = selected(session, line.arguments, error);
  if (error) return finish(context.output(), error);
  const PaneProfile profile = profileOf(session.pane(), settings, line.changedOnly);
  ChangeReport report;
  for (const auto& [name, why] : profile.leftOut) {
    const bool isNamed = std::ranges::count(line.arguments, name) > 0;
    if (isNamed) report.warnings.push_back(sentence("{1} is not in the profile: {2}.", {name, why}));
  }
  const std::string text = profileText(profile.values);
  if (!context.json) context.out << text;
  return finish(context.output(), report, {{"profile", Json::parse(text)}});
}

ExitStatus importProfile(const Context& context, const CommandLine& line) {
  std::vector<ChangeError> errors;
  const auto request = requestOf(context, line, errors);
  return request ? changeOrTry(context, line, *request) : refuse(context, errors);
}

ExitStatus diffProfile(const Context& context, const CommandLine& line) {
  if (const ChangeError error = damagedFor(context, english("{1} is damaged. Nothing was compared.")))
    return finish(context.output(), error);
  std::vector<ChangeError> errors;
  const auto request = requestOf(context, line, errors);
  if (!request) return refuse(context, errors);
  const Outcome outcome = foresee(context, *request);
  const ChangeReport& report = outcome.report;
  if (report.error) return finish(context.output(), report.error);
  if (!context.json) writeChanges(context.out, report.changes);
  if (!context.json && report.changes.empty()) context.out << translated("Nothing differs.") << '\n';
  const bool same = report.changes.empty();
  const ExitStatus ended = finish(context.output(), report, {{"same", same}});
  return ended != kExitOk || same ? ended : kExitDiffers;
}

}  // namespace norvik::command
