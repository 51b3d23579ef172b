// Begin, wait, take back.
#include "src/frontends/command/trial.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/decisions.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/report.h"
#include "src/frontends/command/server.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/trial/countdown.h"
#include "src/frontends/shared/trial/trial_return.h"
#include "src/server/mac/text/trim.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

constexpr std::string_view kKeepWord = "keep";
constexpr std::string_view kRevertWord = "revert";
// So that a signal is noticed that comes right before the wait.
constexpr milliseconds kLongestWait{100};

struct EndRow {
  TrialEnd end;
  std::string_view word;  // in JSON
  std::string_view sentence;
};
constexpr std::array<EndRow, 5> kEnds = {{
    {TrialEnd::kept, "kept", english("Kept.")},
    {TrialEnd::reverted, "reverted", english("Taken back, as you said.")},
    {TrialEnd::lapsed, "lapsed", english("Taken back, as the time passed.")},
    {TrialEnd::gone, "gone", english("Taken back, as the terminal or the input has ended.")},
    {TrialEnd::interrupted, "interrupted", english("Taken back, as the program was interrupted.")},
}};

const EndRow& rowOf(TrialEnd end) {
  return kEnds.at(static_cast<std::size_t>(end));
}

// One change on trial, from the moment before it is put into force.
class TriedChange {
 public:
  TriedChange(const Context& context, std::chrono::seconds length)
      : context_(context), length_(length), trials_(context.services.state, "norvikctl") {}

  ChangeError begin(const std::vector<RecordedSetting>& settings) {
    settings_ = settings;
    return trials_.begin(settings, StopsServer::no, length_);
  }

  void run(MadeChange& made) {
    if (!made.outcome.report.ok()) {
      if (!made.outcome.report.saved.empty()) takeBack(made);
      return finish(made);
    }
    if (!context_.json) writeOutcome(context_, made.outcome, false);
    end_ = awaitEnd(context_, length_);
    if (end_ != TrialEnd::kept) takeBack(made);
    finish(made);
  }

  const std::optional<TrialEnd>& end() const { return end_; }
  const std::vector<std::string>& notes() const { return notes_; }

 private:
  // Nobody is asked, as nobody may be there.
  void takeBack(MadeChange& made) {
    made.questions.askNobody();
    const TrialReturn result = retriedReturn([&] {
      return takeBackSettings(settings_, made.session.edited(), made.change, context_.computer,
                              context_.interface, made.decisions);
    });
    notes_ = result.notes;
    isLeft_ = !result.isBack;
    if (!isLeft_ && !made.outcome.report.ok())
      made.outcome.report.warnings.push_back(translated("What was saved of the change was taken back."));
    if (!isLeft_ && !made.outcome.report.error) made.outcome.report.error = result.report.error;
    if (isLeft_) made.outcome.report.error = notTakenBack(result.report.error, context_.services.state);
    auto& warnings = made.outcome.report.warnings;
    warnings.insert(warnings.end(), result.report.warnings.begin(), result.report.warnings.end());
  }

  void finish(MadeChange& made) {
    if (isLeft_) return trials_.leave();
    const std::string warning = trials_.end();
    if (!warning.empty()) made.outcome.report.warnings.push_back(warning);
  }

  const Context& context_;
  std::chrono::seconds length_;
  Trials trials_;
  std::vector<RecordedSetting> settings_;
  std::optional<TrialEnd> end_;
  std::vector<std::string> notes_;
  bool isLeft_ = false;
};

ExitStatus finishTried(const Context& context, const TriedChange& tried, const Outcome& outcome) {
  if (!tried.end()) return report(context, outcome, false);
  if (!context.json && outcome.report.ok()) context.out << '\n' << sentenceOf(*tried.end()) << '\n';
  if (!context.json) {
    for (const std::string& note : tried.notes()) context.out << note << '\n';
  }
  const ExitStatus status =
      finishChange(context, outcome, false, {{"trial", trialJson(*tried.end(), tried.notes())}});
  return status == kExitOk && tried.end() != TrialEnd::kept ? kExitTakenBack : status;
}

// With a pane of its own; the lock is opened where that is needed.
TrialReturn takeBack(const Context& context, const Trial& trial) {
  Questions questions(context.answers, context.err);
  questions.askNobody();
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::real, Opening::later);
  SettingsChange change(session.pane(), session.recording(), context.computer, context.interface,
                        context.services.computer, changeOptions(context));
  std::vector<std::string> warnings;
  Decisions decisions(questions, warnings);
  change.look();
  session.open();
  if (needsRights(trial, context.interface)) session.unlock();
  change.loaded();
  OrderedServer server = orderedServer(context, session);
  TrialReturn result = takeBackTrial(trial, server, change, context.computer, decisions);
  for (const std::string& warning : warnings) context.complain(warning);
  return result;
}

}  // namespace

TrialEnd awaitEnd(const Context& context, std::chrono::seconds length) {
  const Countdown countdown(context.services.clock, length);
  context.out.flush();
  context.err << counted("In force for {1} second.", "In force for {1} seconds.",
                         static_cast<std::size_t>(length.count()))
              << ' '
              << translated(
                     "Type \"keep\" to keep it, or \"revert\" to take it back now. It is taken back "
                     "when the time has passed or this program ends.")
              << std::endl;
  while (!countdown.isOver()) {
    if (context.services.wasInterrupted()) return TrialEnd::interrupted;
    const TypedLine line = context.services.typed(std::min(countdown.remaining(), kLongestWait));
    if (context.services.wasInterrupted()) return TrialEnd::interrupted;
    if (line.kind == TypedLine::Kind::gone) return TrialEnd::gone;
    if (line.kind == TypedLine::Kind::none) continue;
    const std::string word = folded(trimmed(line.text, kBlanks));
    if (word == kKeepWord) return TrialEnd::kept;
    if (word == kRevertWord) return TrialEnd::reverted;
    context.err << translated("Please type \"keep\" or \"revert\".") << std::endl;
  }
  return TrialEnd::lapsed;
}

std::string sentenceOf(TrialEnd end) {
  return translated(rowOf(end).sentence);
}

Json trialJson(TrialEnd end, const std::vector<std::string>& notes) {
  return {{"end", rowOf(end).word}, {"notes", notes}};
}

ExitStatus changeOrTry(const Context& context, const CommandLine& line, const ChangeRequest& wanted) {
  if (!line.trial || line.dryRun) return change(context, wanted, line.dryRun);
  TriedChange tried(context, *line.trial);
  ChangeRequest request = wanted;
  request.beforeApply = [&tried](const std::vector<RecordedSetting>& settings) {
    return tried.begin(settings);
  };
  request.afterApply = [&tried](MadeChange& made) { tried.run(made); };
  const Outcome outcome = makeChange(context, request);
  return finishTried(context, tried, outcome);
}

void takeBackAbandoned(const Context& given) {
  Trials trials(given.services.state, "norvikctl");
  if (const std::string damage = trials.damage(); !damage.empty()) given.complain("warning: " + damage);
  const auto trial = trials.abandoned();
  if (!trial) return;
  Context context = given;
  context.services.wasStopped = [] { return false; };  // what began is finished
  context.services.deferInterruptions();
  const TrialReturn back = takeBack(context, *trial);
  for (const std::string& line : sentencesOf(*trial, back, context.services.state)) context.complain(line);
  if (!back.isBack) return trials.leave();
  if (const std::string warning = trials.end(); !warning.empty()) context.complain(warning);
}

}  // namespace norvik::command
