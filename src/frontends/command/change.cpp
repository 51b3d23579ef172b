// The stages of a change, in their order.
#include "src/frontends/command/change.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "src/frontends/command/decisions.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/report.h"
#include "src/frontends/command/status.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

ChangeError unanswered(const Question& question) {
  const std::string ways = waysToAnswer(question);
  return failure(
      FailureCode::usage,
      ways.empty() ? sentence("the question \"{1}\" needs an answer. Nothing was changed.", {question.title})
                   : sentence("the question \"{1}\" needs an answer: use {2}. Nothing was changed.",
                              {question.title, ways}));
}

template <typename Value>
void append(std::vector<Value>& list, const std::vector<Value>& more) {
  list.insert(list.end(), more.begin(), more.end());
}

// One pane and what is done with it. What a pretending one finds out does not happen.
class Attempt {
 public:
  Attempt(const Context& context, const ChangeRequest& request, const Answers& answers, RecordingMode mode,
          Opening opening = Opening::now)
      : context_(context),
        request_(request),
        isReal_(mode == RecordingMode::real),
        isAskedLater_(answers.byDefault && context.answers.person != nullptr),
        questions_(answers, context.err),
        progress_(nullptr),
        session_(context, questions_, progress_, mode, Opening::later),
        change_(session_.pane(), session_.recording(), context.computer, context.interface,
                context.services.computer, changeOptions(context)),
        decisions_(questions_, outcome_.report.warnings) {
    if (opening == Opening::now) open();
  }

  bool holdLock() { return change_.holdLock() || fail(lockIsTaken()); }
  void open() {
    change_.look();
    session_.open();
  }

  // Each returns false, with the reason in the outcome, where it must not go on.
  bool edited();
  bool foreseen();
  void apply();
  // What the request does with a change that was made.
  void handOver();

  Outcome& outcome() {
    outcome_.questions = questions_.asked();
    return outcome_;
  }

 private:
  bool fail(ChangeError error) {
    if (!outcome_.report.applied) outcome_.report.changes.clear();
    outcome_.report.error = std::move(error);
    return false;
  }
  bool isBegun();
  bool isRequested(const FileFinding& file);
  bool damageDecided();
  bool decide(const FileFinding& file);
  bool checked();
  std::vector<SettingChange> changes();
  std::map<std::string, std::string> texts();
  void noteWhatStays(std::map<std::string, std::string>& before);

  const Context& context_;
  const ChangeRequest& request_;
  const bool isReal_;
  const bool isAskedLater_;    // by another attempt, of a person
  bool isWanted_ = false;      // the wish does not hold yet
  bool isHandedOver_ = false;  // the request knows that it is put into force
  Outcome outcome_;
  Questions questions_;
  Progress progress_;
  Session session_;
  SettingsChange change_;
  Decisions decisions_;
};

// Whether the wish is about a setting that the file keeps.
bool Attempt::isRequested(const FileFinding& file) {
  const auto isIn = [&](const std::string& name) {
    const PaneSetting* setting = session_.find(name);
    if (setting == nullptr) return file.group == Group::limit;
    const Setting* row = rowOfSetting(session_.pane(), *setting);
    return row != nullptr &&
           context_.computer.propertyLists.stringByExpandingTildeInPath(fileOfRow(*row).path) == file.file;
  };
  return std::ranges::any_of(request_.requested, isIn) ||
         std::ranges::any_of(request_.reasons, isIn, [](const auto& entry) { return entry.first; });
}

// Before the edits: whether a wish holds already is known only of a file that can be read.
bool Attempt::damageDecided() {
  const auto findings = change_.findings();
  return std::ranges::all_of(
      findings, [&](const FileFinding& file) { return !file.damaged || !isRequested(file) || decide(file); });
}

bool Attempt::decide(const FileFinding& file) {
  const bool isAnswered = context_.answers.given.contains(kDamagedQuestion);
  if (isAskedLater_ && !isAnswered) return true;
  switch (decisions_.decideDamaged(file)) {
    case DamagedAnswer::cancel:
      return fail(damagedError(file));
    case DamagedAnswer::replace:
      if (!isReal_)
        outcome_.notes.push_back(sentence("What {1} holds would be kept beside it first.", {file.file}));
      return true;
    case DamagedAnswer::restore:
      break;
  }
  if (isReal_) {
    addReport(change_.restore(file), outcome_.report);
  } else if (file.copyTime.empty()) {
    return fail(failure(FailureCode::damaged,
                        sentence("There is no copy of {1}. Nothing was changed.", {file.file})));
  } else {
    outcome_.notes.push_back(sentence(
        "The copy of {1} would be put back as {2} first; the values before the change would be those of the copy.",
        {file.copyTime, file.file}));
  }
  return outcome_.report.ok();
}

std::map<std::string, std::string> Attempt::texts() {
  std::map<std::string, std::string> texts;
  for (const PaneSetting& setting : session_.settings()) texts.emplace(setting.name(), setting.text());
  return texts;
}

// What only the controls show is no change, such as a box for a port of its own while the port is the
// standard one.
void Attempt::noteWhatStays(std::map<std::string, std::string>& before) {
  const auto& changes = outcome_.report.changes;
  for (const PaneSetting& setting : session_.settings()) {
    const std::string& name = setting.name();
    const bool isWished = std::ranges::count(request_.requested, name) > 0;
    if (!isWished || setting.text() == before[name]) continue;
    if (std::ranges::count(changes, name, &SettingChange::name) > 0) continue;
    outcome_.notes.push_back(
        sentence("{1} stays {2}; that alone changes nothing that is saved.", {name, before[name]}));
  }
}

// Every pending value with the reason why it changes, where the person did not name it. What the pane would
// save only because a control cannot show it, and nobody asked for, is no reason to save.
std::vector<SettingChange> Attempt::changes() {
  auto changes = change_.pending();
  for (SettingChange& change : changes) {
    const bool isWished = std::ranges::count(request_.requested, change.name) > 0;
    isWanted_ = isWanted_ || isWished || change.because.empty();
    if (isWished || !change.because.empty()) continue;
    const auto reason = request_.reasons.find(change.name);
    change.because = reason != request_.reasons.end() ? reason->second : translated("changed along with it");
  }
  return changes;
}

bool Attempt::checked() {
  for (const ValueFinding& finding : change_.check()) {
    if (finding.blocks) return fail(failure(finding.code, finding.sentence, finding.setting));
    if (!isReal_) outcome_.report.warnings.push_back(finding.sentence);
  }
  return true;
}

bool Attempt::edited() {
  ChangeReport& report = outcome_.report;
  if (request_.requiresUnlock && !session_.unlock()) {
    return fail(failure(FailureCode::notAllowed,
                        translated("This needs administrator rights, which were not granted.")));
  }
  change_.loaded();
  if (!damageDecided()) return false;
  auto before = texts();
  if (ChangeError error = request_.edit(session_, outcome_.notes)) return fail(error);
  if (questions_.unanswered() != nullptr) return fail(unanswered(*questions_.unanswered()));
  if (!checked()) return false;
  // A person whose answer was waited for may have interrupted the program instead.
  if (context_.services.wasInterrupted()) {
    return fail(failure(FailureCode::cancelled, translated("Interrupted. Nothing was changed.")));
  }
  report.changes = changes();
  noteWhatStays(before);
  return true;
}

// What Apply would do, and which questions it would ask.
bool Attempt::foreseen() {
  Control& button = session_.pane().ib_button_Apply;
  if (!isWanted_ || !button.isEnabled()) {
    outcome_.report.changes.clear();
    return true;
  }
  Preview preview = change_.preview();
  preview.changes = outcome_.report.changes;
  session_.recording().forget();
  session_.click(button);
  if (questions_.unanswered() != nullptr) return fail(unanswered(*questions_.unanswered()));
  // These follow from the answers that are given, such as a restart of the computer.
  preview.commands.clear();
  std::ranges::copy_if(session_.effects().launches, std::back_inserter(preview.commands),
                       [](const Launch& launch) { return !launch.reports; });
  outcome_.preview = std::move(preview);
  return true;
}

bool Attempt::isBegun() {
  if (ChangeError error = request_.beforeApply(recordedOf(session_.pane(), change_.pending()))) {
    return fail(std::move(error));
  }
  isHandedOver_ = true;
  return true;
}

void Attempt::handOver() {
  if (!isHandedOver_ || !request_.afterApply) return;
  change_.releaseLock();
  MadeChange made{session_, questions_, change_, decisions_, outcome_};
  request_.afterApply(made);
}

void Attempt::apply() {
  if (!isWanted_) {
    outcome_.report.changes.clear();
    append(outcome_.report.warnings, notInForce(context_, session_.pane()));
    return;
  }
  if (request_.beforeApply && !isBegun()) return;
  const ChangeReport applied = change_.apply(decisions_);
  const auto changes = std::exchange(outcome_.report.changes, {});
  addReport(applied, outcome_.report);
  if (applied.applied) outcome_.report.changes = changes;
  outcome_.pending = pendingSettings(session_);
}

Outcome preview(const Context& context, const ChangeRequest& request, RecordingMode mode,
                const Answers& answers) {
  Attempt attempt(context, request, answers, mode);
  if (attempt.edited()) attempt.foreseen();
  return attempt.outcome();
}

// A person who is asked later, and a dry run, see what follows from the default answers.
Outcome previewed(const Context& context, const ChangeRequest& request, bool dryRun) {
  const bool attended = context.answers.person != nullptr;
  const GivenAnswers& given = context.answers.given;
  Outcome outcome;
  if (dryRun || request.previewsWhileLocked) {
    outcome = preview(context, request, RecordingMode::pretending, {given, attended || dryRun, nullptr});
  }
  if (!dryRun && outcome.report.ok() && request.requiresUnlock && !attended) {
    outcome = preview(context, request, RecordingMode::looking, {given, false, nullptr});
  }
  return outcome;
}

void warnOfWhatHappened(const Context& context, ChangeReport& report) {
  for (const std::string& who : report.notTold) {
    report.warnings.push_back(sentence("Nobody could tell {1} about the change.", {who}));
  }
  if (report.applied && context.services.wasInterrupted()) {
    report.warnings.emplace_back(
        translated("Interrupted while the change was being made; it was finished all the same."));
  }
}

}  // namespace

// From the end of the preview on, everything is finished whatever arrives.
Outcome makeChange(const Context& context, const ChangeRequest& request) {
  Attempt attempt(context, request, context.answers, RecordingMode::real, Opening::later);
  if (!attempt.holdLock()) return attempt.outcome();
  Outcome foreseen = previewed(context, request, false);
  if (!foreseen.report.ok()) return foreseen;
  context.services.deferInterruptions();
  attempt.open();
  if (attempt.edited()) attempt.apply();
  warnOfWhatHappened(context, attempt.outcome().report);
  attempt.handOver();
  return attempt.outcome();
}

ChangeOptions changeOptions(const Context& context) {
  return {context.services.records, context.services.portInUse, context.services.waitForTools,
          context.limits.lock, context.limits.tools};
}

void addReport(const ChangeReport& later, ChangeReport& report) {
  const ChangeReport before = std::move(report);
  report = later;
  report.applied = before.applied || later.applied;
  const auto prepend = [&](auto list) {
    auto all = before.*list;
    append(all, later.*list);
    report.*list = std::move(all);
  };
  prepend(&ChangeReport::warnings);
  prepend(&ChangeReport::commands);
  prepend(&ChangeReport::saved);
  prepend(&ChangeReport::told);
  prepend(&ChangeReport::notTold);
}

ChangeError lockIsTaken() {
  ChangeError error = failure(FailureCode::tryAgain,
                              translated("Another program is changing the settings. Nothing was changed."));
  error.advice = sentence("Try again in a moment, or wait longer with {1}.", {"--wait-lock"});
  return error;
}

Outcome foresee(const Context& context, const ChangeRequest& request) {
  return previewed(context, request, true);
}

ExitStatus change(const Context& context, const ChangeRequest& request, bool dryRun) {
  return report(context, dryRun ? foresee(context, request) : makeChange(context, request), dryRun);
}

}  // namespace norvik::command
