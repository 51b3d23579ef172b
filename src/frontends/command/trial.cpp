// Begin, wait, take back.
#include "src/frontends/command/trial.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/history.h"
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
// While somebody else changes settings.
constexpr int kMostAttempts = 3;

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

ChangeError notTakenBack(const Context& context, ChangeError error) {
  error.sentence = sentence("The change on trial could not be taken back: {1}", {error.sentence});
  error.advice =
      sentence("It is taken back at the next start of norvikctl or the window. To keep it, remove {1}.",
               {context.services.state.placeOf(kTrialFile)});
  return error;
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
  void takeBack(MadeChange& made) {
    TrialReturn result;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
      result = takeBackSettings(settings_, made.session.edited(), made.change, context_.computer,
                                context_.interface, made.decisions);
      if (result.report.error.code != FailureCode::tryAgain) break;
    }
    notes_ = result.notes;
    isLeft_ = !result.report.ok();
    if (isLeft_) made.outcome.report.error = notTakenBack(context_, result.report.error);
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

// What the trial had put into force, in words: "nvk.port 5000".
std::string settingsInWords(const Trial& trial) {
  std::vector<std::string> names;
  for (const RecordedSetting& setting : trial.settings) names.push_back(setting.name);
  if (trial.stopsServer == StopsServer::yes) names.push_back(translated("the stop of the server"));
  return listInWords(names, "and");
}

ChangeError takeBack(const Context& context, const Trial& trial) {
  if (!trial.settings.empty()) {
    const Outcome outcome = makeChange(
        context, requestToReturn(context, trial.settings, ChangedAgain::leftAlone, NothingLeft::isFine));
    for (const std::string& note : outcome.notes) context.complain(note);
    if (!outcome.report.ok()) return outcome.report.error;
  }
  return trial.stopsServer == StopsServer::yes ? startAgain(context) : ChangeError();
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

void takeBackAbandoned(const Context& context) {
  Trials trials(context.services.state, "norvikctl");
  if (const std::string damage = trials.damage(); !damage.empty()) context.complain("warning: " + damage);
  const auto trial = trials.abandoned();
  if (!trial) return;
  const ChangeError error = takeBack(context, *trial);
  const std::string what = settingsInWords(*trial);
  if (!error) {
    context.complain(
        sentence("A change was on trial when its program ended, and was taken back: {1}.", {what}));
    const std::string warning = trials.end();
    if (!warning.empty()) context.complain(warning);
    return;
  }
  trials.leave();
  context.complain(
      sentence("A change was on trial when its program ended, and is still in force: {1}.", {what}));
  const ChangeError why = notTakenBack(context, error);
  context.complain(why.sentence);
  context.complain(why.advice);
}

}  // namespace norvik::command
