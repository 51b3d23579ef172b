// The simulated computer as the contract suite sees it.
#include "src/adapters/simulated/simulated_computer.h"
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {

namespace {

OSType code(const std::string& text) {
  OSType value = 0;
  for (const char character : text) value = value << 8 | static_cast<unsigned char>(character);
  return value;
}

// Takes the quotes away, of texts that need no escapes.
std::string unquoted(std::string line) {
  std::erase(line, '"');
  return line;
}

class SimulatedUnderTest : public ComputerUnderTest {
 public:
  SimulatedUnderTest() {
    computer_.effects.setSink([this](EffectKind kind, const std::string& line) { note(kind, line); });
  }

  Interfaces interfaces() override {
    return {computer_.files,     computer_.propertyLists, computer_.processManager,
            computer_.posix,     computer_.authorization, computer_.notifications,
            computer_.runLoop,   computer_.host,          computer_.systemVersion,
            computer_.bundles,   computer_.log,           computer_.assertions,
            computer_.services()};
  }

  void putFile(const std::string& path, const std::string& bytes) override {
    computer_.fileSystem.put(path, bytes);
  }
  void makeDirectory(const std::string& path) override { computer_.fileSystem.addDirectory(path); }
  std::optional<std::string> bytesOf(const std::string& path) override {
    const auto file = computer_.fileSystem.find(path);
    return file ? std::optional(file->bytes) : std::nullopt;
  }
  bool isDirectory(const std::string& path) override { return computer_.fileSystem.isDirectory(path); }
  std::optional<unsigned> modeOf(const std::string& path) override {
    const auto file = computer_.fileSystem.find(path);
    return file ? std::optional(file->mode) : std::nullopt;
  }
  void putUnreadable(const std::string& path) override {
    putFile(path, "secret");
    computer_.fileFaults.set(FileOperation::openRead, path, true);
    computer_.fileFaults.set(FileOperation::openWrite, path, true);
  }
  void putReadOnly(const std::string& path) override {
    putFile(path, "read only\n");
    computer_.fileFaults.set(FileOperation::openWrite, path, true);
  }
  void putFull(const std::string& path) override {
    putFile(path, "");
    computer_.fileFaults.set(FileOperation::write, path, true);
  }

  int32_t startApplication(const ApplicationKind& kind) override {
    computer_.processes.add({.pid = ++lastPid_,
                             .type = code(kind.type),
                             .creator = code(kind.creator),
                             .bundleIdentifier = kind.identifier});
    return lastPid_;
  }
  int32_t startOutsideOfBundles() override {
    computer_.processes.setState(++lastPid_, ProcessTable::State::alive);
    return lastPid_;
  }
  void end(int32_t pid) override { computer_.processes.setState(pid, ProcessTable::State::dead); }
  bool wasSignalled(int32_t pid) override {
    return std::count(signals_.begin(), signals_.end(), "signal " + std::to_string(pid) + " SIGUSR2") > 0;
  }
  bool isUndisturbed(int32_t pid) override { return !wasSignalled(pid) && computer_.processes.exists(pid); }

  void setAdministrator(bool isOne) override { computer_.authorization.setInteractiveGranted(isOne); }
  void putTool(const std::string& path, const std::vector<std::string>& arguments,
               const std::string& output) override {
    computer_.tools.setOutput(path, arguments, output);
  }
  void putFailingTool(const std::string& path, int status, const std::string& words) override {
    computer_.tools.setFailure(path, std::nullopt, status, words);
  }
  void putKilledTool(const std::string& path, int signal) override {
    computer_.tools.setKilled(path, std::nullopt, signal);
  }
  void putSlowTool(const std::string& path, std::chrono::milliseconds duration) override {
    computer_.tools.setDuration(path, std::nullopt, duration);
  }
  void refuseTool(const std::string& path) override { computer_.authorization.refuse(path, std::nullopt); }
  void waitForTools() override { ASSERT_TRUE(computer_.services().tools.wait(std::chrono::seconds(10))); }

  void putBundle(const std::string& identifier, const std::map<std::string, std::string>& keys) override {
    computer_.bundles.setBundle(identifier, SimulatedBundles::Info(keys.begin(), keys.end()));
  }

  void listen() override {}
  void loseBus() override { computer_.notifications.setDelivers(false); }
  void holdLockElsewhere(std::chrono::milliseconds time) override { computer_.locks.holdElsewhere(time); }
  std::vector<std::string> posted() override { return posted_; }
  std::vector<std::string> logged() override { return logged_; }
  std::size_t failedAssertions() override { return computer_.assertions.failures().size(); }
  std::chrono::microseconds now() override {
    return std::chrono::microseconds(computer_.clock.microseconds());
  }

 private:
  void note(EffectKind kind, const std::string& line) {
    if (kind == EffectKind::signal) signals_.push_back(line);
    if (kind == EffectKind::post) posted_.push_back(unquoted(line.substr(line.find(' ') + 1)));
    if (kind == EffectKind::log) logged_.push_back(unquoted(line.substr(line.find(' ') + 1)));
  }

  SimulatedComputer computer_;
  int32_t lastPid_ = 2000;
  std::vector<std::string> signals_;
  std::vector<std::string> posted_;
  std::vector<std::string> logged_;
};

}  // namespace

std::unique_ptr<ComputerUnderTest> makeSimulatedUnderTest() {
  return std::make_unique<SimulatedUnderTest>();
}

}  // namespace norvik
