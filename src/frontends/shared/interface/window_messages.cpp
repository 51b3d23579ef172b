// Sentences from values.
#include "src/frontends/shared/interface/window_messages.h"

#include <algorithm>
#include <cctype>

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

// Several pages have a port, or a colour depth.
std::string labelWithPage(const std::string& label, const std::string& page) {
  return page.empty() ? label : label + " (" + page + ")";
}

// Of changes or collisions.
template <typename Named>
std::string labelsOf(const std::vector<Named>& settings) {
  std::vector<std::string> labels;
  labels.reserve(settings.size());
  for (const Named& setting : settings) labels.push_back(labelWithPage(setting.label, setting.page));
  return listInWords(labels, "and");
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
  return report.saved.empty() ? "" : "Saved the " + listInWords(report.saved, "and") + ".";
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
    addLine(lines, "• " + change.page + ", " + change.label + ": " + change.from + " → " + change.to);
  }
  if (changes.size() > most) addLine(lines, "and " + std::to_string(changes.size() - most) + " more");
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
  std::string sentence;
  if (!report.takenOver.empty()) {
    sentence = "Somebody else had changed " + listInWords(report.takenOver, "and") + "; that was taken over.";
  }
  if (report.saved.empty() && sentence.empty() && report.warnings.empty()) return {};
  addSentence(sentence, savedSentence(report));
  return succeeded(report, std::move(sentence));
}

WindowMessage restoredMessage(const ChangeReport& report, const FileFinding& file) {
  if (report.error) return failed(report);
  WindowMessage message = succeeded(report, "The copy of " + file.label + " was put back.");
  // What was asked for has happened; the warnings only say where the damaged bytes are.
  if (report.notTold.empty()) message.kind = MessageKind::done;
  return message;
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

WindowMessage damagedMessage(const std::vector<FileFinding>& findings, std::string_view shown) {
  if (findings.empty()) return {};
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  for (const FileFinding& finding : findings) {
    addSentence(message.sentence, asSentence(finding.sentence));
    if (finding.damaged && !finding.copyTime.empty() && message.actions.empty())
      message.actions.push_back(MessageAction::restoreCopy);
  }
  if (findings.front().damaged) addSentence(message.sentence, shown);
  return message;
}

std::string damagedQuestion(const FileFinding& file) {
  std::string question = asSentence(file.sentence) + "\n\n";
  if (!file.copyTime.empty())
    question += std::string(window_texts::kRestoreText) + " " + timeInWords(file.copyTime) + ". ";
  return question += window_texts::kReplaceText;
}

WindowMessage foreignMessage(const ForeignChanges& changes) {
  if (!changes.collisions.empty()) {
    return {MessageKind::warning,
            "Somebody else has changed " + labelsOf(changes.collisions) + ", which you are changing too.",
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

// Who cancelled knows that nothing went wrong.
WindowMessage unlockDeniedMessage(AuthorizationRefusal why) {
  const bool isCancelled = why == AuthorizationRefusal::dismissed;
  WindowMessage message{isCancelled ? MessageKind::note : MessageKind::failure,
                        std::string(window_texts::kUnlockDenied),
                        {MessageAction::retry},
                        {}};
  addSentence(message.sentence, sentenceOf(why));
  addSentence(message.sentence, window_texts::kNothingChanged);
  return message;
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
