// A sandbox of a test's own, with the programs that run in it.
#pragma once

#include <filesystem>
#include <string>

#include "src/server/mac/platform/property_list.h"
#include "tests/support/program.h"
#include "tests/support/temporary_folder.h"

namespace norvik {

// Paths are the sandbox's and begin with a slash.
class Sandbox {
 public:
  // Starts a fresh sandbox, with what runs at log-in, at so many times the real speed. Throws
  // std::runtime_error where it does not start.
  explicit Sandbox(const std::string& speed = "50");
  // Stops it and removes it. The test fails where it does not stop.
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;

  // The sandbox's folder on the disk, and where one of its files is.
  const std::filesystem::path& root() const { return root_; }
  std::filesystem::path onDisk(const std::string& path) const { return root_ / path.substr(1); }
  // A file of that name outside the sandbox that is removed with it; the folder of such files where the name
  // is empty.
  std::filesystem::path beside(const std::string& name) const { return folder_.path() / name; }

  // Runs norvik-sandbox with this command for this sandbox, and more words after the folder. The errors are
  // part of the output.
  ProgramResult control(const std::string& command, const Words& more = {}) const;
  // Runs one of the sandbox's programs, in the same way.
  ProgramResult tool(const std::string& path, const Words& arguments = {}) const;

  // Empty where the file cannot be read.
  std::string read(const std::string& path) const;
  void write(const std::string& path, const std::string& bytes) const;
  // The property list in a file; a string where there is none.
  PropertyList list(const std::string& path) const;
  // Replaces a program of the sandbox by one of shell commands.
  void replaceProgram(const std::string& path, const std::string& commands) const;
  // Writes the server's configuration as below.
  void setPorts(int nvk, int rdp) const;

  // What the program of that name has logged: "agent", "menua", "reboot", "serverd", "service" or "tools".
  std::string log(const std::string& name) const;
  // Whether it logs this text; waits for it.
  bool logSays(const std::string& name, const std::string& text) const;

 private:
  TemporaryFolder folder_;
  std::filesystem::path root_;
};

// A server configuration for one user with these ports of the services; 0 disables a service.
std::string serverConfiguration(int nvk, int rdp);

}  // namespace norvik
