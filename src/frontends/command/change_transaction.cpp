// The stages of a change, in their order.
#include "src/frontends/command/change_transaction.h"

#include <algorithm>

#include "src/frontends/command/progress.h"
#include "src/frontends/command/read_back.h"
#include "src/frontends/command/report.h"
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

struct Shown {
  std::string name;
  std::string text;
  nlohmann::ordered_json json;
};

// Every value that the pane shows and an edit may change.
std::vector<Shown> snapshot(const Context& context, Session& session) {
  std::vector<Shown> values;
  for (const PaneSetting& setting : session.settings()) {
    values.push_back({setting.name(), setting.text(), jsonOf(setting.typedValue())});
  }
  for (const ControlDescription* description : context.interface.controls()) {
    if (!description->displayOnly) continue;
    const std::string& text = session.pane().outlet(description->outlet)->stringValue();
    values.push_back({description->label, text, text});
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
  std::vector<std::string> pending;
  std::vector<int64_t> ports;
};

// What changed, and what Apply would save as well because the file held another value from the start.
std::vector<Change> changesSince(const Start& start, const Context& context, Session& session,
                                 const ChangeRequest& request) {
  const auto& before = start.values;
  const auto after = snapshot(context, session);
  std::vector<Change> changes;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const std::string& name = after[i].name;
    Change change{name,           before[i].text, after[i].text,
                  before[i].json, after[i].json,  reasonFor(name, request)};
    const bool changed = change.from != change.to;
    if (!changed && std::ranges::count(start.pending, name) == 0) continue;
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

bool isWanted(const Outcome& outcome, const ChangeRequest& request) {
  return std::ranges::any_of(outcome.changes, [&](const Change& change) {
    return change.from != change.to || std::ranges::count(request.requested, change.name) > 0;
  });
}

Error unanswered(const Question& question) {
  std::string sentence = "the question \"" + question.title + "\" needs an answer: use";
  for (std::size_t i = 0; i < question.buttons.size(); ++i) {
    sentence += (i > 0 ? " or" : "");
    sentence += " --answer " + std::string(answerWord(NSAlertDefaultReturn - static_cast<int>(i))) +
                " for \"" + question.buttons[i] + "\"";
  }
  return {kExitUsage, sentence + ". Nothing was changed."};
}

// A port that the command does not change is not checked.
Error checkPorts(const Context& context, Session& session, const Start& start, Outcome& outcome) {
  const NVKServerPrefs& pane = session.pane();
  const auto ports = pendingPorts(pane);
  const auto fields = portFields(pane);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (ports[i] == start.ports[i]) continue;
    const auto finding = checkPort(pane, context.interface, *fields[i], context.services.portInUse);
    if (finding && finding->blocks) return {kExitData, finding->sentence};
    if (finding) outcome.warnings.push_back(finding->sentence);
  }
  return {};
}

// The edits and, where they change something, Apply.
Outcome editAndApply(const Context& context, Session& session, const Questions& questions,
                     const ChangeRequest& request) {
  Outcome outcome;
  NVKServerPrefs& pane = session.pane();
  if (request.requiresUnlock && !session.unlock()) {
    outcome.error = {kExitNoPermission, "this needs administrator rights, which were not granted."};
    return outcome;
  }
  const Start start{snapshot(context, session), pendingSettings(session), pendingPorts(pane)};
  outcome.error = request.edit(session, outcome.notes);
  if (!outcome.error && questions.unanswered() != nullptr) {
    outcome.error = unanswered(*questions.unanswered());
  }
  if (!outcome.error) outcome.error = checkPorts(context, session, start, outcome);
  if (outcome.error) return outcome;
  outcome.changes = changesSince(start, context, session, request);
  if (isWanted(outcome, request) && pane.ib_button_Apply.isEnabled()) {
    outcome.saved = changedGroups(pane);
    session.click(pane.ib_button_Apply);
    outcome.applied = true;
  }
  outcome.pending = pendingSettings(session);
  outcome.questions = questions.asked();
  outcome.effects = session.effects();
  return outcome;
}

Outcome preview(const Context& context, const ChangeRequest& request, RecordingMode mode,
                const Answers& answers) {
  Questions questions(answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, mode);
  Outcome outcome = editAndApply(context, session, questions, request);
  outcome.previewed = true;
  if (!outcome.error && questions.unanswered() != nullptr) {
    outcome.error = unanswered(*questions.unanswered());
    outcome.applied = false;
  }
  return outcome;
}

// The same request, which also records the values of the controls after its edits.
ChangeRequest recording(const ChangeRequest& request, std::optional<Expected>& expected) {
  ChangeRequest recorded = request;
  recorded.edit = [&request, &expected](Session& session, std::vector<std::string>& notes) {
    Error error = request.edit(session, notes);
    expected = expectedOf(session);
    return error;
  };
  return recorded;
}

// What the computer did not do although the files now hold what was to be saved.
Error failedStep(const Effects& effects) {
  if (!effects.unwritten.empty()) {
    return {kExitCannotCreate, "the file " + effects.unwritten.front().path + " could not be written."};
  }
  const auto refused = std::ranges::find_if(
      effects.launches, [](const Launch& launch) { return launch.refused && !launch.reports; });
  if (refused == effects.launches.end()) return {};
  return {kExitNoPermission, refused->tool + " could not be run."};
}

Outcome apply(const Context& context, const ChangeRequest& request) {
  std::optional<Expected> expected;
  Outcome outcome;
  {
    Questions questions(context.answers, context.err);
    Progress progress(nullptr);
    Session session(context, questions, progress, RecordingMode::real);
    outcome = editAndApply(context, session, questions, recording(request, expected));
  }
  if (!outcome.applied) return outcome;
  if (!context.services.waitForTools(kToolLimit)) {
    outcome.warnings.emplace_back("some of the tools that were launched are still running.");
    return outcome;
  }
  const auto missing = notSaved(context, *expected, outcome);
  if (!missing.empty()) {
    outcome.error = {kExitCannotCreate, "not saved: " + listInWords(missing, "and") + "."};
  } else {
    outcome.error = failedStep(outcome.effects);
  }
  return outcome;
}

}  // namespace

std::vector<std::string> pendingSettings(Session& session) {
  std::vector<std::string> names;
  for (const PaneSetting& setting : session.settings()) {
    const auto differs = [&](const Control* control) { return session.pane().differsFromStored(*control); };
    if (std::ranges::any_of(setting.controls(), differs)) names.push_back(setting.name());
  }
  return names;
}

ExitStatus change(const Context& context, const ChangeRequest& request, bool dryRun) {
  const bool attended = context.answers.person != nullptr;
  if (dryRun || request.previewsWhileLocked) {
    Answers answers{context.answers.fixed, nullptr};
    // A person who is asked later, and a dry run, see what follows from the default answer.
    if (!answers.fixed && (attended || dryRun)) answers.fixed = NSAlertDefaultReturn;
    const Outcome outcome = preview(context, request, RecordingMode::pretending, answers);
    if (dryRun || outcome.error) return report(context, outcome, dryRun);
  }
  if (request.requiresUnlock && !attended) {
    const Outcome outcome =
        preview(context, request, RecordingMode::looking, {context.answers.fixed, nullptr});
    if (outcome.error) return report(context, outcome, false);
  }
  return report(context, apply(context, request), false);
}

}  // namespace norvik::command
