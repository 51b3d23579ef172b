// norvikctl, run in a sandbox as a script or as a person at a terminal runs it.
#pragma once

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/frontends/command/json_outputs.h"
#include "tests/support/failing_calls.h"
#include "tests/support/sandbox.h"
#include "tests/support/tcp_port.h"

namespace norvik::command {

using Listener = TcpListener;

struct Result {
  int status = -1;
  std::string out;
  std::string err;  // empty on a terminal, where everything is in `out`
};

// Runs a program to its end, one of the build where the name is no path, with nothing on its standard input
// and its home folder at `home`. The status is -1 where a signal ended it.
Result runProgram(const std::string& name, const Words& words, const std::filesystem::path& home);

class SandboxRun {
 public:
  // Starts a sandbox at twenty times the real speed.
  SandboxRun() = default;
  // The test fails where something that was printed as JSON is not as the documents say.
  ~SandboxRun() { outputs_.check(); }
  SandboxRun(const SandboxRun&) = delete;
  SandboxRun& operator=(const SandboxRun&) = delete;

  // Runs norvikctl without a terminal. What it prints with --json is kept for the check at the end.
  Result run(const Words& words) const;
  // The same, where file operations of one program fail as the test chooses.
  Result runWith(const Fault& fault, const Words& words) const;
  // Runs norvikctl at a terminal, where a person types this.
  Result runAtTerminal(const Words& words, const std::string& typed) const;
  // Starts norvikctl with its standard output going to a file of that name beside the sandbox.
  RunningProgram start(const Words& words, const std::string& outputName) const;
  // Runs norvikctl with --json and parses its output; a discarded value where it is not JSON.
  nlohmann::json json(Words words) const;

  // For the programs that are run, beside the home folder: {"LANGUAGE", "de"}.
  std::map<std::string, std::string> environment;

  // The sandbox's operations, as in Sandbox.
  std::filesystem::path folder() const { return box_.root(); }
  std::filesystem::path beside(const std::string& name) const { return box_.beside(name); }
  std::string read(const std::string& path) const { return box_.read(path); }
  void write(const std::string& path, const std::string& content) const { box_.write(path, content); }
  void replaceProgram(const std::string& path, const std::string& commands) const {
    box_.replaceProgram(path, commands);
  }
  PropertyList list(const std::string& path) const { return box_.list(path); }

  // Whether every property list of settings that is there can be read, and the server's holds what somebody
  // else keeps in it.
  bool areFilesWhole() const;
  // Every file with its content, but for logs and what processes keep for themselves.
  std::map<std::string, std::string> files() const;
  // Whether the log file of that name contains the text.
  bool log(const std::string& name, const std::string& text) const;

 private:
  Words commandLine(const Words& words) const;
  ProgramOptions inHome() const;

  Sandbox box_{"20"};
  mutable JsonOutputs outputs_{beside("json")};
};

inline constexpr const char* kServerFile = "/etc/norvik/svr.cfg";
inline constexpr const char* kAgentFile = "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
inline constexpr const char* kMenuAgentFile = "/Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";

// How many times `part` occurs in the text.
int countOf(const std::string& text, const std::string& part);

}  // namespace norvik::command
