// The child runs the commands and writes the file's new text into a pipe; its exit status tells the rest.
#include "src/frontends/scenario/scenario_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>

#include "src/frontends/scenario/scenario_file.h"
#include "src/frontends/scenario/session.h"
#include "src/frontends/shared/interface/shipped_interface.h"

namespace norvik::scenario {

namespace {

constexpr int kMalformedStatus = 2;
constexpr int kBrokenStatus = 3;

InterfaceDescription interfaceOrThrow() {
  std::string error;
  auto description = shippedInterface(error);
  if (!description) throw std::runtime_error("the interface description: " + error);
  return std::move(*description);
}

void append(std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) text += line + '\n';
}

// The lines that a command prints; whatever is wrong with it is wrong on its line.
std::vector<std::string> outputOf(Session& session, const Command& command) {
  try {
    return session.run(command.words, command.body);
  } catch (const Malformed& malformed) {
    throw MalformedAt(command.line, malformed.what());
  } catch (const UnansweredAlert& unanswered) {
    throw MalformedAt(command.line, unanswered.what());
  }
}

std::string actualText(const std::string& text) {
  const std::vector<Passage> passages = parseScenario(text);
  Session session(interfaceOrThrow());
  std::string actual;
  for (const Passage& passage : passages) {
    append(actual, passage.lines);
    if (passage.command) append(actual, outputOf(session, *passage.command));
  }
  return actual;
}

int runInChild(const std::string& path, const std::string& text, int output) {
  try {
    const std::string actual = actualText(text);
    std::size_t written = 0;
    while (written < actual.size()) {
      const ssize_t count = write(output, actual.data() + written, actual.size() - written);
      if (count < 0) throw std::runtime_error("the output cannot be written");
      written += static_cast<std::size_t>(count);
    }
    return EXIT_SUCCESS;
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
  if (WIFSIGNALED(status)) std::cerr << path << ": crashed: " << strsignal(WTERMSIG(status)) << '\n';
  return RunResult::Outcome::crashed;
}

}  // namespace

RunResult runScenario(const std::string& path) {
  RunResult result;
  const auto text = contentsOf(path);
  if (!text) {
    std::cerr << path << ":1: the file cannot be read\n";
    result.outcome = RunResult::Outcome::malformed;
    return result;
  }
  result.text = *text;
  int ends[2];
  std::cout.flush();  // or the child would write it once more
  const pid_t child = pipe(ends) == 0 ? fork() : -1;
  if (child < 0) throw std::runtime_error("no process can be made to run the scenario in");
  if (child == 0) {
    close(ends[0]);
    // Leaves through exit, so that what checks or measures the program has its say.
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
