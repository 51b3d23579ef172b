// The Linux adapter as the contract suite sees it: over a fresh root, with real processes.
#include <filesystem>

#include "src/adapters/linux/linux_computer.h"
#include "tests/adapters/contract/folder_under_test.h"
#include "tests/support/bus_listener.h"

namespace norvik {

namespace fs = std::filesystem;

namespace {

class LinuxUnderTest : public FolderUnderTest {
 public:
  explicit LinuxUnderTest(RunLoop* runLoop)
      : computer_(options()), runLoop_(runLoop != nullptr ? *runLoop : computer_.runLoop) {}

  Interfaces interfaces() override {
    return {computer_.files,
            computer_.propertyLists,
            computer_.processManager,
            computer_.posix,
            computer_.authorization,
            computer_.notifications,
            runLoop_,
            computer_.host,
            computer_.systemVersion,
            computer_.bundles,
            computer_.log,
            computer_.assertions,
            computer_.services()};
  }

  void setAdministrator(bool isOne) override { isAdministrator_ = isOne; }

  void putBundle(const std::string& identifier, const std::map<std::string, std::string>& keys) override {
    PropertyList::Dictionary info{{"CFBundleIdentifier", PropertyList(identifier)}};
    for (const auto& [key, value] : keys) info.insert_or_assign(key, PropertyList(value));
    const std::string contents = "/Applications/" + identifier + ".app/Contents";
    makeDirectory(contents);
    ASSERT_TRUE(computer_.propertyLists.writeToFile(PropertyList(std::move(info)), contents + "/Info.plist"));
  }

  void listen() override {
    folder_.startBus();
    listener_ = std::make_unique<BusListener>(folder_.busAddress());
  }
  // Nobody finds it any more.
  void loseBus() override { fs::remove(folder_.onDisk("/bus")); }
  std::vector<std::string> posted() override { return listener_->received(); }
  std::vector<std::string> logged() override { return logged_; }
  // An assertion that failed is an error in the log.
  std::size_t failedAssertions() override { return logged_.size(); }

 private:
  LinuxComputerOptions options() {
    LinuxComputerOptions options;
    options.root = folder_.path();
    options.home = "/Users/user";
    options.busAddress = folder_.busAddress();
    options.bundleFolders = {"/Applications"};
    options.stateFolder = "/.norvik/state";
    options.syslogIdent = "norvik-contract-tests";
    options.authorization = [this] { return isAdministrator_; };
    options.logObserver = [this](int priority, std::string_view line) {
      logged_.push_back(std::to_string(priority) + " " + std::string(line));
    };
    return options;
  }

  bool isAdministrator_ = true;
  std::vector<std::string> logged_;
  std::unique_ptr<BusListener> listener_;
  LinuxComputer computer_;
  RunLoop& runLoop_;
};

}  // namespace

std::unique_ptr<ComputerUnderTest> makeLinuxUnderTest(RunLoop* runLoop) {
  return std::make_unique<LinuxUnderTest>(runLoop);
}

}  // namespace norvik
