// A sandbox of a test's own, and norvikctl run in it as a script or as a person at a terminal runs it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "src/server/mac/platform/property_list.h"

namespace norvik::command {

using Words = std::vector<std::string>;

struct Result {
  int status = -1;
  std::string out;
  std::string err;  // on a terminal all is in `out`
};

// Runs a program to its end, one of the build where the name is no path, with nothing on its standard input
// and its home folder at `home`.
Result runProgram(const std::string& name, const Words& words, const std::filesystem::path& home);

class SandboxRun {
 public:
  // A fresh sandbox, with what runs at log-in, at twenty times the real speed.
  SandboxRun();
  // Ends everything in it and removes it.
  ~SandboxRun();
  SandboxRun(const SandboxRun&) = delete;
  SandboxRun& operator=(const SandboxRun&) = delete;

  // norvikctl, without a terminal.
  Result run(const Words& words) const;
  // norvikctl at a terminal, where a person types this.
  Result runAtTerminal(const Words& words, const std::string& typed) const;
  // Starts norvikctl with its standard output going to a file of that name beside the sandbox.
  pid_t start(const Words& words, const std::string& outputName) const;
  nlohmann::json json(Words words) const;

  std::filesystem::path folder() const { return folder_ / "box"; }
  std::filesystem::path beside(const std::string& name) const { return folder_ / name; }
  std::string read(const std::string& path) const;
  void write(const std::string& path, const std::string& content) const;
  // A program in the sandbox's place of another, that does what the shell commands say.
  void replaceProgram(const std::string& path, const std::string& commands) const;
  PropertyList list(const std::string& path) const;
  // Every file with its content, but for logs and what processes keep for themselves.
  std::map<std::string, std::string> files() const;
  bool log(const std::string& name, const std::string& text) const;

 private:
  Words commandLine(const Words& words) const;

  std::filesystem::path folder_;
};

inline constexpr const char* kServerFile = "/etc/norvik/svr.cfg";
inline constexpr const char* kAgentFile = "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
inline constexpr const char* kMenuAgentFile = "/Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";

// A port that nothing listens on.
int freePort();
// Listens on a port for as long as it lives.
class Listener {
 public:
  Listener();
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  int port() const { return port_; }

 private:
  int socket_;
  int port_;
};
bool connects(int port);

// Looks again and again until the condition holds; false when it never did.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(5));

// How often `part` stands in the text.
int countOf(const std::string& text, const std::string& part);

}  // namespace norvik::command
