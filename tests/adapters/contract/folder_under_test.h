// What the computers have in common that keep their files on this one's disk and run real processes: a fresh
// root below which everything is.
#pragma once

#include <memory>

#include "tests/adapters/contract/computer_under_test.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {

class FolderUnderTest : public ComputerUnderTest {
 public:
  FolderUnderTest();
  ~FolderUnderTest() override;

  void putFile(const std::string& path, const std::string& bytes) override;
  void makeDirectory(const std::string& path) override;
  std::optional<std::string> bytesOf(const std::string& path) override;
  bool isDirectory(const std::string& path) override;
  std::optional<unsigned> modeOf(const std::string& path) override;
  void putUnreadable(const std::string& path) override;
  void putReadOnly(const std::string& path) override;
  void putFull(const std::string& path) override;

  int32_t startApplication(const ApplicationKind& kind) override;
  int32_t startOutsideOfBundles() override;
  void end(int32_t pid) override;
  bool wasSignalled(int32_t pid) override;
  bool isUndisturbed(int32_t pid) override;

  void putTool(const std::string& path, const std::vector<std::string>& arguments,
               const std::string& output) override;
  void putFailingTool(const std::string& path, int status, const std::string& words) override;
  void putKilledTool(const std::string& path, int signal) override;
  void putSlowTool(const std::string& path, std::chrono::milliseconds duration) override;
  void refuseTool(const std::string& path) override;
  void waitForTools() override;

  // By another front end on the same root.
  void holdLockElsewhere(std::chrono::milliseconds time) override;
  std::chrono::microseconds now() override;

 protected:
  // Where the bundle is of the application that was started last.
  std::string lastBundle() const;

  SandboxFolder folder_;

 private:
  class Elsewhere;

  void link(const std::string& target, const std::string& path);

  int applications_ = 0;
  std::unique_ptr<Elsewhere> elsewhere_;
};

}  // namespace norvik
