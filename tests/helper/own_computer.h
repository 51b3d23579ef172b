// The computer that tests/helper/in_computer makes, with a system bus and polkit.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "tests/support/program.h"

namespace norvik::helper {

inline constexpr uid_t kUser = 4242;   // "norvik-user", nobody special
inline constexpr uid_t kAdmin = 4243;  // "norvik-admin", whose password is "right"

// Whether somebody on the system bus has the name.
bool isOnBus(const char* name);

// The lines that programs send to the system log.
class SystemLog {
 public:
  SystemLog();
  ~SystemLog();
  SystemLog(const SystemLog&) = delete;
  SystemLog& operator=(const SystemLog&) = delete;

  // Every line of the helper so far, without time and process id.
  std::string ofHelper();
  bool says(const std::string& text);

 private:
  void listen();

  int socket_;
  std::mutex mutex_;
  std::string lines_;
  std::thread listener_;  // programs wait where nobody reads their lines
};

// Skips the test where there is no computer of its own.
class OwnComputerTest : public testing::Test {
 protected:
  void SetUp() override;

  void startBus();
  void startPolkit();
  // Gives kUser a session of that state: "active" or "inactive".
  void openSession(const std::string& state);

  // Makes polkit answer this about the action, as an administrator's rule: "YES", "NO", "AUTH_ADMIN_KEEP". It
  // forgets what it kept.
  void setRule(const std::string& action, const std::string& result);

  // Runs helper_caller as the user to its end: its output.
  std::string call(Words words, uid_t user = kUser);
  static Words callerWords(const Words& words);

  std::unique_ptr<SystemLog> log_;
  std::optional<RunningProgram> bus_;
  std::optional<RunningProgram> polkit_;
};

}  // namespace norvik::helper
