// A new computer for each test, and a look at what is left of it.
#include "tests/adapters/apple/apple_under_test.h"

namespace norvik {

AppleUnderTest::AppleUnderTest(AppleCalls calls) : calls_(calls) {
  doubles::reset();
  doubles::Mac& mac = doubles::mac();
  mac.root = folder_.path();
  mac.hasProcessInfoVersion = calls == AppleCalls::present;
  mac.bundles["com.veltrane.norvik.prefpane"].resources = NORVIK_RESOURCES;
  computer_ = std::make_unique<AppleComputer>(options());
}

AppleUnderTest::~AppleUnderTest() {
  computer_.reset();
  EXPECT_EQ(doubles::faults(), std::vector<std::string>());
}

void AppleUnderTest::makeComputer(std::chrono::milliseconds longestEnd) {
  AppleComputerOptions changed = options();
  changed.longestEnd = longestEnd;
  computer_.reset();
  computer_ = std::make_unique<AppleComputer>(changed);
}

AppleComputerOptions AppleUnderTest::options() {
  AppleComputerOptions options;
  options.root = folder_.path();
  options.home = "/Users/user";
  options.stateFolder = "/.norvik/state";
  options.logObserver = [this](int priority, std::string_view line) {
    logged_.push_back(std::to_string(priority) + " " + std::string(line));
  };
  return options;
}

Interfaces AppleUnderTest::interfaces() {
  const Platform platform = computer_->platform();
  ProcessManager& processManager =
      calls_ == AppleCalls::classic ? static_cast<ProcessManager&>(classic_) : platform.processManager;
  return {platform.files,         platform.propertyLists, processManager,   platform.posix,
          platform.authorization, platform.notifications, platform.runLoop, platform.host,
          platform.systemVersion, platform.bundles,       platform.log,     platform.assertions,
          computer_->services()};
}

int32_t AppleUnderTest::startApplication(const ApplicationKind& kind) {
  const int32_t pid = FolderUnderTest::startApplication(kind);
  const PropertyList info(PropertyList::Dictionary{{"CFBundleIdentifier", PropertyList(kind.identifier)},
                                                   {"CFBundlePackageType", PropertyList(kind.type)},
                                                   {"CFBundleSignature", PropertyList(kind.creator)}});
  // Where this toolkit looks for it.
  makeDirectory(lastBundle() + "/Resources");
  EXPECT_TRUE(computer_->propertyLists.writeToFile(info, lastBundle() + "/Resources/Info-gnustep.plist"));
  doubles::mac().applications.push_back(
      {pid, kind.type, kind.creator, kind.identifier, folder_.onDisk(lastBundle())});
  return pid;
}

void AppleUnderTest::putBundle(const std::string& identifier,
                               const std::map<std::string, std::string>& keys) {
  doubles::mac().bundles[identifier].info = keys;
}

std::unique_ptr<ComputerUnderTest> makeAppleUnderTest() {
  return std::make_unique<AppleUnderTest>(AppleCalls::present);
}

std::unique_ptr<ComputerUnderTest> makeClassicAppleUnderTest() {
  return std::make_unique<AppleUnderTest>(AppleCalls::classic);
}

const std::vector<Adapter>& adapters() {
  static const std::vector<Adapter> all{{"apple", makeAppleUnderTest},
                                        {"appleClassic", makeClassicAppleUnderTest}};
  return all;
}

}  // namespace norvik
