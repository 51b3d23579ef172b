// The Mac's adapter as the contract suite and its own tests see it: over doubles of the Mac's services, on a
// fresh root, with real processes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "src/adapters/apple/apple_computer.h"
#include "tests/adapters/apple/doubles/doubles.h"
#include "tests/adapters/contract/folder_under_test.h"

namespace norvik {

// Which of the system's calls there are: those that follow the deprecated ones, or the deprecated ones alone.
enum class AppleCalls { present, classic };

class AppleUnderTest : public FolderUnderTest {
 public:
  explicit AppleUnderTest(AppleCalls calls = AppleCalls::present);
  // The test fails where something was not given back, or was used after its end.
  ~AppleUnderTest() override;

  AppleComputer& computer() { return *computer_; }
  SandboxFolder& folder() { return folder_; }
  // Another one in its place, which gives tools whose turn has not come so long when the rights are given up.
  void makeComputer(std::chrono::milliseconds longestEnd);

  Interfaces interfaces() override;
  int32_t startApplication(const ApplicationKind& kind) override;
  void setAdministrator(bool isOne) override { doubles::mac().isAdministrator = isOne; }
  bool keepsWords() const override { return false; }
  void putBundle(const std::string& identifier, const std::map<std::string, std::string>& keys) override;
  void listen() override {}
  std::vector<std::string> posted() override { return doubles::mac().posted; }
  void loseBus() override { doubles::mac().centreRefuses = true; }
  std::vector<std::string> logged() override { return logged_; }
  // An assertion that raises is an error in the log.
  std::size_t failedAssertions() override { return logged_.size(); }

 private:
  AppleComputerOptions options();

  AppleCalls calls_;
  std::vector<std::string> logged_;
  std::unique_ptr<AppleComputer> computer_;
  ClassicProcessManager classic_;
};

std::unique_ptr<ComputerUnderTest> makeAppleUnderTest();
std::unique_ptr<ComputerUnderTest> makeClassicAppleUnderTest();

}  // namespace norvik
