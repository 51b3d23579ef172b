// A computer that the contract suite runs over: its platform interfaces, and what a test needs to set it up
// and to see the effect of a call. One implementation for each adapter; the tests use only this interface.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/services/computer_services.h"
#include "src/server/mac/platform/application.h"
#include "src/server/mac/platform/assertions.h"
#include "src/server/mac/platform/authorization.h"
#include "src/server/mac/platform/files.h"
#include "src/server/mac/platform/host.h"
#include "src/server/mac/platform/processes.h"
#include "src/server/mac/platform/property_lists.h"
#include "src/server/mac/platform/run_loop.h"
#include "src/server/mac/platform/system_log.h"
#include "src/server/mac/platform/system_version.h"

namespace norvik {

struct Interfaces {
  Files& files;
  PropertyListFiles& propertyLists;
  ProcessManager& processManager;
  PosixProcesses& posix;
  AuthorizationService& authorization;
  DistributedNotificationCenter& notifications;
  RunLoop& runLoop;
  Host& host;
  SystemVersion& systemVersion;
  Bundles& bundles;
  SystemLog& log;
  AssertionHandler& assertions;
  ComputerServices services;
};

// What an application's bundle says about it.
struct ApplicationKind {
  std::string type;
  std::string creator;
  std::string identifier;
};

// Paths are the computer's. /tmp and the home folder /Users/user with its Library/Preferences exist, and so
// do /etc/norvik and /Library/Preferences, where only root may write.
class ComputerUnderTest {
 public:
  virtual ~ComputerUnderTest() = default;

  virtual Interfaces interfaces() = 0;

  // Files. The folder of a path exists.
  virtual void putFile(const std::string& path, const std::string& bytes) = 0;
  virtual void makeDirectory(const std::string& path) = 0;
  virtual std::optional<std::string> bytesOf(const std::string& path) = 0;
  virtual bool isDirectory(const std::string& path) = 0;
  virtual std::optional<unsigned> modeOf(const std::string& path) = 0;
  // Something that exists and that nobody can open.
  virtual void putUnreadable(const std::string& path) = 0;
  // A file that can be read but that nobody can open for writing.
  virtual void putReadOnly(const std::string& path) = 0;
  // A file that can be opened for writing but accepts no byte.
  virtual void putFull(const std::string& path) = 0;

  // Processes of the logged-in user. Each has a greater id than the one before.
  virtual int32_t startApplication(const ApplicationKind& kind) = 0;
  virtual int32_t startOutsideOfBundles() = 0;
  virtual void end(int32_t pid) = 0;
  // Whether SIGUSR2 has reached the process; waits for it. Whether no signal has; waits only briefly.
  virtual bool wasSignalled(int32_t pid) = 0;
  virtual bool isUndisturbed(int32_t pid) = 0;

  // Whether an interactive request for rights is granted from now on.
  virtual void setAdministrator(bool isOne) = 0;
  // The tool prints this when it is started with these arguments.
  virtual void putTool(const std::string& path, const std::vector<std::string>& arguments,
                       const std::string& output) = 0;
  // The tool fails with this exit status and these words on its standard error, whatever its arguments.
  virtual void putFailingTool(const std::string& path, int status, const std::string& words) = 0;
  // Whether the computer keeps what a tool writes to its standard error.
  virtual bool keepsWords() const { return true; }
  // The tool is killed by this signal, by somebody else.
  virtual void putKilledTool(const std::string& path, int signal) = 0;
  // The tool takes so long, by the clock that waits follow, and has no effect.
  virtual void putSlowTool(const std::string& path, std::chrono::milliseconds duration) = 0;
  // The tool cannot be started.
  virtual void refuseTool(const std::string& path) = 0;
  // Waits until all tools that were started have taken effect.
  virtual void waitForTools() = 0;

  // Installs an application's bundle with these keys in its Info dictionary.
  virtual void putBundle(const std::string& identifier, const std::map<std::string, std::string>& keys) = 0;

  // Listens for notifications from now on; those received, as "NAME object=OBJECT options=N", "null" for
  // none.
  virtual void listen() = 0;
  virtual std::vector<std::string> posted() = 0;
  // No notification reaches the bus any more.
  virtual void loseBus() = 0;
  // Somebody else holds the change lock from now on, for so long by the clock that waits follow.
  virtual void holdLockElsewhere(std::chrono::milliseconds time) = 0;
  // The lines of the log, as "PRIORITY LINE".
  virtual std::vector<std::string> logged() = 0;
  virtual std::size_t failedAssertions() = 0;
  // The time on the clock that waits follow, from any origin.
  virtual std::chrono::microseconds now() = 0;
};

using ComputerMaker = std::unique_ptr<ComputerUnderTest> (*)();

std::unique_ptr<ComputerUnderTest> makeSimulatedUnderTest();
// With another run loop than its own, where one is given, which is borrowed.
std::unique_ptr<ComputerUnderTest> makeLinuxUnderTest(RunLoop* runLoop = nullptr);

struct Adapter {
  const char* name;
  ComputerMaker make;
};

// Shows in a test's name.
inline void PrintTo(const Adapter& adapter, std::ostream* stream) {
  *stream << adapter.name;
}

// The base of every contract: each test runs on a fresh computer, for each adapter.
class ContractTest : public testing::TestWithParam<Adapter> {
 protected:
  std::unique_ptr<ComputerUnderTest> computer = GetParam().make();
  Interfaces interfaces = computer->interfaces();
};

// The adapters of the test program, one list in each.
const std::vector<Adapter>& adapters();

// All of them, for INSTANTIATE_TEST_SUITE_P.
inline auto everyAdapter() {
  return testing::ValuesIn(adapters());
}

inline std::string adapterName(const testing::TestParamInfo<Adapter>& info) {
  return info.param.name;
}

// The file's bytes through the files interface; nothing if it cannot be opened.
std::optional<std::string> readAll(Files& files, const std::string& path);
// The rest of an open stream.
std::string readRest(Files& files, FileRef file);

}  // namespace norvik
