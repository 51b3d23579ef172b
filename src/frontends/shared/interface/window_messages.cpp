// Sentences from values.
#include "src/frontends/shared/interface/window_messages.h"

#include <algorithm>

#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik {

namespace {

constexpr std::size_t kMostLines = 12;

void addSentence(std::string& text, std::string_view sentence) {
  if (sentence.empty()) return;
  if (!text.empty()) text += ' ';
  text += sentence;
}

void addLine(std::string& lines, const std::string& line) {
  if (!lines.empty()) lines += '\n';
  lines += line;
}

std::string labelsOf(const std::vector<SettingChange>& changes) {
  std::vector<std::string> labels;
  for (const SettingChange& change : changes) labels.push_back(change.label);
  return listInWords(labels, "and");
}

// Codes after which the same may work at another time, or after something was mended.
bool canBeRetried(FailureCode code) {
  constexpr FailureCode kRetried[] = {FailureCode::damaged,  FailureCode::server,
                                      FailureCode::software, FailureCode::notWritten,
                                      FailureCode::tryAgain, FailureCode::notAllowed};
  return std::ranges::find(kRetried, code) != std::end(kRetried);
}

WindowMessage failed(const ChangeReport& report) {
  const ChangeError& error = report.error;
  WindowMessage message{MessageKind::failure, asSentence(error.sentence), {}, detailsOf(report)};
  if (error.code == FailureCode::cancelled) message.kind = MessageKind::note;
  addSentence(message.sentence, asSentence(error.advice));
  if (message.isEmpty()) message.sentence = codeWord(error.code);
  if (!error.outlet.empty()) message.actions.push_back(MessageAction::showSetting);
  if (canBeRetried(error.code)) message.actions.push_back(MessageAction::retry);
  if (!message.details.empty()) message.actions.push_back(MessageAction::showDetails);
  return message;
}

// A success with what has to be known beside it.
WindowMessage succeeded(const ChangeReport& report, std::string sentence) {
  WindowMessage message{MessageKind::done, std::move(sentence), {}, detailsOf(report)};
  if (!report.told.empty()) addSentence(message.sentence, "Told " + listInWords(report.told, "and") + ".");
  if (!report.notTold.empty() || !report.warnings.empty()) {
    message.kind = MessageKind::warning;
    if (!report.notTold.empty())
      addSentence(message.sentence, "Could not tell " + listInWords(report.notTold, "and") + ".");
    for (const std::string& warning : report.warnings) addSentence(message.sentence, asSentence(warning));
    if (!message.details.empty()) message.actions.push_back(MessageAction::showDetails);
  }
  return message;
}

std::string_view doneSentence(ServerOrder order) {
  switch (order) {
    case ServerOrder::start:
      return "The server is started.";
    case ServerOrder::stop:
      return "The server is stopped.";
    case ServerOrder::restart:
      return "The server is restarted.";
  }
  return {};
}

std::string outcomeOf(const ToolOutcome& outcome) {
  using End = ToolOutcome::End;
  std::string said;
  if (outcome.end == End::waiting) said = "has not begun";
  if (outcome.end == End::running) said = "has not ended";
  if (outcome.end == End::exited) said = "ended with status " + std::to_string(outcome.status);
  if (outcome.end == End::killed) said = "was ended by signal " + std::to_string(outcome.status);
  return outcome.words.empty() ? said : said + ": " + outcome.words;
}

}  // namespace

std::string countedChanges(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " change" : " changes");
}

std::string changeLines(const std::vector<SettingChange>& changes, std::size_t most) {
  std::string lines;
  for (std::size_t i = 0; i < changes.size() && i < most; ++i) {
    const SettingChange& change = changes[i];
    addLine(lines, change.page + ", " + change.label + ": " + change.from + " → " + change.to);
  }
  if (changes.size() > most) addLine(lines, "and " + std::to_string(changes.size() - most) + " more");
  return lines;
}

WindowMessage appliedMessage(const ChangeReport& report) {
  if (report.error) return failed(report);
  std::string sentence;
  if (!report.takenOver.empty()) {
    sentence = "Somebody else had changed " + listInWords(report.takenOver, "and") + "; that was taken over.";
  }
  if (report.saved.empty() && sentence.empty() && report.warnings.empty()) return {};
  if (!report.saved.empty()) addSentence(sentence, "Saved the " + listInWords(report.saved, "and") + ".");
  return succeeded(report, std::move(sentence));
}

WindowMessage restoredMessage(const ChangeReport& report, const FileFinding& file) {
  if (report.error) return failed(report);
  return succeeded(report, "The copy of " + file.label + " was put back.");
}

WindowMessage refusedMessage(const std::vector<ValueFinding>& findings) {
  const auto blocks = std::ranges::count_if(findings, &ValueFinding::blocks);
  const auto first = std::ranges::find_if(findings, &ValueFinding::blocks);
  if (first == findings.end()) return {};
  WindowMessage message{
      MessageKind::failure, "Nothing was applied. " + first->sentence, {MessageAction::showSetting}, {}};
  if (blocks > 1) {
    const auto others = static_cast<std::size_t>(blocks - 1);
    message.sentence += others == 1 ? " One more value cannot be applied."
                                    : " " + std::to_string(others) + " more values cannot be applied.";
  }
  return message;
}

WindowMessage damagedMessage(const std::vector<FileFinding>& findings) {
  if (findings.empty()) return {};
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  for (const FileFinding& finding : findings) {
    addSentence(message.sentence, asSentence(finding.sentence));
    if (finding.damaged && !finding.copyTime.empty() && message.actions.empty())
      message.actions.push_back(MessageAction::restoreCopy);
  }
  if (findings.front().damaged) addSentence(message.sentence, window_texts::kDefaultsShown);
  return message;
}

WindowMessage foreignMessage(const ForeignChanges& changes) {
  if (!changes.collisions.empty()) {
    std::vector<std::string> labels;
    for (const Collision& collision : changes.collisions) labels.push_back(collision.label);
    return {MessageKind::warning,
            "Somebody else has changed " + listInWords(labels, "and") + ", which you are changing too.",
            {MessageAction::chooseValues},
            {}};
  }
  if (changes.takenOver.empty()) return {};
  return {MessageKind::note,
          "Somebody else has changed " + labelsOf(changes.takenOver) + ". The new values are shown.",
          {},
          changeLines(changes.takenOver, kMostLines)};
}

WindowMessage orderMessage(ServerOrder order, const OrderReport& report) {
  if (!report.ok()) return failed(report.change);
  std::string sentence = report.note;
  addSentence(sentence, doneSentence(order));
  return succeeded(report.change, std::move(sentence));
}

WindowMessage takenUpMessage(const OrderReport& report) {
  if (!report.ok()) return failed(report.change);
  if (!report.note.empty()) return {MessageKind::note, report.note, {}, {}};
  return succeeded(report.change, "The server uses what is stored.");
}

WindowMessage inForceMessage(const ServerInForce& server) {
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  for (const ServiceInForce& service : server.services) {
    if (!service.differs()) continue;
    addSentence(message.sentence, inForceSentence(service));
    addSentence(message.sentence, takenSentence(service));
    // A port that somebody else has cannot be taken up.
    if (!service.takenBy && message.actions.empty()) message.actions.push_back(MessageAction::takeUp);
  }
  return message;
}

WindowMessage unlockDeniedMessage() {
  return {MessageKind::failure, std::string(window_texts::kUnlockDenied), {MessageAction::retry}, {}};
}

std::string detailsOf(const ChangeReport& report) {
  std::string lines;
  for (const std::string& name : report.notSaved) addLine(lines, "Not saved: " + name);
  for (const CommandOutcome& command : report.commands)
    addLine(lines, commandLine(command.launch) + " " + outcomeOf(command.outcome));
  for (const UnwrittenFile& file : report.effects.unwritten)
    addLine(lines, "Not written: " + file.path + (file.reason.empty() ? "" : ": " + file.reason));
  for (const std::string& who : report.told) addLine(lines, "Told: " + who);
  for (const std::string& who : report.notTold) addLine(lines, "Not told: " + who);
  for (const std::string& warning : report.warnings) addLine(lines, warning);
  for (const std::string& line : report.effects.logged) addLine(lines, line);
  return lines;
}

std::string asSentence(std::string words) {
  if (!words.empty() && words.front() >= 'a' && words.front() <= 'z')
    words.front() = static_cast<char>(words.front() - 'a' + 'A');
  return words;
}

std::string leaveQuestion(const std::vector<SettingChange>& changes) {
  const bool one = changes.size() == 1;
  return countedChanges(changes.size()) + (one ? " is not applied." : " are not applied.");
}

}  // namespace norvik
