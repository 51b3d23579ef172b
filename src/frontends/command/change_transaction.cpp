// The stages of a change, in their order.
#include "src/frontends/command/change_transaction.h"

#include <algorithm>

#include "src/frontends/command/progress.h"
#include "src/frontends/command/read_back.h"
#include "src/frontends/command/report.h"
#include "src/frontends/command/status.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

constexpr std::chrono::seconds kToolLimit{30};

// A group of settings that Apply saves.
struct Group {
  const char* name;
  bool (NVKServerPrefs::*changed)() const;
};
constexpr Group kGroups[] = {
    {"user settings", &NVKServerPrefs::userConfigChanged},
    {"server settings", &NVKServerPrefs::adminConfigChanged},
    {kOpenFilesLimit, &NVKServerPrefs::maxFilesChanged},
    {"notification settings", &NVKServerPrefs::notificationSettingsChanged},
};

// A value that the pane shows and an edit may change.
struct Shown {
  std::string name, label, page, outlet;
  std::string text;
  SettingValue value;
  bool isPending = false;  // differs from the stored one
};

bool differsFromStored(Session& session, const PaneSetting& setting) {
  return std::ranges::any_of(
      setting.controls(), [&](const Control* control) { return session.pane().differsFromStored(*control); });
}

Shown shownOf(Session& session, const PaneSetting& setting) {
  const SettingDescription& description = setting.description();
  const ControlDescription& first = description.first();
  return {setting.name(),
          description.isChoice() ? setting.name() : first.label,
          description.page.title,
          first.outlet,
          setting.text(),
          setting.typedValue(),
          differsFromStored(session, setting)};
}

std::vector<Shown> snapshot(const Context& context, Session& session) {
  std::vector<Shown> values;
  for (const PaneSetting& setting : session.settings()) values.push_back(shownOf(session, setting));
  for (const ControlDescription* description : context.interface.controls()) {
    if (!description->displayOnly) continue;
    const Control& field = *session.pane().outlet(description->outlet);
    values.push_back({description->label, description->label, "", description->outlet, field.stringValue(),
                      field.stringValue(), session.pane().differsFromStored(field)});
  }
  return values;
}

std::string reasonFor(const std::string& name, const ChangeRequest& request) {
  if (std::ranges::count(request.requested, name) > 0) return "";
  const auto reason = request.reasons.find(name);
  return reason != request.reasons.end() ? reason->second : "changed along with it";
}

// The state of the pane before the edits.
struct Start {
  std::vector<Shown> values;
  std::vector<int64_t> ports;
};

// What Apply would save: what was changed, and what the file held another value of from the start. What only
// the controls show is no change, such as a box for a port of its own while the port is the standard one.
std::vector<SettingChange> changesSince(const Start& start, const Context& context, Session& session,
                                        const ChangeRequest& request, std::vector<std::string>& notes) {
  std::vector<SettingChange> changes;
  const auto after = snapshot(context, session);
  for (std::size_t i = 0; i < after.size(); ++i) {
    const Shown& now = after[i];
    const Shown& before = start.values[i];
    SettingChange change{now.name,     now.label,   now.page,
                         now.outlet,   before.text, now.text,
                         before.value, now.value,   reasonFor(now.name, request)};
    const bool changed = change.from != change.to;
    if (changed && !now.isPending && change.because.empty()) {
      notes.push_back(now.name + " stays " + change.from + "; that alone changes nothing that is saved.");
    }
    if (!now.isPending || (!changed && !before.isPending)) continue;
    if (!changed) change.because = "the file holds another value";
    changes.push_back(std::move(change));
  }
  return changes;
}

std::vector<std::string> changedGroups(const NVKServerPrefs& pane) {
  std::vector<std::string> names;
  for (const Group& group : kGroups) {
    if ((pane.*group.changed)()) names.emplace_back(group.name);
  }
  return names;
}

bool isWanted(const ChangeReport& report, const ChangeRequest& request) {
  return std::ranges::any_of(report.changes, [&](const SettingChange& change) {
    return change.from != change.to || std::ranges::count(request.requested, change.name) > 0;
  });
}

ChangeError unanswered(const Question& question) {
  const std::string ways = waysToAnswer(question);
  return failure(FailureCode::usage, "the question \"" + question.title + "\" needs an answer" +
                                         (ways.empty() ? "" : ": use " + ways) + ". Nothing was changed.");
}

// A port that the command does not change is not checked.
ChangeError checkPorts(const Context& context, Session& session, const Start& start, ChangeReport& report) {
  const NVKServerPrefs& pane = session.pane();
  const auto ports = pendingPorts(pane);
  const auto fields = portFields(pane);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (ports[i] == start.ports[i]) continue;
    const auto finding = checkPort(pane, context.interface, *fields[i], context.services.portInUse);
    if (finding && finding->blocks) {
      return failure(FailureCode::wrongValue, finding->sentence,
                     session.settingOf(fields[i]->name())->name());
    }
    if (finding) report.warnings.push_back(finding->sentence);
  }
  return {};
}

std::vector<CommandOutcome> commandsOf(const Effects& effects) {
  std::vector<CommandOutcome> commands;
  for (const Launch& launch : effects.launches) {
    if (!launch.reports) commands.push_back({launch, {}});
  }
  return commands;
}

// The edits and, where they change something, Apply.
Outcome editAndApply(const Context& context, Session& session, const Questions& questions,
                     const ChangeRequest& request) {
  Outcome outcome;
  ChangeReport& report = outcome.report;
  NVKServerPrefs& pane = session.pane();
  if (request.requiresUnlock && !session.unlock()) {
    report.error =
        failure(FailureCode::notAllowed, "This needs administrator rights, which were not granted.");
    return outcome;
  }
  const Start start{snapshot(context, session), pendingPorts(pane)};
  report.error = request.edit(session, outcome.notes);
  outcome.questions = questions.asked();
  if (!report.error && questions.unanswered() != nullptr) report.error = unanswered(*questions.unanswered());
  if (!report.error) report.error = checkPorts(context, session, start, report);
  // A person whose answer was waited for may have interrupted the program instead.
  if (context.services.wasInterrupted()) {
    report.error = failure(FailureCode::cancelled, "interrupted. Nothing was changed.");
  }
  if (report.error) return outcome;
  report.changes = changesSince(start, context, session, request, outcome.notes);
  if (isWanted(report, request) && pane.ib_button_Apply.isEnabled()) {
    report.saved = changedGroups(pane);
    session.click(pane.ib_button_Apply);
    report.applied = true;
  }
  outcome.pending = pendingSettings(session);
  outcome.questions = questions.asked();
  report.effects = session.effects();
  report.commands = commandsOf(report.effects);
  return outcome;
}

Outcome preview(const Context& context, const ChangeRequest& request, RecordingMode mode,
                const Answers& answers) {
  Questions questions(answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, mode);
  Outcome outcome = editAndApply(context, session, questions, request);
  outcome.wouldApply = outcome.report.applied;
  outcome.report.applied = false;
  if (!outcome.report.error && questions.unanswered() != nullptr) {
    outcome.report.error = unanswered(*questions.unanswered());
    outcome.wouldApply = false;
  }
  return outcome;
}

// The same request, which also records the values of the controls after its edits.
ChangeRequest recording(const ChangeRequest& request, std::optional<Expected>& expected) {
  ChangeRequest recorded = request;
  recorded.edit = [&request, &expected](Session& session, std::vector<std::string>& notes) {
    ChangeError error = request.edit(session, notes);
    expected = expectedOf(session);
    return error;
  };
  return recorded;
}

// What the computer did not do although the files now hold what was to be saved.
ChangeError failedStep(const Effects& effects) {
  if (!effects.unwritten.empty()) {
    return failure(FailureCode::notWritten,
                   "the file " + effects.unwritten.front().path + " could not be written.");
  }
  const auto refused = std::ranges::find_if(
      effects.launches, [](const Launch& launch) { return launch.refused && !launch.reports; });
  if (refused == effects.launches.end()) return {};
  return failure(FailureCode::notAllowed, refused->tool + " could not be run.");
}

// From Apply on, everything is finished whatever arrives.
Outcome apply(const Context& context, const ChangeRequest& request) {
  context.services.deferInterruptions();
  std::optional<Expected> expected;
  Outcome outcome;
  {
    Questions questions(context.answers, context.err);
    Progress progress(nullptr);
    Session session(context, questions, progress, RecordingMode::real);
    outcome = editAndApply(context, session, questions, recording(request, expected));
    // Where the file has it already, the server may not.
    if (outcome.report.ok() && !outcome.report.applied) {
      for (const std::string& sentence : notInForce(context, session.pane())) {
        outcome.report.warnings.push_back(sentence);
      }
    }
  }
  ChangeReport& report = outcome.report;
  if (!report.applied) return outcome;
  if (!context.services.waitForTools(kToolLimit)) {
    report.error = failure(FailureCode::tryAgain, "some of the tools that were launched are still running.");
  } else if (report.notSaved = notSaved(context, *expected, report); !report.notSaved.empty()) {
    report.error =
        failure(FailureCode::notWritten, "not saved: " + listInWords(report.notSaved, "and") + ".");
  } else {
    report.error = failedStep(report.effects);
  }
  if (report.error) report.saved.clear();
  if (context.services.wasInterrupted()) {
    report.warnings.emplace_back(
        "interrupted while the change was being made; it was finished all the same.");
  }
  return outcome;
}

}  // namespace

std::vector<std::string> pendingSettings(Session& session) {
  std::vector<std::string> names;
  for (const PaneSetting& setting : session.settings()) {
    if (differsFromStored(session, setting)) names.push_back(setting.name());
  }
  return names;
}

ExitStatus change(const Context& context, const ChangeRequest& request, bool dryRun) {
  const bool attended = context.answers.person != nullptr;
  const GivenAnswers& given = context.answers.given;
  if (dryRun || request.previewsWhileLocked) {
    // A person who is asked later, and a dry run, see what follows from the default answers.
    const Outcome outcome =
        preview(context, request, RecordingMode::pretending, {given, attended || dryRun, nullptr});
    if (dryRun || outcome.report.error) return report(context, outcome, dryRun);
  }
  if (request.requiresUnlock && !attended) {
    const Outcome outcome = preview(context, request, RecordingMode::looking, {given, false, nullptr});
    if (outcome.report.error) return report(context, outcome, false);
  }
  return report(context, apply(context, request), false);
}

}  // namespace norvik::command
