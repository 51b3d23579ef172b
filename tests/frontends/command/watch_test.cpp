// norvikctl watch: a line for each change, until it is interrupted.
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

// A running watch; ended with the object where it still runs.
class Watch {
 public:
  Watch(const SandboxRun& box, const Words& words) : box_(box), program_(box.start(words, "watch")) {}

  std::string text() const { return contentOf(box_.beside("watch")); }
  bool shows(const std::string& text_part) const {
    return eventually([&] { return text().find(text_part) != std::string::npos; });
  }
  // Its exit status, or -1 where the signal ended it.
  int end(int signal) {
    program_.send(signal);
    return program_.status();
  }

 private:
  const SandboxRun& box_;
  RunningProgram program_;
};

TEST(WatchTest, ShowsStateAddressAndLock) {
  const SandboxRun box;
  const std::string first = std::to_string(freePort()), second = std::to_string(freePort());
  ASSERT_EQ(box.run({"set", "nvk.port=" + first, "rdp.port=" + std::to_string(freePort())}).status, 0);
  Watch watch(box, {"watch"});
  ASSERT_TRUE(watch.shows("Lock            Closed\n"));
  ASSERT_EQ(box.run({"start"}).status, 0);
  EXPECT_TRUE(watch.shows("Server state    Started, process "));
  EXPECT_TRUE(watch.shows(":" + first + "\n"));
  ASSERT_EQ(box.run({"set", "nvk.port=" + second}).status, 0);
  EXPECT_TRUE(watch.shows(":" + second + "\n"));
  ASSERT_EQ(box.run({"stop"}).status, 0);
  EXPECT_TRUE(eventually([&] { return countOf(watch.text(), "Server state    Stopped\n") == 2; }));
  EXPECT_EQ(watch.end(SIGINT), 0);
  // What does not change is shown once.
  EXPECT_EQ(countOf(watch.text(), "Lock "), 1);
}

TEST(WatchTest, OneObjectPerLineAsJson) {
  const SandboxRun box;
  Watch watch(box, {"watch", "--json"});
  ASSERT_TRUE(watch.shows("\"lock\""));
  EXPECT_EQ(watch.end(SIGTERM), 0);
  std::istringstream lines(watch.text());
  std::vector<std::string> shown;
  for (std::string line; std::getline(lines, line);) {
    const auto entry = nlohmann::json::parse(line, nullptr, false);
    EXPECT_FALSE(entry["time"].get<std::string>().empty());
    shown.push_back(entry["what"].get<std::string>() + "=" + entry["text"].get<std::string>());
  }
  EXPECT_EQ(shown,
            (std::vector<std::string>{"state=Stopped", "nvk=Norvik clients cannot connect to this computer.",
                                      "rdp=RDP clients cannot connect to this computer.", "lock=Closed"}));
}

}  // namespace
}  // namespace norvik::command
