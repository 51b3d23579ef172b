// The processes, the daemon, the authorization service and the tools of the simulated computer.
#include <chrono>

#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/known_words.h"
#include "src/server/mac/text/escape.h"

namespace norvik::scenario {

namespace {

int32_t pidOf(Arguments& arguments) {
  return arguments.integer<int32_t>(0);
}

void ownPid(Session& session, Arguments& arguments) {
  session.computer.processes.setOwnPid(pidOf(arguments));
}

void daemon(Session& session, Arguments& arguments) {
  const bool isStopped = arguments.takes("stopped");
  session.computer.service.setDaemon(isStopped ? std::nullopt : std::optional(pidOf(arguments)));
}

void wait(Session& session, Arguments& arguments) {
  const std::chrono::seconds time(arguments.integer<int32_t>(0));
  SimulatedClock& clock = session.computer.clock;
  clock.sleepUntil(clock.microseconds() + std::chrono::microseconds(time).count());
}

void alive(Session& session, Arguments& arguments) {
  session.computer.processes.setState(pidOf(arguments), ProcessTable::State::alive);
}

void dead(Session& session, Arguments& arguments) {
  session.computer.processes.setState(pidOf(arguments), ProcessTable::State::dead);
}

void killError(Session& session, Arguments& arguments) {
  const int32_t pid = pidOf(arguments);
  if (!arguments.takes("EPERM"))
    throw Malformed("expected EPERM; use dead for a process that does not exist");
  session.computer.processes.setState(pid, ProcessTable::State::notPermitted);
}

// `after N` or `never`.
std::optional<int64_t> delayOf(Arguments& arguments) {
  if (arguments.takes("never")) return std::nullopt;
  if (!arguments.takes("after")) throw Malformed("expected after or never");
  return arguments.integer(0);
}

void startDelay(Session& session, Arguments& arguments) {
  session.computer.service.setStartDelay(delayOf(arguments));
}

void stopDelay(Session& session, Arguments& arguments) {
  session.computer.service.setStopDelay(delayOf(arguments));
}

void startedPid(Session& session, Arguments& arguments) {
  session.computer.service.setStartedPid(pidOf(arguments));
}

constexpr CommandRow kServiceSettings[] = {{"start", startDelay}, {"stop", stopDelay}, {"pid", startedPid}};

void service(Session& session, Arguments& arguments) {
  rowNamed<CommandRow>("service setting", arguments.word(), kServiceSettings).run(session, arguments);
}

OSType codeOf(Arguments& arguments) {
  const std::string text = arguments.text();
  if (text.size() != 4) throw Malformed("a type or creator has four characters, found " + quoted(text));
  const char characters[5] = {text[0], text[1], text[2], text[3], '\0'};
  return fourCharCode(characters);
}

struct ProcessFault {
  std::string_view name;
  bool ListedProcess::*fails;
};

constexpr ProcessFault kProcessFaults[] = {
    {"no-information", &ListedProcess::failsInformation},
    {"no-dictionary", &ListedProcess::failsDictionary},
    {"no-pid", &ListedProcess::failsPid},
};

void process(Session& session, Arguments& arguments) {
  ListedProcess listed;
  listed.pid = pidOf(arguments);
  listed.type = codeOf(arguments);
  listed.creator = codeOf(arguments);
  listed.bundleIdentifier = arguments.textOr("none");
  while (!arguments.atEnd()) {
    listed.*rowNamed<ProcessFault>("process fault", arguments.word(), kProcessFaults).fails = true;
  }
  session.computer.processes.add(listed);
}

struct Request {
  std::string_view name;
  void (SimulatedAuthorization::*set)(bool granted);
};

constexpr Request kRequests[] = {
    {"silent", &SimulatedAuthorization::setSilentGranted},
    {"interactive", &SimulatedAuthorization::setInteractiveGranted},
    {"create", &SimulatedAuthorization::setCreateGranted},
};

bool grantedOf(Arguments& arguments) {
  if (arguments.takes("granted")) return true;
  if (arguments.takes("refused")) return false;
  throw Malformed("expected granted or refused");
}

void authorization(Session& session, Arguments& arguments) {
  if (arguments.takes("holds")) {
    const std::chrono::seconds time(arguments.integer<int32_t>(0));
    return session.computer.authorization.setPasswordHolds(time);
  }
  const Request& request = rowNamed<Request>("request", arguments.word(), kRequests);
  (session.computer.authorization.*request.set)(grantedOf(arguments));
}

void refuse(Session& session, Arguments& arguments) {
  const std::string tool = arguments.text();
  std::optional<std::string> firstArgument;
  if (!arguments.atEnd()) firstArgument = arguments.text();
  session.computer.authorization.refuse(tool, firstArgument);
}

void accept(Session& session, Arguments& arguments) {
  session.computer.authorization.accept(arguments.text());
}

void prints(Session& session, Arguments& arguments) {
  const std::string tool = arguments.text();
  const Tools::Arguments words = arguments.texts();
  session.computer.tools.setOutput(tool, words, arguments.body());
}

void withholdPipe(Session& session, Arguments& arguments) {
  session.computer.authorization.withholdPipe(arguments.text());
}

void kernel(Session& session, Arguments& arguments) {
  const std::string name = arguments.wordOrText();
  std::optional<std::string> value;
  if (!arguments.takes("none")) value = arguments.wordOrText();
  session.computer.tools.setKernelValue(name, value);
}

void timerCreation(Session& session, Arguments& arguments) {
  session.computer.runLoop.setTimerCreationGranted(grantedOf(arguments));
}

constexpr CommandRow kProcessCommands[] = {
    {"pid", ownPid},
    {"daemon", daemon},
    {"alive", alive},
    {"dead", dead},
    {"kill-error", killError},
    {"service", service},
    {"process", process},
    {"authorization", authorization},
    {"wait", wait},
    {"refuse", refuse},
    {"accept", accept},
    {"prints", prints},
    {"no-pipe", withholdPipe},
    {"kernel", kernel},
    {"timer-creation", timerCreation},
};

}  // namespace

std::span<const CommandRow> processCommands() {
  return kProcessCommands;
}

}  // namespace norvik::scenario
