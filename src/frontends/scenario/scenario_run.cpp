// The child runs the commands and writes the file's new text into a pipe; its exit status says how it went.
#include "src/frontends/scenario/scenario_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include "src/frontends/scenario/scenario_file.h"
#include "src/frontends/scenario/session.h"
#include "src/frontends/shared/interface/shipped_interface.h"

namespace norvik::scenario {

namespace {

constexpr int kMalformedStatus = 2;
constexpr int kBrokenStatus = 3;
constexpr int kLeftSomethingStatus = 4;

InterfaceDescription interfaceOrThrow() {
  std::string error;
  auto description = shippedInterface(error);
  if (!description) throw std::runtime_error("the interface description: " + error);
  return std::move(*description);
}

void append(std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) text += line + '\n';
}

// The lines that a command prints; an error gets the command's line.
std::vector<std::string> outputOf(Session& session, const Command& command) {
  try {
    return session.run(command.words, command.body);
  } catch (const Malformed& malformed) {
    throw MalformedAt(command.line, malformed.what());
  } catch (const UnansweredAlert& unanswered) {
    throw MalformedAt(command.line, unanswered.what());
  }
}

// Names what a scenario leaves behind, once each, on standard error.
class Leftovers {
 public:
  explicit Leftovers(const std::string& path) : path_(path) {}

  // Looks once more; `place` is where the scenario is.
  void look(const Session& session, const std::string& place) {
    std::vector<std::string> now = session.leftBehind();
    std::sort(now.begin(), now.end());
    std::vector<std::string> added;
    std::set_difference(now.begin(), now.end(), known_.begin(), known_.end(), std::back_inserter(added));
    for (const std::string& name : added) std::cerr << path_ << place << ": left behind: " << name << '\n';
    hasAny_ = hasAny_ || !added.empty();
    known_ = std::move(now);
  }
  bool hasAny() const { return hasAny_; }

 private:
  const std::string& path_;
  std::vector<std::string> known_;  // sorted
  bool hasAny_ = false;
};

// The file's text with the actual output.
std::string actualText(const std::string& text, Leftovers& leftovers) {
  const std::vector<Passage> passages = parseScenario(text);
  Session session(interfaceOrThrow());
  std::string actual;
  for (const Passage& passage : passages) {
    append(actual, passage.lines);
    if (!passage.command) continue;
    append(actual, outputOf(session, *passage.command));
    leftovers.look(session, ":" + std::to_string(passage.command->line));
  }
  // Until now a pane could keep its timer and its authorization, but they must not outlive it.
  session.deallocatePanes();
  leftovers.look(session, ": at the end");
  return actual;
}

void writeAll(int output, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(output, text.data(), text.size());
    if (count < 0) throw std::runtime_error("cannot write the output");
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

int runInChild(const std::string& path, const std::string& text, int output) {
  try {
    Leftovers leftovers(path);
    writeAll(output, actualText(text, leftovers));
    return leftovers.hasAny() ? kLeftSomethingStatus : EXIT_SUCCESS;
  } catch (const MalformedAt& malformed) {
    std::cerr << path << ':' << malformed.line << ": " << malformed.what() << '\n';
    return kMalformedStatus;
  } catch (const std::exception& broken) {
    std::cerr << path << ": " << broken.what() << '\n';
    return kBrokenStatus;
  }
}

std::string readAll(int input) {
  std::string text;
  char bytes[4096];
  for (ssize_t count; (count = read(input, bytes, sizeof bytes)) != 0;) {
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) break;
    text.append(bytes, static_cast<std::size_t>(count));
  }
  return text;
}

std::optional<std::string> contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text;
  char bytes[4096];
  while (file.read(bytes, sizeof bytes) || file.gcount() > 0) {
    text.append(bytes, static_cast<std::size_t>(file.gcount()));
  }
  // A folder can be opened; reading it fails.
  if (!file.is_open() || file.bad()) return std::nullopt;
  return text;
}

RunResult::Outcome outcomeOf(const std::string& path, int status) {
  if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) return RunResult::Outcome::finished;
  if (WIFEXITED(status) && WEXITSTATUS(status) == kMalformedStatus) return RunResult::Outcome::malformed;
  if (WIFEXITED(status) && WEXITSTATUS(status) == kLeftSomethingStatus)
    return RunResult::Outcome::leftSomething;
  if (WIFSIGNALED(status)) std::cerr << path << ": crashed: " << strsignal(WTERMSIG(status)) << '\n';
  return RunResult::Outcome::crashed;
}

}  // namespace

RunResult runScenario(const std::string& path) {
  RunResult result;
  const auto text = contentsOf(path);
  if (!text) {
    std::cerr << path << ":1: cannot read the file\n";
    result.outcome = RunResult::Outcome::malformed;
    return result;
  }
  result.text = *text;
  int ends[2];
  std::cout.flush();  // or the child would write it again
  const pid_t child = pipe(ends) == 0 ? fork() : -1;
  if (child < 0) throw std::runtime_error("cannot make a process for the scenario");
  if (child == 0) {
    close(ends[0]);
    // Ends through exit, so that sanitizers and coverage can report.
    std::exit(runInChild(path, *text, ends[1]));
  }
  close(ends[1]);
  result.actual = readAll(ends[0]);
  close(ends[0]);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  result.outcome = outcomeOf(path, status);
  return result;
}

}  // namespace norvik::scenario
