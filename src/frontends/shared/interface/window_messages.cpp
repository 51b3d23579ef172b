// Sentences from values.
#include "src/frontends/shared/interface/window_messages.h"

#include <algorithm>
#include <cctype>

#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

constexpr std::size_t kMostLines = 12;

void addSentence(std::string& text, std::string_view more) {
  text = joinedSentences(text, more);
}

void addLine(std::string& lines, const std::string& line) {
  if (!lines.empty()) lines += '\n';
  lines += line;
}

// Several pages have a port, or a colour depth.
std::string labelWithPage(const std::string& label, const std::string& page) {
  return page.empty() ? label : sentence("{1} ({2})", {label, translated(page)});
}

// Of changes or collisions.
template <typename Named>
std::string labelsOf(const std::vector<Named>& settings) {
  std::vector<std::string> labels;
  labels.reserve(settings.size());
  for (const Named& setting : settings) labels.push_back(labelWithPage(setting.label, setting.page));
  return allOf(labels);
}

// Whether a letter would make a name before or behind it another name.
bool isOfName(char letter) {
  return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_' || letter == '-';
}

// Whether the name at that place is not a part of a longer one: "nvk.port" is not in "nvk.port.custom".
bool isWholeName(std::string_view words, std::size_t at, std::size_t length) {
  if (at > 0 && (isOfName(words[at - 1]) || words[at - 1] == '.')) return false;
  const std::string_view behind = words.substr(at + length);
  if (behind.empty()) return true;
  return !isOfName(behind[0]) && (behind[0] != '.' || behind.size() == 1 || !isOfName(behind[1]));
}

void replaceName(std::string& words, std::string_view name, const std::string& label) {
  for (std::size_t at = words.find(name); at != std::string::npos; at = words.find(name, at)) {
    if (isWholeName(words, at, name.size())) words.replace(at, name.size(), label);
    ++at;
  }
}

// "2026-01-31 12:30 UTC" from "2026-01-31T12:30:05Z"; anything else as it is.
std::string timeInWords(const std::string& time) {
  constexpr std::string_view kPattern = "dddd-dd-ddTdd:dd:ddZ";
  const auto fits = [](char letter, char wanted) {
    return wanted == 'd' ? std::isdigit(static_cast<unsigned char>(letter)) != 0 : letter == wanted;
  };
  if (!std::ranges::equal(time, kPattern, fits)) return time;
  return time.substr(0, 10) + " " + time.substr(11, 5) + " UTC";
}

// "Saved the server settings."; empty where nothing was.
std::string savedSentence(const ChangeReport& report) {
  std::vector<std::string> groups;
  groups.reserve(report.saved.size());
  for (const std::string& group : report.saved) groups.push_back(translated(group));
  return groups.empty() ? "" : sentence("Saved the {1}.", {allOf(groups)});
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
  WindowMessage message{MessageKind::failure, savedSentence(report), {}, detailsOf(report)};
  if (error.code == FailureCode::cancelled) message.kind = MessageKind::note;
  addSentence(message.sentence, asSentence(error.sentence));
  addSentence(message.sentence, asSentence(error.advice));
  if (message.isEmpty()) message.sentence = codeWord(error.code);
  if (!error.outlet.empty()) message.actions.push_back(MessageAction::showSetting);
  if (canBeRetried(error.code)) message.actions.push_back(MessageAction::retry);
  if (!message.details.empty()) message.actions.push_back(MessageAction::showDetails);
  return message;
}

// A success with what has to be known beside it.
WindowMessage succeeded(const ChangeReport& report, std::string words) {
  WindowMessage message{MessageKind::done, std::move(words), {}, detailsOf(report)};
  if (!report.told.empty()) addSentence(message.sentence, sentence("Told {1}.", {allOf(report.told)}));
  if (!report.notTold.empty() || !report.warnings.empty()) {
    message.kind = MessageKind::warning;
    if (!report.notTold.empty())
      addSentence(message.sentence, sentence("Could not tell {1}.", {allOf(report.notTold)}));
    for (const std::string& warning : report.warnings) addSentence(message.sentence, asSentence(warning));
    if (!message.details.empty()) message.actions.push_back(MessageAction::showDetails);
  }
  return message;
}

std::string doneSentence(ServerOrder order) {
  switch (order) {
    case ServerOrder::start:
      return translated("The server is started.");
    case ServerOrder::stop:
      return translated("The server is stopped.");
    case ServerOrder::restart:
      return translated("The server is restarted.");
  }
  return {};
}

std::string outcomeOf(const Launch& launch, const ToolOutcome& outcome) {
  using End = ToolOutcome::End;
  const std::string command = commandLine(launch);
  const std::string status = std::to_string(outcome.status);
  std::string said;
  if (outcome.end == End::waiting) said = sentence("{1} has not begun", {command});
  if (outcome.end == End::running) said = sentence("{1} has not ended", {command});
  if (outcome.end == End::exited) said = sentence("{1} ended with status {2}", {command, status});
  if (outcome.end == End::killed) said = sentence("{1} was ended by signal {2}", {command, status});
  return outcome.words.empty() ? said : sentence("{1}: {2}", {said, outcome.words});
}

}  // namespace

std::string countedChanges(std::size_t count) {
  return counted("{1} change", "{1} changes", count);
}

std::string changeLines(const std::vector<SettingChange>& changes, std::size_t most) {
  std::string lines;
  for (std::size_t i = 0; i < changes.size() && i < most; ++i) {
    const SettingChange& change = changes[i];
    addLine(lines, sentence("• {1}, {2}: {3} → {4}", {translated(change.page), change.label,
                                                      translated(change.from), translated(change.to)}));
  }
  if (changes.size() > most) addLine(lines, counted("and {1} more", "and {1} more", changes.size() - most));
  return lines;
}

std::string withLabels(std::string words, const InterfaceDescription& interface) {
  for (const SettingDescription& setting : settingsOf(interface)) {
    if (words.find(setting.name) != std::string::npos)
      replaceName(words, setting.name, labelWithPage(labelOf(setting, interface), setting.page.title));
  }
  return words;
}

WindowMessage withLabels(WindowMessage message, const InterfaceDescription& interface) {
  message.sentence = withLabels(std::move(message.sentence), interface);
  message.details = withLabels(std::move(message.details), interface);
  return message;
}

WindowMessage appliedMessage(const ChangeReport& report) {
  if (report.error) return failed(report);
  std::string said;
  if (!report.takenOver.empty()) {
    said = sentence("Somebody else had changed {1}; that was taken over.", {allOf(report.takenOver)});
  }
  if (report.saved.empty() && said.empty() && report.warnings.empty()) return {};
  addSentence(said, savedSentence(report));
  return succeeded(report, std::move(said));
}

WindowMessage restoredMessage(const ChangeReport& report, const FileFinding& file) {
  if (report.error) return failed(report);
  WindowMessage message = succeeded(report, sentence("The copy of {1} was put back.", {file.label}));
  // What was asked for has happened; the warnings only say where the damaged bytes are.
  if (report.notTold.empty()) message.kind = MessageKind::done;
  return message;
}

WindowMessage refusedMessage(const std::vector<ValueFinding>& findings) {
  const auto blocks = std::ranges::count_if(findings, &ValueFinding::blocks);
  const auto first = std::ranges::find_if(findings, &ValueFinding::blocks);
  if (first == findings.end()) return {};
  WindowMessage message{MessageKind::failure,
                        joinedSentences(translated("Nothing was applied."), first->sentence),
                        {MessageAction::showSetting},
                        {}};
  if (blocks > 1) {
    const auto others = static_cast<std::size_t>(blocks - 1);
    addSentence(message.sentence,
                counted("One more value cannot be applied.", "{1} more values cannot be applied.", others));
  }
  return message;
}

WindowMessage damagedMessage(const std::vector<FileFinding>& findings, std::string_view shown) {
  if (findings.empty()) return {};
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  for (const FileFinding& finding : findings) {
    addSentence(message.sentence, asSentence(finding.sentence));
    if (finding.damaged && !finding.copyTime.empty() && message.actions.empty())
      message.actions.push_back(MessageAction::restoreCopy);
  }
  if (findings.front().damaged) addSentence(message.sentence, translated(shown));
  return message;
}

std::string damagedQuestion(const FileFinding& file) {
  std::string question = asSentence(file.sentence) + "\n\n";
  std::string answers;
  if (!file.copyTime.empty()) answers = sentence(window_texts::kRestoreText, {timeInWords(file.copyTime)});
  addSentence(answers, translated(window_texts::kReplaceText));
  return question + answers;
}

WindowMessage foreignMessage(const ForeignChanges& changes) {
  if (!changes.collisions.empty()) {
    return {MessageKind::warning,
            sentence("Somebody else has changed {1}, which you are changing too.",
                     {labelsOf(changes.collisions)}),
            {MessageAction::chooseValues},
            {}};
  }
  if (changes.takenOver.empty()) return {};
  return {MessageKind::note,
          sentence("Somebody else has changed {1}. The new values are shown.", {labelsOf(changes.takenOver)}),
          {},
          changeLines(changes.takenOver, kMostLines)};
}

WindowMessage orderMessage(ServerOrder order, const OrderReport& report) {
  if (!report.ok()) return failed(report.change);
  std::string said = report.note;
  addSentence(said, doneSentence(order));
  return succeeded(report.change, std::move(said));
}

WindowMessage takenUpMessage(const OrderReport& report) {
  if (!report.ok()) return failed(report.change);
  if (!report.note.empty()) return {MessageKind::note, report.note, {}, {}};
  return succeeded(report.change, translated("The server uses what is stored."));
}

WindowMessage inForceMessage(const ServerInForce& server, SettingsFiles& files) {
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  message.sentence = installationError(files).sentence;
  if (!message.isEmpty()) return message;
  for (const ServiceInForce& service : server.services) {
    if (!service.differs()) continue;
    addSentence(message.sentence, inForceSentence(service));
    addSentence(message.sentence, takenSentence(service));
    // A port that somebody else has cannot be taken up.
    if (!service.takenBy && message.actions.empty()) message.actions.push_back(MessageAction::takeUp);
  }
  return message;
}

// Who cancelled knows that nothing went wrong.
WindowMessage unlockDeniedMessage(AuthorizationRefusal why) {
  const bool isCancelled = why == AuthorizationRefusal::dismissed;
  WindowMessage message{isCancelled ? MessageKind::note : MessageKind::failure,
                        translated(window_texts::kUnlockDenied),
                        {MessageAction::retry},
                        {}};
  addSentence(message.sentence, translated(sentenceOf(why)));
  addSentence(message.sentence, translated(window_texts::kNothingChanged));
  return message;
}

std::string detailsOf(const ChangeReport& report) {
  std::string lines;
  for (const std::string& name : report.notSaved) addLine(lines, sentence("Not saved: {1}", {name}));
  for (const CommandOutcome& command : report.commands)
    addLine(lines, outcomeOf(command.launch, command.outcome));
  for (const UnwrittenFile& file : report.effects.unwritten)
    addLine(lines, file.reason.empty() ? sentence("Not written: {1}", {file.path})
                                       : sentence("Not written: {1}: {2}", {file.path, file.reason}));
  for (const std::string& who : report.told) addLine(lines, sentence("Told: {1}", {who}));
  for (const std::string& who : report.notTold) addLine(lines, sentence("Not told: {1}", {who}));
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
  return counted("{1} change is not applied.", "{1} changes are not applied.", changes.size());
}

}  // namespace norvik
