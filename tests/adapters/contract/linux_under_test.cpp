// The Linux adapter as the contract suite sees it: over a fresh root, with real processes.
#include <sys/stat.h>

#include <condition_variable>
#include <csignal>
#include <filesystem>
#include <mutex>
#include <stop_token>
#include <thread>

#include "src/adapters/linux/linux_computer.h"
#include "src/server/mac/text/join.h"
#include "tests/adapters/contract/computer_under_test.h"
#include "tests/support/bus_listener.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {

namespace fs = std::filesystem;

namespace {

// A file of the kernel's that may be read and not written, whatever the rights of the reader.
constexpr const char* kReadOnlyFile = "/sys/devices/system/cpu/possible";

// A front end that holds the lock for a time, or until it is gone.
class Elsewhere {
 public:
  Elsewhere(const LinuxComputerOptions& options, std::chrono::milliseconds time)
      : computer_(options),
        lock_(computer_.services().locks.lock(kPatience)),
        holder_([this, time](const std::stop_token& stop) { holdFor(time, stop); }) {}

 private:
  void holdFor(std::chrono::milliseconds time, const std::stop_token& stop) {
    std::mutex mutex;
    std::unique_lock waiting(mutex);
    std::condition_variable_any ended;
    ended.wait_for(waiting, stop, time, [] { return false; });
    lock_.reset();
  }

  LinuxComputer computer_;
  std::unique_ptr<HeldLock> lock_;
  std::jthread holder_;
};

class LinuxUnderTest : public ComputerUnderTest {
 public:
  explicit LinuxUnderTest(RunLoop* runLoop)
      : computer_(options()), runLoop_(runLoop != nullptr ? *runLoop : computer_.runLoop) {
    folder_.putScript("/bin/mv", "exec /bin/mv \"$1\" \"$NORVIK_ROOT$2\" \"$NORVIK_ROOT$3\"");
    folder_.putScript("/bin/chmod", "exec /bin/chmod \"$1\" \"$NORVIK_ROOT$2\"");
  }

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

  void putFile(const std::string& path, const std::string& bytes) override { folder_.put(path, bytes); }
  void makeDirectory(const std::string& path) override { fs::create_directories(folder_.onDisk(path)); }
  std::optional<std::string> bytesOf(const std::string& path) override { return folder_.read(path); }
  bool isDirectory(const std::string& path) override { return fs::is_directory(folder_.onDisk(path)); }
  std::optional<unsigned> modeOf(const std::string& path) override {
    struct stat status {};
    if (::stat(folder_.onDisk(path).c_str(), &status) != 0) return std::nullopt;
    return status.st_mode & 07777U;
  }
  // The rights of a file do not stop the super-user, who may well run the tests; a link to itself does.
  void putUnreadable(const std::string& path) override { link(folder_.onDisk(path), path); }
  void putReadOnly(const std::string& path) override { link(kReadOnlyFile, path); }
  void putFull(const std::string& path) override { link("/dev/full", path); }

  int32_t startApplication(const ApplicationKind& kind) override {
    const std::string bundle = "/Applications/" + std::to_string(++applications_) + ".app";
    return folder_.start(
        {folder_.onDisk(folder_.putApplication(bundle, kind.type + kind.creator, kind.identifier)), "600"});
  }
  int32_t startOutsideOfBundles() override { return folder_.start({"/bin/sleep", "600"}); }
  void end(int32_t pid) override { folder_.end(pid); }
  // The programs do not expect the signal, so that it ends them.
  bool wasSignalled(int32_t pid) override { return folder_.endedBy(pid) == SIGUSR2; }
  bool isUndisturbed(int32_t pid) override { return folder_.stillRuns(pid); }

  void setAdministrator(bool isOne) override { isAdministrator_ = isOne; }
  void putTool(const std::string& path, const std::vector<std::string>& arguments,
               const std::string& output) override {
    folder_.put(path + ".output", output);
    folder_.putScript(path, "[ \"$*\" = '" + joined(arguments, " ") + "' ] && exec cat \"$NORVIK_ROOT" +
                                path + ".output\"");
  }
  void putFailingTool(const std::string& path, int status, const std::string& words) override {
    folder_.putScript(path, "echo '" + words + "' >&2; exit " + std::to_string(status));
  }
  void putKilledTool(const std::string& path, int signal) override {
    folder_.putScript(path, "kill -" + std::to_string(signal) + " $$");
  }
  void putSlowTool(const std::string& path, std::chrono::milliseconds duration) override {
    folder_.putScript(path, "exec sleep " + std::to_string(std::chrono::duration<double>(duration).count()));
  }
  void refuseTool(const std::string& path) override { fs::remove(folder_.onDisk(path)); }
  void waitForTools() override { ASSERT_TRUE(computer_.waitForTools(std::chrono::seconds(10))); }

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
  // By another computer on the same root, as another front end has it.
  void holdLockElsewhere(std::chrono::milliseconds time) override {
    elsewhere_ = std::make_unique<Elsewhere>(options(), time);
  }
  std::vector<std::string> posted() override { return listener_->received(); }
  std::vector<std::string> logged() override { return logged_; }
  // An assertion that failed is an error in the log.
  std::size_t failedAssertions() override { return logged_.size(); }
  std::chrono::microseconds now() override {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }

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

  void link(const std::string& target, const std::string& path) {
    fs::remove(folder_.onDisk(path));
    fs::create_symlink(target, folder_.onDisk(path));
  }

  SandboxFolder folder_;
  bool isAdministrator_ = true;
  int applications_ = 0;
  std::vector<std::string> logged_;
  std::unique_ptr<BusListener> listener_;
  LinuxComputer computer_;
  RunLoop& runLoop_;
  std::unique_ptr<Elsewhere> elsewhere_;
};

}  // namespace

std::unique_ptr<ComputerUnderTest> makeLinuxUnderTest(RunLoop* runLoop) {
  return std::make_unique<LinuxUnderTest>(runLoop);
}

}  // namespace norvik
