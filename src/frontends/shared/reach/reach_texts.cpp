// One line for each answer.
#include "src/frontends/shared/reach/reach_texts.h"

#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"

namespace norvik {

namespace {

struct VerdictRow {
  std::string_view word;
  MessageKind kind;
};

// In the order of the verdicts.
constexpr VerdictRow kVerdicts[] = {{english("Yes"), MessageKind::done},
                                    {english("No"), MessageKind::failure},
                                    {english("Not known"), MessageKind::note},
                                    {english("Not looked at"), MessageKind::progress}};

const VerdictRow& rowOf(Verdict verdict) {
  return kVerdicts[static_cast<std::size_t>(verdict)];
}

// Empty where the state says it all.
std::string wordsAbout(const ServiceReach& service) {
  switch (service.reach) {
    case Reach::reachable:
      return service.title.substr(0, service.title.find(' ')) + " " + service.address;
    case Reach::notReachable:
      return service.failed()->rung > Rung::running
                 ? sentence("{1} cannot connect", {translated(service.title)})
                 : "";
    case Reach::notKnown:
    case Reach::switchedOff:
      return "";
  }
  return "";
}

}  // namespace

std::string reachLine(const std::string& state, const std::vector<ServiceReach>& services) {
  std::string line = paneText(state);
  for (const ServiceReach& service : services) {
    const std::string words = wordsAbout(service);
    if (!words.empty()) line += " · " + words;
  }
  return line;
}

std::string wordOf(Verdict verdict) {
  return translated(rowOf(verdict).word);
}

MessageKind kindOf(Verdict verdict) {
  return rowOf(verdict).kind;
}

std::string answerOf(const RungResult& rung) {
  return rung.sentence.empty() ? translated(rungs()[static_cast<std::size_t>(rung.rung)].title)
                               : rung.sentence;
}

}  // namespace norvik
